#include "OverlayTypesetter.h"

#include "OverlayFont.h"

namespace lucentra {

OverlayTypesetter::OverlayTypesetter(const QString &targetLanguage, const QString &family)
    : m_font(overlayFont(targetLanguage, family))
{
}

std::shared_ptr<OverlayText> OverlayTypesetter::typeset(const QString &text)
{
    if (!m_typeset || m_text != text) {
        m_typeset = std::make_shared<OverlayText>(text, m_font);
        m_text = text;
    }
    return m_typeset;
}

SingleLineMeasure OverlayTypesetter::measureSingleLine(const QString &text, double fontSize)
{
    const auto typesetText = typeset(text);
    return {roundedUpToPoints(typesetText->lineHeight(fontSize)), roundedUpToPoints(typesetText->lineWidth(fontSize))};
}

double OverlayTypesetter::boundingHeight(const QString &text, double width, double fontSize, double atMost)
{
    return typeset(text)->boundingHeight(width, fontSize, atMost);
}

} // namespace lucentra
