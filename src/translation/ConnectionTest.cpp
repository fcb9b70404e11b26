#include "ConnectionTest.h"

#include "LocalizationManager.h"
#include "Settings.h"
#include "SettingsStore.h"
#include "TranslationManager.h"

using namespace Qt::StringLiterals;

namespace lucentra {

void testConnection(TranslationManager &manager, const SettingsStore &settings, const LocalizationManager &texts,
                    const std::function<void(Result<QString>)> &completion)
{
    const QString target = settings.read(settings::targetLanguageCode);
    const QString sentence =
        target == u"en" || target == u"en-US" ? u"這是一個連線測試。"_s : u"This is a connection test."_s;
    manager.translateBlocks({TextBlock{.text = sentence, .normBox = {}}}, [&texts, sentence, completion](
                                                                              const Result<QStringList> &translations) {
        if (!translations)
            return completion(tl::unexpected(translations.error()));
        const QString translation = translations->value(0).trimmed();
        if (!translation.isEmpty() && translation.compare(sentence, Qt::CaseInsensitive) != 0)
            return completion(translation);
        completion(tl::unexpected(
            Failure{.domain = u"TranslationConnectionTest"_s,
                    .code = -1,
                    .description = texts.localized(u"服務沒有回傳有效譯文，請檢查金鑰、模型與網路設定"_s)}));
    });
}

} // namespace lucentra
