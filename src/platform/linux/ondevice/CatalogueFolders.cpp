#include "CatalogueFolders.h"

#include "PhraseLanguage.h"

#include <QDateTime>
#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QHash>
#include <QLibraryInfo>
#include <QRegularExpression>
#include <QStandardPaths>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

/// The names of rare languages and regions are spelled like everyday words.
constexpr std::array leftOut{"iso_639-3"_L1,  "iso_639_3"_L1,  "iso_639-5"_L1, "iso_639_5"_L1,
                             "iso_3166-2"_L1, "iso_3166_2"_L1, "iso_15924"_L1};

/// The family of a program's catalogue, or of a package, by its name.
QString familyOf(const QString &domain)
{
    qsizetype end = 0;
    while (end < domain.size() && !domain[end].isDigit() && domain[end] != u'.' && (end == 0 || domain[end] != u'_'))
        ++end; // followed by a part or a version
    QString family = domain.first(end).toLower();
    while (family.endsWith(u'-'))
        family.chop(1);
    if (family.startsWith("qt"_L1))
        family = u"qt"_s; // all modules have the same translators
    return family.isEmpty() ? domain : family;
}

/// The Flatpak application or runtime of a file; empty for other files. It consists of the three parts that
/// each name has: further parts, as in "org.example.App.Locale", name an extension by the same authors.
QString flatpakOf(const QString &path)
{
    static const QRegularExpression owner(u"/flatpak/(?:app|runtime)/([^/.]+[.][^/.]+[.][^/.]+)"_s);
    return owner.match(path).captured(1);
}

class Survey
{
public:
    void addLocaleFolder(const QString &folder)
    {
        QDirIterator locales(folder, QDir::Dirs | QDir::NoDotAndDotDot);
        while (locales.hasNext()) {
            locales.next();
            if (const auto language = phraseLanguageOfLocale(locales.fileName()))
                addMessages(locales.filePath() + u"/LC_MESSAGES"_s, *language);
        }
    }

    /// Files whose names end in a locale: "qtbase_zh_TW.qm", "vlc_ja.qm", "de.qm".
    void addQtFolder(const QString &folder)
    {
        const QString program = QFileInfo(QFileInfo(folder).path()).fileName();
        QDirIterator files(folder, {u"*.qm"_s}, QDir::Files);
        while (files.hasNext()) {
            files.next();
            const QString name = files.fileInfo().completeBaseName();
            for (qsizetype at = 0; at >= 0; at = name.indexOf(u'_', at + 1)) {
                const auto language = phraseLanguageOfLocale(QStringView(name).sliced(at == 0 ? 0 : at + 1));
                if (!language)
                    continue;
                add(files.fileInfo(), at == 0 ? program : name.first(at), program, *language, true);
                break;
            }
        }
    }

    void addDataFolder(const QString &folder)
    {
        addLocaleFolder(folder + u"/locale"_s);
        addLocaleFolder(folder + u"/locale-langpack"_s);
        QDirIterator programs(folder, QDir::Dirs | QDir::NoDotAndDotDot);
        while (programs.hasNext()) {
            const QString program = programs.next();
            for (const QStringView name : {u"translations", u"locale", u"i18n", u"lang", u"languages", u"l10n"})
                addQtFolder(program + u'/' + name.toString());
        }
    }

    CatalogueSurvey finished()
    {
        const auto path = [](const Found &found) -> const QString & { return found.file.path; };
        std::sort(m_found.begin(), m_found.end(), [&](const Found &a, const Found &b) { return path(a) < path(b); });
        m_found.erase(std::unique(m_found.begin(), m_found.end(),
                                  [&](const Found &a, const Found &b) { return path(a) == path(b); }),
                      m_found.end());
        CatalogueSurvey survey;
        quint64 print = 14695981039346656037U; // FNV-1a
        const auto mix = [&print](quint64 value) { print = (print ^ value) * 1099511628211U; };
        for (const Found &found : m_found) {
            for (const QChar c : found.file.path)
                mix(c.unicode());
            mix(quint64(found.size));
            mix(quint64(found.changed));
            survey.files.append(found.file);
        }
        survey.fingerprint = print;
        return survey;
    }

private:
    struct Found
    {
        CatalogueFile file;
        qint64 size;
        qint64 changed;
    };

    void addMessages(const QString &folder, int language)
    {
        QDirIterator files(folder, {u"*.mo"_s, u"*.qm"_s}, QDir::Files);
        while (files.hasNext()) {
            files.next();
            const QFileInfo info = files.fileInfo();
            add(info, info.completeBaseName(), info.completeBaseName(), language, info.suffix() == "qm"_L1);
        }
    }

    /// `program` is the owner of the catalogue: all files of one program count once.
    void add(const QFileInfo &info, const QString &domain, const QString &program, int language, bool isQt)
    {
        // LibreOffice has a catalogue per component, named by a few letters.
        const bool isOffice = info.path().contains("/libreoffice/"_L1);
        const QString flatpak = flatpakOf(info.path());
        const QString family = isOffice ? u"libreoffice"_s : flatpak.isEmpty() ? familyOf(program) : flatpak;
        const bool isLeftOut = std::any_of(leftOut.begin(), leftOut.end(), [&](auto name) { return domain == name; });
        if (!isLeftOut && info.size() <= largestCatalogue && m_found.size() < mostFiles)
            m_found.push_back({.file = {.path = info.filePath(), .family = family, .language = language, .isQt = isQt},
                               .size = info.size(),
                               .changed = info.lastModified().toMSecsSinceEpoch()});
    }

    /// More than any real system has; limits the cost of a hostile folder.
    static constexpr size_t mostFiles = 20000;
    std::vector<Found> m_found;
};

QStringList subfolders(const QString &folder, const QString &rest)
{
    QStringList found;
    QDirIterator entries(folder, QDir::Dirs | QDir::NoDotAndDotDot);
    while (entries.hasNext())
        found.append(entries.next() + rest);
    return found;
}

} // namespace

CatalogueFolders CatalogueFolders::ofThisSystem()
{
    CatalogueFolders folders;
    folders.dataFolders = QStandardPaths::standardLocations(QStandardPaths::GenericDataLocation);
    folders.dataFolders << u"/usr/share"_s << u"/usr/local/share"_s;
    const QString own = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    for (const QString &flatpak : {u"/var/lib/flatpak"_s, own + u"/flatpak"_s}) {
        folders.dataFolders += subfolders(flatpak + u"/app"_s, u"/current/active/files/share"_s);
        for (const QString &runtime : subfolders(flatpak + u"/runtime"_s, {})) {
            for (const QString &architecture : subfolders(runtime, {})) {
                folders.dataFolders += subfolders(architecture, u"/active/files/share"_s);
                for (const QString &files : subfolders(architecture, u"/active/files"_s)) // split by language
                    folders.localeFolders += subfolders(files, u"/share"_s);
            }
        }
    }
    folders.localeFolders << u"/usr/lib/libreoffice/program/resource"_s << u"/opt/libreoffice/program/resource"_s;
    folders.qtFolders << QLibraryInfo::path(QLibraryInfo::TranslationsPath) << u"/usr/share/qt5/translations"_s
                      << u"/usr/share/qt6/translations"_s;
    folders.packageLists = u"/var/lib/dpkg/info"_s;
    folders.dataFolders.removeDuplicates();
    folders.qtFolders.removeDuplicates();
    return folders;
}

bool leavesOutCatalogues(const QString &folder)
{
    QDirIterator files(folder, QDir::Files);
    while (files.hasNext()) {
        QFile file(files.next());
        if (!file.open(QIODevice::ReadOnly))
            continue;
        for (const QByteArray &line : file.readAll().split('\n')) {
            if (line.startsWith("path-exclude") && line.contains("/usr/share/locale/"))
                return true;
        }
    }
    return false;
}

CatalogueSurvey surveyCatalogues(const CatalogueFolders &folders)
{
    Survey survey;
    for (const QString &folder : folders.dataFolders)
        survey.addDataFolder(folder);
    for (const QString &folder : folders.localeFolders)
        survey.addLocaleFolder(folder);
    for (const QString &folder : folders.qtFolders)
        survey.addQtFolder(folder);
    CatalogueSurvey finished = survey.finished();
    finished.packageLists = folders.packageLists;
    return finished;
}

QList<CatalogueFile> filesByPackage(const CatalogueSurvey &survey)
{
    QList<CatalogueFile> files = survey.files;
    QHash<QByteArray, qsizetype> places;
    for (qsizetype i = 0; i < files.size(); ++i)
        places.insert(QFile::encodeName(files[i].path), i);
    QDirIterator lists(survey.packageLists, {u"*.list"_s}, QDir::Files);
    while (!survey.packageLists.isEmpty() && lists.hasNext()) {
        QFile list(lists.next());
        const QString package = lists.fileName().section(u'.', 0, -2).section(u':', 0, 0);
        // A language pack has all programs' catalogues.
        if (package.startsWith("language-pack-"_L1) || !list.open(QIODevice::ReadOnly))
            continue;
        for (const QByteArray &line : list.readAll().split('\n')) {
            const auto place = places.constFind(line);
            if (place != places.cend())
                files[*place].family = familyOf(package);
        }
    }
    return files;
}

} // namespace lucentra
