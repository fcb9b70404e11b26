#pragma once

#include "Fuzz.h"
#include "PhraseLanguage.h"
#include "PhraseCollector.h"
#include "PhraseFile.h"

#include <QBuffer>

#include <utility>

namespace lucentra {

/// A memory of a few phrases, as the program writes it.
inline QByteArray smallMemory()
{
    PhraseCollector collector;
    for (const char *family : {"editor", "player"}) {
        for (const auto &[source, translation] :
             {std::pair{"_Cancel", "キャンセル(_C)"}, std::pair{"Page %d of %d", "%d / %d ページ"},
              std::pair{"Could not open “%s”.", "“%s”を開けませんでした。"}, std::pair{"_File", "ファイル(_F)"},
              std::pair{"_Edit", "編集(_E)"}, std::pair{"File name:", "ファイル名:"}})
            collector.add(QString::fromLatin1(family), *phraseLanguage(u"ja"), source, QString::fromUtf8(translation));
        collector.add(QString::fromLatin1(family), *phraseLanguage(u"de"), "_Cancel", QStringLiteral("_Abbrechen"));
    }
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    mustHold(collector.write(buffer, 1, 2), "the memory is written");
    return buffer.data();
}

} // namespace lucentra
