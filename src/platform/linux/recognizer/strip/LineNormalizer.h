#pragma once

#include "find/TextMaps.h"

#include <QColor>
#include <QImage>
#include <QRect>

#include <cstdint>
#include <memory>
#include <vector>

struct Pix;

namespace lucentra {

struct Plane;

struct PixDeleter
{
    void operator()(Pix *pix) const;
};

/// A grey picture as the readers take it, 8 bits a pixel.
using Strip = std::unique_ptr<Pix, PixDeleter>;

/// How the letters are told from what is behind them.
enum class Separation {
    Axis,       ///< by the colour's place between the paper's colour and the ink's, whichever is darker
    BrightFill, ///< bright letters, whatever surrounds them: outlined captions, white on a photograph
    DarkFill,   ///< dark letters, whatever surrounds them
    Mask,       ///< by the ink's colour, where the net sees ink
};

/// How large the letters stand on the strip.
struct StripShape
{
    int height = 36;          ///< pixels; what a reader's network was made for
    double inkShare = 0.72;   ///< height of the letters by that of the strip
    double widthScale = 0.92; ///< horizontal scale by the vertical one
    int padding = 8;          ///< pixels of paper on the left and on the right
};

/// One line cut out of its image, with what its surroundings say about its colours.
class LineNormalizer
{
public:
    /// `ink` is the line's box in pixels of `image` (32 bits a pixel), `seen` what the net sees of the letters on it.
    /// Both must outlive this object. Above and below `room` there are other lines, which the strip leaves out; a null
    /// rectangle is the whole image.
    LineNormalizer(const QImage &image, const QRect &ink, const SureMap &seen, const QRect &room = {});

    /// The ways to tell letters from their surroundings, the likeliest first.
    QList<Separation> separations() const;

    QSize inkSize() const { return m_ink.size(); }

    /// The line as dark letters on white paper.
    Strip strip(Separation separation, const StripShape &shape) const;

private:
    std::vector<float> maskedCoverage() const;
    void dropFarFromInk(Plane &coverage) const;
    Plane coverageBy(Separation separation) const;

    const QImage &m_image;
    const SureMap &m_seen;
    QRect m_ink;
    QRect m_room;
    QRect m_crop;
    QColor m_paper;
    /// Whether the rim around the line has no colour of its own (less than 35 % of it have one): a picture is behind
    /// it, or an outline or a shadow around it. Then no separation is sure to be the right one.
    bool m_isVaried = false;
    /// Whether the letters have an outline or a shadow, on a ground of one colour.
    bool m_isOutlined = false;
};

} // namespace lucentra
