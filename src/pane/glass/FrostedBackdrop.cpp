#include "FrostedBackdrop.h"

#include "SoftBlur.h"

#include <QColor>
#include <QPainter>
#include <QTransform>

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace lucentra {

namespace {

constexpr int reduction = 4;
/// Standard deviation in points. Lines of text become even tones; larger shapes are still visible.
constexpr double blurDeviation = 12;

/// How much of the content's colour (its difference from grey) shines through.
constexpr double colorShare = 0.22;

struct Tone
{
    QRgb tint;
    /// Brightness that shines through, at black and at white. Content is also seen directly through glass that isn't
    /// opaque; dark glass is darker over light content to compensate.
    double glowOverDark;
    double glowOverLight;
};

/// A cool near-black, and a cool near-white.
constexpr Tone darkTone{qRgb(12, 17, 26), 22, 0};
constexpr Tone lightTone{qRgb(244, 246, 250), 4, 0};

constexpr const Tone &toneOf(GlassTone tone)
{
    return tone == GlassTone::Light ? lightTone : darkTone;
}

/// The differences of a colour channel that nobody sees, in the glass and in what shines through it.
constexpr int sameGlass = 1;
constexpr int sameBlur = 4;

bool differsLittle(const QImage &a, const QImage &b, int most)
{
    if (a.size() != b.size())
        return false;
    for (int y = 0; y < a.height(); ++y) {
        const uchar *line = a.constScanLine(y);
        if (!std::equal(line, line + a.width() * qsizetype(sizeof(QRgb)), b.constScanLine(y),
                        [most](int x, int z) { return std::abs(x - z) <= most; }))
            return false;
    }
    return true;
}

uchar channel(double value)
{
    return uchar(std::clamp(value + 0.5, 0.0, 255.0));
}

QRgb dimmed(QRgb color, const Tone &tone)
{
    const double grey = (qRed(color) * 0.2126 + qGreen(color) * 0.7152 + qBlue(color) * 0.0722);
    const double glow = tone.glowOverDark + (tone.glowOverLight - tone.glowOverDark) * grey / 255;
    const auto mixed = [&](int tintChannel, int contentChannel) {
        return channel(tintChannel + glow + colorShare * (contentChannel - grey));
    };
    return qRgb(mixed(qRed(tone.tint), qRed(color)), mixed(qGreen(tone.tint), qGreen(color)),
                mixed(qBlue(tone.tint), qBlue(color)));
}

void dim(QImage &image, const Tone &tone)
{
    for (int y = 0; y < image.height(); ++y) {
        auto *line = reinterpret_cast<QRgb *>(image.scanLine(y));
        std::transform(line, line + image.width(), line, [&tone](QRgb color) { return dimmed(color, tone); });
    }
}

} // namespace

FrostedBackdrop::FrostedBackdrop(const QImage &content, double pixelsPerPoint, GlassTone tone)
    : m_tone(tone)
{
    if (content.isNull())
        return;
    const QSize size(std::max(1, content.width() / reduction), std::max(1, content.height() / reduction));
    m_blurred =
        content.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation).convertToFormat(QImage::Format_RGB32);
    softBlur(m_blurred, blurDeviation * pixelsPerPoint / reduction);
    applyTone();
}

void FrostedBackdrop::applyTone()
{
    m_glass = m_blurred;
    dim(m_glass, toneOf(m_tone));
}

FrostedBackdrop FrostedBackdrop::in(GlassTone tone) const
{
    FrostedBackdrop other = *this;
    other.m_tone = tone;
    if (tone != m_tone)
        other.applyTone();
    return other;
}

bool FrostedBackdrop::looksLike(const FrostedBackdrop &other) const
{
    return differsLittle(m_glass, other.m_glass, sameGlass) && differsLittle(m_blurred, other.m_blurred, sameBlur);
}

void FrostedBackdrop::paint(QPainter &painter, const QRectF &rect, double opacity) const
{
    painter.save();
    painter.setOpacity(std::clamp(opacity, 0.0, 1.0) * painter.opacity());
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    if (m_glass.isNull())
        painter.fillRect(rect, QColor::fromRgb(toneOf(m_tone).tint));
    else
        painter.drawImage(rect, m_glass);
    painter.restore();
}

QBrush FrostedBackdrop::brush(const QRectF &rect) const
{
    if (m_glass.isNull())
        return QColor::fromRgb(toneOf(m_tone).tint);
    QBrush brush(m_glass);
    brush.setTransform(QTransform::fromTranslate(rect.x(), rect.y())
                           .scale(rect.width() / m_glass.width(), rect.height() / m_glass.height()));
    return brush;
}

void FrostedBackdrop::paintCalm(QPainter &painter, const QRectF &rect, double opacity) const
{
    if (m_glass.isNull())
        return;
    QImage calm = m_blurred;
    QPainter mixer(&calm);
    mixer.setOpacity(std::clamp(opacity, 0.0, 1.0));
    mixer.drawImage(0, 0, m_glass);
    mixer.end();
    painter.save();
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(rect, calm);
    painter.restore();
}

} // namespace lucentra
