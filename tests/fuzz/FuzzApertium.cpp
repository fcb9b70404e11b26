// What Apertium answers, and what it is asked.

#include "Fuzz.h"

#include "ApertiumTranslation.h"
#include "Text.h"

using namespace lucentra;
using namespace Qt::StringLiterals;

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray bytes = bytesOf(data, size);
    const OnDeviceOutcome outcome = apertiumOutcome(bytes, u"Open the file"_s);
    const bool isTranslated = outcome.kind == OnDeviceOutcome::Kind::Translated;
    mustHold(isTranslated != outcome.text.isEmpty(), "a translation has a text, and nothing else has");
    mustHold(outcome.text.isValidUtf16() && outcome.confidence >= 0 && outcome.confidence <= 1, "a sound outcome");

    const auto text = decodeUtf8(bytes);
    if (!text || text->contains(QChar(u'\0')) || text->trimmed().isEmpty())
        return 0;
    const QByteArray question = apertiumQuestion(*text);
    mustHold(!question.contains('\0'), "a question is one");
    mustHold(apertiumOutcome(question, *text).text == text->trimmed(), "what isn't translated comes back");
    return 0;
}
