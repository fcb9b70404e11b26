#include "IconLooks.h"

#include "Figure.h"

#include <algorithm>
#include <array>
#include <numeric>

namespace lucentra {
namespace {

/// What is measured; lengths by the height of the text.
using Measures = std::array<double, 17>;

/// Outlines taken together.
struct Outline
{
    QRect ink;
    double edges = 0;    // pixels
    double strength = 0; // mean of the edges, 0 to 255
    double width = 0;    // mean of the shapes
    bool isHollow = false;

    explicit Outline(const std::vector<EdgeShape> &shapes)
    {
        for (const EdgeShape &shape : shapes) {
            ink |= shape.ink;
            edges += shape.edgePixels;
            strength += double(shape.strength) * shape.edgePixels;
            width += double(shape.ink.width()) / double(shapes.size());
        }
        strength /= std::max(1.0, edges);
        isHollow = std::any_of(shapes.begin(), shapes.end(),
                               [this](const EdgeShape &shape) { return shape.isHollow && shape.ink == ink; });
    }
};

/// The gaps between shapes that don't overlap, sorted.
std::vector<double> gapsOf(const std::vector<EdgeShape> &shapes)
{
    std::vector<double> gaps;
    int right = shapes.front().ink.right();
    for (const EdgeShape &shape : shapes) {
        if (shape.ink.left() > right)
            gaps.push_back(shape.ink.left() - right - 1);
        right = std::max(right, shape.ink.right());
    }
    std::sort(gaps.begin(), gaps.end());
    return gaps;
}

/// How much of the ink has a counterpart on the other side of the vertical middle.
double mirrorOf(const Figure &figure)
{
    int ink = 0;
    int mirrored = 0;
    for (int y = 0; y < figure.height(); ++y) {
        for (int x = 0; x < figure.width(); ++x) {
            ink += figure.hasInk(x, y) ? 1 : 0;
            mirrored += figure.hasInk(x, y) && figure.hasInk(figure.width() - 1 - x, y) ? 1 : 0;
        }
    }
    return mirrored / double(std::max(1, ink));
}

Measures measuresOf(const QImage &image, const std::vector<EdgeShape> &figureShapes,
                    const std::vector<EdgeShape> &textShapes, QRgb paper)
{
    const Outline figure(figureShapes);
    const Outline text(textShapes);
    const Figure picture(image, figure.ink, paper);
    const Figure words(image, text.ink, paper);
    const std::vector<double> gaps = gapsOf(textShapes);
    const double height = text.ink.height();
    const bool isBefore = figure.ink.left() < text.ink.left();
    const double gap = (isBefore ? text.ink.left() - figure.ink.right() : figure.ink.left() - text.ink.right()) - 1;
    const double median = gaps.empty() ? 0.1 * height : gaps[gaps.size() / 2];
    const double pictureInk = picture.share(0, 0, 1, 1);
    const double thinness = figure.edges / std::max(1.0, pictureInk * figure.ink.width() * figure.ink.height());
    const double thinnessOfText =
        text.edges / std::max(1.0, words.share(0, 0, 1, 1) * text.ink.width() * text.ink.height());
    return {std::min(gap / height, 2.0),
            std::min(figure.ink.width() / height, 3.0),
            std::min(figure.ink.height() / height, 3.0),
            std::clamp((text.ink.top() - figure.ink.top()) / height, -1.0, 1.0),
            std::clamp((figure.ink.bottom() - text.ink.bottom()) / height, -1.0, 1.0),
            double(std::min<std::size_t>(4, figureShapes.size())),
            figure.isHollow ? 1.0 : 0.0,
            pictureInk,
            std::min(distance(picture.colour(), words.colour()) / 255.0, 0.6),
            std::min(gaps.empty() ? 0.0 : gaps.back() / height, 1.5),
            std::clamp((gap - median) / height, -1.0, 1.5),
            mirrorOf(picture),
            std::min(figure.strength / std::max(1.0, text.strength), 2.0),
            std::min(text.width / height, 2.0),
            std::min(thinness / std::max(0.05, thinnessOfText), 3.0),
            isBefore ? 1.0 : 0.0,
            std::min(text.ink.width() / height, 10.0)};
}

/// One of the network's hidden units.
struct Unit
{
    Measures weights;
    double offset;
    double share; // of its output in the judgement
};

// A network of one layer, fitted to 7,000 first and last figures of lines: drawn windows with the icons of a desktop's
// theme, and lines of text in 30 fonts of 10 to 40 pixels.
constexpr std::array<Unit, 8> units{{
    {{1.51, 0, -0.05, 0.41, -0.63, -0.39, -2.61, 2.16, 4.58, 0.3, -1.4, 2.06, -4.04, 0.19, -1.36, -0.39, -0.06},
     3.88,
     1.28},
    {{0.5, -0.21, -0.55, 1.14, -1.3, 0.06, -0.11, -1.31, 1.6, -1.42, 0.57, -0.91, -0.29, 0.52, -1.81, 0.83, 0.09},
     2.64,
     1},
    {{-1.16, 0.87, -0.69, -0.35, 0.15, -0.05, 0.63, 0.92, -4.39, -1.4, -0.09, -0.51, 0.41, -0.12, 0.37, -0.68, -0},
     1.29,
     -1.14},
    {{-5.1, 0.03, -0.38, -2.2, 0.64, 0.1, -0.36, -0.95, -7.65, -1.23, -1.29, -0.39, 0.85, -0.11, -0.8, 0.28, 0.09},
     3.89,
     -1.81},
    {{-0.2, -0.38, -0.33, -0.39, 1, 0.13, 0.12, -4.48, 1.26, -0.81, 0.05, -1.84, -4.32, 0.41, -0.32, 1.66, 0.02},
     6.2,
     1.41},
    {{0.72, -0.4, 1.19, 0.08, 0.02, 0.19, -0.09, -2.4, -2.54, 0.45, 0.1, 0.97, 2.66, -0.35, 0.78, -0.63, -0.18},
     -2.72,
     1.05},
    {{1.2, 0.82, -0.43, 1.41, -0.61, 0.01, -0.54, -0.78, 2.88, 1.41, 0.99, -0.41, -0.26, 0.48, 0.2, -0.85, 0.11},
     -1.34,
     -1.18},
    {{-2.82, 0.19, -0.04, 1.35, 2.14, -0.03, -0.35, 1.34, -2.18, 0.61, -1.12, -1.18, 1.26, -0.16, 0.24, 0.01, 0.07},
     0.84,
     -1.17},
}};
constexpr double offset = 0.05;
constexpr double sure = 3;         // rather an icon left than a letter lost
constexpr double surer = 5;        // of what is as narrow or as small as a digit, or ends the line as one often does
constexpr int smallest = 11;       // pixels, of most icons
constexpr double narrowest = 0.55; // of the text's height; narrower ones are digits and signs

} // namespace

bool looksLikeIcon(const QImage &image, const std::vector<EdgeShape> &figure, const std::vector<EdgeShape> &text,
                   QRgb paper)
{
    const Measures measures = measuresOf(image, figure, text, paper);
    if (measures[1] < narrowest)
        return false;
    double judgement = offset;
    for (const Unit &unit : units) {
        const double sum = std::inner_product(measures.begin(), measures.end(), unit.weights.begin(), unit.offset);
        judgement += unit.share * std::max(0.0, sum);
    }
    const bool mayBeDigit = 5 * measures[1] < 4 * measures[2] || inkOf(figure).height() < smallest;
    const bool isBefore = measures[15] > 0;
    return judgement > (mayBeDigit || !isBefore ? surer : sure);
}

} // namespace lucentra
