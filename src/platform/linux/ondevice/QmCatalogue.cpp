#include "MessageCatalogue.h"

#include <QStringList>
#include <QtEndian>

#include <algorithm>
#include <array>

namespace lucentra {

namespace {

constexpr std::array<uchar, 16> magic{0x3c, 0xb8, 0x64, 0x18, 0xca, 0xef, 0x9c, 0x95,
                                      0xcd, 0x21, 0x1c, 0xbf, 0x60, 0xa1, 0xbd, 0xdd};
constexpr uchar messagesSection = 0x69;
/// A longer message is a page of help, not a phrase of an interface.
constexpr quint32 longestMessage = 2000;

/// Reads big-endian numbers and runs of bytes in sequence. Fails from the end of the bytes on.
class Cursor
{
public:
    explicit Cursor(QByteArrayView bytes)
        : m_rest(bytes)
    {
    }

    bool isGood() const { return m_isGood; }
    bool atEnd() const { return m_rest.isEmpty(); }
    quint8 byte()
    {
        const QByteArrayView one = bytes(1);
        return one.isEmpty() ? 0 : quint8(one.front());
    }
    quint32 word()
    {
        const QByteArrayView four = bytes(4);
        return four.isEmpty() ? 0 : qFromBigEndian<quint32>(four.data());
    }
    QByteArrayView bytes(qint64 count)
    {
        if (!m_isGood || count > m_rest.size()) {
            m_isGood = false;
            return {};
        }
        const QByteArrayView taken = m_rest.first(count);
        m_rest = m_rest.sliced(count);
        return taken;
    }

private:
    QByteArrayView m_rest;
    bool m_isGood = true;
};

QString fromBigEndianUtf16(QByteArrayView bytes)
{
    QString text(bytes.size() / 2, Qt::Uninitialized);
    qFromBigEndian<char16_t>(bytes.data(), text.size(), text.data());
    return text.isValidUtf16() ? text : QString();
}

enum Tag : quint8 {
    End = 1,
    Translation = 3,
    Obsolete = 5,
    SourceText = 6,
    Context = 7,
    Comment = 8,
};

/// One message after another; each is a run of tagged fields up to its end.
void readMessages(QByteArrayView section, const MessageVisitor &visit)
{
    Cursor cursor(section);
    QByteArrayView source;
    QStringList translations;
    while (!cursor.atEnd() && cursor.isGood()) {
        switch (cursor.byte()) {
        case End:
            if (!source.isEmpty() && !translations.isEmpty() && !translations.last().isEmpty())
                visit(source, translations.last()); // the last form is the plural
            source = {};
            translations.clear();
            break;
        case Translation: {
            const quint32 size = cursor.word();
            if (size == 0xffffffff || size % 2 != 0) // no translation
                break;
            const QByteArrayView text = cursor.bytes(size);
            translations.append(size > longestMessage ? QString() : fromBigEndianUtf16(text));
            break;
        }
        case SourceText: {
            source = cursor.bytes(cursor.word());
            if (source.size() > longestMessage)
                source = {};
            break;
        }
        case Context:
        case Comment:
            cursor.bytes(cursor.word());
            break;
        case Obsolete:
            cursor.bytes(4);
            break;
        default:
            return; // the rest can't be parsed
        }
    }
}

} // namespace

bool readQmCatalogue(QByteArrayView bytes, const MessageVisitor &visit)
{
    if (bytes.size() < qsizetype(magic.size()) ||
        !std::equal(magic.begin(), magic.end(), reinterpret_cast<const uchar *>(bytes.data())))
        return false;
    Cursor cursor(bytes.sliced(magic.size()));
    while (!cursor.atEnd()) {
        const quint8 tag = cursor.byte();
        const QByteArrayView section = cursor.bytes(cursor.word());
        if (!cursor.isGood())
            break;
        if (tag == messagesSection)
            readMessages(section, visit);
    }
    return true;
}

} // namespace lucentra
