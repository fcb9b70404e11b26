#include "PrivateFile.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>

#include <cerrno>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

tl::unexpected<Failure> failure(const QString &description)
{
    return tl::unexpected(Failure{.domain = u"File"_s, .code = 0, .description = description});
}

} // namespace

void createFolderOf(const QString &path)
{
    const QString folder = QFileInfo(path).absolutePath();
    if (QFileInfo::exists(folder))
        return;
    QDir().mkpath(QFileInfo(folder).absolutePath());
    QDir().mkdir(folder, ownerOnly | QFileDevice::ExeOwner);
}

Result<void> writePrivateFile(const QString &path, const QByteArray &content)
{
    if (const QFileInfo info(path); info.exists() && !info.isFile()) // the new file would take its place
        return failure(qt_error_string(ENOTSUP));
    QSaveFile file(path);
    // Still empty, so nothing can have been read with the permissions that it was created with.
    if (!file.open(QIODevice::WriteOnly) || !file.setPermissions(ownerOnly))
        return failure(file.errorString());
    if (file.write(content) != content.size()) // a full disk takes the first part, which Qt counts as no error
        return failure(file.error() == QFileDevice::NoError ? u"only a part of it could be written"_s
                                                            : file.errorString());
    if (!file.commit()) // syncs
        return failure(file.errorString());
    return {};
}

} // namespace lucentra
