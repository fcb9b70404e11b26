#include "SettingsForm.h"

#include "LocalizationManager.h"
#include "SettingsStore.h"

#include <utility>

namespace lucentra {

SettingsForm::SettingsForm(const SettingsServices &services)
    : m_services(services)
{
    services.texts.observeLanguage(this, [this] { refreshTexts(); });
    connect(&services.settings, &SettingsStore::changed, this, [this] { refreshValues(); });
}

QString SettingsForm::text(const QString &key) const
{
    return m_services.texts.localized(key);
}

void SettingsForm::keepText(std::function<void()> apply)
{
    apply();
    m_texts.push_back(std::move(apply));
}

void SettingsForm::keepValue(std::function<void()> apply)
{
    apply();
    m_values.push_back(std::move(apply));
}

void SettingsForm::refreshTexts()
{
    for (const auto &apply : m_texts)
        apply();
    onRefreshed();
}

void SettingsForm::refreshValues()
{
    for (const auto &apply : m_values)
        apply();
    onRefreshed();
}

} // namespace lucentra
