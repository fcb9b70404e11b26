#include "ChineseScript.h"

#include <opencc/opencc.h>

#include <memory>

namespace lucentra {

namespace {

/// A conversion by OpenCC, kept for the life of the program: opening one reads its dictionaries.
class ChineseConversion
{
public:
    explicit ChineseConversion(const char *configuration)
        : m_handle(opencc_open(configuration))
    {
    }
    ~ChineseConversion()
    {
        if (isOpen())
            opencc_close(m_handle);
    }
    ChineseConversion(const ChineseConversion &) = delete;
    ChineseConversion &operator=(const ChineseConversion &) = delete;

    /// Returns the text itself if the dictionaries are missing.
    QString convert(const QString &text) const
    {
        if (!isOpen())
            return text;
        const QByteArray bytes = text.toUtf8();
        const std::unique_ptr<char, decltype(&opencc_convert_utf8_free)> converted(
            opencc_convert_utf8(m_handle, bytes.constData(), std::size_t(bytes.size())), &opencc_convert_utf8_free);
        return converted ? QString::fromUtf8(converted.get()) : text;
    }

private:
    bool isOpen() const { return reinterpret_cast<std::intptr_t>(m_handle) != -1; }

    opencc_t m_handle;
};

} // namespace

QString traditionalFromSimplified(const QString &text)
{
    static const ChineseConversion conversion("s2twp.json");
    return conversion.convert(text);
}

QString simplifiedFromTraditional(const QString &text)
{
    static const ChineseConversion conversion("tw2sp.json");
    return conversion.convert(text);
}

} // namespace lucentra
