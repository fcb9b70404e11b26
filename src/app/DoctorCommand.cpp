#include "Commands.h"

#include "Engines.h"
#include "HistoryManager.h"
#include "InstallCommand.h"
#include "InstalledModels.h"
#include "KeychainStore.h"
#include "RemoteControl.h"
#include "Services.h"
#include "SessionReport.h"
#include "Settings.h"
#include "StoredAPIKeys.h"
#include "TranslationEngine.h"
#include "Version.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <QSysInfo>
#include <QThread>

#include <utility>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

struct Section
{
    QString title;
    QList<ReportedFact> facts;
};

Section versions(const LocalizationManager &texts)
{
    return {texts.localized(u"版本"_s),
            {{u"Lucentra"_s, versionAndBuild()},
             {u"Qt"_s, QString::fromLatin1(qVersion())},
             {texts.localized(u"系統"_s), QSysInfo::prettyProductName() + u", "_s + QSysInfo::kernelType() + u' ' +
                                              QSysInfo::kernelVersion() + u", "_s + QSysInfo::currentCpuArchitecture()},
             {texts.localized(u"語言"_s), QLocale::system().uiLanguages().join(u' ')}}};
}

Section recognition(Services &services)
{
    const LocalizationManager &texts = services.texts();
    const Engines &engines = services.engines();
    ReportedFact fact{.label = texts.localized(u"文字辨識模型"_s), .value = engines.readableLanguages().join(u' ')};
    if (const QStringList missing = engines.missingReadingPackages() + engines.missingVerticalPackages();
        !missing.isEmpty())
        fact.advice = texts.formatted(u"沒有這些模型，就讀不到那些語言的文字。請安裝：%@"_s, installCommand(missing));
    return {texts.localized(u"辨識"_s), {fact}};
}

Section onDevice(Services &services)
{
    const LocalizationManager &texts = services.texts();
    Section section{texts.localized(u"在這部電腦上翻譯"_s), {}};
    // Phrases that were collected before are available at once; a report doesn't wait for others.
    constexpr int mostLooks = 20;
    constexpr int millisecondsBetween = 50;
    for (int look = 0; look < mostLooks && services.isCollectingPhrases(); ++look)
        QThread::msleep(millisecondsBetween);
    const bool isCollecting = services.isCollectingPhrases();
    if (isCollecting)
        section.facts.append({u"phrases"_s, texts.localized(u"正在收集這部電腦上的譯文…"_s)});
    for (const OnDeviceServiceStatus &service : isCollecting ? QList<OnDeviceServiceStatus>() : services.onDeviceStatus()) {
        ReportedFact fact{.label = service.name,
                          .value = texts.formatted(u"%d 個語言組合"_s, int(service.pairs.size()))};
        if (service.phraseCount > 0)
            fact.value += u", "_s + texts.formatted(u"%d 個詞句"_s, int(service.phraseCount));
        if (service.isStripped)
            fact.advice = texts.localized(u"這個系統的 dpkg 設定不會安裝譯文（path-exclude），請先更改設定。"_s);
        else if (!service.addableBy.isEmpty())
            fact.advice = texts.formatted(u"安裝這些套件也有幫助：%@"_s, service.addableBy.join(u' '));
        section.facts.append(fact);
    }
    for (const InstalledModel &model : InstalledModels(InstalledModels::searchFoldersOfThisSystem()).list()) {
        ReportedFact fact{.label = model.source + u'-' + model.target, .value = model.folder};
        if (const auto opened = services.engines().translateWithModel(model.folder, {}, 1, texts); !opened)
            fact.advice = opened.error().description;
        section.facts.append(fact);
    }
    return section;
}

Section engines(Services &services)
{
    const LocalizationManager &texts = services.texts();
    const SettingsStore &store = services.settings();
    Section section{texts.localized(u"翻譯引擎"_s), {}};
    const auto chosen = translationEngine(store.read(settings::translationEngine)).value_or(TranslationEngine::apple);
    const auto keys = services.keychain().readAll();
    for (const EngineEntry &entry : engineCatalogue()) {
        const qint64 number = qint64(entry.engine);
        const bool hasKey = keys && !keys->value(QString(entry.account)).isEmpty();
        const bool hasConsent = !entry.serviceName.isEmpty() && store.read(settings::consentKey(number));
        const bool isChosen = entry.engine == chosen;
        if (!hasKey && !hasConsent && !isChosen)
            continue;
        QStringList values;
        if (isChosen)
            values.append(texts.localized(u"已選用"_s));
        if (hasConsent)
            values.append(texts.localized(u"已同意"_s));
        if (hasKey)
            values.append(texts.localized(u"有 API Key"_s));
        ReportedFact fact{.label = QString::number(number) + u' ' + texts.localized(entry.name.toString()),
                          .value = values.join(u", "_s)};
        const bool isRemote = !entry.serviceName.isEmpty();
        if (isChosen && isRemote && !hasConsent)
            fact.advice = texts.localized(u"請在設定的「翻譯」分頁同意傳送文字。"_s);
        else if (isChosen && isRemote && keys && entry.requiresKey && !hasKey)
            fact.advice = texts.localized(u"請在設定的「翻譯」分頁輸入 API Key。"_s);
        section.facts.append(fact);
    }
    ReportedFact keyring{.label = texts.localized(u"鑰匙圈"_s), .value = texts.localized(u"可以使用"_s)};
    if (!keys) {
        keyring.value = texts.localized(u"無法使用"_s);
        if (!keys.error().description.isEmpty())
            keyring.value += u" ("_s + keys.error().description + u')';
        keyring.advice = keychainAdvice(keys.error(), [&texts](const QString &key) { return texts.localized(key); });
    }
    section.facts.append(keyring);
    return section;
}

Section files(const LocalizationManager &texts)
{
    Section section{texts.localized(u"檔案"_s), {}};
    for (const auto &[label, path] : {std::pair(texts.localized(u"設定"_s), SettingsStore::userFilePath()),
                                      std::pair(texts.localized(u"歷史紀錄"_s), HistoryManager::userFilePath())}) {
        const QFileInfo file(path);
        ReportedFact fact{.label = label, .value = path};
        if (!file.exists())
            fact.value += u", "_s + texts.localized(u"尚未建立"_s);
        else if (!file.isReadable() || !file.isWritable())
            fact.advice = texts.localized(u"無法讀取或寫入這個檔案。請檢查它的擁有者與權限。"_s);
        section.facts.append(fact);
    }
    return section;
}

} // namespace

Result<CommandOutput> doctorCommand(const Invocation & /*invocation*/, Services &services)
{
    const LocalizationManager &texts = services.texts();
    const auto localized = [&texts](const QString &key) { return texts.localized(key); };
    const QDBusConnection bus = QDBusConnection::sessionBus();
    services.prepareOnDevice(*qApp);
    Section session{texts.localized(u"工作階段"_s), sessionReport(localized)};
    const bool isRunning = isProgramRunning(bus);
    session.facts.append({texts.localized(u"執行中的 Lucentra"_s), texts.localized(isRunning ? u"是"_s : u"否"_s)});

    QStringList lines;
    int problems = 0;
    for (const Section &section : {versions(texts), session, recognition(services), onDevice(services),
                                   engines(services), files(texts)}) {
        lines.append(section.title);
        for (const ReportedFact &fact : section.facts) {
            lines.append((fact.advice.isEmpty() ? u"    "_s : u"  ! "_s) + fact.label + u": "_s + fact.value);
            if (fact.advice.isEmpty())
                continue;
            lines.append(u"      → "_s + fact.advice);
            ++problems;
        }
    }
    lines.append(problems == 0 ? texts.localized(u"沒有發現問題。"_s) : texts.formatted(u"「!」標出 %d 個可以改善之處。"_s, problems));
    // The home folder's name contains the user's.
    return CommandOutput{.answer = lines.join(u'\n').replace(QDir::homePath(), u"~"_s)};
}

} // namespace lucentra
