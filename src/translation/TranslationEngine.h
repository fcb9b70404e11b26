#pragma once

#include "Setting.h"

#include <QLatin1StringView>
#include <QList>
#include <QString>
#include <QStringList>
#include <QStringView>

#include <array>
#include <optional>

namespace lucentra {

class LocalizationManager;

/// The translation engines. Their numbers are stored in the settings and part of the consent keys, and never change.
enum class TranslationEngine {
    apple = 0,     ///< on-device translation
    free = 1,      ///< Google: keyless, or Cloud Translation if its key is stored
    microsoft = 2, ///< Microsoft Translator
    customAPI = 3, ///< Google Gemini
    deepl = 4,
    openAI = 5,
    anthropic = 6,
    compatible = 7, ///< any endpoint with OpenAI's chat completions
};

/// What an engine is asked for, with its settings at the moment of the call.
struct EngineRequest
{
    TranslationEngine engine = TranslationEngine::apple;
    QStringList texts;
    QString target;       ///< code of the target language
    bool isTyped = false; ///< there is one text, typed by the user, to be translated dictionary-style
    QString key{};        ///< trimmed; empty if there is none
    QString model{};      ///< of a language model
    QString baseUrl{};    ///< of an endpoint of the user's own, as entered
    QString region{};
};

/// A setting of an engine besides its key.
struct EngineField
{
    QStringView label; ///< text key
    Setting<QString> setting;
    QString EngineRequest::*value; ///< where a request has it
};

/// One engine's row of the catalogue. Texts are text keys unless they are names.
struct EngineEntry
{
    TranslationEngine engine;
    QStringView name;                 ///< in the list of engines
    QStringView serviceName{};        ///< the receiver of its texts; empty if they stay on this computer
    QLatin1StringView account{};      ///< of its API key in the keychain
    bool requiresKey = true;          ///< if false, it works without one, too
    QStringView label{};              ///< name in the error for a missing key, and that error's domain
    QStringView missingKeyText = u"請至設定填入 %@ API Key"; ///< a pattern for the label, or the whole sentence
    QStringView missingKeyReply{};    ///< the answer to typed text; empty: that sentence with a sign
    QStringView formTitle{};          ///< of its section in the settings
    QList<QStringView> formFooters{}; ///< below the fields
    QList<EngineField> fields{};      ///< in the order of the form
    bool areFieldsRequired = false;   ///< empty fields prevent a connection test
};

/// All engines in the order of their numbers.
const std::array<EngineEntry, 8> &engineCatalogue();
const EngineEntry &engineEntry(TranslationEngine engine);

/// The engine with a stored number. Returns nullopt if there is none.
std::optional<TranslationEngine> translationEngine(qint64 rawValue);

/// The name of the service that the engine sends text to, for the question for consent. Returns nullopt for the
/// on-device engine.
std::optional<QString> remoteProviderName(TranslationEngine engine, const LocalizationManager &texts);

/// A service's label for use before the word "API": without that word if the label ends in it ("相容 API").
QString labelBeforeAPI(const QString &label);

/// The accounts of all API keys, in the order in which they are read.
QStringList apiKeyAccounts();

} // namespace lucentra
