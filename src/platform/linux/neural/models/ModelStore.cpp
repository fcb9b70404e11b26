#include "ModelStore.h"

#include "FileLock.h"
#include "Json.h"
#include "ModelRegistry.h"
#include "PrivateFile.h"
#include "RegularFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStorageInfo>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <utility>

#include <fcntl.h>

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

using Kind = ModelProblem::Kind;

constexpr qsizetype largestList = qsizetype(32) << 20;
/// What a download leaves free on the disk.
constexpr qint64 spareSpace = 16 << 20;
const QString unfinishedPrefix = u".unfinished-"_s;
/// Says which edition is in a folder.
const QString noteName = u"edition.json"_s;

tl::unexpected<ModelProblem> problem(Kind kind, const QString &text = {}, qint64 number = 0)
{
    return tl::unexpected(ModelProblem{.kind = kind, .text = text, .number = number});
}

qint64 sizeOfFolder(const QString &folder)
{
    qint64 size = 0;
    for (const QFileInfo &file : QDir(folder).entryInfoList(QDir::Files | QDir::Hidden))
        size += file.size();
    return size;
}

QString editionIn(const QString &folder)
{
    constexpr qint64 largestNote = 4096;
    const auto note = readRegularFile(folder + u'/' + noteName, largestNote);
    const auto json = note ? parseJson(*note) : std::nullopt;
    return json ? json->object()[u"edition"_s].toString() : QString();
}

/// Of a link to a folder, only the link is removed.
bool removeFolder(const QString &folder)
{
    return QFileInfo(folder).isSymLink() ? QFile::remove(folder) : QDir(folder).removeRecursively();
}

/// Gives a folder another folder's name, whose own content is removed.
bool replaceFolder(const QString &folder, const QString &target)
{
    const QByteArray from = QFile::encodeName(folder);
    const QByteArray to = QFile::encodeName(target);
    if (::rename(from.constData(), to.constData()) == 0)
        return true;
    // The old one is complete until the new one has its place.
    if (::renameat2(AT_FDCWD, from.constData(), AT_FDCWD, to.constData(), RENAME_EXCHANGE) == 0)
        return removeFolder(folder);
    return removeFolder(target) && ::rename(from.constData(), to.constData()) == 0;
}

} // namespace

ModelStore::ModelStore(QStringList searchFolders, std::function<Addresses()> addresses, Fetch fetch)
    : m_searchFolders(std::move(searchFolders))
    , m_addresses(std::move(addresses))
    , m_fetch(std::move(fetch))
{
}

QString ModelStore::unfinishedFolder(const LanguagePair &pair) const
{
    return ownFolder() + u'/' + unfinishedPrefix + modelName(pair);
}

QList<StoredModel> ModelStore::stored()
{
    QList<StoredModel> models;
    for (const InstalledModel &model : InstalledModels(m_searchFolders).list())
        models.append({.pair = {model.source, model.target},
                       .size = sizeOfFolder(model.folder),
                       .edition = editionIn(model.folder),
                       .isOwn = QFileInfo(model.folder).absolutePath() == QFileInfo(ownFolder()).absoluteFilePath()});
    const QStringList unfinished =
        QDir(ownFolder()).entryList({unfinishedPrefix + u'*'}, QDir::Dirs | QDir::Hidden, QDir::Name);
    for (const QString &name : unfinished) {
        if (const auto pair = modelPair(name.sliced(unfinishedPrefix.size())))
            models.append({.pair = *pair,
                           .size = sizeOfFolder(ownFolder() + u'/' + name),
                           .edition = {},
                           .isOwn = true,
                           .isComplete = false});
    }
    return models;
}

ModelResult<QList<OfferedModel>> ModelStore::offered(const std::function<bool()> &isWanted)
{
    QByteArray list;
    qsizetype size = 0; // with what else the server says
    const auto take = [&](int status, QByteArrayView piece) {
        if (status == 200)
            list.append(piece);
        size += piece.size();
        return size <= largestList;
    };
    const auto status = m_fetch(m_addresses().registry, 0, take, isWanted);
    if (size > largestList)
        return problem(Kind::InvalidList);
    if (!status)
        return tl::unexpected(status.error());
    if (*status != 200)
        return problem(Kind::Refused, {}, *status);
    auto models = readModelRegistry(list);
    if (!models)
        return problem(Kind::InvalidList);
    return *std::move(models);
}

ModelResult<void> ModelStore::checkSpace(const OfferedModel &model, const QString &folder) const
{
    qint64 largestPacked = 0;
    for (const ModelFile &file : model.files)
        largestPacked = std::max(largestPacked, file.packedSize);
    // A packed file is removed once it is unpacked.
    const qint64 needed = model.size() + largestPacked + spareSpace - sizeOfFolder(folder);
    const QStorageInfo disk(folder);
    if (disk.isValid() && disk.bytesAvailable() < needed)
        return problem(Kind::DiskFull, {}, needed);
    return {};
}

ModelResult<void> ModelStore::install(const OfferedModel &model, const std::function<void(qint64 bytes)> &progress,
                                      const std::function<bool()> &isWanted)
{
    const QString lockName = ownFolder() + u"/download"_s;
    createFolderOf(lockName);
    const FileLock lock(lockName, 0ms);
    if (!lock.mayWrite())
        return QFileInfo(ownFolder()).isWritable() ? problem(Kind::Busy)
                                                   : problem(Kind::NotWritten, qt_error_string(EACCES));
    const QString folder = unfinishedFolder(model.pair);
    createFolderOf(folder + u"/file"_s);
    if (!QFileInfo(folder).isDir())
        return problem(Kind::NotWritten, qt_error_string(EACCES));
    // What another edition has left.
    for (const QString &name : QDir(folder).entryList(QDir::Files | QDir::Hidden)) {
        const bool isNeeded = std::any_of(model.files.begin(), model.files.end(), [&name](const ModelFile &file) {
            return name == file.name || name.startsWith(QString::fromLatin1(file.packedHash));
        });
        if (!isNeeded)
            QFile::remove(folder + u'/' + name);
    }
    if (const auto space = checkSpace(model, folder); !space)
        return space;
    const QByteArray files = m_addresses().files;
    qint64 before = 0;
    for (const ModelFile &file : model.files) {
        if (!isWanted())
            return problem(Kind::Cancelled);
        const DownloadWatch watch{[&](qint64 bytes) { progress(before + bytes); }, isWanted};
        if (!hasModelFile(file, folder)) {
            const auto done = downloadModelFile(
                file, files + (files.endsWith('/') ? "" : "/") + file.location, folder, m_fetch, watch);
            if (!done)
                return done;
        }
        before += file.packedSize;
        progress(before);
    }
    return putInPlace(model, folder);
}

ModelResult<void> ModelStore::putInPlace(const OfferedModel &model, const QString &folder) const
{
    const auto noted =
        writePrivateFile(folder + u'/' + noteName, jsonBytes(QJsonObject{{u"edition"_s, model.edition()}}));
    if (!noted)
        return problem(Kind::NotWritten, noted.error().description);
    if (!replaceFolder(folder, ownFolder() + u'/' + modelName(model.pair)))
        return problem(Kind::NotWritten, qt_error_string());
    return {};
}

ModelResult<void> ModelStore::remove(const LanguagePair &pair)
{
    const QString folder = ownFolder() + u'/' + modelName(pair);
    const QString unfinished = unfinishedFolder(pair);
    if (!QFileInfo(folder).isDir() && !QFileInfo(unfinished).isDir()) {
        const QList<InstalledModel> others = InstalledModels(m_searchFolders).list();
        const bool isOther = std::any_of(others.begin(), others.end(), [&pair](const InstalledModel &model) {
            return LanguagePair{model.source, model.target} == pair;
        });
        return problem(isOther ? Kind::NotOwn : Kind::NotInstalled);
    }
    const FileLock lock(ownFolder() + u"/download"_s, 0ms);
    if (!lock.mayWrite())
        return problem(Kind::Busy);
    // Under another name first, so that half of it is never taken for a model.
    if (QFileInfo(folder).isDir() && !replaceFolder(folder, unfinished))
        return problem(Kind::NotWritten, qt_error_string());
    if (!removeFolder(unfinished))
        return problem(Kind::NotWritten, qt_error_string());
    return {};
}

} // namespace lucentra
