#include "LauncherPath.h"

#include <QCoreApplication>
#include <QDir>

using namespace Qt::StringLiterals;

namespace lucentra {

QString launcherPath()
{
    return QDir::cleanPath(QCoreApplication::applicationDirPath() + u"/../bin/lucentra"_s);
}

} // namespace lucentra
