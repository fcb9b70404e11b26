#include "InstallCommand.h"

#include <QLatin1StringView>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

/// A package manager. Packages of models have names of their own everywhere, other ones don't.
struct Manager
{
    QLatin1StringView program;
    QLatin1StringView command;
    QLatin1StringView modelPrefix; ///< before the model's name, in place of Debian's "tesseract-ocr-"
};
constexpr Manager managers[] = {
    {"apt-get"_L1, "sudo apt install"_L1, {}},
    {"dnf"_L1, "sudo dnf install"_L1, "tesseract-langpack-"_L1},
    {"pacman"_L1, "sudo pacman -S"_L1, "tesseract-data-"_L1},
};

} // namespace

QString installCommand(const QStringList &packages)
{
    for (const Manager &manager : managers) {
        if (QStandardPaths::findExecutable(manager.program).isEmpty())
            continue;
        QString command = manager.command;
        for (QString package : packages) {
            if (constexpr auto debianPrefix = "tesseract-ocr-"_L1;
                !manager.modelPrefix.isEmpty() && package.startsWith(debianPrefix))
                package = manager.modelPrefix + package.mid(debianPrefix.size()).replace(u'-', u'_');
            command += u' ' + package;
        }
        return command;
    }
    return packages.join(u' ');
}

} // namespace lucentra
