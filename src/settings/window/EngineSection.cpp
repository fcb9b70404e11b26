#include "EngineSection.h"

#include "KeyField.h"
#include "SettingsForm.h"
#include "SettingsStore.h"
#include "StoredAPIKeys.h"

#include <QLabel>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace lucentra {

EngineSection::EngineSection(SettingsForm &form, TranslationEngine engine)
    : FormSection(form, engineEntry(engine).formTitle.toString())
    , m_engine(engine)
{
    if (!engineEntry(engine).account.isEmpty())
        addKeyRows();
    for (const EngineField &field : engineEntry(engine).fields)
        addField(field.label.toString(), stored<QString>(field.setting));
    for (const QStringView footer : engineEntry(engine).formFooters)
        addFooter(footer.toString());
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
    // Not if a typed key has been saved since, or if the key is optional.
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
    m_failureText->setText(failure ? keychainAdvice(*failure, [this](const QString &key) { return form().text(key); }) : QString());
    if (QWidget *row = m_failureText->parentWidget())
        row->setVisible(failure.has_value());
}

void EngineSection::showKeyStatus()
{
    m_status->parentWidget()->setVisible(m_isLoaded && key().isEmpty());
}

bool EngineSection::isComplete() const
{
    const EngineEntry &entry = engineEntry(m_engine);
    if (entry.requiresKey && key().trimmed().isEmpty())
        return false;
    const SettingsStore &store = form().services().settings;
    return !entry.areFieldsRequired ||
           std::none_of(entry.fields.begin(), entry.fields.end(),
                        [&](const EngineField &field) { return store.read(field.setting).trimmed().isEmpty(); });
}

} // namespace lucentra
