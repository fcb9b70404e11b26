#include "Engines.h"

#include "CommandLine.h"
#include "LocalizationManager.h"

#include <QApplication>
#include <QLibrary>
#include <QMessageBox>

#include <cstdio>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace lucentra {

const Engines &loadEngines(const LocalizationManager &texts)
{
    static const Engines *engines = nullptr;
    if (engines)
        return *engines;
    QLibrary library(QCoreApplication::applicationDirPath() + u"/lucentra-engines.so"_s);
    if (const auto make = reinterpret_cast<const Engines *(*)()>(library.resolve("lucentraEngines"))) {
        engines = make();
        return *engines;
    }
    const QString reason =
        texts.formatted(u"Lucentra 的一部分無法載入，請重新安裝 Lucentra。（%@）"_s, library.errorString());
    std::fputs((reason + u'\n').toUtf8().constData(), stderr);
    if (qobject_cast<QApplication *>(QCoreApplication::instance())) {
        QMessageBox box(QMessageBox::Critical, u"Lucentra"_s, reason, QMessageBox::Close);
        box.setTextFormat(Qt::PlainText);
        box.setWindowFlag(Qt::WindowStaysOnTopHint); // as the pane is
        box.exec();
    }
    std::_Exit(int(ExitCode::Failed));
}

} // namespace lucentra
