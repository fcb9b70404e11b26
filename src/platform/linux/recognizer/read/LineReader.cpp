#include "read/LineReader.h"

#include "Rules.h"
#include "read/CharacterSearch.h"
#include "read/ModelFile.h"
#include "read/ReadingNet.h"
#include "strip/StripParts.h"
#include "strip/StrokeShape.h"

#include <leptonica/allheaders.h>

#include <algorithm>

namespace lucentra {

using namespace Qt::StringLiterals;

struct LineReader::Model
{
    ReadingNet net;
    CharacterCodes codes;
    WordList words;
    bool hasOwnNet;

    explicit Model(const ModelFile &file)
        : net(file.net)
        , codes(file.characters, file.codes, net.none())
        , words(file.words)
        , hasOwnNet(file.isOwn)
    {
    }
};

namespace {

/// A character, with the columns of the strip where it is about.
struct Symbol
{
    QString text;
    CharacterKind kind = CharacterKind::Other;
    int left = 0;
    int right = 0; // behind the last one
    double confidence = 0;
};

/// What was read, in columns. The net says where it saw a character, not how far it reaches, so two meet half way.
std::vector<Symbol> symbolsOf(const std::vector<ReadCharacter> &characters, int left, int right)
{
    constexpr double most = 96;    // confidence of what is sure
    constexpr double perUnit = 60; // and how much less that of the rest is, by the logarithm of its probability
    std::vector<Symbol> symbols;
    for (const ReadCharacter &character : characters) {
        const int first = left + ReadingNet::step * character.first;
        if (!symbols.empty())
            symbols.back().right = (symbols.back().right + first) / 2;
        symbols.push_back({character.text, character.kind, symbols.empty() ? left : symbols.back().right,
                           left + ReadingNet::step * (character.last + 1),
                           std::max(0.0, most + perUnit * character.logProbability)});
    }
    if (!symbols.empty())
        symbols.back().right = right;
    return symbols;
}

/// Makes I, l, 1 and underscores what they look like. A bar among other characters than digits isn't a 1. What has a
/// flag is one, unless letters follow: in some typewriter fonts l looks much the same.
void takeSeenBars(std::vector<Symbol> &symbols, const Strip &strip)
{
    if (!isOn("ones"))
        return;
    const auto near = [&](std::size_t i) {
        return i < symbols.size() && symbols[i].kind != CharacterKind::Space ? symbols[i].text : QString();
    };
    for (std::size_t i = 0; i < symbols.size(); ++i) {
        auto &[text, kind, left, right, confidence] = symbols[i];
        const QString before = near(i - 1);
        const QString after = near(i + 1);
        if (before.isEmpty() && after.isEmpty())
            continue;
        if (text == u"_"_s && before != text && after != text)
            text = QString(underscoresAt(strip, left, right), u'_');
        const auto isDigit = [](const QString &other) { return !other.isEmpty() && other.front().isDigit(); };
        const bool mayBeI = text == u"1"_s && !isDigit(before) && !isDigit(after);
        const bool mayBeOne =
            (text == u"I"_s || text == u"l"_s) && (after.isEmpty() || !after.front().isLetter()) && before != u"l"_s;
        if (mayBeI && strokeShapeAt(strip, left, right) == StrokeShape::Bar)
            text = u"I"_s;
        else if (mayBeOne && strokeShapeAt(strip, left, right) == StrokeShape::One)
            text = u"1"_s;
    }
}

Reading readingOf(const std::vector<Symbol> &symbols, ReadingLanguage language)
{
    Reading reading{{}, 0, language};
    const Symbol *before = nullptr;
    for (const Symbol &symbol : symbols) {
        if (symbol.kind == CharacterKind::Space) {
            before = nullptr;
            continue;
        }
        if (!before && !reading.text.isEmpty())
            reading.text += u' ';
        if (!before || before->kind == CharacterKind::Wide || symbol.kind == CharacterKind::Wide)
            reading.words.append({reading.text.size(), 0, symbol.left, 0, 100});
        ReadWord &word = reading.words.last();
        word.length += symbol.text.size();
        word.right = symbol.right;
        word.confidence = std::min(word.confidence, symbol.confidence);
        reading.text += symbol.text;
        before = &symbol;
    }
    qsizetype length = 0;
    for (const ReadWord &word : std::as_const(reading.words)) {
        reading.confidence += word.confidence * double(word.length);
        reading.weakest = length == 0 ? word.confidence : std::min(reading.weakest, word.confidence);
        length += word.length;
    }
    if (length > 0)
        reading.confidence /= double(length);
    return reading;
}

/// The columns from the first letter to the last, with a little paper beside them.
QRect lettersOf(const Strip &strip)
{
    constexpr int room = 3; // pixels
    const std::vector<std::uint8_t> darkest = darkestOfColumns(strip);
    const auto isInk = [](std::uint8_t value) { return value < lightestInk; };
    const auto first = std::ranges::find_if(darkest, isInk);
    const auto last = std::find_if(darkest.rbegin(), std::make_reverse_iterator(first), isInk).base();
    const QRect letters(QPoint(int(first - darkest.begin()) - room, 0),
                        QPoint(int(last - darkest.begin()) - 1 + room, pixGetHeight(strip.get()) - 1));
    return first == darkest.end() ? QRect() : letters & QRect(0, 0, int(darkest.size()), letters.height());
}

} // namespace

LineReader::LineReader() = default;

LineReader::~LineReader() = default;

const LineReader::Model *LineReader::model(ReadingLanguage language)
{
    Place &place = m_models[std::size_t(language)];
    std::call_once(place.isAsked, [&] {
        try {
            place.model = std::make_unique<const Model>(modelFile(language));
        } catch (const std::exception &error) { // of a broken file, or for want of memory
            if (isInstalled(language))
                qWarning("The model %s can't be used: %s", qPrintable(modelPath(language)), error.what());
        }
    });
    return place.model.get();
}

StripShape LineReader::stripShape(ReadingLanguage language)
{
    // The heights are those of the networks. Of shares from .55 to .78 these left the fewest errors.
    StripShape shape;
    const bool isSmall = language == ReadingLanguage::English || language == ReadingLanguage::Japanese ||
                         language == ReadingLanguage::VerticalChinese;
    shape.height = isSmall ? 36 : 48;
    shape.inkShare = language == ReadingLanguage::Japanese ? 0.72 : 0.66;
    return shape;
}

Reading LineReader::read(const Strip &strip, ReadingLanguage language, ReadingMode mode)
{
    const Model *const model = strip ? this->model(language) : nullptr;
    if (!model)
        return {};
    QRect part(0, 0, pixGetWidth(strip.get()), pixGetHeight(strip.get()));
    if (model->hasOwnNet == (mode == ReadingMode::Other))
        part = lettersOf(strip);
    if (part.width() < ReadingNet::step)
        return {{}, 0, language};
    CharacterSearch search(model->codes, model->words);
    BOX *box = boxCreate(part.left(), part.top(), part.width(), part.height());
    const Strip letters(pixClipRectangle(strip.get(), box, nullptr));
    boxDestroy(&box);
    model->net.read(letters, [&](std::span<const float> logarithms) { search.add(logarithms); });
    std::vector<Symbol> symbols = symbolsOf(search.characters(), part.left(), part.right() + 1);
    if (!horizontalOf(language))
        takeSeenBars(symbols, strip);
    return readingOf(symbols, language);
}

std::optional<ReadingLanguage> horizontalOf(ReadingLanguage vertical)
{
    switch (vertical) {
    case ReadingLanguage::VerticalJapanese:
        return ReadingLanguage::Japanese;
    case ReadingLanguage::VerticalChinese:
        return ReadingLanguage::TraditionalChinese;
    default:
        return {};
    }
}

} // namespace lucentra
