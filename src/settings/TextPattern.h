#pragma once

#include <QLocale>
#include <QString>

#include <concepts>
#include <initializer_list>

namespace lucentra {

/// One argument of a pattern: a text or a whole number.
class PatternArgument
{
public:
    PatternArgument(const QString &text)
        : m_text(text)
    {
    }
    template <std::integral Number>
    PatternArgument(Number number)
        : m_number(number)
        , m_isNumber(true)
    {
    }

    QString toString(const QLocale &locale) const { return m_isNumber ? locale.toString(m_number) : m_text; }

private:
    QString m_text;
    qlonglong m_number = 0;
    bool m_isNumber = false;
};

/// The pattern with its `%@` and `%d` replaced by the arguments in order, in one pass: what was filled in is never
/// searched again. Numbers are written in the locale, with its digits and separators. `%%` is a per-cent sign; any
/// other `%` stands as it is. Where arguments are too few the signs stay, where they are too many the last are dropped.
QString fillPattern(const QString &pattern, std::initializer_list<PatternArgument> arguments, const QLocale &locale);

} // namespace lucentra
