#include "ApertiumTranslation.h"

#include "NulProcess.h"
#include "Text.h"

#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <QStandardPaths>

#include <algorithm>
#include <chrono>

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

/// Apertium's own program for texts keeps answers back until its input ends. The mode's pipeline doesn't if each part of
/// it flushes its output.
const QString pipeline = uR"(exec bash <("$0" -z "$1") -g)"_s;
/// Long enough for the first text, which waits until the dictionaries are loaded.
constexpr std::chrono::milliseconds longestWait = 10s; ///< for an answer, and in addition for a whole batch
constexpr auto usualWait = 50ms;                       ///< for each text of a batch
/// Confidence in a translation of known words only: words are chosen by rules, without regard to the program.
constexpr double fullConfidence = 0.4;
/// Ends a text: without it, Apertium waits for what may follow. The answer ends with it, too.
const QByteArray end = "[][\n]";

/// "en" for "eng". Returns unknown codes unchanged.
QString shortCode(const QString &code)
{
    const QLocale::Language language = QLocale::codeToLanguage(code);
    return language == QLocale::AnyLanguage ? code : QLocale::languageToCode(language);
}

QStringView withoutRegion(QStringView code)
{
    const qsizetype dash = code.indexOf(u'-');
    return dash < 0 || code.startsWith(u"zh") ? code : code.first(dash);
}

} // namespace

QByteArray apertiumQuestion(const QString &text)
{
    QByteArray bytes;
    for (const char c : text.toUtf8()) {
        if (QByteArrayView("[]{}^$/\\@<>*").contains(c))
            bytes += '\\';
        if (c != '\0')
            bytes += c;
    }
    return bytes + end;
}

OnDeviceOutcome apertiumOutcome(QByteArray answer, const QString &source)
{
    if (answer.endsWith(end))
        answer.chop(end.size());
    QByteArray bytes;
    qsizetype unknownWords = 0;
    for (qsizetype i = 0; i < answer.size(); ++i) {
        if (answer[i] == '\\' && i + 1 < answer.size())
            bytes += answer[++i];
        else if (answer[i] == '*')
            ++unknownWords;
        else
            bytes += answer[i];
    }
    const auto text = decodeUtf8(bytes);
    const qsizetype words = std::count(source.begin(), source.end(), u' ') + 1;
    if (!text || text->trimmed().isEmpty() || unknownWords * 2 > words)
        return {.kind = OnDeviceOutcome::Kind::UnknownPhrase};
    return {.kind = OnDeviceOutcome::Kind::Translated,
            .text = text->trimmed(),
            .service = u"apertium"_s,
            .confidence = fullConfidence * double(words - std::min(unknownWords, words)) / double(words)};
}

ApertiumTranslation::ApertiumTranslation(const QString &program, const QString &modesFolder)
{
    if (program.isEmpty())
        return;
    for (const QString &file : QDir(modesFolder).entryList({u"*.mode"_s}, QDir::Files, QDir::Name)) {
        const QString name = file.chopped(5);
        const QStringList codes = name.split(u'-');
        if (codes.size() != 2 || name.contains(u'_')) // variants of other modes
            continue;
        auto made = std::make_unique<Mode>();
        made->pair = {shortCode(codes[0]), shortCode(codes[1])};
        made->process = std::make_unique<NulProcess>(
            QStringList{u"/bin/bash"_s, u"-c"_s, pipeline, program, modesFolder + u'/' + file});
        m_modes.emplace(name, std::move(made));
    }
}

ApertiumTranslation::~ApertiumTranslation() = default;

std::unique_ptr<ApertiumTranslation> ApertiumTranslation::ofThisSystem()
{
    const QString program = QStandardPaths::findExecutable(u"apertium-wblank-mode"_s);
    return std::make_unique<ApertiumTranslation>(program,
                                                 QFileInfo(program).path() + u"/../share/apertium/modes"_s);
}

ApertiumTranslation::Mode *ApertiumTranslation::mode(const LanguagePair &pair) const
{
    for (const auto &[name, mode] : m_modes) {
        if (withoutRegion(pair.source) == mode->pair.source && withoutRegion(pair.target) == mode->pair.target)
            return mode.get();
    }
    return nullptr;
}

QList<OnDeviceOutcome> ApertiumTranslation::translate(const LanguagePair &pair, const QStringList &texts,
                                                      const std::function<bool()> &isWanted)
{
    Mode *const chosen = mode(pair);
    if (!chosen)
        return QList<OnDeviceOutcome>(texts.size());
    QList<OnDeviceOutcome> outcomes;
    const std::lock_guard lock(chosen->mutex);
    const auto deadline = std::chrono::steady_clock::now() + longestWait + texts.size() * usualWait;
    for (const QString &text : texts) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now());
        const auto answer = left > 0ms
                                ? chosen->process->ask(apertiumQuestion(text), std::min(left, longestWait), isWanted)
                                : std::nullopt;
        outcomes.append(answer ? apertiumOutcome(*answer, text)
                               : OnDeviceOutcome{.kind = OnDeviceOutcome::Kind::UnknownPhrase});
    }
    return outcomes;
}

QList<OnDeviceServiceStatus> ApertiumTranslation::status()
{
    if (m_modes.empty())
        return {};
    OnDeviceServiceStatus status{.name = u"apertium"_s};
    for (const auto &[name, mode] : m_modes)
        status.pairs.append(mode->pair);
    return {status};
}

} // namespace lucentra
