#include "MessageCatalogue.h"

#include <QtEndian>

#include <algorithm>
#include <utility>

namespace lucentra {

namespace {

constexpr quint32 magic = 0x950412de;
constexpr qsizetype headerSize = 20;
constexpr char contextEnd = '\x04';
/// A message as long as this is a page of help, not a phrase of an interface.
constexpr qsizetype longestMessage = 2000;

class MoFile
{
public:
    explicit MoFile(QByteArrayView bytes)
        : m_bytes(bytes)
    {
    }

    /// Reads the header; false where there is none.
    bool open()
    {
        if (m_bytes.size() < headerSize)
            return false;
        m_isSwapped = word(0) != magic;
        if (word(0) != magic)
            return false;
        const quint32 majorRevision = word(4) >> 16;
        m_count = word(8);
        m_sources = word(12);
        m_translations = word(16);
        return majorRevision <= 1 && m_count <= m_bytes.size() / 16 && fits(m_sources, m_count * 8) &&
               fits(m_translations, m_count * 8);
    }

    qint64 count() const { return m_count; }
    QByteArrayView source(qint64 i) const { return entry(m_sources + i * 8); }
    QByteArrayView translation(qint64 i) const { return entry(m_translations + i * 8); }

private:
    quint32 word(qint64 offset) const
    {
        const quint32 value = qFromLittleEndian<quint32>(m_bytes.data() + offset);
        return m_isSwapped ? qbswap(value) : value;
    }
    bool fits(qint64 offset, qint64 size) const { return offset <= m_bytes.size() && size <= m_bytes.size() - offset; }
    QByteArrayView entry(qint64 descriptor) const
    {
        const qint64 size = word(descriptor);
        const qint64 offset = word(descriptor + 4);
        return fits(offset, size) ? m_bytes.sliced(offset, size) : QByteArrayView();
    }

    QByteArrayView m_bytes;
    bool m_isSwapped = false;
    qint64 m_count = 0;
    qint64 m_sources = 0;
    qint64 m_translations = 0;
};

QByteArrayView withoutContext(QByteArrayView source)
{
    const qsizetype end = source.indexOf(contextEnd);
    return end < 0 ? source : source.sliced(end + 1);
}

/// The first form and the last, which is that of many things, whichever others there are; the last is empty where
/// there is just one.
std::pair<QByteArrayView, QByteArrayView> pluralForms(QByteArrayView text)
{
    const qsizetype first = text.indexOf('\0');
    if (first < 0)
        return {text, {}};
    return {text.first(first), text.sliced(text.lastIndexOf('\0') + 1)};
}

bool isUtf8(QByteArrayView header)
{
    const QByteArray lower = header.toByteArray().toLower();
    const qsizetype charset = lower.indexOf("charset=");
    if (charset < 0)
        return true;
    const QByteArrayView name = QByteArrayView(lower).sliced(charset + 8);
    return name.startsWith("utf-8") || name.startsWith("utf8") || name.startsWith("us-ascii");
}

void visitForm(QByteArrayView source, QByteArrayView translation, const MessageVisitor &visit)
{
    if (source.isEmpty() || translation.isEmpty() || std::max(source.size(), translation.size()) > longestMessage)
        return;
    if (!translation.isValidUtf8())
        return;
    visit(source, QString::fromUtf8(translation));
}

} // namespace

bool readMoCatalogue(QByteArrayView bytes, const MessageVisitor &visit)
{
    MoFile file(bytes);
    if (!file.open())
        return false;
    if (file.count() > 0 && file.source(0).isEmpty() && !isUtf8(file.translation(0)))
        return false;
    for (qint64 i = 0; i < file.count(); ++i) {
        const QByteArrayView source = file.source(i);
        const QByteArrayView translation = file.translation(i);
        if (source.size() > 2 * longestMessage || translation.size() > 6 * longestMessage)
            continue;
        const auto [one, many] = pluralForms(withoutContext(source));
        const auto [first, last] = pluralForms(translation);
        visitForm(one, first, visit);
        visitForm(many, last.isEmpty() ? first : last, visit);
    }
    return true;
}

} // namespace lucentra
