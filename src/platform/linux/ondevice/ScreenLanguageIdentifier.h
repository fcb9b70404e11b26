#pragma once

#include "LanguageIdentifier.h"

#include <functional>
#include <memory>

namespace lucentra {

class PhraseFile;

/// Identifies the languages of short lines of screens: by their script, by the phrases that contain them
/// exactly, by the character sets and n-grams of their letters, and by a general detector for languages that the
/// phrases don't have. Works without phrases, too, but less reliably.
class ScreenLanguageIdentifier : public LanguageIdentifier
{
public:
    /// `phrases` returns the current phrases, or null; called on the threads of `identify`.
    explicit ScreenLanguageIdentifier(std::function<std::shared_ptr<const PhraseFile>()> phrases);

    QStringList identify(const QStringList &texts) override;

private:
    std::function<std::shared_ptr<const PhraseFile>()> m_phrases;
};

} // namespace lucentra
