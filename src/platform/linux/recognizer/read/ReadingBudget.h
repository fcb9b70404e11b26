#pragma once

#include "read/ThreadClock.h"

#include <QtGlobal>

#include <atomic>

namespace lucentra {

/// The processor time that reading an image may take. It is not the clock's, so that a busy machine reads as much.
class ReadingBudget
{
public:
    explicit ReadingBudget(double seconds)
        : m_whole(qint64(seconds * 1e6))
        , m_left(m_whole)
    {
    }

    bool isSpent() const { return left() <= 0; }

    /// Whether so much of it is spent that nothing doubtful is read on any more, lest other lines aren't read at all.
    bool isScarce() const { return 2 * left() <= m_whole; }

    /// Takes from the budget what its thread worked during its life.
    class Spending
    {
    public:
        explicit Spending(ReadingBudget &budget)
            : m_budget(budget)
            , m_start(threadTime().count())
        {
        }
        ~Spending() { m_budget.m_left.fetch_sub(threadTime().count() - m_start, std::memory_order_relaxed); }
        Q_DISABLE_COPY_MOVE(Spending)

    private:
        ReadingBudget &m_budget;
        qint64 m_start;
    };

private:
    qint64 left() const { return m_left.load(std::memory_order_relaxed); }

    const qint64 m_whole; // microseconds
    std::atomic<qint64> m_left;
};

} // namespace lucentra
