#pragma once

#include "read/LineReader.h"
#include "strip/LineNormalizer.h"

#include <QList>

namespace lucentra {

/// Who read a line, and what of it.
struct Attempt
{
    ReadingLanguage language;
    Separation separation;
    ReadingMode mode;

    bool operator==(const Attempt &) const = default;
};

/// The best reading of a line, and what was tried to get it.
struct RoutedReading
{
    Reading best;
    Separation separation = Separation::Axis; ///< on which the best one was read
    QList<Attempt> attempts;
};

} // namespace lucentra
