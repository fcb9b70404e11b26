#include "Engines.h"

#include "HttpSession.h"
#include "Language.h"
#include "LocalizationManager.h"
#include "NeuralModel.h"
#include "ScreenTextRecognizer.h"
#include "SecretServiceStorage.h"
#include "read/LineReader.h"

#include <QStringList>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

Fetch modelFetch(const std::shared_ptr<HttpSession> &http, const LocalizationManager &texts)
{
    return [http, &texts](const QByteArray &url, qint64 offset, const HttpSession::TakePiece &take,
                          const std::function<bool()> &isWanted) -> ModelResult<int> {
        HttpRequest request{.url = url, .headers = {}, .body = {}, .mayChangeHost = true};
        if (!isProtected(QUrl::fromEncoded(url, QUrl::StrictMode)))
            return tl::unexpected(ModelProblem{.kind = ModelProblem::Kind::Unprotected});
        if (offset > 0)
            request.headers.append({"Range", "bytes=" + QByteArray::number(offset) + '-'});
        try {
            return http->download(request, take, isWanted);
        } catch (const TransportError &error) {
            if (error.kind() == TransportError::Kind::cancelled)
                return tl::unexpected(ModelProblem{.kind = ModelProblem::Kind::Cancelled});
            return tl::unexpected(
                ModelProblem{.kind = ModelProblem::Kind::Network, .text = error.failure(texts).description});
        }
    };
}

QString errorText(const NeuralModelError &error, const LocalizationManager &texts)
{
    switch (error.kind) {
    case NeuralModelError::Kind::Missing:
        return texts.formatted(u"資料夾裡沒有模型的這個檔案，或無法讀取：%@"_s, error.detail);
    case NeuralModelError::Kind::Damaged:
        return texts.formatted(u"模型的檔案已損壞：%@"_s, error.detail);
    case NeuralModelError::Kind::Unsupported:
        break;
    }
    return texts.formatted(u"不支援這種模型：%@"_s, error.detail);
}

/// The packages of the languages' models of one kind that aren't installed.
QStringList missingPackages(QLatin1StringView Language::*model)
{
    QStringList packages;
    for (const Language &language : targetLanguages) {
        const QString name = language.*model;
        if (!name.isEmpty() && !LineReader::isInstalled(name))
            packages.append(u"tesseract-ocr-"_s + QString(name).replace(u'_', u'-'));
    }
    return packages;
}

class EnginesOfThisSystem : public Engines
{
public:
    std::unique_ptr<TextRecognizer> makeRecognizer() const override { return std::make_unique<ScreenTextRecognizer>(); }

    OnDeviceEngine makeOnDeviceEngine(BuildPatience patience) const override
    {
        return lucentra::makeOnDeviceEngine(patience);
    }

    std::unique_ptr<SecretStorage> makeSecretStorage() const override
    {
        return std::make_unique<SecretServiceStorage>();
    }

    RemoteServices makeRemoteServices(const LocalizationManager &texts) const override
    {
        const auto http = std::make_shared<HttpSession>();
        return {.clients = remoteClients(*http, texts), .fetchModel = modelFetch(http, texts)};
    }

    Result<QStringList> translateWithModel(const QString &folder, const QStringList &sentences, double lengthFactor,
                                           const LocalizationManager &texts) const override
    {
        const auto model = NeuralModel::open(folder);
        if (!model)
            return tl::unexpected(
                Failure{.domain = u"NeuralModel"_s, .code = 0, .description = errorText(model.error(), texts)});
        QStringList translations;
        for (const NeuralModel::Translation &translation :
             (*model)->translate(sentences, {.lengthFactor = lengthFactor}))
            translations.append(translation.text);
        return translations;
    }

    QStringList readableLanguages() const override
    {
        QStringList codes;
        for (const Language &language : targetLanguages) {
            if (LineReader::isInstalled(language.lineModel))
                codes.append(language.code);
        }
        return codes;
    }

    QStringList missingReadingPackages() const override { return missingPackages(&Language::lineModel); }
    QStringList missingVerticalPackages() const override { return missingPackages(&Language::columnModel); }
};

} // namespace

} // namespace lucentra

extern "C" Q_DECL_EXPORT const lucentra::Engines *lucentraEngines()
{
    static const lucentra::EnginesOfThisSystem engines;
    return &engines;
}
