#include "LegacyMigration.h"

#include "PrivateFile.h"
#include "PropertyList.h"
#include "RegularFile.h"
#include "Settings.h"
#include "SettingsStore.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonDocument>
#include <QStandardPaths>

#include <array>
#include <vector>

#include <pwd.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

constexpr std::array legacyBundleIdentifiers{"com.tarnby.Panewise"_L1};
/// The current one is also the name that former versions used.
constexpr auto ownFolder = "Lucentra"_L1;
constexpr std::array historyFolders{ownFolder, "Panewise"_L1};
constexpr auto historyName = "history.json"_L1;

/// Preferences are some kilobytes, histories some megabytes.
constexpr qint64 largestPreferences = 1 << 20;
constexpr qint64 largestHistory = 256 << 20;

constexpr std::array migratedPreferenceKeys{
    settings::appLanguage.key,        settings::translationEngine.key,
    settings::targetLanguageCode.key, settings::targetLanguageFollowsInterface.key,
    settings::triggerMode.key,        settings::translationClickGesture.key,
    settings::neonBorderColor.key,    settings::glassOpacity.key,
    settings::fontSize.key,           settings::isFontSizeAuto.key,
    settings::autoCopy.key,           settings::autoHide.key,
    settings::showInDock.key,         settings::hotkeyString.key,
    settings::hotkeyCode.key,         settings::hotkeyModifiers.key,
    settings::isAlwaysOnTop.key,      settings::microsoftApiRegion.key,
    settings::openAIModel.key,        settings::anthropicModel.key,
    settings::compatibleBaseURL.key,  settings::compatibleModel.key,
    settings::consentKey(1).key,      settings::consentKey(2).key,
    settings::consentKey(3).key,      settings::consentKey(4).key,
    settings::consentKey(5).key,      settings::consentKey(6).key,
    settings::consentKey(7).key,
};

QString recordedHome()
{
    std::vector<char> buffer(16384);
    passwd entry{};
    passwd *found = nullptr;
    if (getpwuid_r(getuid(), &entry, buffer.data(), buffer.size(), &found) == 0 && found && entry.pw_dir)
        return QString::fromLocal8Bit(entry.pw_dir);
    return QDir::homePath();
}

QStringList withoutDuplicates(QStringList paths)
{
    for (QString &path : paths)
        path = QDir::cleanPath(path);
    paths.removeDuplicates();
    return paths;
}

QStringList historySources(const LegacyFolders &folders, const QString &historyFile)
{
    QStringList roots{folders.home + u"/Library/Application Support"_s};
    for (const auto identifier : legacyBundleIdentifiers)
        roots.append(folders.home + u"/Library/Containers/"_s + identifier + u"/Data/Library/Application Support"_s);
    roots.append(folders.dataHome);
    QStringList sources;
    for (const QString &root : withoutDuplicates(roots)) {
        for (const auto folder : historyFolders)
            sources.append(root + u'/' + folder + u'/' + historyName);
    }
    sources.removeAll(QDir::cleanPath(historyFile));
    return sources;
}

void migrateHistory(const LegacyFolders &folders, const QString &historyFile, const DiagnosticLine &diagnostics)
{
    const QFileInfo destination(historyFile);
    if (destination.exists() || destination.isSymLink())
        return;
    for (const QString &source : historySources(folders, historyFile)) {
        const auto content = readRegularFile(source, largestHistory);
        if (!content && content.error() == RegularFileError::Unreadable)
            continue;
        createFolderOf(historyFile);
        const auto copied = content ? writePrivateFile(historyFile, *content) : Result<void>();
        if (content && copied)
            return;
        const QString problem = content ? copied.error().description : u"the file is too large"_s;
        diagnostics(u"Local data migration skipped history source "_s + source + u": "_s + problem);
    }
}

QJsonObject preferencesOf(const QString &path)
{
    const auto content = readRegularFile(path, largestPreferences);
    if (!content)
        return {};
    return path.endsWith(".json"_L1) ? QJsonDocument::fromJson(*content).object() : readPropertyList(*content);
}

void migratePreferences(const LegacyFolders &folders, SettingsStore &settings)
{
    QStringList candidates;
    for (const auto identifier : legacyBundleIdentifiers) {
        const QString file = identifier + u".plist"_s;
        candidates.append(folders.home + u"/Library/Preferences/"_s + file);
        candidates.append(folders.home + u"/Library/Containers/"_s + identifier + u"/Data/Library/Preferences/"_s +
                          file);
        candidates.append(folders.configHome + u'/' + file);
        candidates.append(folders.configHome + u'/' + identifier + u"/preferences.json"_s);
    }
    for (const QString &candidate : withoutDuplicates(candidates)) {
        const QJsonObject values = preferencesOf(candidate);
        if (values.isEmpty())
            continue;
        for (const auto key : migratedPreferenceKeys) {
            if (!settings.contains(QString(key)))
                settings.setValue(key, values.value(key));
        }
    }
}

} // namespace

LegacyFolders LegacyFolders::ofUser()
{
    return {.home = recordedHome(),
            .configHome = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation),
            .dataHome = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation)};
}

void migrateLegacyData(SettingsStore &settings, const QString &historyFile, const LegacyFolders &folders,
                       const DiagnosticLine &diagnostics)
{
    migrateHistory(folders, historyFile, diagnostics);
    migratePreferences(folders, settings);
}

} // namespace lucentra
