#include "Commands.h"

#include "ModelInstallation.h"
#include "Services.h"
#include "Settings.h"

#include <cstdio>

#include <unistd.h>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

/// One line of a table: "    en → ja    36 MB  2.1 base".
QString modelLine(const LanguagePair &pair, qint64 bytes, const QString &rest)
{
    return (u"    "_s + modelName(pair)).leftJustified(20) + megabyteText(bytes).rightJustified(7) + u"  "_s + rest;
}

QStringList storedLines(const QList<StoredModel> &models, const LocalizationManager &texts)
{
    QStringList lines{texts.localized(u"這部電腦上的翻譯模型："_s)};
    for (const StoredModel &model : models) {
        QStringList rest{model.edition};
        if (!model.isComplete)
            rest.append(texts.localized(u"尚未下載完成"_s));
        else if (!model.isOwn)
            rest.append(texts.localized(u"由系統安裝"_s));
        rest.removeAll(QString());
        lines.append(modelLine(model.pair, model.size, rest.join(u"  "_s)).trimmed().prepend(u"    "_s));
    }
    if (models.isEmpty())
        lines.append(u"    "_s + texts.localized(u"沒有"_s));
    return lines;
}

QStringList offerLines(const QList<OfferedModel> &offers, const LocalizationManager &texts)
{
    QStringList lines{texts.localized(u"可以下載的翻譯模型："_s)};
    for (const OfferedModel &offer : offers) {
        const KnownModel *known = knownModel(offer.pair);
        const QString quality =
            known && known->quality > 0 ? u"  COMET "_s + QString::number(known->quality, 'f', 2) : QString();
        lines.append(modelLine(offer.pair, offer.packedSize(), offer.edition() + quality));
    }
    return lines;
}

/// The licence is known for the public server only.
QString licenceLine(const SettingsStore &store, const LocalizationManager &texts)
{
    const bool isPublic = store.read(settings::modelRegistryURL) == settings::modelRegistryURL.defaultValue;
    return texts.formatted(u"授權：%@"_s, isPublic ? u"MPL-2.0"_s : texts.localized(u"請參閱伺服器的說明"_s));
}

void printProgress(const ModelProgress &progress)
{
    const QString line = u"\r"_s + megabyteText(progress.bytes) + u" / "_s + megabyteText(progress.total) + u"   "_s;
    std::fputs(line.toUtf8().constData(), stderr);
}

} // namespace

Result<CommandOutput> modelsCommand(const Invocation & /*invocation*/, Services &services)
{
    const LocalizationManager &texts = services.texts();
    QStringList lines = storedLines(services.models().stored(), texts);
    const auto offers = services.models().offered([] { return true; });
    if (!offers)
        return CommandOutput{.answer = lines.join(u'\n'), .message = modelProblemText(offers.error(), texts)};
    lines += offerLines(*offers, texts);
    lines.append(licenceLine(services.settings(), texts));
    return CommandOutput{.answer = lines.join(u'\n')};
}

Result<CommandOutput> installModelCommand(const Invocation &invocation, Services &services)
{
    const LocalizationManager &texts = services.texts();
    const auto pair = modelPair(invocation.argument);
    if (!pair)
        return commandFailed(texts.formatted(u"不是語言組合：%@"_s, invocation.argument));
    const bool isTerminal = ::isatty(STDERR_FILENO);
    const auto installed = installModels(
        services.models(), *pair, [=](const ModelProgress &progress) { isTerminal ? printProgress(progress) : void(); },
        [] { return true; });
    if (isTerminal)
        std::fputs("\n", stderr);
    if (!installed)
        return commandFailed(modelProblemText(installed.error(), texts));
    if (installed->isEmpty())
        return CommandOutput{.answer = texts.localized(u"已經安裝最新的翻譯模型。"_s)};
    QStringList names;
    for (const LanguagePair &model : *installed)
        names.append(modelName(model));
    return CommandOutput{.answer = texts.formatted(u"已安裝：%@"_s, names.join(u' '))};
}

Result<CommandOutput> removeModelCommand(const Invocation &invocation, Services &services)
{
    const LocalizationManager &texts = services.texts();
    const auto pair = modelPair(invocation.argument);
    if (!pair)
        return commandFailed(texts.formatted(u"不是語言組合：%@"_s, invocation.argument));
    const auto removed = services.models().remove(*pair);
    if (!removed)
        return commandFailed(modelProblemText(removed.error(), texts));
    return CommandOutput{.answer = texts.formatted(u"已移除：%@"_s, modelName(*pair))};
}

} // namespace lucentra
