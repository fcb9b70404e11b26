#pragma once

#include <QImage>
#include <QRect>
#include <QRegion>

#include <array>

namespace lucentra {

/// Pictures of the same place at two times are compared by square tiles of this many pixels.
inline constexpr int tileSide = 32;

/// The strong horizontal edges of one tile, a bit per pixel and a number per row. Writing has many of them, and they
/// stay where they are while the picture behind the writing moves.
using TileEdges = std::array<quint32, tileSide>;

/// What is recognized of the writing in a tile.
struct TileWriting
{
    TileEdges edges{};
    TileEdges strongest{}; ///< those of them that don't depend on what is behind the writing
};

/// Whether two pictures (RGB32, of the same size) show the same in a rectangle. Differences that no reader would notice
/// are none.
bool isSamePicture(const QImage &before, const QImage &now, const QRect &rect);

/// Whether they show the same shapes in a part, at most a tile: all that differs is a brightness that changes evenly,
/// as in a slow fade of the sky.
bool areSameShapes(const QImage &before, const QImage &now, const QRect &tile);

/// The tiles that touch `within` and in which the pictures differ. They are cut off at the picture's edges.
QRegion changedTiles(const QImage &before, const QImage &now, const QRect &within);

/// The edges in a part of the picture (RGB32), at most a tile.
TileEdges edgesOfTile(const QImage &picture, const QRect &tile);
/// The edges that both have.
TileEdges commonEdges(const TileEdges &a, const TileEdges &b);
/// Whether there are enough edges for writing.
bool hasWriting(const TileEdges &edges);
TileWriting writingOfTile(const QImage &picture, const QRect &tile);
/// What has become of the letters of a tile, on any background.
enum class Letters {
    Same,   ///< all are there, and nothing else
    Joined, ///< all are there; what has come may be a letter, but is too little for a word
    Other,  ///< some are missing, there is more, or there were too few to decide
};
Letters lettersInTile(const TileWriting &before, const QImage &picture, const QRect &tile);
/// Whether a part of the picture, at most a tile, has enough edges for writing, however faint.
bool mayHoldWriting(const QImage &picture, const QRect &tile);
/// Whether the writing in a tile is another one: it has come, gone or changed. False if neither has enough edges for
/// writing.
bool isOtherWriting(const TileEdges &before, const TileEdges &now);

/// Whether a line of text in `rect` is written in both pictures in the same letters, while what is behind them moves.
/// False if most of the rectangle is as it was: then what has changed is a letter.
bool isSameWriting(const QImage &before, const QImage &now, const QRect &rect);

/// Whether two texts' boxes are at the same place: both cover most of the smaller one.
bool isSamePlace(const QRectF &a, const QRectF &b);

} // namespace lucentra
