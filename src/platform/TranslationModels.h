#pragma once

#include "OnDeviceTranslationService.h"

#include <tl/expected.hpp>

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringView>

#include <functional>
#include <optional>

namespace lucentra {

/// A translation model in a folder of this computer. Its languages are tags as they are published: "en", "ja", "zh",
/// "zh-Hant" ...
struct StoredModel
{
    LanguagePair pair;
    qint64 size = 0;        ///< of its files in bytes
    QString edition;        ///< version and architecture, such as "2.1 base"; empty if unknown
    bool isOwn = false;     ///< in the user's folder, from where it can be removed
    bool isComplete = true; ///< false for a download that can be continued
};

/// A published file of a model. All values are checked: the name has no folder, the location stays below its address.
struct ModelFile
{
    QString name;
    QByteArray location; ///< relative to the address of the files
    qint64 packedSize = 0; ///< in bytes
    QByteArray packedHash; ///< SHA-256 in lower-case hexadecimal digits
    qint64 size = 0;
    QByteArray hash;

    bool operator==(const ModelFile &) const = default;
};

/// A model that can be downloaded.
struct OfferedModel
{
    LanguagePair pair;
    QString architecture;
    QString version;
    QList<ModelFile> files;

    qint64 packedSize() const; ///< what is downloaded, in bytes
    qint64 size() const;       ///< what is stored, in bytes
    QString edition() const { return version + u' ' + architecture; }

    bool operator==(const OfferedModel &) const = default;
};

/// Why something couldn't be done with models.
struct ModelProblem
{
    enum class Kind {
        Cancelled,
        Busy,         ///< another process downloads
        Unprotected,  ///< an address is neither https nor on this computer
        InvalidList,  ///< the list of models can't be used
        NotOffered,
        Network,      ///< `text` is the sentence for the user
        Refused,      ///< the server's status is `number`
        CutOff,       ///< a file ended early; what has arrived is kept
        WrongSize,    ///< a file is longer than announced; dropped
        WrongContent, ///< a file isn't the announced one; dropped
        DiskFull,     ///< `number` bytes are needed
        NotWritten,   ///< `text` is the system's reason
        NotInstalled,
        NotOwn, ///< not in the user's folder
    };

    Kind kind = Kind::Network;
    QString text;
    qint64 number = 0;

    bool operator==(const ModelProblem &) const = default;
};

template <typename Value>
using ModelResult = tl::expected<Value, ModelProblem>;

/// The translation models on this computer and those that a server offers. Any thread.
class TranslationModels
{
public:
    virtual ~TranslationModels() = default;

    /// All models, and unfinished downloads. Reads the folders anew.
    virtual QList<StoredModel> stored() = 0;

    /// Asks the server for its list: the best model of each pair. Blocks; ends soon after `isWanted` returns false.
    virtual ModelResult<QList<OfferedModel>> offered(const std::function<bool()> &isWanted) = 0;

    /// Downloads a model and installs it in the user's folder in place of an older one. Continues an unfinished
    /// download of the same files. `progress` receives the bytes that have arrived. Blocks; ends soon after `isWanted`
    /// returns false, and keeps what has arrived.
    virtual ModelResult<void> install(const OfferedModel &model, const std::function<void(qint64 bytes)> &progress,
                                      const std::function<bool()> &isWanted) = 0;

    /// Removes the user's model of exactly this pair, and its unfinished download.
    virtual ModelResult<void> remove(const LanguagePair &pair) = 0;
};

/// Reads a pair such as "en-ja" or "zh-Hant-en".
std::optional<LanguagePair> modelPair(QStringView name);
/// The name of a pair: "en-ja".
QString modelName(const LanguagePair &pair);

/// Whether two tags name the same language for models: "zh" is "zh-Hans", and other regions don't count.
bool isSameModelLanguage(QStringView one, QStringView other);

/// Whether two pairs name the same languages for models.
bool isSameModelPair(const LanguagePair &one, const LanguagePair &other);

/// The models that a translation goes through: one, or two by way of English. Traditional Chinese is made from
/// Simplified if there is no model of it. Returns an empty list if the available ones don't suffice.
QList<LanguagePair> modelRoute(const LanguagePair &wanted, const QList<LanguagePair> &available);

/// The models that a translation needs and that aren't installed, as far as is known without asking the server.
struct MissingModels
{
    qsizetype steps = 0; ///< models of the whole route; 0 if there is none
    QList<LanguagePair> pairs;
    qint64 packedSize = 0; ///< of the download, roughly, in bytes; 0 if unknown
};
MissingModels missingModels(const LanguagePair &wanted, const QList<LanguagePair> &installed);

/// What is known of a published model before the list has been fetched.
struct KnownModel
{
    QStringView source;
    QStringView target;
    qint64 packedSize; ///< roughly, in bytes; 0 if unknown
    double quality;    ///< COMET of the published evaluation, 0 to 1; 0 if unknown
};
/// Null if nothing is known.
const KnownModel *knownModel(const LanguagePair &pair);
/// The pairs of all known models.
QList<LanguagePair> knownModelPairs();

} // namespace lucentra
