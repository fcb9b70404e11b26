#include "SettingsStore.h"

#include "PreferencesFile.h"
#include "PrivateFile.h"
#include "RequestedTask.h"

#include <QFileInfo>
#include <QFileSystemWatcher>
#include <QJsonObject>
#include <QStandardPaths>

#include <mutex>
#include <utility>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

/// Applies the setting's rule for stored numbers. `number` is 0 for a stored value of another type.
template <typename Value>
Value numberOf(const QJsonValue &stored, const Setting<Value> &setting, Value number)
{
    if (stored.isUndefined() || (setting.numbers == StoredNumbers::PositiveOnly && !(number > 0)))
        return setting.defaultValue;
    return number;
}

} // namespace

/// The values that hide those of the file, and the thread that writes them.
class SettingsStore::State
{
public:
    State(const QString &filePath, DiagnosticLine diagnostics)
        : m_file(filePath, std::move(diagnostics))
        , m_announced(m_file.values())
    {
    }

    ~State() { flush(false); }

    /// Overrides come first, then values that are not written yet, then the file.
    QJsonValue value(const QString &key)
    {
        const std::lock_guard lock(m_mutex);
        return valueIn(m_file.values(), key);
    }

    /// Returns which of the keys (of all keys if none is given) have changed since the last call.
    QStringList newsOf(const QStringList &keys = {})
    {
        const std::lock_guard lock(m_mutex);
        const QJsonObject file = m_file.values();
        QStringList candidates = keys;
        if (keys.isEmpty()) {
            candidates = file.keys() + m_announced.keys();
            candidates.removeDuplicates();
        }
        candidates.removeIf([&](const QString &key) { return valueIn(file, key) == m_announced.value(key); });
        for (const QString &key : std::as_const(candidates))
            m_announced.insert(key, valueIn(file, key));
        return candidates;
    }

    const QString &path() const { return m_file.path(); }

    void change(const QString &key, const QJsonValue &newValue)
    {
        const std::lock_guard lock(m_mutex);
        m_unsaved.insert(key, newValue);
        m_writer.request();
    }

    void putInFront(const QString &key, const QJsonValue &newValue)
    {
        const std::lock_guard lock(m_mutex);
        m_overrides.insert(key, newValue);
    }

    void flush(bool isUrgent)
    {
        if (isUrgent)
            m_file.hurry();
        m_writer.wait();
    }

private:
    QJsonValue valueIn(const QJsonObject &file, const QString &key) const
    {
        if (const auto found = m_overrides.constFind(key); found != m_overrides.cend())
            return found.value();
        if (const auto found = m_unsaved.constFind(key); found != m_unsaved.cend())
            return found.value();
        return file.value(key);
    }

    void write()
    {
        std::unique_lock lock(m_mutex);
        const auto saved = m_unsaved;
        lock.unlock();
        if (!m_file.apply(saved))
            return;
        lock.lock();
        m_unsaved.removeIf([&](const auto &change) { // but not values that were changed again meanwhile
            return saved.contains(change.key()) && saved.value(change.key()) == change.value();
        });
    }

    PreferencesFile m_file;
    std::mutex m_mutex;                   // guards the rest
    QHash<QString, QJsonValue> m_unsaved; // `Undefined`: to be removed
    QHash<QString, QJsonValue> m_overrides;
    QJsonObject m_announced; // the values that observers know
    RequestedTask m_writer{[this] { write(); }};
};

SettingsStore::SettingsStore(const QString &filePath, DiagnosticLine diagnostics)
    : m_state(std::make_unique<State>(filePath, std::move(diagnostics)))
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
    change(key, QJsonValue(QJsonValue::Undefined));
}

QJsonValue SettingsStore::value(const QString &key) const
{
    return m_state->value(key);
}

void SettingsStore::setValue(const QString &key, const QJsonValue &newValue)
{
    if (!key.isEmpty() && !newValue.isUndefined())
        change(key, newValue);
}

void SettingsStore::change(const QString &key, const QJsonValue &newValue)
{
    m_state->change(key, newValue);
    if (!m_state->newsOf({key}).isEmpty())
        Q_EMIT changed(key);
}

void SettingsStore::followFile()
{
    const QString &path = m_state->path();
    createFolderOf(path);
    auto *watcher = new QFileSystemWatcher({QFileInfo(path).path(), path}, this);
    const auto look = [this, watcher, &path] {
        // Another file may have this name now, while the watcher still watches the old one.
        watcher->removePath(path);
        if (QFileInfo::exists(path))
            watcher->addPath(path);
        for (const QString &key : m_state->newsOf())
            Q_EMIT changed(key);
    };
    // The folder reports that the program has replaced the file, the file that an editor has written into it.
    connect(watcher, &QFileSystemWatcher::directoryChanged, this, look);
    connect(watcher, &QFileSystemWatcher::fileChanged, this, look);
}

void SettingsStore::flush(bool isUrgent)
{
    m_state->flush(isUrgent);
}

void SettingsStore::setOverride(const QString &key, const QJsonValue &newValue)
{
    if (!key.isEmpty())
        m_state->putInFront(key, newValue);
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
