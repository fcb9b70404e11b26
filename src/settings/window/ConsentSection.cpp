#include "ConsentSection.h"

#include "Addresses.h"
#include "FormLink.h"
#include "LocalizationManager.h"
#include "Settings.h"
#include "SettingsForm.h"

using namespace Qt::StringLiterals;

namespace lucentra {

ConsentSection::ConsentSection(SettingsForm &form, TranslationEngine engine, QWidget *parent)
    : FormSection(form, u"資料傳送與隱私"_s, parent)
{
    const LocalizationManager &texts = form.services().texts;
    const auto provider = [&texts, engine] { return remoteProviderName(engine, texts).value_or(QString()); };
    addToggle([&texts, provider] { return texts.formatted(u"允許將文字傳送至 %@"_s, provider()); },
              stored<bool>(settings::consentKey(qint64(engine))));
    addParagraph([&texts, provider] {
        return texts.formatted(
            u"辨識或輸入的文字會傳送至 %@ 以產生翻譯；內容的處理方式受該服務的隱私政策約束。Lucentra 沒有中繼伺服器，也不會將副本傳給開發者。"_s,
            provider());
    });
    addWidget(new FormLink(form, u"閱讀隱私權政策"_s, [&form] {
        return privacyPage(form.services().pagesFolder, form.services().texts.resolvedLanguageCode());
    }));
}

} // namespace lucentra
