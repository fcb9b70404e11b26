#pragma once

#include "OverlayFit.h"
#include "OverlayText.h"

#include <QFont>
#include <QString>

#include <memory>

namespace lucentra {

/// Measures overlay texts with the font that they are drawn in. It remembers the last text, since the measures of one
/// fit ask for the same text again and again. Main thread only; needs the application's fonts.
class OverlayTypesetter final : public OverlayTextMeasurer
{
public:
    /// `targetLanguage` is the language tag of the translations; it chooses the font's family.
    explicit OverlayTypesetter(const QString &targetLanguage);

    SingleLineMeasure measureSingleLine(const QString &text, double fontSize) override;
    double boundingHeight(const QString &text, double width, double fontSize, double atMost) override;

    /// The shaped text, to be drawn.
    std::shared_ptr<OverlayText> typeset(const QString &text);

private:
    const QFont m_font;
    QString m_text;
    std::shared_ptr<OverlayText> m_typeset;
};

} // namespace lucentra
