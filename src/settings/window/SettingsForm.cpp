#include "SettingsForm.h"

#include "LocalizationManager.h"
#include "NotificationCenter.h"

#include <utility>

namespace lucentra {

SettingsForm::SettingsForm(const SettingsServices &services, QObject *parent)
    : QObject(parent)
    , m_services(services)
{
    NotificationCenter &center = services.notifications;
    center.observe(notifications::appLanguageDidChange, this, [this](const QVariant &) {
        refreshTexts();
        refreshValues();
    });
    // What is told of must not wait for the file.
    for (const QLatin1StringView name :
         {notifications::targetLanguageChanged, notifications::translationClickGestureChanged,
          notifications::updateNeonBorder, notifications::updateGlassOpacity, notifications::updateGlobalHotkey})
        center.observe(name, this, [this](const QVariant &) { refreshValues(); });
    // The file is replaced as a whole, which only its folder tells of.
    m_watcher.addPath(services.settingsFolder);
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, [this] { refreshValues(); });
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
}

void SettingsForm::refreshValues()
{
    for (const auto &apply : m_values)
        apply();
}

void SettingsForm::followInterfaceLanguage()
{
    if (const auto code = m_services.texts.syncTargetLanguage())
        m_services.notifications.post(notifications::targetLanguageChanged, *code);
}

} // namespace lucentra
