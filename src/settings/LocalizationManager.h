#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <functional>

namespace lucentra {

/// The interface language's texts. `localized` and `formatted` may be called from any thread.
class LocalizationManager
{
public:
    /// The text for a key (the Traditional Chinese text) in the interface language.
    QString localized(const QString &key) const;

    /// The looked-up pattern with every `%@` and `%d` filled by position in one pass (a filled-in text is never
    /// searched again); numbers in the interface language's locale. `%%` is a per-cent sign.
    template <typename... Arguments>
    QString formatted(const QString &key, const Arguments &...arguments) const;
};

} // namespace lucentra
