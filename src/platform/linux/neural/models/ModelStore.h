#pragma once

#include "InstalledModels.h"
#include "ModelDownload.h"
#include "TranslationModels.h"

namespace lucentra {

/// The models in the folders of this system, and those of a registry. Downloads go into a hidden folder beside the
/// user's models, which gets the model's name when all its files are complete. One process downloads at a time.
class ModelStore : public TranslationModels
{
public:
    struct Addresses
    {
        QByteArray registry; ///< of the list
        QByteArray files;    ///< the locations of the list's files are appended
    };

    /// The first of `searchFolders` is the user's. `addresses` is called on any thread, before each access.
    ModelStore(QStringList searchFolders, std::function<Addresses()> addresses, Fetch fetch);

    QList<StoredModel> stored() override;
    ModelResult<QList<OfferedModel>> offered(const std::function<bool()> &isWanted) override;
    ModelResult<void> install(const OfferedModel &model, const std::function<void(qint64 bytes)> &progress,
                              const std::function<bool()> &isWanted) override;
    ModelResult<void> remove(const LanguagePair &pair) override;

private:
    QString ownFolder() const { return m_searchFolders.first(); }
    QString unfinishedFolder(const LanguagePair &pair) const;
    ModelResult<void> checkSpace(const OfferedModel &model, const QString &folder) const;
    ModelResult<void> putInPlace(const OfferedModel &model, const QString &folder) const;

    const QStringList m_searchFolders;
    const std::function<Addresses()> m_addresses;
    const Fetch m_fetch;
};

} // namespace lucentra
