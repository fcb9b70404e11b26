#include "TargetLanguage.h"

#include "Language.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

const Language *find(const QString &code)
{
    return targetLanguage(code == "en-US"_L1 ? u"en"_s : code);
}

const Language &findOrTraditionalChinese(const QString &code)
{
    const Language *const language = find(code);
    return language ? *language : targetLanguages.front();
}

} // namespace

QString promptLanguageName(const QString &target)
{
    return findOrTraditionalChinese(target).name.toString();
}

QString dictionaryLanguageName(const QString &target)
{
    const Language &language = findOrTraditionalChinese(target);
    return u"%1 (%2)"_s.arg(language.name, language.englishName);
}

QString googleLanguageCode(const QString &target)
{
    const Language *const language = find(target);
    return language ? QString(language->locale).replace(u'_', u'-') : target;
}

QString deepLLanguageCode(const QString &target)
{
    const Language *const language = find(target);
    return language && language->code == "en"_L1 ? u"EN-US"_s : target.toUpper();
}

QString microsoftLanguageCode(const QString &target)
{
    const Language *const language = find(target);
    return language ? QString(language->code) : target;
}

bool containsHanCharacters(QStringView text)
{
    return std::any_of(text.begin(), text.end(), [](QChar c) { return c >= u'\u4E00' && c <= u'\u9FFF'; });
}

} // namespace lucentra
