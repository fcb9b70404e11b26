#pragma once

#include "LanguageIdentifier.h"

#include <functional>
#include <memory>

namespace lucentra {

class PhraseFile;

/// Tells the languages of the short lines that stand on screens: by their script, by what the memory of phrases knows
/// exactly, by the character sets and n-grams of their letters, and by a general detector for languages that the
/// memory doesn't have. It works without a memory too, though less surely.
class ScreenLanguageIdentifier : public LanguageIdentifier
{
public:
    /// `memory` gives the memory of this moment, or nothing; called on the threads of `identify`.
    explicit ScreenLanguageIdentifier(std::function<std::shared_ptr<const PhraseFile>()> memory);

    QStringList identify(const QStringList &texts) override;

private:
    std::function<std::shared_ptr<const PhraseFile>()> m_memory;
};

} // namespace lucentra
