#include "TranslationModels.h"

#include <QRegularExpression>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

constexpr qint64 megabyte = 1'000'000;

constexpr std::array knownModels{
    KnownModel{u"en", u"ja", 36 * megabyte, 0.90},
    KnownModel{u"ja", u"en", 38 * megabyte, 0.86},
    KnownModel{u"en", u"zh", 38 * megabyte, 0.86},
    KnownModel{u"zh", u"en", 38 * megabyte, 0.86},
    KnownModel{u"en", u"ko", 38 * megabyte, 0.87},
    KnownModel{u"ko", u"en", 37 * megabyte, 0.86},
    KnownModel{u"de", u"en", 0, 0},
    KnownModel{u"fr", u"en", 0, 0},
    KnownModel{u"es", u"en", 0, 0},
    KnownModel{u"it", u"en", 0, 0},
    KnownModel{u"pt", u"en", 0, 0},
    KnownModel{u"nl", u"en", 0, 0},
    KnownModel{u"pl", u"en", 0, 0},
    KnownModel{u"ru", u"en", 0, 0},
};

bool isTraditional(QStringView tag)
{
    return tag.startsWith(u"zh-Hant") || tag.startsWith(u"zh_Hant") || tag == u"zh-TW" || tag == u"zh-HK";
}

QStringView languageOf(QStringView tag)
{
    const auto end = std::find_if(tag.begin(), tag.end(), [](QChar c) { return c == u'-' || c == u'_'; });
    return tag.first(end - tag.begin());
}

/// The model of one step. A model of the very kind of Chinese comes first.
std::optional<LanguagePair> step(const LanguagePair &wanted, const QList<LanguagePair> &available)
{
    const auto isExact = [&wanted](const LanguagePair &pair) { return isSameModelPair(pair, wanted); };
    // Simplified can be made into Traditional and back.
    const auto isNear = [&wanted](const LanguagePair &pair) {
        return languageOf(pair.source) == languageOf(wanted.source) && !isTraditional(pair.source) &&
               languageOf(pair.target) == languageOf(wanted.target) && !isTraditional(pair.target);
    };
    auto found = std::find_if(available.begin(), available.end(), isExact);
    if (found == available.end())
        found = std::find_if(available.begin(), available.end(), isNear);
    return found == available.end() ? std::nullopt : std::optional(*found);
}

} // namespace

qint64 OfferedModel::packedSize() const
{
    qint64 sum = 0;
    for (const ModelFile &file : files)
        sum += file.packedSize;
    return sum;
}

qint64 OfferedModel::size() const
{
    qint64 sum = 0;
    for (const ModelFile &file : files)
        sum += file.size;
    return sum;
}

std::optional<LanguagePair> modelPair(QStringView name)
{
    static const QRegularExpression pattern(
        u"^([a-z]{2,3}(?:[-_][A-Z][a-z]{3})?)-([a-z]{2,3}(?:[-_][A-Z][a-z]{3})?)\\z"_s);
    const auto match = pattern.match(name.toString());
    return match.hasMatch() ? std::optional(LanguagePair{match.captured(1), match.captured(2)}) : std::nullopt;
}

QString modelName(const LanguagePair &pair)
{
    return pair.source + u'-' + pair.target;
}

bool isSameModelLanguage(QStringView one, QStringView other)
{
    return languageOf(one) == languageOf(other) && isTraditional(one) == isTraditional(other);
}

bool isSameModelPair(const LanguagePair &one, const LanguagePair &other)
{
    return isSameModelLanguage(one.source, other.source) && isSameModelLanguage(one.target, other.target);
}

QList<LanguagePair> modelRoute(const LanguagePair &wanted, const QList<LanguagePair> &available)
{
    if (languageOf(wanted.source) == languageOf(wanted.target))
        return {};
    if (const auto direct = step(wanted, available))
        return {*direct};
    const auto first = step({wanted.source, u"en"_s}, available);
    const auto second = step({u"en"_s, wanted.target}, available);
    return first && second ? QList{*first, *second} : QList<LanguagePair>();
}

const KnownModel *knownModel(const LanguagePair &pair)
{
    const auto found = std::find_if(knownModels.begin(), knownModels.end(), [&pair](const KnownModel &model) {
        return isSameModelPair({model.source.toString(), model.target.toString()}, pair);
    });
    return found == knownModels.end() ? nullptr : &*found;
}

MissingModels missingModels(const LanguagePair &wanted, const QList<LanguagePair> &installed)
{
    const QList<LanguagePair> route = modelRoute(wanted, installed + knownModelPairs());
    MissingModels missing{.steps = route.size()};
    bool isSizeKnown = true;
    for (const LanguagePair &pair : route) {
        const bool isInstalled = std::any_of(installed.begin(), installed.end(), [&pair](const LanguagePair &other) {
            return isSameModelPair(pair, other);
        });
        if (isInstalled)
            continue;
        const KnownModel *known = knownModel(pair);
        missing.pairs.append(pair);
        missing.packedSize += known ? known->packedSize : 0;
        isSizeKnown = isSizeKnown && known && known->packedSize > 0;
    }
    if (!isSizeKnown)
        missing.packedSize = 0;
    return missing;
}

QList<LanguagePair> knownModelPairs()
{
    QList<LanguagePair> pairs;
    for (const KnownModel &model : knownModels)
        pairs.append({model.source.toString(), model.target.toString()});
    return pairs;
}

} // namespace lucentra
