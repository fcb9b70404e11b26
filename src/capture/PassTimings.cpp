#include "PassTimings.h"

#include <QLoggingCategory>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

Q_LOGGING_CATEGORY(category, "lucentra.pass", QtInfoMsg)

} // namespace

bool PassTimings::areReported()
{
    return category().isDebugEnabled();
}

void PassTimings::finish(const QString &stage)
{
    const double milliseconds = double(m_clock.nsecsElapsed()) / 1e6;
    m_clock.start();
    m_stages +=
        (m_stages.isEmpty() ? QString() : u", "_s) + stage + u' ' + QString::number(milliseconds, 'f', 1) + u" ms"_s;
}

void PassTimings::report() const
{
    qCDebug(category).noquote() << m_stages;
}

} // namespace lucentra
