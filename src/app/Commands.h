#pragma once

#include "CommandLine.h"
#include "Result.h"

#include <QString>

namespace lucentra {

class LocalizationManager;
class Services;

/// What a finished command prints.
struct CommandOutput
{
    QString answer;  ///< for standard output, without the last line break; may be empty
    QString message; ///< for standard error; may be empty
};

// Each function runs one command and runs the event loop meanwhile. A failure's description is the one that the pane
// would show.

/// The lines of a picture as JSON: their texts and boxes (fractions of the picture, origin bottom-left).
Result<CommandOutput> recognizeCommand(const Invocation &invocation, Services &services);
/// Translates a picture's lines and writes it with their overlays. The picture is treated as the area beneath a pane 4
/// points wider and higher, so that a point of the pane (x, y) is the picture's pixel (x - 2, y - 2).
Result<CommandOutput> imageCommand(const Invocation &invocation, Services &services);
/// Translates a text as the pane does a typed one.
Result<CommandOutput> textCommand(const Invocation &invocation, Services &services);
/// Lists what translates on this computer: services, language pairs, phrases and the age of their cache.
Result<CommandOutput> languagesCommand(const Invocation &invocation, Services &services);
/// Lists the translation models on this computer and those that the server offers.
Result<CommandOutput> modelsCommand(const Invocation &invocation, Services &services);
/// Downloads the models that translate a pair. Prints the progress on a terminal's standard error.
Result<CommandOutput> installModelCommand(const Invocation &invocation, Services &services);
Result<CommandOutput> removeModelCommand(const Invocation &invocation, Services &services);
/// Writes the entries of the history that match the search to a file, for other programs.
Result<CommandOutput> exportCommand(const Invocation &invocation, Services &services);
/// Prints these entries, as JSON or as lines of original and translation.
Result<CommandOutput> entriesCommand(const Invocation &invocation, Services &services);
/// Asks the chosen engine for one word.
Result<CommandOutput> testConnectionCommand(const Invocation &invocation, Services &services);
/// Prints what the report of a problem needs: versions, the session and which parts of it are used, models, and engines
/// without their keys. Says what is wrong and how to mend it.
Result<CommandOutput> doctorCommand(const Invocation &invocation, Services &services);
/// Translates the lines of the standard input with one model.
Result<CommandOutput> runModelCommand(const Invocation &invocation, Services &services);
/// Sends the command to the running program.
Result<CommandOutput> remoteCommand(const Invocation &invocation, Services &services);

/// The failure of a command, with a sentence in the interface language.
tl::unexpected<Failure> commandFailed(const QString &description);

/// The text of the standard input, up to 1 MiB of UTF-8.
Result<QString> standardInput(const LocalizationManager &texts);

} // namespace lucentra
