#pragma once

#include "Callback.h"
#include "Setting.h"

#include <QJsonValue>
#include <QObject>
#include <QString>

#include <concepts>
#include <memory>
#include <type_traits>
#include <utility>

namespace lucentra {

/// All settings as key/value pairs in one JSON file of the user.
///
/// Values are read from the file on each access, so that processes see each other's changes. A written value is visible
/// in this process at once; a thread of the store writes it to the file within milliseconds, several changes together,
/// so that callers never wait for the disk. Processes never lose each other's keys, and unknown keys are kept. The file
/// is replaced atomically and has mode 0600; a folder that is created for it has mode 0700.
///
/// Reading an absent key returns the setting's default. If the stored value has another type, numbers and booleans read
/// as 0, 0.0 or false, and texts as the default. Whole and fractional numbers are one type.
///
/// The store has no visible failures. A file that isn't a JSON object is renamed to
/// "preferences.unreadable-<time>.json", and the store starts empty. Changes that can't be written (a read-only folder,
/// a full disk) are valid for this process and are written with the next change. Both are logged with the file's name,
/// never with its content.
///
/// Every operation but `followFile` may be called on any thread.
class SettingsStore : public QObject
{
    Q_OBJECT

public:
    /// Uses the given file. Neither the file nor its folder need exist.
    explicit SettingsStore(const QString &filePath, DiagnosticLine diagnostics = {});
    /// Waits until all changes are in the file.
    ~SettingsStore() override;

    /// The user's own file: "lucentra/preferences.json" in $XDG_CONFIG_HOME.
    static QString userFilePath();

    template <typename Value>
    Value read(const Setting<Value> &setting) const
    {
        return interpret(value(setting.key), setting);
    }

    template <typename Value>
    void write(const Setting<Value> &setting, const std::type_identity_t<Value> &newValue)
    {
        setValue(setting.key, jsonOf(newValue));
    }

    /// Overrides the stored value for the lifetime of this store, without writing it. A later `write` changes the file
    /// but not the override.
    template <typename Value>
    void overrideForThisProcess(const Setting<Value> &setting, const std::type_identity_t<Value> &newValue)
    {
        setOverride(setting.key, jsonOf(newValue));
    }

    /// Whether the key has a value of any type, stored or overridden. A default doesn't count.
    bool contains(const QString &key) const;
    template <typename Value>
    bool contains(const Setting<Value> &setting) const
    {
        return contains(QString(setting.key));
    }

    void remove(const QString &key);
    template <typename Value>
    void remove(const Setting<Value> &setting)
    {
        remove(QString(setting.key));
    }

    /// The raw value of a key, `Undefined` if it is absent. For keys that have no `Setting`.
    QJsonValue value(const QString &key) const;
    /// Stores a raw value. Ignores an empty key and an `Undefined` value.
    void setValue(const QString &key, const QJsonValue &newValue);

    /// Waits until all changes so far are in the file, or writing them has failed. `isUrgent`: a process that keeps the
    /// file locked is waited for half a second at most, and the file is written all the same.
    void flush(bool isUrgent = false);

    /// Calls after each change of the setting until the context is destroyed, in the context's thread. The callback
    /// takes the new value, or nothing.
    template <typename Value, typename Callback>
    void observe(const Setting<Value> &setting, QObject *context, Callback callback) const
    {
        connect(this, &SettingsStore::changed, context,
                [store = this, setting, callback = std::move(callback)](const QString &key) mutable {
                    if (key != setting.key)
                        return;
                    if constexpr (std::invocable<Callback, Value>)
                        callback(store->read(setting));
                    else
                        callback();
                    Q_UNUSED(store) // without a value
                });
    }
    template <typename Value, typename Callback>
    void observe(const Notification<Value> &notification, QObject *context, Callback callback) const
    {
        observe(notification.setting, context, std::move(callback));
    }

    /// From now on, changes that others make to the file are announced too. Call it on the main thread.
    void followFile();

Q_SIGNALS:
    /// The key's value has become another one, by a write (emitted on its thread) or in the file.
    void changed(const QString &key);

private:
    template <typename Value>
    static QJsonValue jsonOf(const Value &value)
    {
        if constexpr (std::is_enum_v<Value>)
            return qint64(value);
        else
            return value;
    }
    void change(const QString &key, const QJsonValue &newValue);
    void setOverride(const QString &key, const QJsonValue &newValue);

    static bool interpret(const QJsonValue &stored, const Setting<bool> &setting);
    static qint64 interpret(const QJsonValue &stored, const Setting<qint64> &setting);
    static double interpret(const QJsonValue &stored, const Setting<double> &setting);
    static QString interpret(const QJsonValue &stored, const Setting<QString> &setting);
    template <typename Enumeration>
    static Enumeration interpret(const QJsonValue &stored, const Setting<Enumeration> &setting)
    {
        const auto number = interpret(stored, Setting<qint64>{setting.key, qint64(setting.defaultValue)});
        return number >= 0 && number <= qint64(Enumeration::last) ? Enumeration(number) : setting.defaultValue;
    }

    class State;
    const std::unique_ptr<State> m_state;
};

} // namespace lucentra
