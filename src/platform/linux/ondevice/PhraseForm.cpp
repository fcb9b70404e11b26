#include "PhraseForm.h"

#include <QRegularExpression>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

/// Matches tags that are closed somewhere or need no end; "<pattern>" names a value.
QString withoutMarkup(const QString &text)
{
    if (!text.contains(u'<'))
        return text;
    static const QRegularExpression tag(u"<(/?)([A-Za-z][A-Za-z0-9]*)(?:\\s[^<>]*)?(/?)>"_s);
    QString result;
    qsizetype end = 0;
    for (auto tags = tag.globalMatch(text); tags.hasNext();) {
        const QRegularExpressionMatch match = tags.next();
        const QString name = match.captured(2);
        const bool isTag = !match.capturedView(3).isEmpty() || text.contains(u"</"_s + name + u'>') ||
                           name.compare(u"br", Qt::CaseInsensitive) == 0 ||
                           name.compare(u"p", Qt::CaseInsensitive) == 0;
        result += QStringView(text).sliced(end, match.capturedStart() - end);
        if (!isTag)
            result += match.capturedView();
        end = match.capturedEnd();
    }
    result += QStringView(text).sliced(end);
    return result;
}

/// Up to the accelerator that old menus append after a tab.
QString collapsed(const QString &string)
{
    QStringView text = string;
    if (const qsizetype tab = text.indexOf(u'\t'); tab > 0)
        text = text.first(tab);
    const auto isOdd = [&](qsizetype i) {
        return text[i].isSpace() && (text[i] != u' ' || i == 0 || i + 1 == text.size() || text[i - 1] == u' ');
    };
    qsizetype odd = 0;
    while (odd < text.size() && !isOdd(odd))
        ++odd;
    if (odd == string.size())
        return string;
    QString result;
    result.reserve(text.size());
    for (const QChar c : text) {
        if (!c.isSpace())
            result.append(c);
        else if (!result.isEmpty() && result.back() != u' ')
            result.append(u' ');
    }
    if (result.endsWith(u' '))
        result.chop(1);
    return result;
}

/// "取消(_C)" and "取消(&C)": in scripts without Latin letters the mnemonic is in brackets.
void removeBracketedMnemonic(QString &text, QChar mark)
{
    for (qsizetype at = text.indexOf(mark); at >= 0; at = text.indexOf(mark, at + 1)) {
        const bool isBracketed = at > 0 && at + 2 < text.size() && (text[at - 1] == u'(' || text[at - 1] == u'（') &&
                                 (text[at + 2] == u')' || text[at + 2] == u'）') && text[at + 1].isLetterOrNumber();
        if (!isBracketed)
            continue;
        qsizetype start = at - 1;
        while (start > 0 && text[start - 1] == u' ')
            --start;
        text.remove(start, at + 3 - start);
        return;
    }
}

/// The marks of toolkits before the letter that opens a menu. A mark counts only if a letter
/// follows and there is no other mark: "file_name_1" has none.
void removeMnemonic(QString &text)
{
    for (const QChar mark : {u'_', u'&', u'~'}) {
        const qsizetype first = text.indexOf(mark);
        if (first < 0)
            continue;
        removeBracketedMnemonic(text, mark);
        const qsizetype at = text.indexOf(mark);
        if (at < 0)
            continue;
        const bool isOnly = text.indexOf(mark, at + 1) < 0;
        if (isOnly && at + 1 < text.size() && text[at + 1].isLetterOrNumber())
            text.remove(at, 1);
        else if (mark == u'&')
            text.replace(u"&&"_s, u"&"_s);
    }
}

PhraseTail takeTail(QString &text)
{
    const auto isDot = [](QChar c) { return c == u'.' || c == u'…' || c == u'⋯' || c == u'。'; };
    qsizetype end = text.size();
    while (end > 0 && isDot(text[end - 1]))
        --end;
    const QStringView dots = QStringView(text).sliced(end);
    PhraseTail tail = PhraseTail::None;
    if (dots == u"." || dots == u"。")
        tail = PhraseTail::FullStop;
    else if (!dots.isEmpty()) // recognizers may read three dots as two or four
        tail = PhraseTail::Ellipsis;
    else if (text.endsWith(u':') || text.endsWith(u'：')) {
        tail = PhraseTail::Colon;
        --end;
    }
    while (end > 0 && text[end - 1] == u' ')
        --end;
    if (end == 0)
        return PhraseTail::None;
    text.truncate(end);
    return tail;
}

/// Replaces placeholders by slots, numbered in the order of their arguments' first occurrence. Arguments without a
/// name are named by their order, from 1, as in printf. Returns false if an argument is new and may not be.
bool replacePlaceholders(QString &text, QStringList &arguments, bool mayAdd)
{
    if (!text.contains(u'%') && !text.contains(u'{'))
        return true;
    static const QRegularExpression pattern(
        u"%%|%(?:(\\d)\\$)?[-+#0 ']*(?:\\d+|\\*)?(?:\\.(?:\\d+|\\*))?(?:hh|h|ll|l|z|j|t|q|L)?[diouxXeEfFgGcspS@]"
        "(?![A-Za-z])|%[L]?(\\d{1,2}|n)|%\\((\\w+)\\)[-#0-9.]*[sdifgr]|\\{(\\w*)(?:[:!][^{}]*)?\\}"_s);
    QString result;
    qsizetype copied = 0;
    int unnumbered = 0;
    auto match = pattern.globalMatch(text);
    while (match.hasNext()) {
        const auto found = match.next();
        result += QStringView(text).sliced(copied, found.capturedStart() - copied);
        copied = found.capturedEnd();
        if (found.capturedView() == u"%%") {
            result += u'%';
            continue;
        }
        QString name;
        for (int group = 1; group <= 4 && name.isEmpty(); ++group)
            name = found.captured(group);
        if (name.isEmpty())
            name = QString::number(++unnumbered);
        qsizetype slot = arguments.indexOf(name);
        if (slot < 0) {
            if (!mayAdd || arguments.size() == mostSlots)
                return false;
            slot = arguments.size();
            arguments.append(name);
        }
        result += QChar(char16_t(firstSlot + slot));
    }
    result += QStringView(text).sliced(copied);
    text = result;
    return true;
}

bool isQuote(QChar c)
{
    return QStringView(u"\"'“”„‟‘’‚‛«»‹›「」『』").contains(c);
}

/// Replaces a pattern's matches by slots with their values.
ScreenForm slotted(const QString &text, const QRegularExpression &pattern)
{
    ScreenForm form;
    qsizetype copied = 0;
    auto match = pattern.globalMatch(text);
    while (match.hasNext() && form.values.size() < mostSlots) {
        const auto found = match.next();
        int group = 0; // the first group that matched, else the whole match
        for (int i = 1; i <= found.lastCapturedIndex() && group == 0; ++i)
            group = found.capturedLength(i) > 0 ? i : 0;
        form.text += QStringView(text).sliced(copied, found.capturedStart(group) - copied);
        form.text += QChar(char16_t(firstSlot + form.values.size()));
        form.values.append(found.captured(group));
        copied = found.capturedEnd(group);
    }
    form.text += QStringView(text).sliced(copied);
    return form;
}

} // namespace

bool isDenseScript(char32_t c)
{
    return (c >= 0x2e80 && c <= 0x9fff) || (c >= 0xac00 && c <= 0xd7af) || (c >= 0xf900 && c <= 0xfaff) ||
           (c >= 0xff00 && c <= 0xffef) || (c >= 0x20000 && c <= 0x3ffff);
}

PhraseForm catalogueForm(const QString &source)
{
    PhraseForm form{.text = collapsed(withoutMarkup(source))};
    if (!replacePlaceholders(form.text, form.arguments, true))
        return {};
    removeMnemonic(form.text);
    form.tail = takeTail(form.text);
    return form;
}

bool mayHaveMnemonic(const QString &source)
{
    return source.contains(u'_') || source.contains(u'&') || source.contains(u'~');
}

std::optional<QString> translationForm(const QString &translation, const PhraseForm &source, bool hasMnemonic)
{
    QString text = collapsed(withoutMarkup(translation));
    QStringList arguments = source.arguments;
    if (!replacePlaceholders(text, arguments, false))
        return std::nullopt;
    if (hasMnemonic)
        removeMnemonic(text);
    if (source.tail != PhraseTail::None)
        takeTail(text);
    return text.isEmpty() ? std::nullopt : std::optional(text);
}

ScreenPhrase screenPhrase(const QString &line)
{
    static const QRegularExpression shortcut(
        u"\\s+(?:(?:(?:Ctrl|Control|Strg|Alt|Shift|Super|Meta|Cmd|⌘|⌥|⇧|⌃)\\s?\\+\\s?)+\\S+|F\\d{1,2})$"_s);
    static const QRegularExpression number(u"(?<![\\p{L}\\d])\\d+(?:[.,:/]\\d+)*(?![\\p{L}\\d])"_s);
    static const QRegularExpression value(
        u"[\"“„‘「『«]([^\"“”„‘’「」『』«»]+)[\"”’“」』»]|[\\w~./:@?=&%+-]*[/@.\\\\][\\w./@-]*\\w|"
        "(?<![\\p{L}\\d])\\d+(?:[.,:/]\\d+)*(?![\\p{L}\\d])"_s,
        QRegularExpression::UseUnicodePropertiesOption);
    ScreenPhrase phrase;
    QString text = line.trimmed();
    if (const auto found = shortcut.match(text); found.hasMatch() && found.capturedStart() > 0) {
        phrase.suffix = found.captured();
        text.chop(found.capturedLength());
    }
    qsizetype start = 0;
    while (start < text.size() && !text[start].isLetterOrNumber() && !isQuote(text[start]) &&
           QStringView(u"([{<%$#&_~-+/.\\@").indexOf(text[start]) < 0)
        ++start;
    if (start > 0 && start < text.size()) {
        phrase.prefix = text.first(start);
        text.remove(0, start);
    }
    text = collapsed(text);
    phrase.tail = takeTail(text);
    phrase.forms.append({.text = text, .values = {}});
    for (const QRegularExpression &pattern : {number, value}) {
        ScreenForm form = slotted(text, pattern);
        if (!form.values.isEmpty() && form.text != phrase.forms.last().text)
            phrase.forms.append(std::move(form));
    }
    return phrase;
}

bool hasLetter(QStringView text)
{
    return std::any_of(text.begin(), text.end(), [](QChar c) { return c.isLetter(); });
}

QString phraseKey(const QString &text)
{
    const bool isDense = std::any_of(text.begin(), text.end(), [](QChar c) { return isDenseScript(c.unicode()); });
    QString key;
    key.reserve(text.size());
    for (const QChar c : text) {
        const char16_t code = c.unicode();
        if (code < 0x80) {
            if (code >= u'A' && code <= u'Z')
                key += QChar(char16_t(code + 32));
            else if (code == u'"' || code == u'`')
                key += u'\'';
            else if (code != u' ' || !isDense)
                key += c;
        } else if (code >= firstSlot && code < firstSlot + mostSlots) {
            key += QChar(firstSlot);
        } else if (isQuote(c)) {
            key += u'\'';
        } else if (code >= 0xff01 && code <= 0xff5e) {
            key += QChar(char16_t(code - 0xfee0)).toCaseFolded();
        } else if (!c.isSpace() || !isDense) {
            key += c.toCaseFolded();
        }
    }
    return key;
}

QString fillSlots(const QString &text, const QStringList &values)
{
    QString filled;
    for (const QChar c : text) {
        const int slot = c.unicode() - firstSlot;
        if (slot < 0 || slot >= mostSlots)
            filled += c;
        else
            filled += values.value(slot);
    }
    return filled;
}

QString tailText(PhraseTail tail, QStringView language)
{
    const bool isWide = language.startsWith(u"zh") || language.startsWith(u"ja");
    switch (tail) {
    case PhraseTail::Colon:
        return isWide ? u"："_s : u":"_s;
    case PhraseTail::Ellipsis:
        return u"…"_s;
    case PhraseTail::FullStop:
        return isWide ? u"。"_s : u"."_s;
    case PhraseTail::None:
        break;
    }
    return {};
}

} // namespace lucentra
