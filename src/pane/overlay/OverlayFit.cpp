#include "OverlayFit.h"

#include "OverlayConstants.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace lucentra {

using namespace overlay;

namespace {

/// Less than any real difference between measures and more than floating-point errors.
constexpr double noise = 1e-6;

/// Limits a count before the conversion to an integer, whatever the measures are.
int boundedCount(double count, int least, int most)
{
    return int(std::clamp(count, double(least), double(most)));
}

double linesOf(double boundingHeight, double lineHeight)
{
    return std::ceil(boundingHeight / lineHeight - noise);
}

bool isUsable(const SingleLineMeasure &measure)
{
    return std::isfinite(measure.lineHeight) && measure.lineHeight > 0 && std::isfinite(measure.width);
}

/// One text with the space that it may take.
struct Fitting
{
    OverlayTextMeasurer &measurer;
    const QString &text;
    double sourceHeight;
    double width;
    double height;
    double startSize;

    OverlayFit oneLineOfTheSource(double size) const { return {1, size, sourceHeight}; }
    OverlayFit oneLine(double size, double lineHeight) const
    {
        return {1, size, std::max(sourceHeight, lineHeight + verticalSlack)};
    }
    double room(double lineHeight) const { return std::floor((height - verticalSlack) / lineHeight + noise); }

    OverlayFit fixed(double lineHeight) const;
    OverlayFit automatic(const SingleLineMeasure &start) const;
    OverlayFit cutOff(double size) const;
    std::optional<OverlayFit> wholeText(double size) const;
};

OverlayFit Fitting::fixed(double lineHeight) const
{
    const int allowed = boundedCount(room(lineHeight), 1, maximumLines);
    const double bounding = measurer.boundingHeight(text, width, startSize, allowed * lineHeight);
    if (!std::isfinite(bounding))
        return oneLineOfTheSource(startSize);
    const double wantedLines = linesOf(bounding, lineHeight);
    const int lines = boundedCount(wantedLines, 1, allowed);
    const double wanted = std::min(lineHeight * lines + verticalSlack, roundedUpToPoints(bounding) + verticalSlack);
    return {lines, startSize, std::min(height, std::max(sourceHeight, wanted)), wantedLines <= allowed};
}

OverlayFit Fitting::automatic(const SingleLineMeasure &start) const
{
    const double fittingSize = width * startSize / std::max(1.0, start.width);
    if (fittingSize >= std::max(minimumAutomaticSize, singleLineShrink * startSize)) {
        const double size = std::min(fittingSize, startSize);
        const SingleLineMeasure smaller = measurer.measureSingleLine(text, size);
        return isUsable(smaller) ? oneLine(size, smaller.lineHeight) : oneLineOfTheSource(size);
    }
    for (int step = 0; startSize - step * sizeStep >= minimumAutomaticSize; ++step) {
        if (const auto fit = wholeText(startSize - step * sizeStep))
            return *fit;
    }
    return cutOff(std::max(minimumAutomaticSize, std::min(fittingSize, startSize)));
}

/// Fits the whole text at a size on several lines. Returns nullopt if it doesn't fit.
std::optional<OverlayFit> Fitting::wholeText(double size) const
{
    const SingleLineMeasure line = measurer.measureSingleLine(text, size);
    if (!isUsable(line))
        return oneLineOfTheSource(size);
    const int allowed = boundedCount(room(line.lineHeight), 1, maximumLines);
    const double bounding =
        measurer.boundingHeight(text, width, size, std::min(allowed * line.lineHeight, height - verticalSlack));
    if (!std::isfinite(bounding))
        return oneLineOfTheSource(size);
    const double lines = linesOf(bounding, line.lineHeight);
    const double needed = roundedUpToPoints(bounding) + verticalSlack;
    if (lines > allowed || needed > height)
        return std::nullopt;
    return OverlayFit{boundedCount(lines, 1, allowed), size, std::max(sourceHeight, needed)};
}

OverlayFit Fitting::cutOff(double size) const
{
    const SingleLineMeasure line = measurer.measureSingleLine(text, size);
    if (!isUsable(line))
        return oneLineOfTheSource(size);
    const int lines = boundedCount(room(line.lineHeight), 1, maximumLines);
    return {lines, size, std::min(height, std::max(sourceHeight, line.lineHeight * lines + verticalSlack)), false};
}

} // namespace

double roundedUpToPoints(double measure)
{
    return std::ceil(measure - noise);
}

double startingFontSize(bool isAuto, double sourceHeight, double storedFontSize)
{
    if (isAuto)
        return std::min(maximumSize, std::max(minimumAutomaticSize, sizeOfSourceHeight * sourceHeight));
    const double base = storedFontSize > 0 ? storedFontSize : defaultFixedSize;
    return std::min(maximumSize, std::max(minimumFixedSize, base));
}

OverlayFit fitOverlayText(OverlayTextMeasurer &measurer, const QString &text, bool isAuto, double sourceHeight,
                          double textWidth, double maxHeight, double storedFontSize)
{
    const Fitting fitting{.measurer = measurer,
                          .text = text,
                          .sourceHeight = sourceHeight,
                          .width = std::max(1.0, textWidth),
                          .height = std::max(sourceHeight, maxHeight),
                          .startSize = startingFontSize(isAuto, sourceHeight, storedFontSize)};
    const SingleLineMeasure start = measurer.measureSingleLine(text, fitting.startSize);
    if (!isUsable(start))
        return fitting.oneLineOfTheSource(fitting.startSize);
    if (start.width <= fitting.width)
        return fitting.oneLine(fitting.startSize, start.lineHeight);
    return isAuto ? fitting.automatic(start) : fitting.fixed(start.lineHeight);
}

} // namespace lucentra
