#pragma once

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace lucentra {

/// Makes the bytes the content of a file, and the folders around it.
inline void writeFile(const QString &path, const QByteArray &content)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("can't write %s", qPrintable(path));
}

/// Null if there is no such file.
inline QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace lucentra
