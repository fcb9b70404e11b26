#include "PropertyList.h"

#include "BinaryPropertyListCost.h"

#include <plist/plist.h>

#include <QJsonValue>

#include <cstdlib>
#include <memory>

namespace lucentra {

namespace {

/// In the worst case, every array or dictionary is nested in the one before it.
constexpr qsizetype mostContainers = 2000;

struct PlistDeleter
{
    using pointer = plist_t;
    void operator()(plist_t node) const { plist_free(node); }
};

bool isTame(const QByteArray &content)
{
    if (content.startsWith("bplist"))
        return isTameBinaryPropertyList(content);
    // The library aborts the program at a text with a NUL.
    return !content.contains('\0') && content.count("<array") + content.count("<dict") <= mostContainers;
}

QJsonValue textOf(plist_t node)
{
    char *text = nullptr;
    plist_get_string_val(node, &text);
    const std::unique_ptr<char, decltype(&std::free)> owner(text, &std::free);
    return text ? QJsonValue(QString::fromUtf8(text)) : QJsonValue(QJsonValue::Undefined);
}

QJsonValue valueOf(plist_t node)
{
    switch (plist_get_node_type(node)) {
    case PLIST_BOOLEAN: {
        quint8 value = 0;
        plist_get_bool_val(node, &value);
        return value != 0;
    }
    case PLIST_UINT: {
        uint64_t value = 0;
        plist_get_uint_val(node, &value);
        return qint64(value);
    }
    case PLIST_REAL: {
        double value = 0;
        plist_get_real_val(node, &value);
        return value;
    }
    case PLIST_STRING:
        return textOf(node);
    default:
        return QJsonValue::Undefined;
    }
}

} // namespace

QJsonObject readPropertyList(const QByteArray &content)
{
    const bool isBinary = content.startsWith("bplist");
    if ((!isBinary && !content.trimmed().startsWith('<')) || !isTame(content))
        return {};
    plist_t parsed = nullptr;
    (isBinary ? plist_from_bin : plist_from_xml)(content.constData(), uint32_t(content.size()), &parsed);
    const std::unique_ptr<void, PlistDeleter> root(parsed);
    if (!root || plist_get_node_type(parsed) != PLIST_DICT)
        return {};
    QJsonObject values;
    plist_dict_iter entry = nullptr;
    plist_dict_new_iter(parsed, &entry);
    const std::unique_ptr<void, decltype(&std::free)> owner(entry, &std::free);
    for (;;) {
        char *key = nullptr;
        plist_t value = nullptr;
        plist_dict_next_item(parsed, entry, &key, &value);
        if (!value)
            return values;
        const std::unique_ptr<char, decltype(&std::free)> keyOwner(key, &std::free);
        values.insert(QString::fromUtf8(key), valueOf(value));
    }
}

} // namespace lucentra
