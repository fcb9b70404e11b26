#include "Vocabulary.h"

#include "SequentialReader.h"

#include <sentencepiece_processor.h>

#include <cstring>
#include <exception>
#include <functional>

namespace lucentra {

namespace {

/// In bytes; far above what any vocabulary has.
constexpr qsizetype largestVocabulary = 64 << 20;
/// In bytes, of the text that replaces a character.
constexpr qsizetype longestReplacement = 256;
// Numbers of fields, as SentencePiece's format has them.
constexpr std::uint64_t normalizerField = 3;
constexpr std::uint64_t denormalizerField = 5;
constexpr std::uint64_t characterMapField = 2;

std::uint64_t readVarint(SequentialReader &reader)
{
    std::uint64_t value = 0;
    for (unsigned shift = 0; shift < 64; shift += 7) {
        const auto byte = reader.number<std::uint8_t>();
        value |= std::uint64_t(byte & 0x7FU) << shift;
        if (byte < 0x80)
            return value;
    }
    reader.fail();
    return 0;
}

/// Passes each field of a protocol buffer that consists of bytes to `isGood`. Returns false if the buffer is malformed or
/// `isGood` does.
bool checkFields(QByteArrayView message, const std::function<bool(std::uint64_t field, QByteArrayView)> &isGood)
{
    SequentialReader reader(message);
    while (reader.isGood() && !reader.isAtEnd()) {
        const std::uint64_t key = readVarint(reader);
        switch (key & 7U) {
        case 0:
            readVarint(reader);
            break;
        case 1:
            reader.take(8);
            break;
        case 2: {
            const QByteArrayView bytes = reader.take(readVarint(reader));
            if (!reader.isGood() || key >> 32U != 0 || !isGood(key >> 3U, bytes))
                return false;
            break;
        }
        case 5:
            reader.take(4);
            break;
        default:
            return false;
        }
    }
    return reader.isGood();
}

/// Whether each step through a map of characters stays inside it. The map is the size of a trie in bytes, the trie (a
/// double array of 32-bit units), and the texts that its values point to, each with a final 0.
bool isSoundCharacterMap(QByteArrayView map)
{
    SequentialReader reader(map);
    const QByteArrayView trie = reader.take(reader.number<std::uint32_t>());
    if (!reader.isGood() || trie.size() < 4 || trie.size() % 4 != 0)
        return map.isEmpty();
    const QByteArrayView texts = map.sliced(4 + trie.size());
    const auto unitAt = [&trie](std::size_t place) {
        std::uint32_t unit = 0;
        std::memcpy(&unit, trie.data() + place * sizeof unit, sizeof unit);
        return unit;
    };
    constexpr std::uint32_t valueBit = 1U << 31U;
    constexpr std::uint32_t leafBit = 1U << 8U;
    constexpr std::uint32_t wideBit = 1U << 9U;
    const auto count = std::size_t(trie.size()) / 4;
    for (std::size_t place = 0; place < count; ++place) {
        const std::uint32_t unit = unitAt(place);
        if (unit & valueBit)
            continue;
        const std::uint32_t offset = (unit >> 10U) << ((unit & wideBit) >> 6U);
        const std::size_t next = place ^ offset; // a byte is then added by "exclusive or"
        if ((next | 0xFFU) >= count)
            return false;
        if ((unit & leafBit) == 0)
            continue;
        const auto text = qsizetype(unitAt(next) & ~valueBit);
        if (text >= texts.size() || texts.sliced(text).first(std::min(texts.size() - text, longestReplacement)).indexOf('\0') < 0)
            return false;
    }
    return true;
}

bool isSound(QByteArrayView vocabulary)
{
    return checkFields(vocabulary, [](std::uint64_t field, QByteArrayView part) {
        if (field != normalizerField && field != denormalizerField)
            return true;
        return checkFields(part, [](std::uint64_t inner, QByteArrayView bytes) {
            return inner != characterMapField || isSoundCharacterMap(bytes);
        });
    });
}

} // namespace

std::unique_ptr<sentencepiece::SentencePieceProcessor> loadVocabulary(QByteArrayView bytes)
{
    if (bytes.size() > largestVocabulary || !isSound(bytes))
        return nullptr;
    auto vocabulary = std::make_unique<sentencepiece::SentencePieceProcessor>();
    try {
        const auto status = vocabulary->LoadFromSerializedProto({bytes.data(), std::size_t(bytes.size())});
        const bool isUsable = status.ok() && vocabulary->GetPieceSize() > 0 && vocabulary->eos_id() >= 0;
        return isUsable ? std::move(vocabulary) : nullptr;
    } catch (const std::exception &) { // such as for a piece that begins with a zero byte
        return nullptr;
    }
}

} // namespace lucentra
