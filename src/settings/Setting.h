#pragma once

#include <QLatin1StringView>
#include <QString>
#include <QStringView>

#include <concepts>

namespace lucentra {

template <typename Value>
concept SettingValue = std::same_as<Value, QString> || std::same_as<Value, qint64> || std::same_as<Value, double> ||
    std::same_as<Value, bool>;

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

/// A setting: its key, its type (`QString`, `qint64`, `double` or `bool`) and the default. With `PositiveOnly` the
/// default also applies if the stored number is not greater than 0.
template <SettingValue Value>
struct Setting
{
    QLatin1StringView key;
    typename SettingDefault<Value>::Type defaultValue{};
    StoredNumbers numbers = StoredNumbers::All;
};

} // namespace lucentra
