#pragma once

#include "ModelDownload.h"
#include "OnDeviceEngine.h"
#include "SecretStorage.h"
#include "TextRecognizer.h"
#include "TranslationClients.h"

namespace lucentra {

/// What reaches services on the network.
struct RemoteServices
{
    TranslationClients clients; ///< of the remote engines
    Fetch fetchModel;
};

/// The parts of the program that need many other libraries. They are in a library of their own,
/// `lucentra-engines.so` beside the executable, so that the pane is on the screen before those are loaded.
class Engines
{
public:
    virtual ~Engines() = default;

    virtual std::unique_ptr<TextRecognizer> makeRecognizer() const = 0;
    virtual OnDeviceEngine makeOnDeviceEngine(BuildPatience patience) const = 0;
    virtual std::unique_ptr<SecretStorage> makeSecretStorage() const = 0;
    virtual RemoteServices makeRemoteServices(const LocalizationManager &texts) const = 0;

    /// Translates sentences with the model in a folder. Fails if the model can't be used.
    virtual Result<QStringList> translateWithModel(const QString &folder, const QStringList &sentences,
                                                   double lengthFactor, const LocalizationManager &texts) const = 0;

    /// The languages, as tags, that can be read.
    virtual QStringList readableLanguages() const = 0;
    /// The packages of recognition models that aren't installed, by their names in Debian.
    virtual QStringList missingReadingPackages() const = 0;
    /// The same for the models of vertical text, which fewer users need.
    virtual QStringList missingVerticalPackages() const = 0;
};

/// Loads the library at the first call, on the main thread. If that fails, reports the reason and ends the program.
const Engines &loadEngines(const LocalizationManager &texts);

} // namespace lucentra
