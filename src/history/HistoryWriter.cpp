#include "HistoryWriter.h"

#include "HistoryFile.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace lucentra {

HistoryWriter::HistoryWriter(QString path, std::function<void(const QString &)> diagnostics)
    : m_path(std::move(path))
    , m_diagnostics(std::move(diagnostics))
{
    m_queue.setObjectName(u"com.tarnby.lucentra.historyPersistence"_s);
    m_queue.setMaxThreadCount(1);
}

HistoryWriter::~HistoryWriter()
{
    finish();
}

void HistoryWriter::preserveUnreadableFile()
{
    m_preservesUnreadableFile = true;
}

void HistoryWriter::write(QList<HistoryItem> snapshot)
{
    const std::lock_guard lock(m_mutex);
    m_pending = std::move(snapshot);
    if (!std::exchange(m_isWriting, true))
        m_queue.start([this] { writePending(); });
}

void HistoryWriter::finish()
{
    m_queue.waitForDone();
}

std::optional<QList<HistoryItem>> HistoryWriter::takePending()
{
    const std::lock_guard lock(m_mutex);
    m_isWriting = m_pending.has_value();
    return std::exchange(m_pending, std::nullopt);
}

void HistoryWriter::writePending()
{
    while (const auto snapshot = takePending())
        writeSnapshot(*snapshot);
}

void HistoryWriter::writeSnapshot(const QList<HistoryItem> &snapshot)
{
    Result<void> written;
    if (m_preservesUnreadableFile) {
        written = keepUnreadableFile(m_path);
        m_preservesUnreadableFile = !written;
    }
    if (written)
        written = writeHistoryFile(m_path, snapshot);
    if (!written && m_diagnostics)
        m_diagnostics(u"Failed to save history: "_s + written.error().description);
}

} // namespace lucentra
