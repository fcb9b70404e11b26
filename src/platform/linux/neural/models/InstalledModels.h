#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace lucentra {

/// A translation model on this computer.
struct InstalledModel
{
    QString source; ///< language tags as the folder has them: "en", "ja", "zh", "zh-Hans" ...
    QString target;
    QString folder; ///< absolute path

    bool operator==(const InstalledModel &) const = default;
};

/// The translation models on this computer: a folder `<source>-<target>` each, with the files as they are published.
class InstalledModels
{
public:
    /// Earlier folders hide a later folder's model of the same pair.
    explicit InstalledModels(QStringList searchFolders);
    /// The user's folder of models, then those of the system.
    static QStringList searchFoldersOfThisSystem();

    /// Reads the search folders anew, so that it is always up to date. Any thread.
    QList<InstalledModel> list() const;

private:
    const QStringList m_searchFolders;
};

} // namespace lucentra
