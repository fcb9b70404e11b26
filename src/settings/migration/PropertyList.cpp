#include "PropertyList.h"

#include <QXmlStreamReader>

#include <bit>

namespace lucentra {

namespace {

// Preferences have some hundred short entries.
constexpr quint64 mostEntries = 10'000;
constexpr quint64 longestText = 10'000; ///< many entries of a binary list can refer to the same text

/// A binary property list. Its objects refer to one another by number; only the top-level dictionary is followed.
class BinaryList
{
public:
    explicit BinaryList(const QByteArray &content)
        : m_content(content)
    {
    }

    QJsonObject read()
    {
        constexpr quint64 trailerSize = 32;
        const quint64 trailer = quint64(m_content.size()) - trailerSize;
        m_offsetSize = number(trailer + 6, 1);
        m_referenceSize = number(trailer + 7, 1);
        m_table = number(trailer + 24, 8);
        const Object top = object(number(trailer + 16, 8));
        QJsonObject values;
        if (top.kind != Dictionary || top.count > mostEntries)
            return values;
        const auto member = [&](quint64 i) { return value(number(top.start + i * m_referenceSize, m_referenceSize)); };
        for (quint64 i = 0; i < top.count && m_isValid; ++i)
            values.insert(member(i).toString(), member(top.count + i));
        return m_isValid ? values : QJsonObject();
    }

private:
    /// The upper four bits of an object's first byte are its kind, the lower four its size, or 15 if a number follows.
    enum Kind : quint8 { Constant = 0, Integer = 1, Real = 2, Ascii = 5, Utf16 = 6, Dictionary = 13 };

    struct Object
    {
        quint64 kind;
        quint64 count;
        quint64 start; ///< of its content
    };

    Object object(quint64 index)
    {
        const quint64 offset = number(m_table + index * m_offsetSize, m_offsetSize);
        const quint64 first = number(offset, 1);
        Object found{.kind = first >> 4, .count = first & 0xF, .start = offset + 1};
        constexpr quint64 countFollows = 15;
        if (found.count == countFollows) {
            const quint64 length = quint64(1) << (number(found.start, 1) & 0xF);
            found.count = number(found.start + 1, length);
            found.start += 1 + length;
        }
        return found;
    }

    /// `Undefined` for values of other kinds.
    QJsonValue value(quint64 index)
    {
        constexpr quint64 falseCode = 8;
        constexpr quint64 trueCode = 9;
        const auto [kind, count, start] = object(index);
        const quint64 length = quint64(1) << (count & 0xF); // of a number
        if (kind == Constant && (count == falseCode || count == trueCode))
            return count == trueCode;
        if (kind == Integer)
            return qint64(number(start, length));
        if (kind == Real)
            return length == sizeof(float) ? double(std::bit_cast<float>(quint32(number(start, length))))
                                           : std::bit_cast<double>(number(start, length));
        if ((kind != Ascii && kind != Utf16) || count > longestText)
            return QJsonValue::Undefined;
        QString text;
        const quint64 size = kind == Utf16 ? 2 : 1;
        for (quint64 i = 0; i < count; ++i)
            text += QChar(char16_t(number(start + i * size, size)));
        return text;
    }

    /// A big-endian number. Outside the content, it is 0 and the list invalid.
    quint64 number(quint64 position, quint64 length)
    {
        const auto size = quint64(m_content.size());
        if (length < 1 || length > 8 || position > size || length > size - position) {
            m_isValid = false;
            return 0;
        }
        quint64 value = 0;
        for (quint64 i = 0; i < length; ++i)
            value = value << 8 | quint8(m_content[qsizetype(position + i)]);
        return value;
    }

    const QByteArray &m_content;
    quint64 m_offsetSize = 0;
    quint64 m_referenceSize = 0;
    quint64 m_table = 0;
    bool m_isValid = true;
};

QJsonObject readXmlList(const QByteArray &content)
{
    QXmlStreamReader xml(content);
    QJsonObject values;
    QString key;
    if (!xml.readNextStartElement() || !xml.readNextStartElement() || xml.name() != u"dict")
        return values;
    while (quint64(values.size()) < mostEntries && xml.readNextStartElement()) {
        const QString kind = xml.name().toString();
        const QString text = xml.readElementText(QXmlStreamReader::SkipChildElements);
        if (kind == u"key")
            key = text;
        else if (kind == u"string")
            values.insert(key, text);
        else if (kind == u"integer")
            values.insert(key, text.toLongLong());
        else if (kind == u"real")
            values.insert(key, text.toDouble());
        else if (kind == u"true" || kind == u"false")
            values.insert(key, kind == u"true");
    }
    return xml.hasError() ? QJsonObject() : values;
}

} // namespace

QJsonObject readPropertyList(const QByteArray &content)
{
    return content.startsWith("bplist") ? BinaryList(content).read() : readXmlList(content);
}

} // namespace lucentra
