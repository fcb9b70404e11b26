#include "BinaryPropertyListCost.h"

#include <QList>

#include <algorithm>
#include <optional>

namespace lucentra {

namespace {

/// The number of objects and of bytes of text after every reference was replaced by a copy.
constexpr quint64 mostCost = 4 << 20;
constexpr int deepestNesting = 512;

constexpr qsizetype headerSize = 8;
constexpr qsizetype trailerSize = 32;

/// The upper four bits of an object's marker are its type; the lower four are its size, or 15 if a number follows.
enum Kind : quint8 { Data = 4, Ascii = 5, Utf16 = 6, Array = 10, Set = 12, Dictionary = 13 };
constexpr quint8 countFollows = 15;

/// The structure of the file: the positions of its objects and their references. Positions outside the file are
/// ignored.
class Outline
{
public:
    explicit Outline(const QByteArray &content)
        : m_content(content)
    {
    }

    /// Whether the trailer is valid.
    bool readTrailer()
    {
        if (m_content.size() < headerSize + trailerSize)
            return false;
        const qsizetype trailer = m_content.size() - trailerSize;
        m_offsetSize = quint8(m_content[trailer + 6]);
        m_referenceSize = quint8(m_content[trailer + 7]);
        m_count = *number(trailer + 8, 8);
        m_top = *number(trailer + 16, 8);
        m_table = *number(trailer + 24, 8);
        const bool areSizesSane =
            m_offsetSize >= 1 && m_offsetSize <= 8 && m_referenceSize >= 1 && m_referenceSize <= 8;
        return areSizesSane && m_count <= quint64(m_content.size()) && m_top < m_count &&
               m_table < quint64(m_content.size());
    }

    quint64 count() const { return m_count; }
    quint64 top() const { return m_top; }

    struct Object
    {
        quint64 ownCost = 1;
        QList<quint64> references;
    };
    std::optional<Object> object(quint64 index) const
    {
        const auto offset = number(m_table + index * m_offsetSize, m_offsetSize);
        const auto marker = offset ? number(*offset, 1) : std::nullopt;
        if (!marker)
            return std::nullopt;
        quint64 members = *marker & 0xF;
        quint64 start = *offset + 1;
        if (members == countFollows) {
            const auto numberMarker = number(start, 1);
            const int length = numberMarker ? 1 << (*numberMarker & 0xF) : 0;
            const auto following = length >= 1 && length <= 8 ? number(start + 1, length) : std::nullopt;
            if (!following)
                return std::nullopt;
            members = *following;
            start += 1 + quint64(length);
        }
        return withMembers(quint8(*marker >> 4), members, start);
    }

private:
    std::optional<Object> withMembers(quint8 kind, quint64 members, quint64 start) const
    {
        if (members > quint64(m_content.size()))
            return std::nullopt;
        Object object;
        if (kind == Data || kind == Ascii || kind == Utf16)
            object.ownCost += kind == Utf16 ? 2 * members : members;
        if ((kind == Ascii || kind == Utf16) && !isText(start, members, kind == Utf16 ? 2 : 1))
            return std::nullopt;
        if (kind != Array && kind != Set && kind != Dictionary)
            return object;
        const quint64 references = kind == Dictionary ? 2 * members : members;
        for (quint64 i = 0; i < references; ++i) {
            const auto reference = number(start + i * m_referenceSize, m_referenceSize);
            if (!reference || *reference >= m_count)
                return std::nullopt;
            object.references.append(*reference);
        }
        return object;
    }

    /// Whether no character is NUL: the library aborts the program at one.
    bool isText(quint64 start, quint64 characters, int size) const
    {
        for (quint64 i = 0; i < characters; ++i) {
            if (number(start + i * quint64(size), size).value_or(0) == 0)
                return false;
        }
        return true;
    }

    /// Big-endian.
    std::optional<quint64> number(quint64 position, int length) const
    {
        const auto size = quint64(m_content.size());
        if (position > size || quint64(length) > size - position)
            return std::nullopt;
        quint64 value = 0;
        for (int i = 0; i < length; ++i)
            value = value << 8 | quint8(m_content[qsizetype(position) + i]);
        return value;
    }

    const QByteArray &m_content;
    quint8 m_offsetSize = 0;
    quint8 m_referenceSize = 0;
    quint64 m_count = 0;
    quint64 m_top = 0;
    quint64 m_table = 0;
};

/// Computes the cost of an object including all that it refers to. Costs are cached and the total number of followed
/// references is limited, so that the time is proportional to the size of the file.
class CostCount
{
public:
    explicit CostCount(const Outline &outline)
        : m_outline(outline)
        , m_known(qsizetype(outline.count()))
    {
    }

    struct Cost
    {
        quint64 cost = 0;
        int height = 0; ///< levels of objects below it
    };
    /// Returns nullopt if the cost is too high.
    std::optional<Cost> costOf(quint64 index, int depth)
    {
        Entry &entry = m_known[qsizetype(index)];
        if (entry.cost)
            return entry.cost;
        const auto object = m_outline.object(index);
        if (entry.isUnderWay || depth > deepestNesting || !object)
            return std::nullopt;
        entry.isUnderWay = true;
        m_followed += quint64(object->references.size());
        Cost sum{.cost = object->ownCost};
        for (const quint64 reference : object->references) {
            const auto each = costOf(reference, depth + 1);
            if (!each)
                return std::nullopt;
            sum.cost += each->cost;
            sum.height = std::max(sum.height, each->height + 1);
            if (sum.cost > mostCost || sum.height > deepestNesting || m_followed > mostCost)
                return std::nullopt;
        }
        entry.isUnderWay = false;
        entry.cost = sum;
        return sum;
    }

private:
    struct Entry
    {
        std::optional<Cost> cost;
        bool isUnderWay = false;
    };

    const Outline &m_outline;
    QList<Entry> m_known;
    quint64 m_followed = 0;
};

} // namespace

bool isTameBinaryPropertyList(const QByteArray &content)
{
    Outline outline(content);
    return outline.readTrailer() && CostCount(outline).costOf(outline.top(), 0).has_value();
}

} // namespace lucentra
