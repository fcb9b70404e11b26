#include "PictureFile.h"

#include "LocalizationManager.h"

#include <QFileInfo>
#include <QImageReader>
#include <QImageWriter>
#include <QSaveFile>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

Failure pictureFailure(const QString &description)
{
    return {.domain = u"Picture"_s, .code = 1, .description = description};
}

} // namespace

Result<QImage> readPicture(const QString &path, const LocalizationManager &texts)
{
    const QFileInfo file(path);
    if (!file.isFile() || !file.isReadable())
        return tl::unexpected(pictureFailure(texts.formatted(u"無法讀取圖片：%@"_s, path)));
    if (file.size() == 0)
        return tl::unexpected(pictureFailure(texts.formatted(u"圖片檔案是空的：%@"_s, path)));

    QImageReader reader(path);
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
    // Drawings may refer to other files and have no pixels of their own.
    const QByteArray format = reader.format();
    if (format.isEmpty() || format.startsWith("svg") || format == "pdf")
        return tl::unexpected(pictureFailure(texts.formatted(u"不是可辨識的圖片格式：%@"_s, path)));
    const QSize size = reader.size();
    if (qint64(size.width()) * size.height() > maximumPicturePixels)
        return tl::unexpected(
            pictureFailure(texts.formatted(u"圖片過大（%d × %d 像素）：%@"_s, size.width(), size.height(), path)));
    QImageReader::setAllocationLimit(int(maximumPicturePixels * 8 / (1024 * 1024)));
    const QImage picture = reader.read();
    if (picture.isNull())
        return tl::unexpected(pictureFailure(texts.formatted(u"圖片已損壞或無法解碼：%@"_s, path)));
    return picture.convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

Result<void> writePicture(const QImage &picture, const QString &path, const LocalizationManager &texts)
{
    const auto failed = [&](const QString &reason) {
        return tl::unexpected(pictureFailure(texts.formatted(u"無法寫入圖片 %@：%@"_s, path, reason)));
    };
    QByteArray format = QFileInfo(path).suffix().toLower().toLatin1();
    if (format.isEmpty())
        format = "png";
    if (!QImageWriter::supportedImageFormats().contains(format))
        return failed(texts.localized(u"不支援的圖片格式"_s));

    const bool isNew = !QFileInfo::exists(path);
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return failed(file.errorString());
    if (isNew)
        file.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    QImageWriter writer(&file, format);
    if (!writer.write(picture))
        return failed(writer.errorString());
    if (!file.commit())
        return failed(file.errorString());
    return {};
}

} // namespace lucentra
