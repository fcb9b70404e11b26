#pragma once

#include <QString>

namespace lucentra {

/// A setting: its key, its type (`bool`, `int`, `double` or `QString`) and the value in force while nothing is stored.
template <typename Value>
struct Setting;

/// DRAFT of the interface that other folders may rely on; see the store's own description.
class SettingsStore
{
public:
    /// The store over one file; it is read now. A broken file is kept aside and the store starts empty.
    explicit SettingsStore(const QString &filePath);
    ~SettingsStore();

    /// The stored value, or the setting's default where the key is absent or of another type.
    template <typename Value>
    auto read(const Setting<Value> &setting) const;
    template <typename Value>
    void write(const Setting<Value> &setting, const Value &value);

    bool contains(const QString &key) const;
    void remove(const QString &key);

    /// Puts a value in front of the stored one for this process only; never written to the file.
    template <typename Value>
    void overrideForThisProcess(const Setting<Value> &setting, const Value &value);
};

} // namespace lucentra
