#include "DrawableText.h"

#include <QFont>
#include <QHash>
#include <QRawFont>
#include <QTextLayout>

#include <algorithm>

namespace lucentra {

namespace {

bool breaksLine(char32_t codePoint, QChar::Category category)
{
    return category == QChar::Separator_Line || category == QChar::Separator_Paragraph ||
           (category == QChar::Other_Control && QChar::isSpace(codePoint));
}

bool isDrawable(const QString &text, const QFont &font)
{
    QTextLayout layout(text, font);
    layout.beginLayout();
    layout.createLine();
    layout.endLayout();
    return !hasMissingGlyphs(layout.glyphRuns());
}

} // namespace

QString drawableText(const QString &text)
{
    QString drawable;
    drawable.reserve(text.size());
    for (const char32_t codePoint : text.toUcs4()) {
        const QChar::Category category = QChar::category(codePoint);
        if (breaksLine(codePoint, category))
            drawable.append(u' ');
        else if (category != QChar::Other_Control && category != QChar::Other_PrivateUse)
            drawable.append(QChar::fromUcs4(codePoint));
    }
    return drawable.trimmed();
}

bool isBoxFont(const QRawFont &font)
{
    return !font.isValid() || font.fontTable("head").isEmpty();
}

bool hasMissingGlyphs(const QList<QGlyphRun> &runs)
{
    return std::any_of(runs.begin(), runs.end(), [](const QGlyphRun &run) {
        return isBoxFont(run.rawFont()) || run.glyphIndexes().contains(0U); // where fonts keep their empty box
    });
}

QString withoutMissingGlyphs(const QString &text, const QFont &font)
{
    const QString replacement(QChar::ReplacementCharacter);
    const QString substitute = isDrawable(replacement, font) ? replacement : QString();
    QHash<char32_t, QString> drawn;
    QString result;
    for (const char32_t codePoint : text.toUcs4()) {
        auto found = drawn.find(codePoint);
        if (found == drawn.end()) {
            const QString character = QString::fromUcs4(&codePoint, 1);
            found = drawn.insert(codePoint, isDrawable(character, font) ? character : substitute);
        }
        result.append(*found);
    }
    return result;
}

} // namespace lucentra
