#include "SettingsStore.h"

#include "PreferencesFile.h"

#include <QJsonObject>
#include <QStandardPaths>

#include <condition_variable>
#include <mutex>
#include <thread>
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

/// What stands in front of the file, and the thread that brings it there.
class SettingsStore::State
{
public:
    State(const QString &filePath, DiagnosticLine diagnostics)
        : m_file(filePath, std::move(diagnostics))
    {
    }

    ~State()
    {
        {
            const std::lock_guard lock(m_mutex);
            m_isEnding = true;
        }
        m_changed.notify_all();
        if (m_writer.joinable())
            m_writer.join();
    }

    /// Nearest to the reader first: what this process put in front, what is not written yet, the file.
    QJsonValue value(const QString &key)
    {
        const std::lock_guard lock(m_mutex);
        if (const auto found = m_overrides.constFind(key); found != m_overrides.cend())
            return found.value();
        if (const auto found = m_unsaved.constFind(key); found != m_unsaved.cend())
            return found.value();
        return m_file.values().value(key);
    }

    void change(const QString &key, const QJsonValue &newValue)
    {
        const std::lock_guard lock(m_mutex);
        m_unsaved.insert(key, newValue);
        ++m_changeCount;
        if (!m_writer.joinable())
            m_writer = std::thread([this] { write(); });
        m_changed.notify_all();
    }

    void putInFront(const QString &key, const QJsonValue &newValue)
    {
        const std::lock_guard lock(m_mutex);
        m_overrides.insert(key, newValue);
    }

    void flush()
    {
        std::unique_lock lock(m_mutex);
        m_changed.wait(lock, [this, wanted = m_changeCount] { return m_triedCount >= wanted; });
    }

private:
    void write()
    {
        std::unique_lock lock(m_mutex);
        for (;;) {
            m_changed.wait(lock, [this] { return m_isEnding || m_triedCount < m_changeCount; });
            if (m_triedCount == m_changeCount)
                return;
            const auto changes = m_unsaved;
            const quint64 count = m_changeCount;
            lock.unlock();
            const bool isSaved = m_file.apply(changes);
            lock.lock();
            if (isSaved)
                forget(changes);
            m_triedCount = count;
            m_changed.notify_all();
        }
    }

    /// What was changed again meanwhile stays.
    void forget(const QHash<QString, QJsonValue> &saved)
    {
        for (auto change = saved.begin(); change != saved.end(); ++change) {
            const auto found = m_unsaved.constFind(change.key());
            if (found != m_unsaved.cend() && found.value() == change.value())
                m_unsaved.erase(found);
        }
    }

    PreferencesFile m_file;
    std::mutex m_mutex;                   // guards the rest
    QHash<QString, QJsonValue> m_unsaved; // `Undefined`: to be removed
    QHash<QString, QJsonValue> m_overrides;
    quint64 m_changeCount = 0;
    quint64 m_triedCount = 0; // how many of the changes were written, or could not be
    bool m_isEnding = false;
    std::condition_variable m_changed;
    std::thread m_writer; // started by the first change
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
    m_state->change(key, QJsonValue(QJsonValue::Undefined));
}

QJsonValue SettingsStore::value(const QString &key) const
{
    return m_state->value(key);
}

void SettingsStore::setValue(const QString &key, const QJsonValue &newValue)
{
    if (!key.isEmpty() && !newValue.isUndefined())
        m_state->change(key, newValue);
}

void SettingsStore::flush()
{
    m_state->flush();
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
