#include "GlassAreaCapture.h"

#include "LocalizationManager.h"

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

/// How far, in points, the area may reach over its display's edge and still count as whole inside.
constexpr double insideTolerance = 1.0;

tl::unexpected<Failure> captureFailure(int code, const QString &description)
{
    return tl::unexpected(Failure{.domain = u"ScreenCapture"_s, .code = code, .description = description});
}

/// The far edges are outside, so that neighbouring displays share no point.
bool contains(const QRectF &frame, QPointF point)
{
    return point.x() >= frame.left() && point.x() < frame.right() && point.y() >= frame.top() &&
           point.y() < frame.bottom();
}

} // namespace

Result<ScreenRect> planGlassCapture(const CaptureSurroundings &surroundings, const GlassArea &area,
                                const LocalizationManager &texts)
{
    if (!surroundings.paneWindow)
        return captureFailure(-1, texts.localized(u"找不到可擷取的翻譯視窗，請確認螢幕錄影權限"_s));

    const QPointF paneInWindow = area.glass.topLeft() - area.windowFrame.topLeft();
    const QRectF rectangle = QRectF(surroundings.paneWindow->topLeft() + paneInWindow, area.glass.size())
                                 .adjusted(captureInset, captureInset, -captureInset, -captureInset);
    const QList<ScreenRect> &displays = surroundings.displays;
    const auto display = std::find_if(displays.begin(), displays.end(),
                                      [&](const QRectF &each) { return contains(each, rectangle.center()); });
    if (display == displays.end())
        return captureFailure(-2, texts.localized(u"找不到翻譯視窗所在的顯示器"_s));

    const ScreenRect inside(rectangle & *display);
    if (inside.isNull() || std::abs(inside.width() - rectangle.width()) >= insideTolerance ||
        std::abs(inside.height() - rectangle.height()) >= insideTolerance)
        return captureFailure(-3, texts.localized(u"請將翻譯視窗完整放在同一個螢幕內再試一次"_s));
    return inside;
}

Result<QImage> captureGlassArea(ScreenCapture &capture, const GlassArea &area, const LocalizationManager &texts)
{
    const auto surroundings = capture.surroundings(area.windowNumber);
    if (!surroundings)
        return tl::unexpected(surroundings.error());
    const auto rectangle = planGlassCapture(*surroundings, area, texts);
    if (!rectangle)
        return tl::unexpected(rectangle.error());
    Result<QImage> image = capture.capture(*rectangle);
    if (image && image->isNull())
        return captureFailure(-4, texts.localized(u"系統沒有回傳擷取畫面"_s));
    return image;
}

} // namespace lucentra
