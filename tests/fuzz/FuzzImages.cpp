// Pictures: what a file holds, and the places in it that look like lines of writing.

#include "Files.h"
#include "Fuzz.h"

#include "PictureFile.h"
#include "ScreenTextRecognizer.h"
#include "TestTexts.h"
#include "find/MapLines.h"
#include "find/TextNet.h"

using namespace lucentra;
using namespace Qt::StringLiterals;

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const TestTexts texts;
    static const QTemporaryDir folder(u"/dev/shm/lucentra-fuzz"_s);
    const QString path = folder.filePath(u"picture"_s);
    writeFile(path, bytesOf(data, size));

    const auto picture = readPicture(path, texts.manager);
    if (!picture) {
        mustHold(!picture.error().description.isEmpty(), "a failure has words");
        return 0;
    }
    mustHold(!picture->isNull() && qint64(picture->width()) * picture->height() <= maximumPicturePixels,
             "a picture has pixels, but not too many");
    const QImage opaque = onOpaqueGround(*picture);
    if (qint64(opaque.width()) * opaque.height() > 1 << 20)
        return 0; // the finder's time on large pictures is measured elsewhere
    static TextNet net(ScreenTextRecognizer::Options().weights);
    for (const FoundLine &line : linesOf(net.seen(opaque, 1), 5))
        mustHold(opaque.rect().contains(line.ink), "a line lies within the picture");
    return 0;
}
