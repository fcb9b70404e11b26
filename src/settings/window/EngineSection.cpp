#include "EngineSection.h"

#include "FormColors.h"
#include "KeyField.h"
#include "Settings.h"
#include "SettingsForm.h"
#include "SettingsStore.h"
#include "StoredAPIKeys.h"

#include <QLabel>
#include <QLineEdit>

#include <array>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

using TextSettings = QList<std::pair<QString, Setting<QString>>>; ///< with the text key of the field's label

struct EngineForm
{
    QString title;
    TextSettings fields;
    QStringList footers;
    bool areFieldsNeeded; ///< whether a test needs them
};

const EngineForm &engineForm(TranslationEngine engine)
{
    static const QString keychain = u"API Key 會安全存放於 macOS Keychain。"_s;
    static const std::array<EngineForm, 8> forms{{
        {},
        {u"Google 翻譯設定"_s,
         {},
         {u"API Key 為選填，若留空則使用免費版（有流量與請求頻率限制）。"_s, keychain},
         false},
        {u"Microsoft Azure 設定"_s,
         {{u"地區"_s, settings::microsoftApiRegion}},
         {u"Azure 翻譯必須填寫 API Key 與對應的地區。"_s, keychain},
         false},
        {u"Gemini AI 設定"_s, {}, {u"Gemini 翻譯必須填寫 API Key。"_s, keychain}, false},
        {u"DeepL 設定"_s, {}, {u"DeepL Free 與 Pro 金鑰皆可使用，App 會自動選擇對應端點。"_s}, false},
        {u"OpenAI 設定"_s,
         {{u"模型名稱"_s, settings::openAIModel}},
         {u"模型名稱可依你的 OpenAI 帳號權限調整。"_s},
         true},
        {u"Claude 設定"_s,
         {{u"模型名稱"_s, settings::anthropicModel}},
         {u"模型名稱可依你的 Anthropic 帳號權限調整。"_s},
         true},
        {u"OpenAI 相容 API 設定"_s,
         {{u"API Base URL"_s, settings::compatibleBaseURL}, {u"模型名稱"_s, settings::compatibleModel}},
         {u"可連接 OpenRouter、Ollama 或其他支援 Chat Completions 的服務；非本機網址必須使用 HTTPS。"_s},
         true},
    }};
    return forms[size_t(engine)];
}

} // namespace

EngineSection::EngineSection(SettingsForm &form, TranslationEngine engine, QWidget *parent)
    : FormSection(form, engineForm(engine).title, parent)
    , m_engine(engine)
{
    if (!engineEntry(engine).account.isEmpty())
        addKeyRows();
    for (const auto &field : engineForm(engine).fields)
        addField(field.first, stored<QString>(field.second));
    for (const QString &footer : engineForm(engine).footers)
        addFooter(footer);
}

void EngineSection::addKeyRows()
{
    m_key = new KeyField(form());
    m_key->onTyped = [this](const QString &key) {
        m_isLoaded = true;
        showKeyStatus();
        onKeyTyped(key);
    };
    addRow(u"API Key"_s, m_key);
    m_status = makeSmallPrint();
    m_failureText = makeSmallPrint();
    form().keepText([this] {
        setTone(*m_status, engineEntry(m_engine).requiresKey ? Tone::Warning : Tone::Good);
        m_status->setText(form().text(engineEntry(m_engine).requiresKey
                                          ? u"⚠️ API Key 為空，將無法進行翻譯！"_s
                                          : u"✓ 將使用 Google 免費版（有流量與請求頻率限制）"_s));
        showFailure(m_failure);
    });
    addRemark(m_status);
    addRemark(m_failureText)->hide();
    showKeyStatus();
}

QString EngineSection::key() const
{
    return m_key ? m_key->key() : QString();
}

void EngineSection::setStoredKey(const QString &key, const std::optional<Failure> &failure)
{
    if (!m_key)
        return;
    m_isLoaded = true;
    m_key->setStoredKey(key);
    showKeyStatus();
    // A typed key has been saved since, and an optional one isn't missed.
    if (!m_key->wasTyped())
        showFailure(engineEntry(m_engine).requiresKey ? failure : std::nullopt);
}

void EngineSection::setSaved(const Result<void> &saved)
{
    if (m_key)
        showFailure(saved ? std::nullopt : std::optional(saved.error()));
}

void EngineSection::showFailure(const std::optional<Failure> &failure)
{
    m_failure = failure;
    setTone(*m_failureText, Tone::Bad);
    m_failureText->setText(failure ? form().text(keychainAdvice(*failure)) : QString());
    if (QWidget *row = m_failureText->parentWidget())
        row->setVisible(failure.has_value());
}

void EngineSection::showKeyStatus()
{
    m_status->parentWidget()->setVisible(m_isLoaded && key().isEmpty());
}

bool EngineSection::isComplete() const
{
    if (engineEntry(m_engine).requiresKey && key().trimmed().isEmpty())
        return false;
    const EngineForm &needs = engineForm(m_engine);
    for (const auto &[label, setting] : needs.fields) {
        if (needs.areFieldsNeeded && form().services().settings.read(setting).trimmed().isEmpty())
            return false;
    }
    return true;
}

} // namespace lucentra
