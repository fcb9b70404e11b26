#pragma once

#include "TranslationModels.h"

#include <QByteArrayView>

namespace lucentra {

/// Fetches what is at a URL, from `offset` bytes on if that isn't 0. Passes the body to `take` piece by piece, each with
/// the answer's status, until `take` returns false. Returns the status of the answer. Blocks; the problem is `Network`,
/// `Unprotected` or `Cancelled`.
using Fetch = std::function<ModelResult<int>(const QByteArray &url, qint64 offset,
                                             const std::function<bool(int status, QByteArrayView piece)> &take,
                                             const std::function<bool()> &isWanted)>;

/// How a download reports and ends. Both are called often.
struct DownloadWatch
{
    std::function<void(qint64 bytes)> progress; ///< of the packed file
    std::function<bool()> isWanted;
};

/// Bytes of the packed file that are in the folder already.
qint64 bytesOfDownload(const ModelFile &file, const QString &folder);

/// Whether the folder has the unpacked file. Reads it to compare its hash.
bool hasModelFile(const ModelFile &file, const QString &folder);

/// Downloads a packed file into a folder, checks it, unpacks it under its name and checks that. The packed file is named
/// by its hash, so that a later call continues it and never takes another one for it.
ModelResult<void> downloadModelFile(const ModelFile &file, const QByteArray &url, const QString &folder,
                                    const Fetch &fetch, const DownloadWatch &watch);

} // namespace lucentra
