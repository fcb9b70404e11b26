#include "TextPattern.h"

namespace lucentra {

QString fillPattern(const QString &pattern, std::initializer_list<PatternArgument> arguments, const QLocale &locale)
{
    QString text;
    text.reserve(pattern.size());
    auto argument = arguments.begin();
    for (qsizetype i = 0; i < pattern.size(); ++i) {
        const QChar next = pattern[i] == u'%' && i + 1 < pattern.size() ? pattern[i + 1] : QChar();
        if (next == u'%') {
            text += u'%';
            ++i;
        } else if ((next == u'@' || next == u'd') && argument != arguments.end()) {
            text += argument++->toString(locale);
            ++i;
        } else {
            text += pattern[i];
        }
    }
    return text;
}

} // namespace lucentra
