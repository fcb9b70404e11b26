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

/// Replaces `%@` and `%d` in the pattern by the arguments in order, in one pass: arguments are not searched for
/// placeholders. Numbers are formatted by the locale. `%%` is a per-cent sign; any other `%` is kept. Placeholders
/// without an argument are kept, and superfluous arguments are ignored.
QString fillPattern(const QString &pattern, std::initializer_list<PatternArgument> arguments, const QLocale &locale);

} // namespace lucentra
