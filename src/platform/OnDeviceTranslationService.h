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

/// The outcome for one text.
struct OnDeviceOutcome
{
    /// Ordered by how much an outcome helps the user: of two services' outcomes the greater one counts.
    enum class Kind {
        PairUnavailable, ///< no service has the pair
        Undetermined,    ///< the language of the text is unknown
        UnknownPhrase,   ///< a service has the pair, but cannot translate this text
        SameLanguage,    ///< the text is in the target language already, or in another kind of Chinese
        NotReady,        ///< a service that may know the text is still building its data; a later try may succeed
        Translated,
    };

    Kind kind = Kind::PairUnavailable;
    QString text;    ///< the translation; empty for every other kind
    QString service; ///< which service made it: its `OnDeviceServiceStatus::name`
    /// Confidence of the service, 0 to 1. Roughly comparable between services: 0.5 is the confidence in a translation
    /// that a single source gives.
    double confidence = 0;

    bool operator==(const OnDeviceOutcome &) const = default;
};

/// The state of a service, for the user.
struct OnDeviceServiceStatus
{
    QString name;              ///< short, in Latin letters, the same in every interface language
    QList<LanguagePair> pairs; ///< available ones
    QStringList addableBy;     ///< Debian packages that would add pairs or phrases; may be empty
    /// Whether this system is configured to install programs without their translations.
    bool isStripped = false;
    bool isGettingReady = false; ///< its data is still being built
    QString traditionalChineseBy; ///< what converts it from and into Simplified Chinese; empty if nothing needs to
    qint64 phraseCount = 0;      ///< stored phrases; 0 for a service that doesn't look phrases up
    qint64 cacheAgeSeconds = -1; ///< age of its cache; -1 if it has none
};

/// What would help a service with a language pair: a package of this system, or the models of a pair.
struct OnDeviceAddition
{
    QString package;       ///< empty for models
    LanguagePair models;   ///< the pair that they translate, perhaps by way of others
    qint64 bytes = 0;      ///< of their download, roughly; 0 if unknown
    bool isRepair = false; ///< they are on this computer, but can't be used

    bool operator==(const OnDeviceAddition &) const = default;
};

/// Translates on this computer, without a network. All functions may be called on any thread, concurrently.
class OnDeviceTranslationService
{
public:
    virtual ~OnDeviceTranslationService() = default;

    /// Starts to open or build the data that translations need, and returns at once. The first call that needs the
    /// data starts it, too.
    virtual void prepare() {}
    /// Ends all waiting, for good: what isn't ready by now counts as missing. To be called when the program quits.
    virtual void cancel() {}

    /// Translates texts of one language pair. Returns one outcome per text, in their order. Blocks, but returns soon
    /// after `isWanted`, if given, returns false; the outcomes are arbitrary then.
    virtual QList<OnDeviceOutcome> translate(const LanguagePair &pair, const QStringList &texts,
                                             const std::function<bool()> &isWanted) = 0;

    /// As `translate`, but doesn't wait for data that is being built: `NotReady` is the outcome for a text that may be
    /// known then.
    virtual QList<OnDeviceOutcome> translateAtOnce(const LanguagePair &pair, const QStringList &texts,
                                                   const std::function<bool()> &isWanted)
    {
        return translate(pair, texts, isWanted);
    }

    /// Whether a text is a phrase of programs with a translation, which is translated by itself rather than as part of
    /// a paragraph. Doesn't wait for data that is being built.
    virtual bool isPhrase(const LanguagePair & /*pair*/, const QString & /*text*/) { return false; }

    /// What would help with texts of a pair that couldn't be translated. Doesn't wait.
    virtual QList<OnDeviceAddition> additions(const LanguagePair & /*pair*/) { return {}; }

    /// One entry per service that this one consists of. Blocks while data is being built, as `translate` does.
    virtual QList<OnDeviceServiceStatus> status() = 0;
    /// As `status`, but doesn't wait for data that is being built for the first time.
    virtual QList<OnDeviceServiceStatus> currentStatus() { return status(); }
};

} // namespace lucentra
