#pragma once

#include <QByteArrayView>
#include <QFile>
#include <QString>

#include <cstddef>
#include <memory>

namespace lucentra {

/// A regular file in memory; other kinds of files aren't opened. If another program cuts the file off while it is mapped,
/// its missing part reads as zeros. Any thread.
class MappedFile
{
public:
    /// Returns null if the file is empty or can't be mapped.
    static std::unique_ptr<MappedFile> open(const QString &path);
    MappedFile() = default;
    ~MappedFile();
    MappedFile(const MappedFile &) = delete;
    MappedFile &operator=(const MappedFile &) = delete;

    QByteArrayView bytes() const { return m_bytes; }
    /// Whether nobody has written to the file or cut it off since it was opened. A file that takes its name doesn't count.
    bool isIntact() const;

private:
    QFile m_file;
    QByteArrayView m_bytes;
    qint64 m_modified = 0; ///< nanoseconds
    std::size_t m_guard = 0; ///< which of the guarded ranges this one is
};

} // namespace lucentra
