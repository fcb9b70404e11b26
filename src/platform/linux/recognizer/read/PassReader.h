#pragma once

#include "read/LineReader.h"

#include <atomic>
#include <functional>

namespace lucentra {

/// Lets the engines read for one pass over an image. Long strips are read in pieces, so that the end of a pass never
/// waits for more than one of them; besides, the engines lose words in the middle of very long strips. Any thread.
class PassReader
{
public:
    /// Both must outlive this object. `isWanted` (if any) is asked before each piece. If hasty, second readings don't
    /// wait for a model to be loaded.
    PassReader(LineReader &reader, const std::function<bool()> &isWanted, bool isHasty = false)
        : m_reader(reader)
        , m_isWanted(isWanted)
        , m_isHasty(isHasty)
    {
    }

    /// As `LineReader::read`. Empty once the pass isn't wanted any more.
    Reading read(const Strip &strip, ReadingLanguage language, ReadingMode mode = ReadingMode::Usual,
                 int most = 64) const;

    /// Whether a language can be asked for a second reading. If not, its model is missed.
    bool isReady(ReadingLanguage language) const;
    /// The models that were missed.
    QList<ReadingLanguage> missedModels() const;

    bool isHasty() const { return m_isHasty; }
    bool isWanted() const { return !m_isWanted || m_isWanted(); }

private:
    LineReader &m_reader;
    const std::function<bool()> &m_isWanted;
    const bool m_isHasty;
    mutable std::atomic<unsigned> m_missed = 0; ///< a bit per language
};

} // namespace lucentra
