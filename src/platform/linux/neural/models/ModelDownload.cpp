#include "ModelDownload.h"

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>

#include <zstd.h>

#include <memory>
#include <utility>

#include <unistd.h>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

using Kind = ModelProblem::Kind;

constexpr int statusWhole = 200;
constexpr int statusPart = 206;
constexpr int statusNoSuchPart = 416;
/// In bytes, of what a server says to people instead of sending the file.
constexpr qsizetype longestExplanation = 1 << 20;

ModelProblem problemOf(const QFile &file, qint64 needed)
{
    // On a full disk, first a part is written without an error.
    if (file.error() == QFileDevice::ResourceError || file.error() == QFileDevice::NoError)
        return {.kind = Kind::DiskFull, .text = {}, .number = needed};
    return {.kind = Kind::NotWritten, .text = file.errorString()};
}

tl::unexpected<ModelProblem> failedBy(const ModelProblem &problem)
{
    return tl::unexpected(problem);
}

QString packedPath(const ModelFile &file, const QString &folder)
{
    return folder + u'/' + QString::fromLatin1(file.packedHash) + u".zst"_s;
}

bool hasHash(const QString &path, const QByteArray &hash, const std::function<bool()> &isWanted = {})
{
    constexpr qint64 pieceSize = 1 << 20;
    QFile file(path);
    QCryptographicHash sum(QCryptographicHash::Sha256);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return false;
    for (QByteArray piece = file.read(pieceSize); !piece.isEmpty(); piece = file.read(pieceSize)) {
        sum.addData(piece);
        if (isWanted && !isWanted())
            return false;
    }
    return sum.result().toHex() == hash;
}

/// Fetches the missing rest of the packed file. An answer with the whole file replaces what is there.
ModelResult<void> fetchPacked(const ModelFile &file, const QByteArray &url, const QString &folder, const Fetch &fetch,
                              const DownloadWatch &watch)
{
    QFile packed(packedPath(file, folder));
    if (!packed.open(QIODevice::ReadWrite | QIODevice::Unbuffered))
        return failedBy(problemOf(packed, 0));
    packed.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    if (packed.size() > file.packedSize)
        packed.resize(0);
    const qint64 offset = packed.size();
    if (offset == file.packedSize)
        return {};
    packed.seek(offset);
    std::optional<ModelProblem> failed;
    bool isRestarted = false;
    qsizetype explained = 0;
    const auto take = [&](int status, QByteArrayView piece) {
        if (status != statusWhole && status != statusPart) {
            explained += piece.size();
            if (explained > longestExplanation)
                failed = ModelProblem{.kind = Kind::Refused, .text = {}, .number = status};
            return !failed;
        }
        if (status == statusWhole && offset > 0 && !std::exchange(isRestarted, true)) {
            packed.resize(0);
            packed.seek(0);
        }
        if (packed.pos() + piece.size() > file.packedSize)
            failed = ModelProblem{.kind = Kind::WrongSize};
        else if (packed.write(piece.data(), piece.size()) != piece.size())
            failed = problemOf(packed, file.packedSize - packed.pos());
        watch.progress(packed.pos());
        return !failed;
    };
    const auto status = fetch(url, offset, take, watch.isWanted);
    if (failed && failed->kind == Kind::WrongSize)
        packed.remove();
    if (failed)
        return failedBy(*failed);
    if (!status)
        return failedBy(status.error());
    if (*status == statusNoSuchPart)
        packed.remove();
    if (*status != statusWhole && *status != statusPart)
        return failedBy({.kind = Kind::Refused, .text = {}, .number = *status});
    if (packed.size() < file.packedSize)
        return failedBy({.kind = Kind::CutOff});
    return {};
}

/// Unpacks into a new file, never more than the announced size, and computes its hash on the way.
ModelResult<void> unpack(const ModelFile &file, const QString &folder, const std::function<bool()> &isWanted)
{
    struct Free
    {
        void operator()(ZSTD_DStream *stream) const { ZSTD_freeDStream(stream); }
    };
    const std::unique_ptr<ZSTD_DStream, Free> stream(ZSTD_createDStream());
    QFile packed(packedPath(file, folder));
    QFile target(folder + u'/' + file.name);
    if (!packed.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return failedBy(problemOf(packed, 0));
    if (!target.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered))
        return failedBy(problemOf(target, 0));
    QCryptographicHash sum(QCryptographicHash::Sha256);
    QByteArray unpacked(qsizetype(ZSTD_DStreamOutSize()), Qt::Uninitialized);
    qint64 size = 0;
    for (QByteArray piece = packed.read(qint64(ZSTD_DStreamInSize())); !piece.isEmpty();
         piece = packed.read(qint64(ZSTD_DStreamInSize()))) {
        ZSTD_inBuffer input{piece.constData(), size_t(piece.size()), 0};
        ZSTD_outBuffer output{};
        do {
            output = {unpacked.data(), size_t(unpacked.size()), 0};
            if (ZSTD_isError(ZSTD_decompressStream(stream.get(), &output, &input)))
                return failedBy({.kind = Kind::WrongContent});
            size += qint64(output.pos);
            if (size > file.size)
                return failedBy({.kind = Kind::WrongContent});
            const QByteArrayView ready(unpacked.constData(), qsizetype(output.pos));
            sum.addData(ready);
            if (target.write(ready.data(), ready.size()) != ready.size())
                return failedBy(problemOf(target, file.size - size));
        } while (input.pos < input.size || output.pos == output.size);
        if (!isWanted())
            return failedBy({.kind = Kind::Cancelled});
    }
    if (size != file.size || sum.result().toHex() != file.hash)
        return failedBy({.kind = Kind::WrongContent});
    if (::fsync(target.handle()) != 0)
        return failedBy({.kind = Kind::NotWritten, .text = qt_error_string()});
    return {};
}

} // namespace

qint64 bytesOfDownload(const ModelFile &file, const QString &folder)
{
    return QFileInfo(packedPath(file, folder)).size();
}

bool hasModelFile(const ModelFile &file, const QString &folder)
{
    const QString path = folder + u'/' + file.name;
    return QFileInfo(path).size() == file.size && hasHash(path, file.hash);
}

ModelResult<void> downloadModelFile(const ModelFile &file, const QByteArray &url, const QString &folder,
                                    const Fetch &fetch, const DownloadWatch &watch)
{
    const QString packed = packedPath(file, folder);
    // What an earlier download has left may be damaged: then it is fetched once more from the start.
    for (bool isContinued = bytesOfDownload(file, folder) > 0;; isContinued = false) {
        if (const auto fetched = fetchPacked(file, url, folder, fetch, watch); !fetched)
            return fetched;
        if (hasHash(packed, file.packedHash, watch.isWanted))
            break;
        if (!watch.isWanted())
            return failedBy({.kind = Kind::Cancelled});
        QFile::remove(packed);
        if (!isContinued)
            return failedBy({.kind = Kind::WrongContent});
    }
    const auto unpacked = unpack(file, folder, watch.isWanted);
    if (!unpacked)
        QFile::remove(folder + u'/' + file.name);
    if (unpacked || unpacked.error().kind == Kind::WrongContent)
        QFile::remove(packed);
    return unpacked;
}

} // namespace lucentra
