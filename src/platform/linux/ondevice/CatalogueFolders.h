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
    int language = 0;  ///< place in `phraseLanguages`
    bool isQt = false; ///< a .qm file, else a .mo file

    bool operator==(const CatalogueFile &) const = default;
};

/// The catalogues on this computer in the languages of `phraseLanguages`.
struct CatalogueSurvey
{
    QList<CatalogueFile> files; ///< in the order of their paths
    /// A hash of the paths, sizes and times of all these files.
    quint64 fingerprint = 0;
    QString packageLists; ///< as in `CatalogueFolders`
};

/// Bytes; far larger than real catalogues. Larger files aren't opened.
constexpr qint64 largestCatalogue = 32 << 20;

/// Where catalogues are kept.
struct CatalogueFolders
{
    QStringList dataFolders;   ///< such as /usr/share: with locale/, locale-langpack/ and programs' own folders
    QStringList localeFolders; ///< such as /usr/share/locale: one folder per locale, with LC_MESSAGES/
    QStringList qtFolders;     ///< with .qm files that end in a locale's name
    QString packageLists;      ///< where dpkg keeps a list of each package's files; may be empty or missing

    /// The folders of this system: data folders, Flatpak's, LibreOffice's, Qt's.
    static CatalogueFolders ofThisSystem();
};

/// Whether the package manager is configured to leave catalogues out, as in images of containers. `folder`
/// is the folder of its settings.
bool leavesOutCatalogues(const QString &folder = QStringLiteral("/etc/dpkg/dpkg.cfg.d"));

/// Lists the catalogues. Reads folders of a known depth only, so that links between them can't form a loop. Any
/// thread; takes milliseconds.
CatalogueSurvey surveyCatalogues(const CatalogueFolders &folders);

/// The survey's files, with one family for all files of a package: the parts of a large program have many names, and
/// the same translators. Reads all of the package manager's lists, megabytes.
QList<CatalogueFile> filesByPackage(const CatalogueSurvey &survey);

} // namespace lucentra
