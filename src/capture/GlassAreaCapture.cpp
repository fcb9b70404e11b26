#include "GlassAreaCapture.h"

#include "LocalizationManager.h"

#include <QCoreApplication>

#include <algorithm>
#include <cmath>
#include <utility>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

/// How far, in points, the area may reach over its display's edge and still count as whole inside.
constexpr double insideTolerance = 1.0;

Failure captureFailure(int code, const QString &description)
{
    return {.domain = u"ScreenCapture"_s, .code = code, .description = description};
}

/// The far edges are outside, so that neighbouring displays share no point.
bool contains(const QRectF &frame, QPointF point)
{
    return point.x() >= frame.left() && point.x() < frame.right() && point.y() >= frame.top() &&
           point.y() < frame.bottom();
}

/// The area to capture in the content's coordinates (origin top-left), from the place of the pane in its window.
QRectF captureRectangle(const GlassArea &area, const QRectF &windowFrame)
{
    const double dx = area.glass.left() - area.windowFrame.left();
    // Here y grows upwards: the rectangles' "bottom" is their greatest y, the upper edge on the screen.
    const double dy = area.windowFrame.bottom() - area.glass.bottom();
    return QRectF(windowFrame.left() + dx, windowFrame.top() + dy, area.glass.width(), area.glass.height())
        .adjusted(captureInset, captureInset, -captureInset, -captureInset);
}

} // namespace

Result<GlassCapturePlan> planGlassCapture(const ShareableContent &content, const GlassArea &area,
                                          qint64 processIdentifier, const LocalizationManager &texts)
{
    const auto window = std::find_if(content.windows.begin(), content.windows.end(),
                                     [&](const ShareableWindow &each) { return each.identifier == area.windowNumber; });
    if (window == content.windows.end())
        return tl::unexpected(captureFailure(-1, texts.localized(u"找不到可擷取的翻譯視窗，請確認螢幕錄影權限"_s)));

    const QRectF rectangle = captureRectangle(area, window->frame);
    const auto display =
        std::find_if(content.displays.begin(), content.displays.end(),
                     [&](const ShareableDisplay &each) { return contains(each.frame, rectangle.center()); });
    if (display == content.displays.end())
        return tl::unexpected(captureFailure(-2, texts.localized(u"找不到翻譯視窗所在的顯示器"_s)));

    const QRectF local = rectangle.translated(-display->frame.topLeft());
    const QRectF inside = local.intersected(QRectF(QPointF(), display->frame.size()));
    if (inside.isNull() || std::abs(inside.width() - local.width()) >= insideTolerance ||
        std::abs(inside.height() - local.height()) >= insideTolerance)
        return tl::unexpected(captureFailure(-3, texts.localized(u"請將翻譯視窗完整放在同一個螢幕內再試一次"_s)));

    GlassCapturePlan plan{.filter = {.display = *display}, .sourceRect = inside};
    for (const ShareableApplication &application : content.applications) {
        if (application.processIdentifier == processIdentifier)
            plan.filter.excludedApplications.append(application);
    }
    if (plan.filter.excludedApplications.isEmpty())
        plan.filter.excludedWindows.append(*window);
    return plan;
}

StreamConfiguration glassCaptureConfiguration(const QRectF &sourceRect, double scale)
{
    const double pixels = scale > 1.0 ? scale : 1.0;
    return {.sourceRect = sourceRect,
            .width = std::max(1, int(std::ceil(pixels * sourceRect.width()))),
            .height = std::max(1, int(std::ceil(pixels * sourceRect.height()))),
            .showsCursor = false,
            .captureResolution = CaptureResolution::Best};
}

void captureGlassArea(ScreenCaptureService &service, const GlassArea &area, const LocalizationManager &texts,
                      std::function<void(Result<QImage>)> completion)
{
    const auto takeScreenshot = [&service, area, &texts,
                                 completion = std::move(completion)](const Result<ShareableContent> &content) {
        if (!content) {
            completion(tl::unexpected(content.error()));
            return;
        }
        const auto plan = planGlassCapture(*content, area, QCoreApplication::applicationPid(), texts);
        if (!plan) {
            completion(tl::unexpected(plan.error()));
            return;
        }
        const auto configuration = glassCaptureConfiguration(plan->sourceRect, service.pointPixelScale(plan->filter));
        service.screenshot(plan->filter, configuration, [&texts, completion](Result<QImage> image) {
            if (image && image->isNull())
                image = tl::unexpected(captureFailure(-4, texts.localized(u"系統沒有回傳擷取畫面"_s)));
            completion(std::move(image));
        });
    };
    service.shareableContent(false, true, takeScreenshot);
}

} // namespace lucentra
