#include "Mnemonics.h"

#include <QAbstractButton>
#include <QLabel>
#include <QSet>
#include <QTabBar>
#include <QTabWidget>
#include <QVariant>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

constexpr auto textProperty = "mnemonicText";
constexpr auto letterProperty = "mnemonicLetter";

using Letters = QSet<QChar>;

bool isLetter(QChar character)
{
    return (character >= u'A' && character <= u'Z') || (character >= u'a' && character <= u'z');
}

/// Where a text's letters are, those that begin a word first.
QList<qsizetype> letterPlaces(const QString &text)
{
    QList<qsizetype> beginnings;
    QList<qsizetype> others;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (isLetter(text[i]))
            (i == 0 || !text[i - 1].isLetterOrNumber() ? beginnings : others).append(i);
    }
    return beginnings + others;
}

QChar freeLetter(const QString &text, const Letters &taken)
{
    const auto places = letterPlaces(text);
    for (const qsizetype place : places) {
        if (!taken.contains(text[place].toUpper()))
            return text[place].toUpper();
    }
    for (char16_t letter = u'A'; letter <= u'Z'; ++letter) {
        if (!taken.contains(letter))
            return letter;
    }
    return {};
}

QString escaped(QString text)
{
    return text.replace(u'&', u"&&"_s);
}

QString marked(const QString &text, QChar letter)
{
    if (letter.isNull())
        return escaped(text);
    const auto places = letterPlaces(text);
    const auto own =
        std::find_if(places.begin(), places.end(), [&](qsizetype place) { return text[place].toUpper() == letter; });
    if (own != places.end())
        return escaped(text.first(*own)) + u'&' + escaped(text.sliced(*own));
    const bool endsInColon = text.endsWith(u'：') || text.endsWith(u':');
    return escaped(text.chopped(endsInColon)) + u"(&"_s + letter + u')' + text.last(endsInColon);
}

void show(QWidget &widget, const QString &text)
{
    if (auto *label = qobject_cast<QLabel *>(&widget); label && label->text() != text)
        label->setText(text);
    if (auto *button = qobject_cast<QAbstractButton *>(&widget); button && button->text() != text)
        button->setText(text);
}

bool isShownOn(const QWidget &page, const QWidget *widget)
{
    for (; widget && widget != &page; widget = widget->parentWidget()) {
        if (widget->isHidden())
            return false;
    }
    return true;
}

void assignOnPage(QWidget &page, Letters taken)
{
    const auto widgets = page.findChildren<QWidget *>();
    for (QWidget *widget : widgets) {
        const QString text = widget->property(textProperty).toString();
        if (text.isEmpty() || !isShownOn(page, widget))
            continue;
        const QChar letter = freeLetter(text, taken);
        taken.insert(letter);
        widget->setProperty(letterProperty, letter);
        show(*widget, marked(text, letter));
    }
}

} // namespace

void setMnemonicText(QWidget &widget, const QString &text)
{
    widget.setProperty(textProperty, text);
    widget.setAccessibleName(text);
    show(widget, marked(text, widget.property(letterProperty).toChar()));
}

void assignMnemonics(QTabWidget &tabs, const QStringList &titles)
{
    Letters taken;
    for (int i = 0; i < titles.size(); ++i) {
        const QChar letter = freeLetter(titles[i], taken);
        taken.insert(letter);
        tabs.tabBar()->setAccessibleTabName(i, titles[i]);
        if (const QString text = marked(titles[i], letter); tabs.tabText(i) != text)
            tabs.setTabText(i, text);
    }
    for (int i = 0; i < tabs.count(); ++i)
        assignOnPage(*tabs.widget(i), taken);
}

} // namespace lucentra
