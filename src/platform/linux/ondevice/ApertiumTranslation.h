#pragma once

#include "OnDeviceTranslationService.h"

#include <QByteArray>
#include <QString>

#include <map>
#include <memory>
#include <mutex>

namespace lucentra {

class NulProcess;

// What goes through Apertium's stream, without the NUL byte at its end.

/// The text with the stream's own characters escaped, and a mark after which nothing is waited for.
QByteArray apertiumQuestion(const QString &text);
/// The text of an answer, and how much of it was known: unknown words begin with an asterisk.
OnDeviceOutcome apertiumOutcome(QByteArray answer, const QString &source);

/// Translates with Apertium where it is installed, for the pairs that are installed with it. One process a pair is
/// kept, started with its first text.
class ApertiumTranslation : public OnDeviceTranslationService
{
public:
    /// `program` is the path of apertium-wblank-mode, or empty; the modes that it makes pipelines of are files called
    /// "eng-spa.mode" in `modesFolder`.
    ApertiumTranslation(const QString &program, const QString &modesFolder);
    /// Those of this system.
    static std::unique_ptr<ApertiumTranslation> ofThisSystem();
    ~ApertiumTranslation() override;

    QList<OnDeviceOutcome> translate(const LanguagePair &pair, const QStringList &texts,
                                     const std::function<bool()> &isWanted) override;
    PairAvailability availability(const LanguagePair &pair) override;
    QList<OnDeviceServiceStatus> status() override;

private:
    struct Mode
    {
        LanguagePair pair;
        std::mutex mutex;
        std::unique_ptr<NulProcess> process; ///< guarded by the mutex
    };
    Mode *mode(const LanguagePair &pair) const;

    std::map<QString, std::unique_ptr<Mode>> m_modes; ///< by the mode's name
};

} // namespace lucentra
