#include "SoftBlur.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace lucentra {

namespace {

using Values = std::vector<float>;

/// The weights of a Gaussian from its middle outwards, up to three deviations, where less than half a grey level is
/// left. With each but the first counted twice, their sum is 1.
Values gaussian(double deviation)
{
    const int radius = std::max(1, int(std::ceil(3 * deviation)));
    Values weights;
    float sum = -1;
    for (int i = 0; i <= radius; ++i) {
        weights.push_back(float(std::exp(-i * i / (2 * deviation * deviation))));
        sum += 2 * weights.back();
    }
    for (float &weight : weights)
        weight /= sum;
    return weights;
}

// Both directions add up whole weighted rows, two of equal weight at a time, which the compiler turns into vector code.

void addWeighted(float *sums, const float *values, float weight, size_t count)
{
    for (size_t i = 0; i < count; ++i)
        sums[i] += weight * values[i];
}

void addWeighted(float *sums, const float *values, const float *otherValues, float weight, size_t count)
{
    for (size_t i = 0; i < count; ++i)
        sums[i] += weight * (values[i] + otherValues[i]);
}

/// Blurs each row along itself.
Values blurredRows(const QImage &image, size_t channels, const Values &weights)
{
    const size_t length = size_t(image.width()) * channels;
    const size_t margin = (weights.size() - 1) * channels;
    Values rows(length * size_t(image.height()));
    Values extended(length + 2 * margin);
    for (int y = 0; y < image.height(); ++y) {
        const uchar *line = image.constScanLine(y);
        float *const middle = extended.data() + margin;
        std::copy_n(line, length, middle);
        for (size_t i = 0; i < margin; ++i) {
            extended[i] = line[i % channels];
            middle[length + i] = line[length - channels + i % channels];
        }
        float *const row = rows.data() + size_t(y) * length;
        addWeighted(row, middle, weights[0], length);
        for (size_t i = 1; i < weights.size(); ++i)
            addWeighted(row, middle - i * channels, middle + i * channels, weights[i], length);
    }
    return rows;
}

void blurColumns(QImage &image, const Values &rows, const Values &weights)
{
    const size_t length = rows.size() / size_t(image.height());
    const auto row = [&](int y) { return rows.data() + size_t(std::clamp(y, 0, image.height() - 1)) * length; };
    Values sums(length);
    for (int y = 0; y < image.height(); ++y) {
        std::fill(sums.begin(), sums.end(), 0.5F); // for rounding
        addWeighted(sums.data(), row(y), weights[0], length);
        for (int i = 1; i < int(weights.size()); ++i)
            addWeighted(sums.data(), row(y - i), row(y + i), weights[size_t(i)], length);
        std::transform(sums.begin(), sums.end(), image.scanLine(y),
                       [](float value) { return uchar(std::min(value, 255.0F)); });
    }
}

size_t channelsOf(QImage::Format format)
{
    switch (format) {
    case QImage::Format_Alpha8:
        return 1;
    case QImage::Format_RGB32:
    case QImage::Format_ARGB32_Premultiplied:
        return 4;
    default:
        return 0;
    }
}

} // namespace

void softBlur(QImage &image, double deviation)
{
    const size_t channels = channelsOf(image.format());
    if (channels == 0 || image.isNull() || !(deviation > 0) || !std::isfinite(deviation))
        return;
    const Values weights = gaussian(deviation);
    blurColumns(image, blurredRows(image, channels, weights), weights);
}

} // namespace lucentra
