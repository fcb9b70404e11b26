#pragma once

#include <QStringList>

namespace lucentra {

/// Identifies the language that texts are written in.
class LanguageIdentifier
{
public:
    virtual ~LanguageIdentifier() = default;

    /// The most likely language of each text as a code ("en", "ja", "zh-Hant", "zh-Hans", "ko" ...), or an empty text
    /// if it can't be identified. The texts belong together, as the lines of a screen do: one that could be in several
    /// languages is taken for that of the others. Any thread, several at once.
    virtual QStringList identify(const QStringList &texts) = 0;
};

} // namespace lucentra
