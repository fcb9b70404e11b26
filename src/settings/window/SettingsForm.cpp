#include "SettingsForm.h"

#include "LocalizationManager.h"
#include "NotificationCenter.h"

#include <QFileInfo>

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
    // The program replaces the file as a whole, which only its folder tells of; an editor may write into it.
    m_watcher.addPath(QFileInfo(services.settingsFile).path());
    m_watcher.addPath(services.settingsFile);
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, [this] { followFile(); });
    connect(&m_watcher, &QFileSystemWatcher::fileChanged, this, [this] { followFile(); });
}

void SettingsForm::followFile()
{
    // Another file may stand there now under the same name, and the old one still be watched.
    m_watcher.removePath(m_services.settingsFile);
    if (QFileInfo::exists(m_services.settingsFile))
        m_watcher.addPath(m_services.settingsFile);
    refreshValues();
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
    if (onRefreshed)
        onRefreshed();
}

void SettingsForm::refreshValues()
{
    for (const auto &apply : m_values)
        apply();
    if (onRefreshed)
        onRefreshed();
}

void SettingsForm::followInterfaceLanguage()
{
    if (const auto code = m_services.texts.syncTargetLanguage())
        m_services.notifications.post(notifications::targetLanguageChanged, *code);
}

} // namespace lucentra
