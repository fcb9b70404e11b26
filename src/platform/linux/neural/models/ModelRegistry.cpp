#include "ModelRegistry.h"

#include "Json.h"

#include <QRegularExpression>
#include <QVersionNumber>

#include <algorithm>
#include <map>
#include <tuple>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

constexpr qsizetype mostRecords = 50'000;
constexpr qint64 largestFile = 256 << 20; ///< four times what models have

enum class Channel { Nightly, Beta, Release };

bool matches(const QString &text, const QString &pattern)
{
    return QRegularExpression(u"\\A(?:"_s + pattern + u")\\z"_s).match(text).hasMatch();
}

/// The channel that a record's condition leaves it to; nullopt if it isn't for desktop programs, or not understood.
std::optional<Channel> channelOf(const QString &condition)
{
    auto channel = Channel::Release;
    for (QString part : condition.split(u"&&"_s)) {
        part = part.remove(u'(').remove(u')').remove(u'\'').remove(u'"').simplified();
        if (part.isEmpty() || part == u"env.appinfo.OS != Android")
            continue;
        if (!matches(part, u"env\\.channel == [a-z]+( \\|\\| env\\.channel == [a-z]+)*"_s))
            return std::nullopt;
        if (!part.contains(u"== release"))
            channel = std::min(channel, part.contains(u"== beta") ? Channel::Beta : Channel::Nightly);
    }
    return channel;
}

/// "2.1" is released, "2.1b2" a beta, "2.1a1" a nightly version.
Channel channelOfVersion(const QString &version)
{
    return version.contains(u'a') ? Channel::Nightly : version.contains(u'b') ? Channel::Beta : Channel::Release;
}

/// Of two architectures of one version, the one that translates better for its size.
int rankOf(const QString &architecture)
{
    return architecture == u"base-memory" ? 2 : architecture == u"base" ? 1 : 0;
}

std::optional<qint64> fileSize(const QJsonValue &value)
{
    const double size = value.toDouble(-1);
    return size >= 1 && size <= double(largestFile) ? std::optional(qint64(size)) : std::nullopt;
}

std::optional<ModelFile> fileOf(const QJsonObject &record)
{
    const QJsonObject attachment = record[u"attachment"_s].toObject();
    const QString name = record[u"name"_s].toString();
    const QString location = attachment[u"location"_s].toString();
    const QString packedHash = attachment[u"hash"_s].toString().toLower();
    const QString hash = record[u"decompressedHash"_s].toString().toLower();
    const auto packedSize = fileSize(attachment[u"size"_s]);
    const auto size = fileSize(record[u"decompressedSize"_s]);
    static const QString sha256 = u"[0-9a-f]{64}"_s;
    if (!matches(name, u"[A-Za-z0-9][A-Za-z0-9._-]{0,99}"_s) ||
        !matches(location, u"[A-Za-z0-9_-][A-Za-z0-9._-]*(/[A-Za-z0-9_-][A-Za-z0-9._-]*)*"_s) ||
        location.size() > 500 || !matches(packedHash, sha256) || !matches(hash, sha256) || !packedSize || !size)
        return std::nullopt;
    return ModelFile{.name = name,
                     .location = location.toLatin1(),
                     .packedSize = *packedSize,
                     .packedHash = packedHash.toLatin1(),
                     .size = *size,
                     .hash = hash.toLatin1()};
}

/// The files of one model as they are collected.
struct Candidate
{
    OfferedModel model;
    Channel channel = Channel::Release;
    std::map<QString, std::pair<double, ModelFile>> files; ///< by kind; the latest of each, with its time

    bool isComplete() const
    {
        const auto has = [this](const QString &kind) { return files.contains(kind); };
        return has(u"model"_s) && has(u"lex"_s) && (has(u"vocab"_s) || (has(u"srcvocab"_s) && has(u"trgvocab"_s)));
    }
    auto rank() const
    {
        return std::tuple(channel, QVersionNumber::fromString(model.version), rankOf(model.architecture));
    }
};

/// Whether the name is one that an installed file of the kind has.
bool isNameOfKind(const QString &name, const QString &kind)
{
    return matches(name, kind + (kind.endsWith(u"vocab") ? u"\\..+\\.spm"_s : u"\\..+\\.bin"_s));
}

} // namespace

std::optional<QList<OfferedModel>> readModelRegistry(const QByteArray &json)
{
    const auto document = parseJson(json);
    if (!document || !document->object()[u"data"_s].isArray())
        return std::nullopt;
    const QJsonArray records = document->object()[u"data"_s].toArray();
    std::map<std::tuple<QString, QString, QString>, Candidate> candidates; // by pair, architecture and version
    for (qsizetype i = 0; i < std::min(records.size(), mostRecords); ++i) {
        const QJsonObject record = records[i].toObject();
        const auto pair = modelPair(
            QString(record[u"sourceLanguage"_s].toString() + u'-' + record[u"targetLanguage"_s].toString()));
        const QString architecture = record[u"architecture"_s].toString();
        const QString version = record[u"version"_s].toString();
        const QString kind = record[u"fileType"_s].toString();
        const auto channel = channelOf(record[u"filter_expression"_s].toString());
        const auto file = fileOf(record);
        if (!pair || !channel || !file || !matches(architecture, u"[a-z0-9-]{1,30}"_s) ||
            !matches(version, u"[0-9]{1,4}(\\.[0-9]{1,4}){0,3}([ab][0-9]{1,4})?"_s) ||
            !matches(kind, u"model|lex|vocab|srcvocab|trgvocab"_s) || !isNameOfKind(file->name, kind))
            continue;
        Candidate &candidate = candidates[{modelName(*pair), architecture, version}];
        candidate.model = {.pair = *pair, .architecture = architecture, .version = version, .files = {}};
        candidate.channel = std::min({candidate.channel, *channel, channelOfVersion(version)});
        const double time = record[u"last_modified"_s].toDouble();
        const auto known = candidate.files.find(kind);
        if (known == candidate.files.end() || known->second.first < time)
            candidate.files[kind] = {time, *file};
    }
    std::map<QString, const Candidate *> best;
    for (const auto &[key, candidate] : candidates) {
        const Candidate *&chosen = best[std::get<0>(key)];
        if (candidate.isComplete() && (!chosen || candidate.rank() > chosen->rank()))
            chosen = &candidate;
    }
    QList<OfferedModel> models;
    for (const auto &[name, candidate] : best) {
        if (!candidate)
            continue;
        models.append(candidate->model);
        const bool isShared = candidate->files.contains(u"vocab"_s);
        for (const auto &[kind, file] : candidate->files) {
            if (kind == u"model" || kind == u"lex" || (kind == u"vocab") == isShared)
                models.last().files.append(file.second);
        }
    }
    return models;
}

} // namespace lucentra
