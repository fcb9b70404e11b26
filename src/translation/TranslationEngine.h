#pragma once

#include <QLatin1StringView>
#include <QString>
#include <QStringList>
#include <QStringView>

#include <array>
#include <optional>

namespace lucentra {

class LocalizationManager;

/// The translation engines. The numbers are stored in settings and are part of the consent keys; they never change.
enum class TranslationEngine {
    apple = 0,     ///< on-device translation
    free = 1,      ///< Google: keyless, or Cloud Translation where its key is stored
    microsoft = 2, ///< Microsoft Translator
    customAPI = 3, ///< Google Gemini
    deepl = 4,
    openAI = 5,
    anthropic = 6,
    compatible = 7, ///< any endpoint with OpenAI's chat completions
};

/// One engine's row of the catalogue: all that tells it from the others besides its client.
struct EngineEntry
{
    TranslationEngine engine;
    QStringView serviceName;     ///< where its text goes; empty where it stays on the machine
    QLatin1StringView account;   ///< of its API key in the keychain
    bool requiresKey;            ///< otherwise it works without one, too
    QStringView label;           ///< its name in the error for a missing key, and that error's domain
    QStringView missingKeyText;  ///< what a pass says then: a pattern for the label, or the whole sentence
    QStringView missingKeyReply; ///< what typed text is answered with then
};

/// All engines in the order of their numbers.
const std::array<EngineEntry, 8> &engineCatalogue();
const EngineEntry &engineEntry(TranslationEngine engine);

/// The engine with a stored number; nothing where none has it.
std::optional<TranslationEngine> translationEngine(qint64 rawValue);

/// The service to which the engine sends text, as users are told when they are asked for their consent; nothing for
/// the on-device engine.
std::optional<QString> remoteProviderName(TranslationEngine engine, const LocalizationManager &texts);

/// A service's label as it stands before the word "API", which a label may end in itself ("相容 API").
QString labelBeforeAPI(const QString &label);

/// The accounts of all API keys, in the order in which they are read.
QStringList apiKeyAccounts();

} // namespace lucentra
