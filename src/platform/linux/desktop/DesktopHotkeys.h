#pragma once

#include "Callback.h"
#include "GlobalHotkeys.h"

#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QMap>
#include <QObject>
#include <QSet>
#include <QStringList>
#include <QVariantMap>

#include <memory>

class QDBusServiceWatcher;

namespace lucentra {

class SessionBus;

/// Hotkeys that belong to the desktop: its portal's global shortcuts, or else KDE Plasma's service. The program only
/// suggests the first keys. The desktop is asked in the background. Until it has answered, and if it offers neither
/// service, another implementation handles the hotkeys.
class DesktopHotkeys : public QObject, public GlobalHotkeys
{
    Q_OBJECT
public:
    /// Without `fallback`, which outlives this object, hotkeys are refused if the desktop has no service for them.
    /// `localized` looks up a text key in the interface language.
    DesktopHotkeys(SessionBus &bus, GlobalHotkeys *fallback, std::function<QString(const QString &)> localized);
    ~DesktopHotkeys() override;

    bool areKeysChosenHere() const override;
    QString keysOfDesktop(HotkeyAction action) const override { return m_descriptions.value(action); }
    std::function<void()> keyDialog() override;
    void setChangeHandler(std::function<void()> changed) override { m_changed = std::move(changed); }
    int registerHotkey(HotkeyAction action, quint32 keyCode, quint32 modifiers) override;
    void unregisterHotkeys() override;
    void setPressedHandler(std::function<void(HotkeyAction)> pressed) override;

private Q_SLOTS:
    void answered(uint code, const QVariantMap &results, const QDBusMessage &message);
    void activated(const QDBusObjectPath &session, const QString &id, qulonglong time, const QVariantMap &options);
    void shortcutsChanged(const QDBusMessage &message);
    void keyPressed(const QString &component, const QString &id, qlonglong time);
    void keysChanged(const QStringList &action, const QList<int> &keys);

private:
    enum class Service { None, Portal, KGlobalAccel };
    struct Keys
    {
        quint32 keyCode;
        quint32 modifiers;
    };

    void ask();
    void askVersion(const QString &service, const QString &interface,
                    std::function<void(const QDBusMessage &reply)> returned);
    void askPortal();
    void askPlasma();
    void ownerChanged(const QString &service, const QString &oldOwner, const QString &newOwner);
    void use(Service service);
    void call(const QString &service, const QString &path, const QString &interface, const QString &method,
              const QVariantList &arguments, std::function<void(const QDBusMessage &reply)> returned = {});
    void callPortal(const QString &method, const QVariantList &arguments);
    void bind();
    void bindInPlasma();
    QVariant shortcutsForPortal() const;
    void takeDescriptions(const QVariant &shortcuts);
    void press(const QString &id);

    SessionBus &m_bus;
    GlobalHotkeys *const m_fallback;
    const std::function<QString(const QString &)> m_localized;
    std::unique_ptr<QDBusServiceWatcher> m_watcher;
    Service m_service = Service::None;
    int m_round = 0; ///< number of times that the desktop was asked; answers to earlier questions are ignored
    QMap<HotkeyAction, Keys> m_wanted;
    QSet<HotkeyAction> m_registered;
    QMap<HotkeyAction, QString> m_descriptions;
    bool m_isBound = false; ///< in the current service
    QString m_session;      ///< of the portal
    uint m_portalVersion = 0;
    Callback<> m_changed;
    std::function<void(HotkeyAction)> m_pressed;
};

} // namespace lucentra
