#include "NotingDevice.h"

#include <QJsonObject>

#include <algorithm>
#include <cmath>

namespace lucentra {

using namespace Qt::StringLiterals;

QJsonArray linesOf(QList<Word> words)
{
    std::stable_sort(words.begin(), words.end(),
                     [](const Word &a, const Word &b) { return a.ink.left() < b.ink.left(); });
    QList<Word> lines;
    for (const Word &word : words) {
        const auto before = std::find_if(lines.begin(), lines.end(), [&](const Word &line) {
            return std::abs(line.baseline - word.baseline) < 1 &&
                   std::abs(word.ink.left() - line.ink.right()) < 0.5 * word.ink.height();
        });
        if (before != lines.end()) {
            before->ink |= word.ink;
            before->text += word.text;
        } else {
            lines.append(word);
        }
    }
    QJsonArray result;
    for (const Word &line : lines)
        result.append(QJsonObject{{u"text"_s, line.text.trimmed()},
                                  {u"x"_s, qRound(line.ink.x())},
                                  {u"y"_s, qRound(line.ink.y())},
                                  {u"width"_s, qRound(line.ink.width())},
                                  {u"height"_s, qRound(line.ink.height())}});
    return result;
}

} // namespace lucentra
