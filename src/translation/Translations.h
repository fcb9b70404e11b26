#pragma once

#include "OnDeviceTranslationService.h"

#include <QList>
#include <QString>
#include <QStringList>

namespace lucentra {

// The results of the manager. Each converts to its texts, for callers that don't need the note.

/// The translations of blocks: one text per block.
struct BlockTranslations
{
    QStringList texts;
    /// Why no text was translated, and what helps: a sentence in the interface language. Empty if one was translated.
    QString note;
    QList<OnDeviceOutcome> outcomes; ///< of the on-device engine, one per block; empty for other engines

    operator const QStringList &() const { return texts; }
};

/// The translation of typed text.
struct TextTranslation
{
    QString text;
    QString note;           ///< as above
    bool isMessage = false; ///< the text is an error message

    operator const QString &() const { return text; }
};

} // namespace lucentra
