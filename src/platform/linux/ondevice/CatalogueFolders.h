#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace lucentra {

/// A message catalogue of an installed program.
struct CatalogueFile
{
    QString path;
    /// A name for the programs that share their translators: "gtk" for gtk20.mo and gtk30-properties.mo. All files of a
    /// program's own folder have the same one, and so have those of a Flatpak application with its extensions.
    QString family;
    int language = 0;  ///< place in `memoryLanguages`
    bool isQt = false; ///< a .qm file, else a .mo file

    bool operator==(const CatalogueFile &) const = default;
};

/// The catalogues on this computer in the languages of the memory, and what changes when they do.
struct CatalogueSurvey
{
    QList<CatalogueFile> files; ///< in the order of their paths
    /// Of the paths, sizes and times of all these files; the same as long as none was added, removed or changed.
    quint64 fingerprint = 0;
    QString packageLists; ///< as in `CatalogueFolders`
};

/// Where catalogues are kept.
struct CatalogueFolders
{
    QStringList dataFolders;   ///< as /usr/share: with locale/, locale-langpack/ and programs' own folders
    QStringList localeFolders; ///< as /usr/share/locale: one folder a locale, with LC_MESSAGES/
    QStringList qtFolders;     ///< with .qm files that end in a locale's name
    QString packageLists;      ///< where dpkg keeps a list of each package's files; may be empty or missing

    /// Those of this system: data folders, Flatpak's, LibreOffice's, Qt's.
    static CatalogueFolders ofThisSystem();
};

/// Whether the package manager is told to leave catalogues out, as in the images that containers are made of. `folder`
/// is that of its settings.
bool leavesOutCatalogues(const QString &folder = QStringLiteral("/etc/dpkg/dpkg.cfg.d"));

/// Lists the catalogues. It looks into folders of a known depth only, so that links between them make no loop. Any
/// thread; takes milliseconds.
CatalogueSurvey surveyCatalogues(const CatalogueFolders &folders);

/// The survey's files, with one family for all files of a package: the parts of a large program have many names, and
/// the same translators. Reads all of the package manager's lists, megabytes.
QList<CatalogueFile> filesByPackage(const CatalogueSurvey &survey);

} // namespace lucentra
