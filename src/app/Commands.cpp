#include "Commands.h"

#include "PictureFile.h"
#include "RemoteControl.h"
#include "Services.h"
#include "Settings.h"
#include "Text.h"
#include "TextRecognition.h"
#include "TextRecognizer.h"
#include "TranslatedPicture.h"
#include "TranslationManager.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <array>
#include <cstdio>
#include <functional>
#include <optional>
#include <utility>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

/// In bytes; more than any engine translates at a time.
constexpr qint64 longestText = 1 << 20;

/// How long the stages of a command took.
class Stages
{
public:
    void finish(const QString &stage)
    {
        m_milliseconds.insert(stage, double(m_clock.nsecsElapsed()) / 1e6);
        m_clock.start();
    }
    QJsonObject milliseconds() const { return m_milliseconds; }

private:
    QJsonObject m_milliseconds;
    QElapsedTimer m_clock = [] {
        QElapsedTimer clock;
        clock.start();
        return clock;
    }();
};

QString toLine(const QJsonObject &document)
{
    return QString::fromUtf8(QJsonDocument(document).toJson(QJsonDocument::Compact));
}

/// Timings are part of the answer's JSON. A command that prints no JSON prints them as its message.
CommandOutput outputOf(std::optional<QJsonObject> document, const Invocation &invocation, const Stages &stages)
{
    if (!invocation.timing)
        return {.answer = document ? toLine(*document) : QString()};
    if (!document)
        return {.message = toLine({{u"milliseconds"_s, stages.milliseconds()}})};
    document->insert(u"milliseconds"_s, stages.milliseconds());
    return {.answer = toLine(*document)};
}

CommandOutput withNote(CommandOutput output, const QString &note)
{
    if (!note.isEmpty())
        output.message += (output.message.isEmpty() ? QString() : u"\n"_s) + note;
    return output;
}

/// Runs the event loop until the operation that `start` begins has called back, which may be before `start` returns.
template <typename Value>
Value await(const std::function<void(std::function<void(Value)>)> &start)
{
    QEventLoop loop;
    std::optional<Value> value;
    start([&](Value result) {
        value = std::move(result);
        loop.quit();
    });
    if (!value)
        loop.exec();
    return std::move(*value);
}

/// Also overrides what isn't given on the command line, so that the whole command uses the same engine and language
/// even if a setting changes meanwhile.
void chooseForThisCommand(const Invocation &invocation, Services &services)
{
    SettingsStore &store = services.settings();
    store.overrideForThisProcess(settings::translationEngine,
                                 invocation.engine ? *invocation.engine : store.read(settings::translationEngine));
    store.overrideForThisProcess(settings::targetLanguageCode,
                                 invocation.target.value_or(store.read(settings::targetLanguageCode)));
}

/// In the order of the kinds of `OnDeviceOutcome`.
constexpr std::array outcomeNames{"pair unavailable"_L1, "undetermined"_L1, "unknown phrase"_L1,
                                  "same language"_L1,    "not ready"_L1,    "translated"_L1};
static_assert(outcomeNames.size() == size_t(OnDeviceOutcome::Kind::Translated) + 1);

/// Adds the outcome of each line if the engine of this computer translated them.
QJsonArray withOutcomes(QJsonArray lines, const QList<OnDeviceOutcome> &outcomes)
{
    for (qsizetype i = 0; i < std::min(lines.size(), outcomes.size()); ++i) {
        const OnDeviceOutcome &outcome = outcomes[i];
        QJsonObject line = lines[i].toObject();
        line.insert(u"outcome"_s, outcomeNames[size_t(outcome.kind)]);
        if (outcome.kind == OnDeviceOutcome::Kind::Translated) {
            line.insert(u"service"_s, outcome.service);
            line.insert(u"confidence"_s, outcome.confidence);
        }
        lines[i] = line;
    }
    return lines;
}

Result<BlockTranslations> translate(const QList<TextBlock> &blocks, Services &services)
{
    const LocalizationManager &texts = services.texts();
    if (blocks.isEmpty())
        return commandFailed(texts.localized(u"沒有偵測到文字"_s));
    services.prepareOnDevice(*qApp);
    const auto translations = await<Result<BlockTranslations>>(
        [&](auto completion) { services.translationManager().translateBlocks(blocks, completion); });
    if (!translations)
        return commandFailed(texts.localized(u"翻譯失敗"_s) + u'\n' + translations.error().description);
    return *translations;
}

QList<TextBlock> recognizedBlocks(const QImage &picture, const Invocation &invocation, Services &services,
                                  const std::function<bool(const QString &)> &isPhrase = {})
{
    const TextUnit unit = invocation.paragraphs ? TextUnit::Paragraph : TextUnit::Line;
    const QImage image = onOpaqueGround(picture);
    return composeBlocks(recognizeLines(services.recognizer(), image, image.rect()).lines, image.size(), unit,
                         isPhrase);
}

/// The text to translate: the argument, or the standard input if the argument is "-".
Result<QString> givenText(const QString &argument, const LocalizationManager &texts)
{
    const Result<QString> text = argument == u"-" ? standardInput(texts) : argument;
    if (text && text->trimmed().isEmpty())
        return commandFailed(texts.localized(u"沒有可翻譯的文字"_s));
    return text && argument == u"-" ? text->trimmed() : text;
}

} // namespace

tl::unexpected<Failure> commandFailed(const QString &description)
{
    return tl::unexpected(
        Failure{.domain = u"CommandLine"_s, .code = int(ExitCode::Failed), .description = description});
}

Result<QString> standardInput(const LocalizationManager &texts)
{
    QFile input;
    QByteArray bytes;
    QByteArray piece; // a pipe may give less than requested
    input.open(stdin, QIODevice::ReadOnly);
    do {
        piece = input.read(longestText + 1 - bytes.size());
        bytes += piece;
    } while (!piece.isEmpty() && bytes.size() <= longestText);
    if (input.error() != QFileDevice::NoError)
        return commandFailed(texts.localized(u"無法讀取標準輸入"_s));
    if (bytes.size() > longestText)
        return commandFailed(texts.localized(u"標準輸入的文字過長"_s));
    const auto text = decodeUtf8(bytes);
    if (!text)
        return commandFailed(texts.localized(u"標準輸入不是 UTF-8 文字"_s));
    return *text;
}

Result<CommandOutput> recognizeCommand(const Invocation &invocation, Services &services)
{
    Stages stages;
    const auto picture = readPicture(invocation.argument, services.texts());
    if (!picture)
        return tl::unexpected(picture.error());
    stages.finish(u"decode"_s);
    const QList<TextBlock> blocks = recognizedBlocks(*picture, invocation, services);
    stages.finish(u"recognize"_s);
    QJsonArray lines;
    for (const TextBlock &block : blocks) {
        const NormBox &box = block.normBox;
        lines.append(
            QJsonObject{{u"text"_s, block.text}, {u"normBox"_s, QJsonArray{box.x, box.y, box.width, box.height}}});
    }
    return outputOf(QJsonObject{{u"width"_s, picture->width()}, {u"height"_s, picture->height()}, {u"blocks"_s, lines}},
                    invocation, stages);
}

Result<CommandOutput> imageCommand(const Invocation &invocation, Services &services)
{
    // No text is sent if the result couldn't be written.
    if (const auto destination = checkPictureDestination(invocation.output, services.texts()); !destination)
        return tl::unexpected(destination.error());
    chooseForThisCommand(invocation, services);
    Stages stages;
    auto picture = readPicture(invocation.argument, services.texts());
    if (!picture)
        return tl::unexpected(picture.error());
    stages.finish(u"decode"_s);
    services.prepareOnDevice(*qApp); // while the picture is read
    const QList<TextBlock> blocks = recognizedBlocks(
        *picture, invocation, services,
        [&manager = services.translationManager()](const QString &text) { return manager.isPhrase(text); });
    stages.finish(u"recognize"_s);
    const auto translations = translate(blocks, services);
    if (!translations)
        return tl::unexpected(translations.error());
    stages.finish(u"translate"_s);

    const SettingsStore &store = services.settings();
    const QString target = store.read(settings::targetLanguageCode);
    TranslatedPicture translated(picture->size(), blocks, translations->texts, target, overlayFontSettings(store));
    stages.finish(u"layout"_s);
    translated.paintOver(*picture, store.read(settings::glassOpacity));
    const auto written = writePicture(*picture, invocation.output, services.texts());
    if (!written)
        return tl::unexpected(written.error());
    if (!invocation.json)
        return withNote(outputOf(std::nullopt, invocation, stages), translations->note);
    const auto engine = translationEngine(store.read(settings::translationEngine));
    return withNote(outputOf(QJsonObject{{u"engine"_s, int(engine.value_or(TranslationEngine::apple))},
                                         {u"target"_s, target},
                                         {u"blocks"_s, withOutcomes(translated.toJson(), translations->outcomes)}},
                             invocation, stages),
                    translations->note);
}

Result<CommandOutput> textCommand(const Invocation &invocation, Services &services)
{
    chooseForThisCommand(invocation, services);
    Stages stages;
    services.prepareOnDevice(*qApp);
    const auto text = givenText(invocation.argument, services.texts());
    if (!text)
        return tl::unexpected(text.error());
    const auto translation = await<TextTranslation>(
        [&](auto completion) { services.translationManager().translateText(*text, completion); });
    stages.finish(u"translate"_s);
    if (translation.isMessage)
        return commandFailed(translation.text);
    CommandOutput output = outputOf(std::nullopt, invocation, stages);
    output.answer = translation.text;
    return withNote(std::move(output), translation.note);
}

Result<CommandOutput> testConnectionCommand(const Invocation &invocation, Services &services)
{
    chooseForThisCommand(invocation, services);
    services.prepareOnDevice(*qApp);
    const auto outcome = await<Result<QString>>([&](auto completion) { services.testEngine(completion); });
    if (!outcome)
        return commandFailed(services.texts().formatted(u"連線失敗：%@"_s, outcome.error().description));
    return CommandOutput{.answer = services.texts().formatted(u"連線成功：%@"_s, *outcome)};
}

Result<CommandOutput> remoteCommand(const Invocation &invocation, Services &services)
{
    const auto done = sendRemoteCommand(invocation.command, QDBusConnection::sessionBus(), services.texts());
    if (!done)
        return tl::unexpected(done.error());
    return CommandOutput{};
}

} // namespace lucentra
