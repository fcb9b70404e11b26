#pragma once

#include "Result.h"

#include <QString>
#include <QStringList>
#include <QStringView>

#include <optional>

namespace lucentra {

class LocalizationManager;

/// What a command line asks for. Values are as typed; the commands check what they mean.
struct Invocation
{
    QStringView command = u"help"; ///< its name in the table of commands, "help" or "version"
    QString argument;              ///< the one positional argument: a file's path, or a text
    QString output;                ///< --output
    std::optional<int> engine;     ///< --engine: a raw value of `TranslationEngine`
    std::optional<QString> target; ///< --target: a language code
    std::optional<QString> format; ///< --format: a name of an `ExportFormat`
    QString search;                ///< --search
    double maxLengthFactor = 2;    ///< --max-length-factor
    bool paragraphs = false;       ///< --paragraphs
    bool json = false;             ///< --json
    bool timing = false;           ///< --timing

    bool operator==(const Invocation &) const = default;
};

/// Exit codes of every command.
enum class ExitCode { Done = 0, WrongUsage = 1, Failed = 2 };

/// Reads the arguments that follow the program's name. A failure's description is in the interface language.
Result<Invocation> parseCommandLine(const QStringList &arguments, const LocalizationManager &texts);

/// Whether the program is started for the command, one of RemoteCommands.h, if it doesn't run.
bool startsProgram(QStringView command);

/// The page that --help prints, made from the same table.
QString helpPage(const LocalizationManager &texts);

} // namespace lucentra
