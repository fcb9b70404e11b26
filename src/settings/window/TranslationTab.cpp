#include "TranslationTab.h"

#include "APIKeys.h"
#include "ConnectionSection.h"
#include "EngineSection.h"
#include "Language.h"
#include "LocalizationManager.h"
#include "ModelsSection.h"
#include "OnDeviceSection.h"
#include "Settings.h"
#include "SettingsForm.h"
#include "SettingsStore.h"

#include <QDesktopServices>
#include <QFileInfo>
#include <QLayout>
#include <QPointer>
#include <QPushButton>
#include <QUrl>

#include <utility>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

QList<PickerOption> engineOptions()
{
    QList<PickerOption> options;
    for (const EngineEntry &entry : engineCatalogue())
        options.append({entry.name.toString(), int(entry.engine)});
    return options;
}

QList<PickerOption> targetOptions()
{
    QList<PickerOption> options;
    for (const Language &language : targetLanguages)
        options.append({language.name.toString(), QString(language.code)});
    return options;
}

/// In the interface language if there is such a page.
QUrl privacyPage(const QString &pagesFolder, const QString &languageCode)
{
    const auto path = [&](const QString &language) { return pagesFolder + u"/privacy_"_s + language + u".html"_s; };
    const QString own = path(languageCode);
    return QUrl::fromLocalFile(QFileInfo::exists(own) ? own : path(u"en"_s));
}

/// The consent to send text to one remote engine, with an explanation and a link to the privacy policy.
FormSection *makeConsentSection(SettingsForm &form, TranslationEngine engine)
{
    const LocalizationManager &texts = form.services().texts;
    const auto provider = [&texts, engine] { return remoteProviderName(engine, texts).value_or(QString()); };
    auto *section = new FormSection(form, u"資料傳送與隱私"_s);
    section->addToggle([&texts, provider] { return texts.formatted(u"允許將文字傳送至 %@"_s, provider()); },
                       section->stored<bool>(settings::consentKey(qint64(engine))));
    section->addParagraph([&texts, provider] {
        return texts.formatted(
            u"辨識或輸入的文字會傳送至 %@ 以產生翻譯；內容的處理方式受該服務的隱私政策約束。Lucentra 沒有中繼伺服器，也不會將副本傳給開發者。"_s,
            provider());
    });
    QPushButton *link = section->addButton(u"閱讀隱私權政策"_s, [&form] {
        QDesktopServices::openUrl(
            privacyPage(form.services().pagesFolder, form.services().texts.resolvedLanguageCode()));
    });
    link->setFlat(true);
    link->setAutoDefault(true); // for the Return key
    link->setCursor(Qt::PointingHandCursor);
    form.keepText([link] {
        QPalette palette;
        palette.setColor(QPalette::ButtonText, palette.color(QPalette::Link));
        link->setPalette(palette);
    });
    return section;
}

} // namespace

TranslationTab::TranslationTab(SettingsForm &form, APIKeys &keys)
    : m_form(form)
    , m_keys(keys)
{
    addEngineAndLanguageSection();
    addOperationSection();
    addEngineSections();
    m_connection = new ConnectionSection(
        form, [this] { return canTest(); },
        [this](std::function<void()> then) { m_keys.afterSaving(this, std::move(then)); });
    addSection(m_connection);
    loadKeys();
    form.keepValue([this] { showSelectedEngine(); });
}

void TranslationTab::addEngineAndLanguageSection()
{
    auto *section = new FormSection(m_form, u"引擎與語系"_s);
    section->addPicker(u"翻譯引擎"_s, engineOptions(), section->stored<QVariant>(settings::translationEngine));
    section->addPicker(u"目標語言"_s, targetOptions(), section->stored<QVariant>(settings::targetLanguageCode));
    auto follows = section->stored<bool>(settings::targetLanguageFollowsInterface);
    follows.write = [write = follows.write, &texts = m_form.services().texts](const bool &isOn) {
        write(isOn);
        texts.syncTargetLanguage();
    };
    section->addToggle(u"跟隨介面語言"_s, std::move(follows));
    addSection(section);
}

void TranslationTab::addOperationSection()
{
    auto *section = new FormSection(m_form, u"操作"_s);
    section->addPicker(u"操作模式"_s, {{u"自動辨識（移動或縮放後）"_s, 0}, {u"手動翻譯（點擊或快捷鍵）"_s, 1}},
                       section->stored<QVariant>(settings::triggerMode));
    section->addPicker(u"點擊玻璃板"_s, {{u"單擊翻譯"_s, 0}, {u"雙擊翻譯（建議）"_s, 1}},
                       section->stored<QVariant>(settings::translationClickGesture));
    section->addPicker(u"翻譯單位"_s, {{u"逐行"_s, 0}, {u"段落"_s, 1}},
                       section->stored<QVariant>(settings::translationUnit));
    section->addFooter(u"自動模式會在移動或縮放後翻譯；手動模式移動只做對照，使用點擊、按鈕或快捷鍵才更新。"_s);
    addSection(section);
}

void TranslationTab::addEngineSections()
{
    m_onDevice = new OnDeviceSection(m_form);
    addSection(m_onDevice);
    m_models = new ModelsSection(m_form);
    m_models->onModelsChanged = [this] { m_onDevice->refresh(); };
    addSection(m_models);
    for (const EngineEntry &entry : engineCatalogue()) {
        if (entry.serviceName.isEmpty())
            continue;
        const auto number = size_t(entry.engine);
        auto *engine = new EngineSection(m_form, entry.engine);
        engine->onKeyTyped = [this, account = QString(entry.account)](const QString &key) {
            m_keys.save(account, key);
            m_connection->refresh();
        };
        m_engines[number] = engine;
        m_consents[number] = makeConsentSection(m_form, entry.engine);
        addSection(engine);
        addSection(m_consents[number]);
    }
}

void TranslationTab::loadKeys()
{
    m_keys.load(this, [this](const StoredAPIKeys &stored) {
        for (EngineSection *engine : m_engines) {
            if (engine)
                engine->setStoredKey(stored.keys.value(engine->account()), stored.failure);
        }
        m_connection->refresh();
    });
    m_keys.onSaved = [self = QPointer(this)](const QString &account, const Result<void> &saved) {
        if (!self)
            return;
        for (EngineSection *engine : self->m_engines) {
            if (engine && engine->account() == account)
                engine->setSaved(saved);
        }
    };
}

void TranslationTab::showModels()
{
    widget()->layout()->activate(); // the page may be new
    ensureWidgetVisible(m_models);
    m_models->focusDownload();
}

void TranslationTab::showSelectedEngine()
{
    const auto selected = translationEngine(m_form.services().settings.read(settings::translationEngine))
                              .value_or(TranslationEngine::apple); // as in the translation manager
    if (selected != m_shown) {
        m_shown = selected;
        m_onDevice->setVisible(selected == TranslationEngine::apple);
        m_models->setVisible(selected == TranslationEngine::apple);
        for (const EngineEntry &entry : engineCatalogue()) {
            const auto number = size_t(entry.engine);
            if (!m_engines[number])
                continue;
            m_engines[number]->setVisible(selected == entry.engine);
            m_consents[number]->setVisible(selected == entry.engine);
        }
        if (selected == TranslationEngine::apple) {
            m_onDevice->refresh();
            m_models->refresh();
        }
        m_connection->forget();
    }
    m_connection->refresh();
}

bool TranslationTab::canTest() const
{
    const SettingsStore &store = m_form.services().settings;
    const qint64 number = store.read(settings::translationEngine);
    const auto engine = translationEngine(number);
    if (!engine)
        return false;
    if (*engine == TranslationEngine::apple)
        return true;
    return store.read(settings::consentKey(number)) && m_engines[size_t(*engine)]->isComplete();
}

} // namespace lucentra
