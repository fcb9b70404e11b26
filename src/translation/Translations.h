#pragma once

#include "OnDeviceTranslationService.h"

#include <QList>
#include <QString>
#include <QStringList>

namespace lucentra {

// What the manager answers with. Each converts to its texts, for those to whom the note means nothing.

/// Of blocks: one text a block.
struct BlockTranslations
{
    QStringList texts;
    /// Why no text is other than its source, and what helps: a sentence in the interface language. Empty where one is.
    QString note;
    QList<OnDeviceOutcome>
        outcomes; ///< of the engine of this machine, what became of each; empty for every other engine

    operator const QStringList &() const { return texts; }
};

/// Of typed text.
struct TextTranslation
{
    QString text;
    QString note;           ///< as above
    bool isMessage = false; ///< no translation, but what went wrong

    operator const QString &() const { return text; }
};

} // namespace lucentra
