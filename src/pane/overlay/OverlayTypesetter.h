#pragma once

#include "OverlayFit.h"
#include "OverlayText.h"

#include <QFont>
#include <QString>

#include <memory>

namespace lucentra {

/// Measures overlay texts with the font that they are drawn in. It remembers the last text, since fitting measures the
/// same text repeatedly.
class OverlayTypesetter final : public OverlayTextMeasurer
{
public:
    /// The font is `overlayFont` of the translations' language tag and the user's family.
    explicit OverlayTypesetter(const QString &targetLanguage, const QString &family = {});

    SingleLineMeasure measureSingleLine(const QString &text, double fontSize) override;
    double boundingHeight(const QString &text, double width, double fontSize, double atMost) override;

    /// The shaped text, for painting.
    std::shared_ptr<OverlayText> typeset(const QString &text);

private:
    const QFont m_font;
    QString m_text;
    std::shared_ptr<OverlayText> m_typeset;
};

} // namespace lucentra
