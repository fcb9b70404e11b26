#include "Mnemonics.h"

#include <QAbstractButton>
#include <QAction>
#include <QHash>
#include <QKeySequence>
#include <QLabel>
#include <QMenuBar>
#include <QTabBar>
#include <QTabWidget>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace lucentra {

using Letters = QSet<QChar>;

namespace {

/// By default, Alt and this letter are the hotkey that shows and hides the pane.
constexpr QChar hotkeyLetter = u'T';

constexpr auto textProperty = "mnemonicText";
constexpr auto letterProperty = "mnemonicLetter";

bool isLetter(QChar character)
{
    return (character >= u'A' && character <= u'Z') || (character >= u'a' && character <= u'z');
}

/// The positions of the letters that can be a mnemonic, first those at the beginning of a word.
QList<qsizetype> letterPlaces(const QString &text)
{
    QList<qsizetype> beginnings;
    QList<qsizetype> others;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (isLetter(text[i]) && text[i].toUpper() != hotkeyLetter)
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
        if (letter != hotkeyLetter && !taken.contains(letter))
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
    const qsizetype colon = text.indexOf(u'：');
    const qsizetype end = colon >= 0 ? colon : text.size() - qsizetype(text.endsWith(u':'));
    return escaped(text.first(end)) + u"(&"_s + letter + u')' + escaped(text.sliced(end));
}

void show(QWidget &widget, const QString &text)
{
    if (auto *label = qobject_cast<QLabel *>(&widget); label && label->text() != text)
        label->setText(text);
    if (auto *button = qobject_cast<QAbstractButton *>(&widget); button && button->text() != text)
        button->setText(text);
}

bool leadsSomewhere(const QWidget &widget)
{
    const auto *label = qobject_cast<const QLabel *>(&widget);
    return !label || label->buddy();
}

bool isShownOn(const QWidget &page, const QWidget *widget)
{
    for (; widget && widget != &page; widget = widget->parentWidget()) {
        if (widget->isHidden())
            return false;
    }
    return true;
}

/// Assigns a letter of its own text to the control. If none is free, another control changes to another of its letters.
/// `tried` contains the letters that can't be used. Returns false if that is impossible.
bool findOwnLetter(qsizetype control, const QStringList &texts, QHash<QChar, qsizetype> &owners, Letters &tried)
{
    const auto places = letterPlaces(texts[control]);
    for (const qsizetype place : places) {
        const QChar letter = texts[control][place].toUpper();
        if (!tried.contains(letter) && !owners.contains(letter)) {
            owners.insert(letter, control);
            return true;
        }
    }
    for (const qsizetype place : places) {
        const QChar letter = texts[control][place].toUpper();
        if (tried.contains(letter))
            continue;
        tried.insert(letter);
        if (findOwnLetter(owners.value(letter), texts, owners, tried)) {
            owners.insert(letter, control);
            return true;
        }
    }
    return false;
}

void assignOnPage(QWidget &page, Letters taken)
{
    QList<QWidget *> controls;
    QStringList texts;
    const auto widgets = page.findChildren<QWidget *>();
    for (QWidget *widget : widgets) {
        const QString text = widget->property(textProperty).toString();
        if (text.isEmpty() || !leadsSomewhere(*widget) || !isShownOn(page, widget))
            continue;
        controls.append(widget);
        texts.append(text);
    }
    QHash<QChar, qsizetype> owners;
    for (qsizetype i = 0; i < controls.size(); ++i) {
        Letters tried = taken;
        findOwnLetter(i, texts, owners, tried);
    }
    QList<QChar> letters(controls.size());
    for (const auto &[letter, owner] : owners.asKeyValueRange()) {
        letters[owner] = letter;
        taken.insert(letter);
    }
    for (qsizetype i = 0; i < controls.size(); ++i) {
        if (letters[i].isNull())
            letters[i] = freeLetter(texts[i], taken);
        taken.insert(letters[i]);
        controls[i]->setProperty(letterProperty, letters[i]);
        show(*controls[i], marked(texts[i], letters[i]));
    }
}

} // namespace

void setAccessibleNameOnce(QWidget &widget, const QString &name)
{
    if (widget.accessibleName() != name)
        widget.setAccessibleName(name);
}

void setMnemonicText(QWidget &widget, const QString &text)
{
    widget.setProperty(textProperty, text);
    setAccessibleNameOnce(widget, text);
    show(widget, marked(text, widget.property(letterProperty).toChar()));
}

QString withMnemonic(const QString &text, Letters &taken, QChar customary)
{
    const bool isCustomary = !customary.isNull() && !taken.contains(customary) && letterPlaces(text).isEmpty();
    const QChar letter = isCustomary ? customary : freeLetter(text, taken);
    taken.insert(letter);
    return marked(text, letter);
}

void assignMnemonics(QTabWidget &tabs, const QStringList &titles)
{
    Letters taken;
    if (const auto *menus = tabs.window()->findChild<QMenuBar *>()) {
        const auto actions = menus->actions();
        for (const QAction *menu : actions) {
            if (const QString keys = QKeySequence::mnemonic(menu->text()).toString(); !keys.isEmpty())
                taken.insert(keys.back());
        }
    }
    for (int i = 0; i < titles.size(); ++i) {
        if (tabs.tabBar()->accessibleTabName(i) != titles[i])
            tabs.tabBar()->setAccessibleTabName(i, titles[i]);
        if (const QString text = withMnemonic(titles[i], taken); tabs.tabText(i) != text)
            tabs.setTabText(i, text);
    }
    for (int i = 0; i < tabs.count(); ++i)
        assignOnPage(*tabs.widget(i), taken);
}

} // namespace lucentra
