#pragma once

#include <QLatin1StringView>
#include <QObject>
#include <QVariant>

#include <functional>

namespace lucentra {

/// Posts named notifications to their observers.
class NotificationCenter : public QObject
{
    Q_OBJECT

public:
    /// The function of an observer. The value is that of the notification, invalid if it has none.
    using Callback = std::function<void(const QVariant &value)>;

    /// Calls the observers of the name in the order of their registration.
    void post(QLatin1StringView name, const QVariant &value = {});

    /// Observes a name until the context is destroyed. A callback may post, observe and destroy its context.
    void observe(QLatin1StringView name, QObject *context, Callback callback);

Q_SIGNALS:
    void posted(QLatin1StringView name, const QVariant &value);
};

/// The names, and the type of their values.
namespace notifications {

using namespace Qt::StringLiterals;

inline constexpr auto targetLanguageChanged = "TargetLanguageChanged"_L1;                   ///< QString: the new code
inline constexpr auto translationClickGestureChanged = "TranslationClickGestureChanged"_L1; ///< qint64: the new value
inline constexpr auto updateNeonBorder = "UpdateNeonBorder"_L1;                             ///< none
inline constexpr auto updateGlassOpacity = "UpdateGlassOpacity"_L1;                         ///< none
inline constexpr auto updateGlobalHotkey = "UpdateGlobalHotkey"_L1;                         ///< none
inline constexpr auto appLanguageDidChange = "AppLanguageDidChange"_L1;                     ///< none

} // namespace notifications

} // namespace lucentra
