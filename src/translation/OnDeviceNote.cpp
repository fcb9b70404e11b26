#include "OnDeviceNote.h"

#include "LocalizationManager.h"
#include "ModelInstallation.h"
#include "OnDeviceTranslations.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace lucentra {

QString onDeviceNote(const QStringList &sources, const OnDeviceTranslations &translations,
                     const LocalizationManager &texts)
{
    using Kind = OnDeviceOutcome::Kind;
    if (translations.outcomes.isEmpty() || translations.texts != sources)
        return {};
    const auto has = [&translations](Kind kind) {
        return std::any_of(translations.outcomes.begin(), translations.outcomes.end(),
                           [kind](const OnDeviceOutcome &outcome) { return outcome.kind == kind; });
    };
    if (has(Kind::NotReady))
        return texts.localized(u"正在收集這部電腦上的譯文，請稍後再試。"_s);
    QStringList packages;
    QStringList models;
    QStringList unusable;
    for (const OnDeviceAddition &addition : translations.additions) {
        if (!addition.package.isEmpty())
            packages.append(addition.package);
        else if (addition.isRepair)
            unusable.append(modelTitle(addition.models));
        else
            models.append(addition.bytes > 0 ? modelTitle(addition.models) + u" ("_s + megabyteText(addition.bytes) + u')'
                                             : modelTitle(addition.models));
    }
    if (!unusable.isEmpty())
        return texts.formatted(u"這些翻譯模型無法使用，檔案可能已損壞：%@。請移除後重新下載。"_s, unusable.join(u", "_s));
    if (!models.isEmpty())
        return texts.formatted(u"這部電腦還沒有能翻譯這些文字的模型。請在設定的「翻譯」分頁下載：%@"_s, models.join(u", "_s));
    QString note;
    if (has(Kind::UnknownPhrase))
        note = texts.localized(u"這部電腦上的程式沒有這些文字的譯文。請改用其他翻譯引擎。"_s);
    else if (has(Kind::PairUnavailable))
        note = texts.localized(u"這部電腦無法翻譯這種語言。請改用其他翻譯引擎。"_s);
    else if (has(Kind::Undetermined))
        return texts.localized(u"無法判斷文字的語言。"_s);
    else
        return texts.localized(u"文字已是目標語言。"_s);
    if (!packages.isEmpty())
        note += u'\n' + texts.formatted(u"安裝這些套件也有幫助：%@"_s, packages.join(u' '));
    if (translations.isStripped)
        note += u'\n' + texts.localized(u"這個系統的 dpkg 設定不會安裝譯文（path-exclude），請先更改設定。"_s);
    return note;
}

} // namespace lucentra
