#include "InstalledModels.h"

#include "TranslationModels.h"

#include <QDir>
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
    QList<InstalledModel> models;
    for (const QString &folder : m_searchFolders) {
        for (const QFileInfo &entry : QDir(folder).entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name)) {
            const auto pair = modelPair(entry.fileName());
            const QDir files(entry.absoluteFilePath());
            if (!pair || files.entryList({u"model.*.bin"_s}, QDir::Files).isEmpty() ||
                files.entryList({u"*.spm"_s}, QDir::Files).isEmpty())
                continue;
            const InstalledModel model{pair->source, pair->target, files.path()};
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
