#include "MessageCatalogue.h"

#include <QDataStream>
#include <QIODevice>

namespace lucentra {

namespace {

constexpr QByteArrayView qmMagic("\x3c\xb8\x64\x18\xca\xef\x9c\x95\xcd\x21\x1c\xbf\x60\xa1\xbd\xdd");
constexpr uchar messagesSection = 0x69;

enum Tag : quint8 {
    End = 1,
    Translation = 3,
    Obsolete = 5,
    SourceText = 6,
    Context = 7,
    Comment = 8,
};

/// One message after another; each is a run of tagged fields up to its end.
void readMessages(const QByteArray &section, const MessageVisitor &visit)
{
    QDataStream stream(section);
    QByteArray source;
    QString translation;
    while (!stream.atEnd() && stream.status() == QDataStream::Ok) {
        quint8 tag = 0;
        QString form;
        QByteArray skipped;
        stream >> tag;
        switch (tag) {
        case End:
            if (!source.isEmpty() && !translation.isEmpty())
                visit(source, translation);
            source.clear();
            translation.clear();
            break;
        case Translation:
            stream >> form;
            if (!form.isNull()) // the last form is the plural
                translation = form.size() <= longestMessage && form.isValidUtf16() ? form : QString();
            break;
        case SourceText:
            stream >> source;
            if (source.size() > longestMessage)
                source.clear();
            break;
        case Context:
        case Comment:
            stream >> skipped;
            break;
        case Obsolete:
            stream.skipRawData(4);
            break;
        default:
            return; // the rest can't be parsed
        }
    }
}

} // namespace

bool readQmCatalogue(QByteArrayView bytes, const MessageVisitor &visit)
{
    if (!bytes.startsWith(qmMagic))
        return false;
    const QByteArray sections = QByteArray::fromRawData(bytes.data(), bytes.size());
    QDataStream stream(sections);
    stream.skipRawData(int(qmMagic.size()));
    while (!stream.atEnd()) {
        quint8 tag = 0;
        quint32 size = 0;
        stream >> tag >> size;
        const char *const start = sections.constData() + stream.device()->pos();
        if (stream.skipRawData(int(size)) != int(size))
            break;
        if (tag == messagesSection)
            readMessages(QByteArray::fromRawData(start, size), visit);
    }
    return true;
}

} // namespace lucentra
