#pragma once

#include "APIKeys.h"
#include "FakeSecretStorage.h"
#include "HotkeyManager.h"
#include "KeychainStore.h"
#include "LocalizationManager.h"
#include "LoginItem.h"
#include "MainQueue.h"
#include "ManualScheduler.h"
#include "ModelInstallation.h"
#include "Settings.h"
#include "SettingsStore.h"
#include "SettingsView.h"

#include <QComboBox>
#include <QLabel>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <optional>

namespace lucentra {

class FakeModels : public TranslationModels
{
public:
    QList<StoredModel> stored() override { return {}; }
    ModelResult<QList<OfferedModel>> offered(const std::function<bool()> &) override { return {}; }
    ModelResult<void> install(const OfferedModel &, const std::function<void(qint64)> &,
                              const std::function<bool()> &) override
    {
        return {};
    }
    ModelResult<void> remove(const LanguagePair &) override { return {}; }
};

class RefusedLoginItem : public LoginItem
{
public:
    bool isEnabled() const override { return false; }
    Result<void> setEnabled(bool) override
    {
        return tl::unexpected(Failure{.description = QStringLiteral("read-only")});
    }
};

/// A desktop that chooses the keys once it has some, and refuses all until then.
class DesktopsKeys : public GlobalHotkeys
{
public:
    QString chosen;
    int dialogs = 0; ///< that were opened

    bool areKeysChosenHere() const override { return chosen.isEmpty(); }
    QString keysOfDesktop(HotkeyAction) const override { return chosen; }
    std::function<void()> keyDialog() override
    {
        return chosen.isEmpty() ? std::function<void()>() : [this] { ++dialogs; };
    }
    int registerHotkey(HotkeyAction, quint32, quint32) override { return hotkeyStatus::taken; }
    void unregisterHotkeys() override {}
    void setPressedHandler(std::function<void(HotkeyAction)>) override {}
};

/// The form over stores of its own.
struct SettingsFixture
{
    QTemporaryDir folder;
    SettingsStore settings{folder.filePath(QStringLiteral("preferences.json"))};
    LocalizationManager texts{settings, QString::fromLatin1(PROGRAM_TABLES), {QStringLiteral("zh-Hant")}};
    ManualScheduler scheduler;
    MainQueue mainQueue;
    FakeSecretStorage secrets;
    KeychainStore keychain{secrets, QStringLiteral("test"), {}};
    RefusedLoginItem loginItem;
    DiagnosticLine diagnostics;
    FakeModels models;
    ModelInstallation modelInstallation{models, mainQueue};
    QStringList posted;
    DesktopsKeys keys;
    HotkeyManager hotkeys{settings, keys, mainQueue, [] { return false; }, {}};
    SettingsServices services{
        .settings = settings,
        .texts = texts,
        .scheduler = scheduler,
        .mainQueue = mainQueue,
        .keychain = keychain,
        .loginItem = loginItem,
        .hotkeys = hotkeys,
        .diagnostics = diagnostics,
        .models = models,
        .modelInstallation = modelInstallation,
        .testConnection =
            [](const std::function<void(Result<QString>)> &completion) { completion(QStringLiteral("good")); },
        .onDeviceStatus =
            [] {
                return QList<OnDeviceServiceStatus>{
                    {.name = QStringLiteral("Phrases"),
                     .pairs = {{QStringLiteral("en"), QStringLiteral("ja")},
                               {QStringLiteral("de"), QStringLiteral("en")}},
                     .addableBy = {QStringLiteral("thunar-data"), QStringLiteral("vlc-l10n")},
                     .phraseCount = 123456}};
            },
        .applyDockPresence = [](bool) {},
        .fillMenuBar = [](QMenuBar &) {},
        .paneFrame = [] { return QRect(); },
        .pagesFolder = QString(),
        .applicationIcon = QIcon(),
        .version = QStringLiteral("1.2 (Build 3)"),
    };
    std::optional<APIKeys> apiKeys;
    std::optional<SettingsView> view;

    void show(int tab = 0)
    {
        const auto follow = [this](const auto &notification) {
            settings.observe(notification, &mainQueue,
                             [this, name = notification.name](const auto &) { posted.append(name); });
        };
        follow(notifications::targetLanguageChanged);
        follow(notifications::updateGlassOpacity);
        follow(notifications::updateNeonBorder);
        follow(notifications::translationClickGestureChanged);
        apiKeys.emplace(settings, keychain, mainQueue);
        view.emplace(services, *apiKeys);
        view->resize(view->minimumSizeHint().expandedTo({520, 440}));
        view->setCurrentIndex(tab);
        view->show();
        settle();
    }
    /// Until what the worker was asked for by now has come back.
    void settle()
    {
        bool isDone = false;
        apiKeys->afterSaving(&*view, [&isDone] { isDone = true; });
        QTRY_VERIFY(isDone);
    }
    /// Whether the form shows it on its tab.
    static bool isOffered(const QWidget *control)
    {
        for (; control && control->objectName() != u"content"; control = control->parentWidget()) {
            if (control->isHidden())
                return false;
        }
        return true;
    }
    template <typename Control>
    Control *control(const QString &name)
    {
        for (Control *control : view->findChildren<Control *>()) {
            if ((control->accessibleName() == name || control->property("text") == name) && isOffered(control))
                return control;
        }
        qFatal("no control %s", qPrintable(name));
    }
    QString text(const QString &key) const { return texts.localized(key); }
    /// How many lines of the shown tab have the text in them.
    int linesWith(const QString &part) const
    {
        const auto labels = view->currentWidget()->findChildren<QLabel *>();
        return int(std::count_if(labels.begin(), labels.end(), [&](const QLabel *label) {
            return isOffered(label) && label->text().contains(part);
        }));
    }
    static void choose(QComboBox *picker, const QVariant &value)
    {
        picker->setCurrentIndex(picker->findData(value));
        Q_EMIT picker->activated(picker->currentIndex());
    }
};

} // namespace lucentra
