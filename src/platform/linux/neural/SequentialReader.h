#pragma once

#include <QByteArrayView>

#include <cstring>

namespace lucentra {

/// Reads numbers and bytes one after another and remembers whether one was beyond the end.
class SequentialReader
{
public:
    explicit SequentialReader(QByteArrayView bytes)
        : m_rest(bytes)
    {
    }

    /// Returns nothing if there are fewer bytes left.
    QByteArrayView take(quint64 count)
    {
        if (count > quint64(m_rest.size())) {
            fail();
            return {};
        }
        const QByteArrayView taken = m_rest.first(qsizetype(count));
        m_rest = m_rest.sliced(qsizetype(count));
        return taken;
    }

    /// In the byte order of this computer. Returns 0 if there are fewer bytes left.
    template <typename Number>
    Number number()
    {
        Number value = 0;
        if (const QByteArrayView bytes = take(sizeof value); !bytes.isEmpty())
            std::memcpy(&value, bytes.data(), sizeof value);
        return value;
    }

    void fail()
    {
        m_isGood = false;
        m_rest = {};
    }
    bool isGood() const { return m_isGood; }
    bool isAtEnd() const { return m_rest.isEmpty(); }

private:
    QByteArrayView m_rest;
    bool m_isGood = true;
};

} // namespace lucentra
