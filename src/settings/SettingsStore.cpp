#include "SettingsStore.h"

#include "PreferencesFile.h"

#include <QJsonObject>
#include <QStandardPaths>

#include <mutex>
#include <utility>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

/// The setting's rule for stored numbers; `nothing` is what a value of another type reads as.
template <typename Value>
Value numberOf(const QJsonValue &stored, const Setting<Value> &setting, Value number)
{
    if (stored.isUndefined() || (setting.numbers == StoredNumbers::PositiveOnly && !(number > 0)))
        return setting.defaultValue;
    return number;
}

} // namespace

struct SettingsStore::State
{
    /// Nearest to the reader first: what this process put in front, what could not be written yet, the file.
    QJsonValue value(const QString &key)
    {
        if (const auto found = overrides.constFind(key); found != overrides.cend())
            return found.value();
        if (const auto found = unsaved.constFind(key); found != unsaved.cend())
            return found.value();
        return file.values().value(key);
    }

    void change(const QString &key, const QJsonValue &newValue)
    {
        unsaved.insert(key, newValue);
        if (file.apply(unsaved))
            unsaved.clear();
    }

    std::mutex mutex; // guards everything below
    PreferencesFile file;
    QHash<QString, QJsonValue> unsaved; // `Undefined`: to be removed
    QHash<QString, QJsonValue> overrides;
};

SettingsStore::SettingsStore(const QString &filePath, DiagnosticLine diagnostics)
    : m_state(new State{.file = PreferencesFile(filePath, std::move(diagnostics))})
{
}

SettingsStore::~SettingsStore() = default;

QString SettingsStore::userFilePath()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + u"/lucentra/preferences.json"_s;
}

bool SettingsStore::contains(const QString &key) const
{
    return !value(key).isUndefined();
}

void SettingsStore::remove(const QString &key)
{
    const std::lock_guard lock(m_state->mutex);
    m_state->change(key, QJsonValue(QJsonValue::Undefined));
}

QJsonValue SettingsStore::value(const QString &key) const
{
    const std::lock_guard lock(m_state->mutex);
    return m_state->value(key);
}

void SettingsStore::setValue(const QString &key, const QJsonValue &newValue)
{
    if (key.isEmpty() || newValue.isUndefined())
        return;
    const std::lock_guard lock(m_state->mutex);
    m_state->change(key, newValue);
}

void SettingsStore::setOverride(const QString &key, const QJsonValue &newValue)
{
    if (key.isEmpty())
        return;
    const std::lock_guard lock(m_state->mutex);
    m_state->overrides.insert(key, newValue);
}

bool SettingsStore::interpret(const QJsonValue &stored, const Setting<bool> &setting)
{
    return stored.isUndefined() ? setting.defaultValue : stored.toBool(false);
}

qint64 SettingsStore::interpret(const QJsonValue &stored, const Setting<qint64> &setting)
{
    return numberOf(stored, setting, stored.toInteger(0));
}

double SettingsStore::interpret(const QJsonValue &stored, const Setting<double> &setting)
{
    return numberOf(stored, setting, stored.toDouble(0));
}

QString SettingsStore::interpret(const QJsonValue &stored, const Setting<QString> &setting)
{
    return stored.isString() ? stored.toString() : setting.defaultValue.toString();
}

} // namespace lucentra
