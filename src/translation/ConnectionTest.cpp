#include "ConnectionTest.h"

#include "LocalizationManager.h"
#include "Settings.h"
#include "SettingsStore.h"
#include "TranslationEngine.h"
#include "TranslationManager.h"

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

/// UTF-16 units of an answer that are shown. No translation of the sentence is near as long.
constexpr qsizetype longestShown = 300;

QString shortened(const QString &answer)
{
    return answer.first(longestShown - (answer[longestShown - 1].isHighSurrogate() ? 1 : 0)) + u'…';
}

} // namespace

void testConnection(TranslationManager &manager, const SettingsStore &settings, const LocalizationManager &texts,
                    const std::function<void(Result<QString>)> &completion)
{
    const QString target = settings.read(settings::targetLanguageCode);
    const bool isIntoEnglish = target == u"en" || target == u"en-US";
    QStringList sentences{isIntoEnglish ? u"這是一個連線測試。"_s : u"This is a connection test."_s};
    // No program says that. The engine of this computer works if it knows what nearly every one says.
    if (translationEngine(settings.read(settings::translationEngine)).value_or(TranslationEngine::apple) ==
        TranslationEngine::apple)
        sentences.append(isIntoEnglish ? u"取消"_s : u"Cancel"_s);
    QList<TextBlock> blocks;
    for (const QString &sentence : sentences)
        blocks.append({.text = sentence, .normBox = {}});
    manager.translateBlocks(blocks, [&texts, sentences, completion](const Result<BlockTranslations> &translations) {
        if (!translations)
            return completion(tl::unexpected(translations.error()));
        for (qsizetype i = 0; i < sentences.size(); ++i) {
            const QString translation = translations->texts.value(i).trimmed();
            if (!translation.isEmpty() && translation.compare(sentences[i], Qt::CaseInsensitive) != 0)
                return completion(translation.size() > longestShown ? shortened(translation) : translation);
        }
        const QString nothingNew = texts.localized(u"服務沒有回傳有效譯文，請檢查金鑰、模型與網路設定"_s);
        completion(
            tl::unexpected(Failure{.domain = u"TranslationConnectionTest"_s,
                                   .code = -1,
                                   .description = translations->note.isEmpty() ? nothingNew : translations->note}));
    });
}

} // namespace lucentra
