#pragma once

#include "Setting.h"

#include <array>

namespace lucentra {

/// When the pane translates by itself.
enum class TriggerMode {
    AfterMoving, ///< after it was moved or resized
    Manual,      ///< never: only on a click, a button or the hotkey
    last = Manual
};

/// What on the pane translates.
enum class ClickGesture { SingleClick, DoubleClick, last = DoubleClick };

/// What is translated at a time.
enum class TextUnit { Line, Paragraph, last = Paragraph };

/// The ground of the translations on the pane, and with it the colour of their letters.
enum class GlassTone {
    Dark,  ///< white letters
    Light, ///< dark letters
    last = Light
};

} // namespace lucentra

/// The keys and defaults of all settings.
namespace lucentra::settings {

using namespace Qt::StringLiterals;

// Interface and languages

/// Raw value of an `AppLanguage`; an unknown text counts as "system".
inline constexpr Setting<QString> appLanguage{"appLanguage"_L1, u"system"};
/// Code of the language that translations are made into.
inline constexpr Setting<QString> targetLanguageCode{"targetLanguageCode"_L1, u"zh-Hant"};
/// The target language is derived from the interface language and rewritten whenever that changes.
inline constexpr Setting<bool> targetLanguageFollowsInterface{"targetLanguageFollowsInterface"_L1, true};

// Engines

/// Raw value of a `TranslationEngine`; a value outside 0 to 7 counts as no engine.
inline constexpr Setting<qint64> translationEngine{"translationEngine"_L1, 0};
/// Region name sent with requests to Microsoft Translator.
inline constexpr Setting<QString> microsoftApiRegion{"microsoftApiRegion"_L1, u"global"};
inline constexpr Setting<QString> openAIModel{"openAIModel"_L1, u"gpt-5.6-luna"};
inline constexpr Setting<QString> anthropicModel{"anthropicModel"_L1, u"claude-sonnet-4-6"};
/// Base URL of the OpenAI-compatible chat-completions endpoint. The default is a public routing service.
inline constexpr Setting<QString> compatibleBaseURL{"compatibleBaseURL"_L1, u"https://openrouter.ai/api/v1"};
inline constexpr Setting<QString> compatibleModel{"compatibleModel"_L1, u"~openai/gpt-latest"};

/// Where the list of translation models comes from: a collection of records of a Remote Settings server.
inline constexpr Setting<QString> modelRegistryURL{
    "modelRegistryURL"_L1,
    u"https://firefox.settings.services.mozilla.com/v1/buckets/main/collections/translations-models-v2/records"};
/// Where the files of models come from; the places that the list has are appended.
inline constexpr Setting<QString> modelFilesURL{"modelFilesURL"_L1,
                                                u"https://firefox-settings-attachments.cdn.mozilla.net/"};

/// The consent to send text to a remote engine, given by its raw value (1 to 7). For any other value the setting has no
/// key, reads as false and drops writes.
constexpr Setting<bool> consentKey(qint64 engineRawValue)
{
    constexpr std::array keys{
        "privacy.remoteTranslation.v1.engine.1"_L1, "privacy.remoteTranslation.v1.engine.2"_L1,
        "privacy.remoteTranslation.v1.engine.3"_L1, "privacy.remoteTranslation.v1.engine.4"_L1,
        "privacy.remoteTranslation.v1.engine.5"_L1, "privacy.remoteTranslation.v1.engine.6"_L1,
        "privacy.remoteTranslation.v1.engine.7"_L1,
    };
    const bool isRemote = engineRawValue >= 1 && engineRawValue <= qint64(keys.size());
    return {isRemote ? keys[size_t(engineRawValue - 1)] : QLatin1StringView(), false};
}

// Triggers

inline constexpr Setting<TriggerMode> triggerMode{"triggerMode"_L1, TriggerMode::AfterMoving};
inline constexpr Setting<ClickGesture> translationClickGesture{"translationClickGesture"_L1, ClickGesture::DoubleClick};

inline constexpr Setting<TextUnit> translationUnit{"translationUnit"_L1, TextUnit::Line};
/// Whether paragraphs have been recommended, which happens once.
inline constexpr Setting<bool> areParagraphsRecommended{"paragraphsRecommended"_L1, false};

/// Which tips of the first minutes need not be shown any more: a sum of `FirstTip` values.
inline constexpr Setting<qint64> firstTipsDone{"firstTipsDone"_L1, 0};

// The screen is followed

/// Whether translations follow what changes beneath the pane.
inline constexpr Setting<bool> isLive{"isLive"_L1, false};
/// How many requests a minute that may cause, 1 to 60.
inline constexpr Setting<qint64> liveRequestsPerMinute{"liveRequestsPerMinute"_L1, 30};

// The pane

/// Border glow: "white", "blue", "pink" or "none".
inline constexpr Setting<QString> neonBorderColor{"neonBorderColor"_L1, u"white"};
/// Opacity of the pane's backdrop, a fraction.
inline constexpr Setting<double> glassOpacity{"glassOpacity"_L1, 0.75, StoredNumbers::PositiveOnly};
/// Size of translated text in points if it is not fitted to its block. The default is that of the pane.
inline constexpr Setting<double> fontSize{"fontSize"_L1, 22, StoredNumbers::PositiveOnly};
/// The same setting with the default that the settings form shows.
inline constexpr Setting<double> fontSizeInForm{fontSize.key, 20};
/// Fit the size of translated text to its source block; otherwise use `fontSize`.
inline constexpr Setting<bool> isFontSizeAuto{"isFontSizeAuto"_L1, true};
inline constexpr Setting<GlassTone> glassTone{"glassTone"_L1, GlassTone::Dark};
/// Font family of translated text. Empty for the one that belongs to the target language, which also draws what the
/// chosen family lacks.
inline constexpr Setting<QString> overlayFontFamily{"overlayFontFamily"_L1, u""};
/// Copy each finished translation to the clipboard.
inline constexpr Setting<bool> autoCopy{"autoCopy"_L1, false};
/// Hide the pane when the application loses the focus.
inline constexpr Setting<bool> autoHide{"autoHide"_L1, false};

// The program's place on the desktop

/// Show the program in the task bar.
inline constexpr Setting<bool> showInDock{"showInDock"_L1, true};
/// Written at every start; nothing reads it.
inline constexpr Setting<bool> isAlwaysOnTop{"isAlwaysOnTop"_L1, false};

/// The user's permissions to capture the screen: the desktop's restore tokens by monitor, as JSON.
inline constexpr Setting<QString> screenShares{"screenShares"_L1, u""};

// The hotkey that shows and hides the pane

/// Virtual key code, its low 16 bits. 17 is the position of the T key.
inline constexpr Setting<qint64> hotkeyCode{"hotkeyCode"_L1, 17};
/// Mask of modifier flags. 0x80000 is Option.
inline constexpr Setting<qint64> hotkeyModifiers{"hotkeyModifiers"_L1, 0x80000};
/// Display form of the whole combination.
inline constexpr Setting<QString> hotkeyString{"hotkeyString"_L1, u"⌥T"};

// The hotkey that switches the following of the screen; none as long as its text is empty

inline constexpr Setting<qint64> liveHotkeyCode{"liveHotkeyCode"_L1, 0};
inline constexpr Setting<qint64> liveHotkeyModifiers{"liveHotkeyModifiers"_L1, 0};
inline constexpr Setting<QString> liveHotkeyString{"liveHotkeyString"_L1, u""};

} // namespace lucentra::settings

/// The changes that have a name of their own; see `SettingsStore::observe`.
namespace lucentra::notifications {

using namespace Qt::StringLiterals;

inline constexpr Notification<QString> targetLanguageChanged{"TargetLanguageChanged"_L1, settings::targetLanguageCode};
inline constexpr Notification<ClickGesture> translationClickGestureChanged{"TranslationClickGestureChanged"_L1,
                                                                           settings::translationClickGesture};
inline constexpr Notification<QString> updateNeonBorder{"UpdateNeonBorder"_L1, settings::neonBorderColor};
inline constexpr Notification<double> updateGlassOpacity{"UpdateGlassOpacity"_L1, settings::glassOpacity};
/// Of the three settings of the hotkey, the text is written last.
inline constexpr Notification<QString> updateGlobalHotkey{"UpdateGlobalHotkey"_L1, settings::hotkeyString};
/// Observe it through `LocalizationManager::observeLanguage`.
inline constexpr Notification<QString> appLanguageDidChange{"AppLanguageDidChange"_L1, settings::appLanguage};

} // namespace lucentra::notifications
