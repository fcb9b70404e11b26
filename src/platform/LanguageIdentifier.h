#pragma once

#include <QStringList>

namespace lucentra {

/// Identifies the language that texts are written in.
class LanguageIdentifier
{
public:
    virtual ~LanguageIdentifier() = default;

    /// The most likely language of each text as a code ("en", "ja", "zh-Hant", "zh-Hans", "ko" ...), or an empty text
    /// where none can be told. The texts belong together, as the lines of a screen do: one that could be in several
    /// languages follows the others. Any thread, several at once.
    virtual QStringList identify(const QStringList &texts) = 0;
};

} // namespace lucentra
