#pragma once

#include <QLatin1StringView>
#include <QString>
#include <QStringView>

#include <concepts>
#include <type_traits>

namespace lucentra {

template <typename Value>
concept SettingValue = std::same_as<Value, QString> || std::same_as<Value, qint64> || std::same_as<Value, double> ||
    std::same_as<Value, bool> || std::is_enum_v<Value>;

/// The type of a setting's default: a view for texts, else the value's own type.
template <SettingValue Value>
struct SettingDefault
{
    using Type = Value;
};
template <>
struct SettingDefault<QString>
{
    using Type = QStringView;
};

/// Which stored numbers are valid.
enum class StoredNumbers { All, PositiveOnly };

/// A setting: its key, its type and the default. With `PositiveOnly` the default also applies if the stored number is
/// not greater than 0. An enumeration is stored as a number from 0 to its `last`; the default applies to all others.
template <SettingValue Value>
struct Setting
{
    QLatin1StringView key;
    typename SettingDefault<Value>::Type defaultValue{};
    StoredNumbers numbers = StoredNumbers::All;
};

/// The name under which the change of a setting is announced.
template <SettingValue Value>
struct Notification
{
    QLatin1StringView name;
    Setting<Value> setting;
};

} // namespace lucentra
