#pragma once

#include "OnDeviceTranslationService.h"
#include "PhraseFile.h"
#include "PhraseForm.h"

#include <QString>

#include <optional>

namespace lucentra {

/// A line's translation and the confidence in it (0 to 1).
struct LineTranslation
{
    QString text;
    double confidence = 0;
};

/// Translates the lines of a screen by the phrases of programs. Looks for the whole line first, then for the line with
/// its numbers, quotations and names as values, then for its parts (a window's title, a label with its value, the
/// titles of a menu bar), then for other spellings, and finally with one character replaced that recognizers
/// confuse.
class PhraseLookup
{
public:
    /// Returns nullopt if there are no phrases of both languages.
    static std::optional<PhraseLookup> between(const PhraseFile &file, const LanguagePair &pair);

    /// Whether the line is short enough to be known.
    static bool mayKnow(const QString &line);

    /// Whether the whole line is a known phrase, perhaps with values.
    bool isPhrase(const QString &line) const;

    /// Returns nullopt if no part of the line is known.
    std::optional<LineTranslation> translate(const QString &line) const;

private:
    PhraseLookup(const PhraseFile &file, std::optional<int> source, std::optional<int> target, QString targetCode);

    std::optional<LineTranslation> phrase(const ScreenPhrase &phrase) const;
    std::optional<LineTranslation> parts(const ScreenPhrase &phrase) const;
    std::optional<LineTranslation> menuBar(const QString &text) const;
    std::optional<LineTranslation> respelled(const QString &text) const;
    std::optional<LineTranslation> repaired(const QString &text) const;
    std::optional<PhraseMatch> find(const QString &key) const;
    QString englishKey(const QString &word) const;

    const PhraseFile &m_file;
    std::optional<int> m_source; ///< nullopt for English
    std::optional<int> m_target;
    QString m_targetCode;
};

} // namespace lucentra
