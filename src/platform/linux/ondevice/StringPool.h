#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <vector>

namespace lucentra {

/// Every distinct string once, as it stands in the memory's file. It takes its room in large pieces, so that it leaves
/// nothing behind.
class StringPool
{
public:
    struct Place
    {
        quint32 offset; ///< in the pool's bytes
        quint32 number; ///< 0 for the first string, 1 for the next ...
        bool isNew;
    };

    /// Room for so many strings is made at once.
    explicit StringPool(size_t expectedStrings);

    /// The place of a string in the pool, which it is put into where it is new.
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
        quint32 tag = 0;  ///< of the hash, so that most strings needn't be looked at
        quint32 next = 0; ///< 1 + offset; 0 where the slot is free
        quint32 number = 0;
    };
    std::vector<Slot> m_slots; ///< open addressing
    quint32 m_count = 0;
};

} // namespace lucentra
