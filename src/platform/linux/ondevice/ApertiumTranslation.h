#pragma once

#include "OnDeviceTranslationService.h"

#include <QByteArray>
#include <QString>

#include <map>
#include <memory>
#include <mutex>

namespace lucentra {

class NulProcess;

// The format of Apertium's stream, without the NUL byte at the end of a text.

/// The text with the stream's own characters escaped, and a mark that ends it, so that Apertium answers at once.
QByteArray apertiumQuestion(const QString &text);
/// Parses an answer. Unknown words begin with an asterisk and lower the confidence.
OnDeviceOutcome apertiumOutcome(QByteArray answer, const QString &source);

/// Translates with Apertium if it is installed, for the pairs that are installed with it. Keeps one process per pair,
/// started with the pair's first text.
class ApertiumTranslation : public OnDeviceTranslationService
{
public:
    /// `program` is the path of apertium-wblank-mode; if it is empty, there are no pairs. Each pair is a file in
    /// `modesFolder`, such as "eng-spa.mode".
    ApertiumTranslation(const QString &program, const QString &modesFolder);
    /// The installed Apertium.
    static std::unique_ptr<ApertiumTranslation> ofThisSystem();
    ~ApertiumTranslation() override;

    QList<OnDeviceOutcome> translate(const LanguagePair &pair, const QStringList &texts,
                                     const std::function<bool()> &isWanted) override;
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
