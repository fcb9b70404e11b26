#pragma once

#include "CatalogueFolders.h"
#include "Files.h"
#include "PhraseCollector.h"
#include "PhraseFile.h"

#include <QBuffer>
#include <QByteArray>
#include <QList>
#include <QString>
#include <QtEndian>

#include <utility>

namespace lucentra {

using Messages = QList<std::pair<QByteArray, QByteArray>>;

/// A `.mo` file of these messages, with the usual header.
inline QByteArray moBytes(const Messages &messages, bool isBigEndian = false, const QByteArray &charset = "UTF-8")
{
    Messages all{{"", "Content-Type: text/plain; charset=" + charset + "\n"}};
    all += messages;
    QByteArray bytes;
    const auto word = [&](quint32 value) {
        value = isBigEndian ? qToBigEndian(value) : qToLittleEndian(value);
        bytes.append(reinterpret_cast<const char *>(&value), 4);
    };
    const auto count = quint32(all.size());
    for (const quint32 value : {0x950412deU, 0U, count, 28U, 28 + 8 * count, 0U, 28 + 16 * count})
        word(value);
    quint32 offset = 28 + 16 * count;
    for (const bool isSource : {true, false}) {
        for (const auto &[source, translation] : all) {
            const auto size = quint32((isSource ? source : translation).size());
            word(size);
            word(offset);
            offset += size + 1;
        }
    }
    for (const bool isSource : {true, false}) {
        for (const auto &[source, translation] : all)
            bytes += (isSource ? source : translation) + '\0';
    }
    return bytes;
}

/// A `.qm` file of these messages, each in a context and with a comment.
inline QByteArray qmBytes(const Messages &messages)
{
    const auto word = [](quint32 value) {
        value = qToBigEndian(value);
        return QByteArray(reinterpret_cast<const char *>(&value), 4);
    };
    QByteArray section;
    for (const auto &[source, translation] : messages) {
        QByteArray text;
        for (const QChar c : QString::fromUtf8(translation)) {
            text += char(c.unicode() >> 8);
            text += char(c.unicode() & 0xff);
        }
        section += '\x03' + word(quint32(text.size())) + text + '\x08' + word(4) + "note" + '\x06' +
                   word(quint32(source.size())) + source + '\x07' + word(6) + "Dialog" + '\x01';
    }
    return QByteArray::fromHex("3cb86418caef9c95cd211cbf60a1bddd") + '\x42' + word(8) + QByteArray(8, 'h') + '\x69' +
           word(quint32(section.size())) + section;
}

/// Writes a catalogue into the folder of a locale beneath `share`, as a package would.
inline void installCatalogue(const QString &share, const QString &locale, const QString &name, const QByteArray &bytes)
{
    writeFile(share + QStringLiteral("/locale/") + locale + QStringLiteral("/LC_MESSAGES/") + name, bytes);
}

/// The phrases of all catalogues in the folders.
inline std::shared_ptr<const PhraseFile> phrasesIn(const CatalogueFolders &folders)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    buildPhraseFile(surveyCatalogues(folders), buffer, std::atomic<bool>(false));
    return PhraseFile::fromBytes(buffer.data());
}

} // namespace lucentra
