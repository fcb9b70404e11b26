#pragma once

#include <QTranslator>

#include <optional>

namespace lucentra {

/// The toolkit in the interface language: its own texts (buttons of dialogs, menus of text fields), its form of
/// numbers, and the fonts of characters that the desktop's font lacks, which are those of the overlays. The texts stay
/// English if the toolkit's tables aren't installed.
class ToolkitLanguage
{
public:
    /// Switches to the language with this string table's code. Open windows are updated.
    void use(const QString &languageCode);

private:
    void useTexts(const QString &languageCode);

    std::optional<QTranslator> m_table; ///< nullopt for English; uninstalls itself
};

} // namespace lucentra
