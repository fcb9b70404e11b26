#pragma once

#include "DiagnosticLine.h"
#include "Setting.h"

#include <QHash>
#include <QJsonValue>
#include <QString>

#include <memory>
#include <type_traits>

namespace lucentra {

/// All settings, as flat pairs of a key and a value in one JSON file of the user.
///
/// A value is read from the file at the moment it is asked for, so that several processes see each other's changes.
/// What is written counts at once within the process; a thread of the store brings it to the file (within
/// milliseconds, several changes together), so that nobody waits for the disk. Processes never lose each other's keys,
/// and keys that nobody knows survive. The file is replaced as a whole and readable by its owner alone (0600, a folder
/// made for it 0700).
///
/// A key is present or absent. Reading an absent one gives the setting's default. A stored value of another type reads
/// as the type's zero value (0, 0.0, false), a text as the default; whole numbers and fractional ones are one type,
/// booleans another.
///
/// The store never fails visibly. A file that is no JSON object is kept aside as "preferences.unreadable-<time>.json"
/// beside it, and the store starts empty. What can't be written (a read-only folder, a full disk) holds for this
/// process and goes out with the next change. Either is one diagnostic line that names the file, never its content.
///
/// Every operation may be called from any thread.
class SettingsStore
{
public:
    /// The store over one file, which need not exist, nor its folder.
    explicit SettingsStore(const QString &filePath, DiagnosticLine diagnostics = {});
    /// Waits until what was written is in the file.
    ~SettingsStore();
    SettingsStore(const SettingsStore &) = delete;
    SettingsStore &operator=(const SettingsStore &) = delete;

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
        setValue(setting.key, QJsonValue(newValue));
    }

    /// Puts a value in front of the stored one for the life of this store; it is never written. A later `write` goes to
    /// the file but stays behind it.
    template <typename Value>
    void overrideForThisProcess(const Setting<Value> &setting, const std::type_identity_t<Value> &newValue)
    {
        setOverride(setting.key, QJsonValue(newValue));
    }

    /// True when the key holds a value of any type, also in front of the file; a default is none.
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

    /// The raw value of any key, `Undefined` where it is absent. For keys that are no settings of the table.
    QJsonValue value(const QString &key) const;
    /// Stores a raw value; an empty key or an `Undefined` value is dropped.
    void setValue(const QString &key, const QJsonValue &newValue);

    /// Waits until what was written so far is in the file, or could not be brought there.
    void flush();

private:
    void setOverride(const QString &key, const QJsonValue &newValue);

    static bool interpret(const QJsonValue &stored, const Setting<bool> &setting);
    static qint64 interpret(const QJsonValue &stored, const Setting<qint64> &setting);
    static double interpret(const QJsonValue &stored, const Setting<double> &setting);
    static QString interpret(const QJsonValue &stored, const Setting<QString> &setting);

    class State;
    const std::unique_ptr<State> m_state;
};

} // namespace lucentra
