#pragma once

#include <QFile>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QSslKey>

namespace lucentra {

/// A file beside the tests, see make-certificates there.
inline QString certificateFile(const QString &name)
{
    return QStringLiteral(CERTIFICATES "/") + name;
}

/// What a server needs to show the certificate "here", "expired" or "elsewhere"; all are by the authority in
/// "authority.pem".
inline QSslConfiguration serverCertificate(const QString &name)
{
    QFile key(certificateFile(name + QStringLiteral(".key")));
    if (!key.open(QIODevice::ReadOnly))
        qFatal("no key for the test server");
    QSslConfiguration configuration;
    configuration.setLocalCertificate(
        QSslCertificate::fromPath(certificateFile(name + QStringLiteral(".pem"))).value(0));
    configuration.setPrivateKey(QSslKey(&key, QSsl::Ec));
    return configuration;
}

} // namespace lucentra
