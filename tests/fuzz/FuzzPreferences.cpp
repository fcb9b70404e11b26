// The preferences' file, which other processes write and people edit by hand.

#include "Files.h"
#include "Fuzz.h"

#include "PreferencesFile.h"

#include <QTemporaryDir>

using namespace lucentra;
using namespace Qt::StringLiterals;

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const QTemporaryDir folder(u"/dev/shm/lucentra-fuzz"_s);
    const QString path = folder.filePath(u"preferences.json"_s);
    writeFile(path, bytesOf(data, size));

    PreferencesFile preferences(path, {});
    QJsonObject expected = preferences.values();
    mustHold(preferences.apply({{u"appLanguage"_s, u"ja"_s}, {u"targetLanguage"_s, QJsonValue::Undefined}}),
             "a setting can be written whatever the file held");
    expected.insert("appLanguage"_L1, u"ja"_s);
    expected.remove("targetLanguage"_L1);
    mustHold(preferences.values() == expected, "nothing but the setting changed");
    mustHold(PreferencesFile(path, {}).values() == expected, "the file holds what was written");
    for (const QString &name : QDir(folder.path()).entryList(QDir::Files))
        QFile::remove(folder.filePath(name)); // also what was kept aside
    return 0;
}
