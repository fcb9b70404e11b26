#pragma once

#include <QLatin1StringView>
#include <QObject>
#include <QVariant>

#include <functional>

namespace lucentra {

/// Tells whoever observes a name that something happened under it. Main thread only.
class NotificationCenter : public QObject
{
    Q_OBJECT

public:
    /// What an observer runs; the value is the notification's own, invalid where it has none.
    using Callback = std::function<void(const QVariant &value)>;

    /// Runs the callbacks of the name before it returns, in the order in which they began to observe.
    void post(QLatin1StringView name, const QVariant &value = {});

    /// Observes a name until the context is destroyed. A callback may post, observe and destroy its own context.
    void observe(QLatin1StringView name, QObject *context, Callback callback);

Q_SIGNALS:
    void posted(QLatin1StringView name, const QVariant &value);
};

/// The names, with the value that comes along.
namespace notifications {

using namespace Qt::StringLiterals;

inline constexpr auto targetLanguageChanged = "TargetLanguageChanged"_L1;                   ///< the new code, a text
inline constexpr auto translationClickGestureChanged = "TranslationClickGestureChanged"_L1; ///< the new number
inline constexpr auto updateNeonBorder = "UpdateNeonBorder"_L1;                             ///< nothing
inline constexpr auto updateGlassOpacity = "UpdateGlassOpacity"_L1;                         ///< nothing
inline constexpr auto updateGlobalHotkey = "UpdateGlobalHotkey"_L1;                         ///< nothing
inline constexpr auto appLanguageDidChange = "AppLanguageDidChange"_L1;                     ///< nothing

} // namespace notifications

} // namespace lucentra
