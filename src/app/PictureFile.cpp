#include "PictureFile.h"

#include "LocalizationManager.h"

#include <QBuffer>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QImageWriter>
#include <QPainter>
#include <QSaveFile>

#include <cerrno>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

constexpr qint64 mebibyte = 1 << 20;
/// The largest picture without compression. No more is read from a pipe.
constexpr qint64 maximumPipedBytes = maximumPicturePixels * 4 + mebibyte;
constexpr qint64 headBytes = 4096; // enough to detect the format

/// The formats of screenshots. Drawings could refer to other files, and readers of other formats are less tested.
const QByteArrayList readFormats{"png", "jpeg", "webp", "bmp", "gif", "tiff", "avif"};

Failure pictureFailure(const QString &description)
{
    return {.domain = u"Picture"_s, .code = 1, .description = description};
}

QByteArray formatOf(const QString &path)
{
    const QByteArray suffix = QFileInfo(path).suffix().toLower().toLatin1();
    return suffix.isEmpty() ? QByteArray("png") : suffix;
}

tl::unexpected<Failure> unwritable(const QString &path, const QString &reason, const LocalizationManager &texts)
{
    return tl::unexpected(pictureFailure(texts.formatted(u"無法寫入圖片 %@：%@"_s, path, reason)));
}

} // namespace

Result<QImage> readPicture(const QString &path, const LocalizationManager &texts)
{
    QFile file(path);
    const bool isFolder = QFileInfo(path).isDir();
    if (isFolder || !file.open(QIODevice::ReadOnly))
        return tl::unexpected(pictureFailure(
            texts.formatted(u"無法讀取圖片 %@：%@"_s, path, isFolder ? qt_error_string(EISDIR) : file.errorString())));
    // Detecting the format needs to read the beginning twice, which a pipe doesn't allow.
    QByteArray piped;
    QBuffer pipe(&piped);
    if (!QFileInfo(path).isFile()) {
        bool isPicture = true;
        for (QByteArray part;
             isPicture && piped.size() < maximumPipedBytes && !(part = file.read(mebibyte)).isEmpty();) {
            const bool isHead = piped.size() < headBytes;
            piped += part;
            QBuffer head(&piped);
            head.open(QIODevice::ReadOnly);
            if (isHead && piped.size() >= headBytes)
                isPicture = readFormats.contains(QImageReader::imageFormat(&head));
        }
        pipe.open(QIODevice::ReadOnly);
    }
    QIODevice &source = pipe.isOpen() ? static_cast<QIODevice &>(pipe) : file;
    if (source.size() == 0)
        return tl::unexpected(pictureFailure(texts.formatted(u"圖片檔案是空的：%@"_s, path)));

    QImageReader reader(&source);
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
    if (!readFormats.contains(reader.format()))
        return tl::unexpected(pictureFailure(texts.formatted(u"不是可辨識的圖片格式：%@"_s, path)));
    const QSize size = reader.size();
    if (qint64(size.width()) * size.height() > maximumPicturePixels)
        return tl::unexpected(
            pictureFailure(texts.formatted(u"圖片過大（%d × %d 像素）：%@"_s, size.width(), size.height(), path)));
    QImageReader::setAllocationLimit(int(maximumPicturePixels * 8 / mebibyte));
    const QImage picture = reader.read();
    if (picture.isNull())
        return tl::unexpected(pictureFailure(texts.formatted(u"圖片已損壞或無法解碼：%@"_s, path)));
    return picture.convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

QImage onOpaqueGround(const QImage &picture)
{
    qint64 light = 0;
    qint64 cover = 0;
    bool isTransparent = false;
    for (int y = 0; y < picture.height(); ++y) {
        const auto *line = reinterpret_cast<const QRgb *>(picture.constScanLine(y));
        for (int x = 0; x < picture.width(); ++x) {
            light += qGray(line[x]); // premultiplied: as much as the pixel covers
            cover += qAlpha(line[x]);
            isTransparent = isTransparent || qAlpha(line[x]) < 255;
        }
    }
    if (!isTransparent)
        return picture;
    QImage opaque(picture.size(), QImage::Format_RGB32);
    opaque.fill(2 * light > cover ? Qt::black : Qt::white);
    QPainter(&opaque).drawImage(0, 0, picture);
    return opaque;
}

Result<void> checkPictureDestination(const QString &path, const LocalizationManager &texts)
{
    const QFileInfo file(path);
    const QFileInfo folder(file.absolutePath());
    if (!QImageWriter::supportedImageFormats().contains(formatOf(path)))
        return unwritable(path, texts.localized(u"不支援的圖片格式"_s), texts);
    // The picture replaces what is at the path, which must not be a device.
    if (file.exists() && !file.isDir() && !file.isFile())
        return unwritable(path, qt_error_string(ENOTSUP), texts);
    if (file.isDir() || !folder.isDir() || !folder.isWritable() || (file.exists() && !file.isWritable()))
        return unwritable(path, qt_error_string(file.isDir() ? EISDIR : folder.isDir() ? EACCES : ENOENT), texts);
    return {};
}

Result<void> writePicture(const QImage &picture, const QString &path, const LocalizationManager &texts)
{
    const auto failed = [&](const QString &reason) { return unwritable(path, reason, texts); };
    const bool isNew = !QFileInfo::exists(path);
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return failed(file.errorString());
    if (isNew)
        file.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    QImageWriter writer(&file, formatOf(path));
    if (!writer.write(picture))
        return failed(writer.errorString());
    // After a failed flush, committing would replace the old picture by an incomplete one.
    if (!file.flush() || !file.commit())
        return failed(file.errorString());
    return {};
}

} // namespace lucentra
