#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <functional>

namespace lucentra {

/// A source and a target language as codes: "en", "ja", "zh-Hant", "zh-Hans", "ko", "de" ...; a region may follow.
struct LanguagePair
{
    QString source;
    QString target;

    bool operator==(const LanguagePair &) const = default;
};

/// What became of one text.
struct OnDeviceOutcome
{
    enum class Kind {
        Translated,
        SameLanguage,    ///< it is in the target language already, or in another kind of Chinese
        Undetermined,    ///< nobody can say in which language it is
        UnknownPhrase,   ///< a service has the pair, but not this text
        NotReady,        ///< a service that may know the text still gathers what it knows; a later try will tell
        PairUnavailable, ///< no service has the pair
    };

    Kind kind = Kind::PairUnavailable;
    QString text;    ///< the translation; empty for every other kind
    QString service; ///< which service made it: its `OnDeviceServiceStatus::name`
    /// How sure the service is, 0 to 1. Values of different services can be compared, though only roughly: 0.5 is what
    /// one single source claims.
    double confidence = 0;

    bool operator==(const OnDeviceOutcome &) const = default;
};

enum class PairAvailability {
    Available, ///< perhaps, for a service that isn't ready yet
    Addable,   ///< it would be, were the packages installed that the status names
    Unavailable
};

/// What a user may know of a service.
struct OnDeviceServiceStatus
{
    QString name;              ///< a short one in Latin letters, the same in every language
    QList<LanguagePair> pairs; ///< those that are available
    QStringList addableBy;     ///< Debian packages that would add pairs or phrases; may be empty
    /// Whether this system is set up to install programs without their translations, so that they must be let in.
    bool isStripped = false;
    bool isGettingReady = false; ///< what it knows is still being gathered
    qint64 phraseCount = 0;      ///< what it looks up in; 0 for a service that composes
    qint64 cacheAgeSeconds = -1; ///< how old its cache is; -1 where it has none
};

/// Translates on this machine, without network. All functions may be called on any thread, several at once.
class OnDeviceTranslationService
{
public:
    virtual ~OnDeviceTranslationService() = default;

    /// Translates a batch of one language pair: one outcome a text, in their order. Blocks, but ends soon with whatever
    /// outcomes once `isWanted`, if given, returns false.
    virtual QList<OnDeviceOutcome> translate(const LanguagePair &pair, const QStringList &texts,
                                             const std::function<bool()> &isWanted) = 0;

    virtual PairAvailability availability(const LanguagePair &pair) = 0;

    /// One entry a service that stands behind this one.
    virtual QList<OnDeviceServiceStatus> status() = 0;
};

} // namespace lucentra
