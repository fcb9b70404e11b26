#include "MessageCatalogue.h"

#include <QStringConverter>
#include <QtEndian>

#include <algorithm>
#include <utility>

namespace lucentra {

namespace {

constexpr quint32 moMagic = 0x950412de;
constexpr qsizetype headerSize = 20;
constexpr char contextEnd = '\x04';

class MoFile
{
public:
    explicit MoFile(QByteArrayView bytes)
        : m_bytes(bytes)
    {
    }

    /// Reads the header. Returns false if there is none.
    bool open()
    {
        if (m_bytes.size() < headerSize)
            return false;
        m_isSwapped = word(0) != moMagic;
        if (word(0) != moMagic)
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

/// The first form (singular) and the last (plural), whichever others there are; the last is empty if
/// there is only one.
std::pair<QByteArrayView, QByteArrayView> pluralForms(QByteArrayView text)
{
    const qsizetype first = text.indexOf('\0');
    if (first < 0)
        return {text, {}};
    return {text.first(first), text.sliced(text.lastIndexOf('\0') + 1)};
}

/// The character set in a catalogue's header; UTF-8 if there is none.
QByteArray charsetOf(QByteArrayView header)
{
    const QByteArray lower = header.toByteArray().toLower();
    const qsizetype charset = lower.indexOf("charset=");
    if (charset < 0)
        return "utf-8";
    const qsizetype start = charset + 8;
    qsizetype end = start;
    while (end < lower.size() && lower[end] > ' ' && lower[end] != ';')
        ++end;
    const QByteArray name = lower.sliced(start, end - start);
    return name == "us-ascii" || name == "utf8" ? "utf-8" : name;
}

void visitForm(QByteArrayView source, QByteArrayView translation, QStringDecoder &decoder, const MessageVisitor &visit)
{
    if (source.isEmpty() || translation.isEmpty() || std::max(source.size(), translation.size()) > longestMessage)
        return;
    decoder.resetState();
    const QString text = decoder.decode(translation);
    // Some character sets have unassigned bytes.
    if (!decoder.hasError() && !text.isEmpty() && !text.contains(QChar::ReplacementCharacter))
        visit(source, text);
}

} // namespace

bool readMoCatalogue(QByteArrayView bytes, const MessageVisitor &visit)
{
    MoFile file(bytes);
    if (!file.open())
        return false;
    const bool hasHeader = file.count() > 0 && file.source(0).isEmpty();
    QStringDecoder decoder(charsetOf(hasHeader ? file.translation(0) : QByteArrayView()).constData(),
                           QStringConverter::Flag::Stateless);
    if (!decoder.isValid())
        return false;
    for (qint64 i = 0; i < file.count(); ++i) {
        const QByteArrayView source = file.source(i);
        const QByteArrayView translation = file.translation(i);
        if (source.size() > 2 * longestMessage || translation.size() > 6 * longestMessage)
            continue;
        const auto [one, many] = pluralForms(withoutContext(source));
        const auto [first, last] = pluralForms(translation);
        visitForm(one, first, decoder, visit);
        visitForm(many, last.isEmpty() ? first : last, decoder, visit);
    }
    return true;
}

} // namespace lucentra
