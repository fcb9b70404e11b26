#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <vector>

namespace lucentra {

/// Stores each distinct string once, in the format of the file of phrases. Allocates large pieces, so as not to
/// fragment the heap.
class StringPool
{
public:
    struct Place
    {
        quint32 offset; ///< in the pool's bytes
        quint32 number; ///< 0 for the first string, 1 for the next ...
        bool isNew;
    };

    /// Reserves memory for this many strings.
    explicit StringPool(size_t expectedStrings);

    /// The place of a string in the pool. Adds the string if it is new.
    Place place(QByteArrayView bytes);
    Place place(const QString &string) { return place(QByteArrayView(string.toUtf8())); }
    const QByteArray &bytes() const { return m_bytes; }
    qsizetype length(quint32 offset) const;
    QByteArrayView string(quint32 offset) const;

private:
    void grow();

    QByteArray m_bytes;
    struct Slot
    {
        quint32 tag = 0;  ///< part of the hash, so that few strings need to be compared
        quint32 next = 0; ///< 1 + offset; 0 if the slot is free
        quint32 number = 0;
    };
    std::vector<Slot> m_slots; ///< open addressing
    quint32 m_count = 0;
};

} // namespace lucentra
