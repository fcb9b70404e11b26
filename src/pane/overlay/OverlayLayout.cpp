#include "OverlayLayout.h"

#include "OverlayConstants.h"
#include "OverlayText.h"
#include "Settings.h"
#include "SettingsStore.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace lucentra {

OverlayFontSettings overlayFontSettings(const SettingsStore &settings)
{
    return {.isAuto = settings.value(settings::isFontSizeAuto.key).toBool(settings::isFontSizeAuto.defaultValue),
            .storedFontSize = settings.read(settings::fontSize),
            .family = settings.read(settings::overlayFontFamily),
            .ground = settings.read(settings::glassTone)};
}

using namespace overlay;

namespace {

bool isLargeEnough(const QRectF &rect)
{
    return std::isfinite(rect.x()) && std::isfinite(rect.y()) && std::isfinite(rect.width()) &&
           std::isfinite(rect.height()) && rect.width() > minimumSourceSide && rect.height() > minimumSourceSide;
}

/// The source's frame, widened for a text of the given width on one line up to a limit and kept inside the usable area.
QRectF widenedFrame(const QRectF &source, double textWidth, double rightLimit, const QRectF &usable)
{
    const double wanted = std::min(textWidth + 2 * sidePadding, rightLimit - source.left());
    const double widest = std::max(minimumGrownWidth, widthGrowth * source.width());
    const double width = std::min(std::max(source.width(), std::min(widest, wanted)), usable.width());
    const double x = std::min(usable.right() - width, std::max(source.left(), usable.left()));
    return {x, source.top(), width, source.height()};
}

} // namespace

std::optional<OverlayLayout> layOutOverlay(OverlayTextMeasurer &measurer, const QString &text,
                                           const OverlayLimits &limits, const QRectF &rect, const QRectF &paneBounds,
                                           const OverlayFontSettings &settings)
{
    if (!isLargeEnough(rect))
        return std::nullopt;
    const QRectF usable = paneBounds.adjusted(edgeInset, 0, -edgeInset, 0);
    const double lineHeight = limits.lineHeight > 0 ? limits.lineHeight : rect.height();
    const double size = startingFontSize(settings.isAuto, lineHeight, settings.storedFontSize);
    const double oneLine = measurer.measureSingleLine(text, size).width;
    for (double right = limits.right;; right = std::numeric_limits<double>::infinity()) {
        QRectF frame = rect;
        if (usable.width() > 0)
            frame = widenedFrame(rect, std::isfinite(oneLine) ? oneLine : 0, right, usable);
        const double textWidth = std::max(1.0, frame.width() - 2 * sidePadding);
        const double maxHeight = std::max(frame.height(), std::min(paneBounds.bottom(), limits.bottom) - frame.top());
        const OverlayFit fit =
            fitOverlayText(measurer, text, settings.isAuto, lineHeight, textWidth, maxHeight, settings.storedFontSize);
        frame.setHeight(std::min(maxHeight, fit.height));
        if (fit.isWhole || !std::isfinite(right))
            return OverlayLayout{.frame = frame, .fontSize = fit.fontSize, .lines = fit.lines};
    }
}

std::optional<OverlayLayout> layOutParagraph(OverlayText &text, const OverlayLimits &limits, const QRectF &rect,
                                             const QRectF &paneBounds, const OverlayFontSettings &settings)
{
    if (!isLargeEnough(rect))
        return std::nullopt;
    const QRectF usable = paneBounds.adjusted(edgeInset, 0, -edgeInset, 0);
    QRectF frame = rect;
    if (limits.alignment & Qt::AlignHCenter)
        frame.adjust(-sidePadding, 0, sidePadding, 0);
    else
        frame.setRight(std::min(rect.right() + 2 * sidePadding, std::max(rect.right(), limits.right)));
    if (usable.width() > 0) {
        frame.setWidth(std::min(frame.width(), usable.width()));
        frame.moveLeft(std::clamp(frame.left(), usable.left(), usable.right() - frame.width()));
    }
    const double width = std::max(1.0, frame.width() - 2 * sidePadding);
    const double start = startingFontSize(settings.isAuto, limits.lineHeight, settings.storedFontSize);
    const double lowest = std::max(frame.bottom(), std::min(paneBounds.bottom(), limits.bottom));

    OverlayLayout layout{.frame = frame, .fontSize = start, .alignment = limits.alignment};
    // Sets the size and the greatest number of lines above `bottom`. Returns whether the whole text fits.
    const auto fits = [&](double size, double bottom) {
        const double fontLine = text.lineHeight(size);
        layout.fontSize = size;
        layout.lineDistance = std::max(tightestLines * fontLine, limits.lineDistance * size / start);
        const double more = (bottom - frame.top() - limits.lineHeight) / layout.lineDistance;
        layout.lines = std::max(1, 1 + int(more + roundingOfLines));
        const double height = text.boundingHeight(width, size, layout.lines * fontLine);
        layout.isWhole = std::round(height / fontLine) <= layout.lines;
        if (layout.isWhole)
            layout.lines = int(std::round(height / fontLine));
        return layout.isWhole;
    };
    const auto search = [&](double from, double to, double bottom) {
        for (double size = from; size >= to; size -= sizeStep) {
            if (fits(size, bottom))
                return true;
        }
        return false;
    };
    const double least = settings.isAuto ? minimumAutomaticSize : start;
    const double comfortable = std::max(least, settings.isAuto ? singleLineShrink * start : start);
    if (!search(start, comfortable, frame.bottom()) && !search(comfortable, least, lowest))
        fits(least, lowest);
    const double height = verticalSlack + limits.lineHeight + (layout.lines - 1) * layout.lineDistance;
    layout.frame.setHeight(std::min(lowest - frame.top(), std::max(frame.height(), height)));
    if (limits.alignment & Qt::AlignVCenter && height < frame.height()) {
        layout.frame.setHeight(height);
        layout.frame.moveTop(frame.top() + std::round((frame.height() - height) / 2));
    }
    return layout;
}

} // namespace lucentra
