#include "ReadingFilter.h"

#include <QRegularExpression>

namespace lucentra {

using namespace Qt::StringLiterals;

QString tidied(const QString &text)
{
    static const QRegularExpression spaceBetweenWide(
        u"(?<=[\\p{Han}\\p{Hiragana}\\p{Katakana}ー、。，．：；！？「」『』（）《》〈〉【】・…—～]) +(?=[\\p{Han}\\p{Hiragana}\\p{Katakana}ー、。，．：；！？「」『』（）《》〈〉【】・…—～])"_s);
    static const QRegularExpression loneBar(u"(?<![^ ])\\|(?=[ '’][a-z])"_s);
    QString result = text;
    result.replace(spaceBetweenWide, QString());
    result.replace(loneBar, u"I"_s);
    return result;
}

bool isPlausible(const Reading &reading, const FoundLine &line, bool isOnPicture)
{
    static const QRegularExpression letter(u"[\\p{L}\\p{N}]"_s);
    if (!reading.text.contains(letter))
        return false;
    double least = isOnPicture ? 50 : 32;
    if (reading.text.size() <= 3)
        least += 15;
    Q_UNUSED(line);
    return reading.confidence >= least;
}

} // namespace lucentra
