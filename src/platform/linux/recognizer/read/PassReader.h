#pragma once

#include "read/LineReader.h"

#include <functional>

namespace lucentra {

/// Lets a reader read for one pass over an image. Long strips are read in pieces, so that the end of a pass never waits
/// for more than one of them. Any thread.
class PassReader
{
public:
    /// Both must outlive this object. `isWanted` (if any) is asked before each piece.
    PassReader(LineReader &reader, const std::function<bool()> &isWanted)
        : m_reader(reader)
        , m_isWanted(isWanted)
    {
    }

    /// As `LineReader::read`. Empty once the pass isn't wanted any more.
    Reading read(const Strip &strip, ReadingLanguage language, ReadingMode mode = ReadingMode::Usual) const;

    bool isWanted() const { return !m_isWanted || m_isWanted(); }

private:
    LineReader &m_reader;
    const std::function<bool()> &m_isWanted;
};

} // namespace lucentra
