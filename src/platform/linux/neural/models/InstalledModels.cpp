#include "InstalledModels.h"

#include <QDir>
#include <QRegularExpression>
#include <QStandardPaths>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace lucentra {

InstalledModels::InstalledModels(QStringList searchFolders)
    : m_searchFolders(std::move(searchFolders))
{
}

QStringList InstalledModels::searchFoldersOfThisSystem()
{
    QStringList folders = QStandardPaths::standardLocations(QStandardPaths::GenericDataLocation);
    for (QString &folder : folders)
        folder += folder == folders.first() ? u"/Lucentra/models"_s : u"/lucentra/models"_s;
    return folders;
}

QList<InstalledModel> InstalledModels::list() const
{
    static const QRegularExpression pair(u"^([a-z]{2,3}(?:[-_][A-Z][a-z]{3})?)-([a-z]{2,3}(?:[-_][A-Z][a-z]{3})?)$"_s);
    QList<InstalledModel> models;
    for (const QString &folder : m_searchFolders) {
        for (const QFileInfo &entry : QDir(folder).entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name)) {
            const auto match = pair.match(entry.fileName());
            const QDir files(entry.absoluteFilePath());
            if (!match.hasMatch() || files.entryList({u"model.*.bin"_s}, QDir::Files).isEmpty() ||
                files.entryList({u"*.spm"_s}, QDir::Files).isEmpty())
                continue;
            const InstalledModel model{match.captured(1), match.captured(2), files.path()};
            const bool isHidden = std::any_of(models.cbegin(), models.cend(), [&model](const InstalledModel &other) {
                return other.source == model.source && other.target == model.target;
            });
            if (!isHidden)
                models.append(model);
        }
    }
    return models;
}

} // namespace lucentra
