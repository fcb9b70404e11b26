#pragma once

#include "LineNormalizer.h"
#include "LineReader.h"

#include <QList>

namespace lucentra {

/// The best reading of a line, and what was tried to get it.
struct RoutedReading
{
    Reading best;
    Separation separation = Separation::Axis; ///< on which the best one was read
    QList<ReadingLanguage> asked;             ///< who has read the line, told apart like that
    QList<ReadingLanguage> readWhole;         ///< and who has read the strip as it is
};

/// How much surer of a line simplified Chinese is than traditional, in confidence times characters.
struct Comparison
{
    double simplifiedLead = 0;
    int characters = 0;
};

} // namespace lucentra
