#pragma once

#include <QString>

#include <memory>

class QTranslator;

namespace lucentra {

/// The toolkit's own texts (buttons of dialogs, menus of text fields), and its form of numbers, in the interface
/// language. They stay English if the toolkit's tables aren't installed.
class ToolkitTexts
{
public:
    ToolkitTexts();
    ~ToolkitTexts();

    /// Switches to the language with this string table's code. Open windows are updated.
    void use(const QString &languageCode);

private:
    std::unique_ptr<QTranslator> m_table; ///< null for English
};

} // namespace lucentra
