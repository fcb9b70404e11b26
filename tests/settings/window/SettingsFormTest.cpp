#include "LaunchAtLogin.h"
#include "LoginItem.h"
#include "SettingsView.h"

#include "APIKeys.h"
#include "FakeSecretStorage.h"
#include "KeychainStore.h"
#include "LocalizationManager.h"
#include "MainQueue.h"
#include "ManualScheduler.h"
#include "NotificationCenter.h"
#include "Settings.h"
#include "SettingsStore.h"

#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSlider>
#include <QTabBar>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>

#include <algorithm>
#include <optional>

using namespace lucentra;
using namespace Qt::StringLiterals;

namespace {

class RefusedLoginItem : public LoginItem
{
public:
    bool isEnabled() const override { return false; }
    Result<void> setEnabled(bool) override { return tl::unexpected(Failure{.description = u"read-only"_s}); }
};

/// The form over stores of its own.
struct Fixture
{
    QTemporaryDir folder;
    SettingsStore settings{folder.filePath(u"preferences.json"_s)};
    NotificationCenter notifications;
    LocalizationManager texts{settings, notifications, QString::fromLatin1(PROGRAM_TABLES), {u"zh-Hant"_s}};
    ManualScheduler scheduler;
    MainQueue mainQueue;
    FakeSecretStorage secrets;
    KeychainStore keychain{secrets, u"test"_s, {}};
    RefusedLoginItem loginItem;
    LaunchAtLogin launchAtLogin{loginItem, mainQueue, {}};
    QStringList posted;
    bool isHotkeyRefused = false;
    SettingsServices services{
        .settings = settings,
        .texts = texts,
        .notifications = notifications,
        .scheduler = scheduler,
        .mainQueue = mainQueue,
        .keychain = keychain,
        .launchAtLogin = launchAtLogin,
        .testConnection = [](const std::function<void(Result<QString>)> &completion) { completion(u"good"_s); },
        .onDeviceStatus =
            [] {
                return QList<OnDeviceServiceStatus>{{.name = u"Phrases"_s,
                                                     .pairs = {{u"en"_s, u"ja"_s}, {u"de"_s, u"en"_s}},
                                                     .addableBy = {u"thunar-data"_s, u"vlc-l10n"_s},
                                                     .phraseCount = 123456}};
            },
        .applyDockPresence = [](bool) {},
        .hotkeyRecordingChanged = [](bool) {},
        .isHotkeyRefused = [this] { return isHotkeyRefused; },
        .fillMenuBar = [](QMenuBar &) {},
        .paneFrame = [] { return QRect(); },
        .settingsFile = folder.filePath(u"preferences.json"_s),
        .pagesFolder = QString(),
        .applicationIcon = QIcon(),
        .version = u"1.2"_s,
        .buildNumber = u"3"_s,
    };
    std::optional<APIKeys> keys;
    std::optional<SettingsView> view;

    void show()
    {
        for (const QLatin1StringView name :
             {notifications::targetLanguageChanged, notifications::updateGlassOpacity, notifications::updateNeonBorder})
            notifications.observe(name, &mainQueue, [this, name](const QVariant &value) {
                posted.append(value.isValid() ? name + u' ' + value.toString() : QString(name));
            });
        keys.emplace(settings, keychain, mainQueue);
        view.emplace(services, *keys);
        view->resize(view->minimumSizeHint().expandedTo({520, 440}));
        view->show();
        settle();
    }
    /// Until what the worker was asked for by now has come back.
    void settle()
    {
        bool isDone = false;
        keys->afterSaving(&*view, [&isDone] { isDone = true; });
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

QPalette darkPalette()
{
    QPalette palette(QColor(0x32, 0x33, 0x36), QColor(0x2a, 0x2b, 0x2e));
    palette.setColor(QPalette::Highlight, QColor(0x3d, 0x7e, 0xe0));
    palette.setColor(QPalette::Link, QColor(0x7f, 0xb4, 0xff));
    return palette;
}

/// What is cut off of the texts that don't break their lines.
QStringList clippedTexts(const QWidget &page)
{
    QStringList clipped;
    for (const QWidget *widget : page.findChildren<QWidget *>()) {
        const auto *label = qobject_cast<const QLabel *>(widget);
        const bool isText =
            label || qobject_cast<const QAbstractButton *>(widget) || qobject_cast<const QComboBox *>(widget);
        if (!isText || !widget->isVisible())
            continue;
        const bool breaks = label && label->wordWrap();
        const bool fits = breaks ? label->height() >= label->heightForWidth(label->width())
                                 : widget->width() >= widget->sizeHint().width() &&
                                       widget->height() >= widget->minimumSizeHint().height();
        const QRect inPage(widget->mapTo(&page, QPoint()), widget->size());
        if (!fits || inPage.right() > page.width() || inPage.left() < 0)
            clipped.append(widget->property("text").toString() + widget->property("currentText").toString());
    }
    return clipped;
}

} // namespace

class SettingsFormTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void noTextIsCutOff_data();
    void noTextIsCutOff();
    void testsNeedWhatTheEngineNeeds_data();
    void testsNeedWhatTheEngineNeeds();
    void controlsWriteAndTell();
    void theTargetFollowsTheInterface();
    void aRefusedLoginItemSwitchesBack();
    void theLastOfSeveralKeysWins();
    void aKeyThatCannotBeSavedIsTriedAgain_data();
    void aKeyThatCannotBeSavedIsTriedAgain();
    void anUnsavedKeyIsShownAgain_data();
    void anUnsavedKeyIsShownAgain();
    void aKeyShownInClearIsToldNobody();
    void lettersReachTheControls_data();
    void lettersReachTheControls();
    void strangeValuesAreShownAsTheyAct_data();
    void strangeValuesAreShownAsTheyAct();
    void aLongHotkeyIsElided();
    void whatIsWrittenIntoTheFileIsShown();
    void whatWasTypedIsNotOverwrittenByWhatIsLoaded();
};

void SettingsFormTest::noTextIsCutOff_data()
{
    QTest::addColumn<int>("language");
    QTest::addColumn<bool>("isDark");
    QTest::addColumn<double>("fontScale");
    for (const AppLanguage language : allAppLanguages) {
        if (language == AppLanguage::System)
            continue;
        QTest::addRow("%s", qPrintable(rawValue(language))) << int(language) << false << 1.0;
        QTest::addRow("%s-large", qPrintable(rawValue(language))) << int(language) << false << 1.6;
    }
    QTest::newRow("en-dark") << int(AppLanguage::English) << true << 1.0;
    QTest::newRow("ja-dark") << int(AppLanguage::Japanese) << true << 1.0;
}

void SettingsFormTest::noTextIsCutOff()
{
    QFETCH(int, language);
    QFETCH(bool, isDark);
    const QPalette light = QApplication::palette();
    if (isDark)
        QApplication::setPalette(darkPalette());
    QFETCH(double, fontScale);
    const QFont before = QApplication::font();
    QFont font = before;
    font.setPointSizeF(font.pointSizeF() * fontScale);
    QApplication::setFont(font);
    const auto restore = qScopeGuard([&] {
        QApplication::setPalette(light);
        QApplication::setFont(before);
    });
    Fixture m;
    m.isHotkeyRefused = true;
    m.show();
    m.texts.setLanguage(AppLanguage(language));
    m.view->resize(m.view->minimumSizeHint().expandedTo({520, 440}));
    const QString pictures = qEnvironmentVariable("SETTINGS_PICTURES"); // a folder to look at what is drawn
    for (int tab = 0; tab < m.view->count(); ++tab) {
        m.view->setCurrentIndex(tab);
        for (int engine = 0; engine < (tab == 1 ? 8 : 1); ++engine) {
            m.settings.write(settings::translationEngine, engine);
            m.view->refresh();
            QTest::qWait(20);
            auto *content = m.view->currentWidget()->findChild<QWidget *>(u"content"_s);
            QVERIFY(content);
            QTRY_COMPARE(clippedTexts(*content).join(u" | "_s), QString());
            QVERIFY(m.view->tabBar()->width() <= m.view->width());
            if (!pictures.isEmpty()) {
                m.view->grab().save(QDir(pictures).filePath(
                    u"%1-%2-%3.png"_s.arg(QString::fromLatin1(QTest::currentDataTag())).arg(tab).arg(engine)));
                if (tab == 1)
                    content->grab().save(QDir(pictures).filePath(
                        u"%1-%2-%3-whole.png"_s.arg(QString::fromLatin1(QTest::currentDataTag()))
                            .arg(tab)
                            .arg(engine)));
            }
        }
    }
}

void SettingsFormTest::testsNeedWhatTheEngineNeeds_data()
{
    QTest::addColumn<int>("engine");
    QTest::addColumn<bool>("consent");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("model");
    QTest::addColumn<bool>("possible");
    QTest::newRow("on the device: nothing") << 0 << false << QString() << QString() << true;
    QTest::newRow("Google without a key") << 1 << true << QString() << QString() << true;
    QTest::newRow("Google without consent") << 1 << false << u"k"_s << QString() << false;
    QTest::newRow("a key of blanks") << 4 << true << u" \n"_s << QString() << false;
    QTest::newRow("DeepL") << 4 << true << u"k"_s << QString() << true;
    QTest::newRow("Microsoft without a region") << 2 << true << u"k"_s << u" "_s << true;
    QTest::newRow("OpenAI without a model") << 5 << true << u"k"_s << u" "_s << false;
    QTest::newRow("OpenAI") << 5 << true << u"k"_s << u"m"_s << true;
    QTest::newRow("a compatible endpoint without a model") << 7 << true << u"k"_s << QString() << false;
    QTest::newRow("no such engine") << 42 << true << u"k"_s << u"m"_s << false;
}

void SettingsFormTest::testsNeedWhatTheEngineNeeds()
{
    QFETCH(int, engine);
    QFETCH(bool, consent);
    QFETCH(QString, key);
    QFETCH(QString, model);
    Fixture m;
    for (const QLatin1StringView account :
         {"googleApiKey"_L1, "microsoftApiKey"_L1, "deeplApiKey"_L1, "openAIApiKey"_L1, "compatibleApiKey"_L1})
        m.secrets.secrets.insert(account, key.toUtf8());
    m.settings.write(settings::translationEngine, engine);
    m.settings.write(settings::consentKey(engine), consent);
    m.settings.write(settings::openAIModel, model);
    m.settings.write(settings::compatibleModel, model);
    m.settings.write(settings::microsoftApiRegion, model);
    m.show();
    QTEST(m.control<QPushButton>(u"測試連線"_s)->isEnabled(), "possible");
}

void SettingsFormTest::controlsWriteAndTell()
{
    Fixture m;
    m.show();
    m.control<QSlider>(u"玻璃透明度：75%"_s)->setValue(-5);
    QCOMPARE(m.settings.read(settings::glassOpacity), 0.1);
    QVERIFY(!m.control<QSlider>(u"自訂文字大小：20 pt"_s)->isEnabled());
    m.control<QCheckBox>(u"自動調整文字大小"_s)->click();
    m.control<QSlider>(u"自訂文字大小：20 pt"_s)->setValue(33);
    QCOMPARE(m.settings.read(settings::fontSize), 33.0);
    Fixture::choose(m.control<QComboBox>(u"邊框發光顏色："_s), u"pink"_s);
    Fixture::choose(m.control<QComboBox>(u"目標語言"_s), u"ko"_s);
    QCOMPARE(m.posted, (QStringList{u"UpdateGlassOpacity"_s, u"UpdateNeonBorder"_s, u"TargetLanguageChanged ko"_s}));
    // Each engine has a consent of its own.
    m.settings.write(settings::consentKey(4), true);
    Fixture::choose(m.control<QComboBox>(u"翻譯引擎"_s), 4);
    QVERIFY(m.control<QCheckBox>(u"允許將文字傳送至 DeepL"_s)->isChecked());
    Fixture::choose(m.control<QComboBox>(u"翻譯引擎"_s), 5);
    QVERIFY(!m.control<QCheckBox>(u"允許將文字傳送至 OpenAI"_s)->isChecked());
}

void SettingsFormTest::theTargetFollowsTheInterface()
{
    Fixture m;
    m.show();
    Fixture::choose(m.control<QComboBox>(u"介面語言"_s), u"ja"_s);
    QCOMPARE(m.settings.read(settings::targetLanguageCode), u"ja"_s);
    QCOMPARE(m.posted, QStringList(u"TargetLanguageChanged ja"_s));
    m.settings.write(settings::targetLanguageFollowsInterface, false);
    Fixture::choose(m.control<QComboBox>(u"表示言語"_s), u"ko"_s);
    QCOMPARE(m.settings.read(settings::targetLanguageCode), u"ja"_s);
}

void SettingsFormTest::aRefusedLoginItemSwitchesBack()
{
    Fixture m;
    m.show();
    auto *toggle = m.control<QCheckBox>(u"開機自動啟動"_s);
    toggle->click();
    QTRY_VERIFY(!toggle->isChecked());
}

void SettingsFormTest::theLastOfSeveralKeysWins()
{
    Fixture m;
    m.settings.setValue(u"deeplApiKey"_s, u"plain"_s);
    m.show();
    QVERIFY(!m.settings.contains(u"deeplApiKey"_s));
    for (const QString &key : {u"k"_s, u"ke"_s, u"key"_s})
        m.keys->save(u"deeplApiKey"_s, key);
    m.settle();
    QCOMPARE(m.secrets.secrets.value(u"deeplApiKey"_s), "key");
    m.keys->save(u"deeplApiKey"_s, {});
    m.settle();
    QVERIFY(!m.secrets.secrets.contains(u"deeplApiKey"_s));
}

void SettingsFormTest::aKeyThatCannotBeSavedIsTriedAgain_data()
{
    QTest::addColumn<int>("problem");
    QTest::addColumn<QString>("advice");
    QTest::newRow("locked") << int(SecretStorageProblem::Locked) << u"鑰匙圈已鎖定"_s;
    QTest::newRow("none made yet") << int(SecretStorageProblem::NoKeyring) << u"鑰匙圈已鎖定"_s;
    QTest::newRow("no service") << int(SecretStorageProblem::NoService) << u"請安裝 gnome-keyring"_s;
    QTest::newRow("of the system's own") << 2 << u"鑰匙圈沒有回應"_s;
}

void SettingsFormTest::aKeyThatCannotBeSavedIsTriedAgain()
{
    QFETCH(int, problem);
    QFETCH(QString, advice);
    Fixture m;
    m.settings.write(settings::translationEngine, 4);
    m.secrets.lookupFailure = m.secrets.storeFailure = Failure{.code = problem, .description = u"refused"_s};
    m.show();
    m.view->setCurrentIndex(1);
    QTRY_COMPARE(m.linesWith(advice), 1); // the stored one can't be read
    const auto field = m.control<QLineEdit>(u"API Key"_s);
    m.secrets.secrets.insert(u"deeplApiKey"_s, "stored");
    m.secrets.lookupFailure.reset();
    m.keys->retryFailed();
    m.settle();
    QTRY_COMPARE(field->text(), u"stored"_s);
    QCOMPARE(m.linesWith(advice), 0);
    QTest::keyClicks(field, u"abc"_s);
    m.settle();
    QTRY_COMPARE(m.linesWith(advice), 1);
    QCOMPARE(field->text(), u"storedabc"_s);
    m.secrets.storeFailure.reset();
    m.keys->retryFailed();
    m.settle();
    QTRY_COMPARE(m.linesWith(advice), 0);
    QCOMPARE(m.secrets.secrets.value(u"deeplApiKey"_s), "storedabc");
}

void SettingsFormTest::anUnsavedKeyIsShownAgain_data()
{
    QTest::addColumn<bool>("isBack");
    QTest::newRow("the keyring is back") << true;
    QTest::newRow("the keyring is still away") << false;
}

void SettingsFormTest::anUnsavedKeyIsShownAgain()
{
    QFETCH(bool, isBack);
    Fixture m;
    m.settings.write(settings::translationEngine, 4);
    m.secrets.secrets.insert(u"deeplApiKey"_s, "old");
    m.show();
    m.view->setCurrentIndex(1);
    const Failure away{.code = int(SecretStorageProblem::NoService), .description = u"gone"_s};
    m.secrets.lookupFailure = m.secrets.storeFailure = m.secrets.removeFailure = away;
    QTest::keyClicks(m.control<QLineEdit>(u"API Key"_s), u"NEW"_s);
    m.settle();
    QTRY_COMPARE(m.linesWith(u"請安裝 gnome-keyring"_s), 1);
    if (isBack)
        m.secrets.lookupFailure = m.secrets.storeFailure = m.secrets.removeFailure = std::nullopt;
    m.view.emplace(m.services, *m.keys);
    m.view->setCurrentIndex(1);
    m.view->show();
    m.keys->retryFailed(); // as the window does when it comes up
    m.settle();
    auto *field = m.control<QLineEdit>(u"API Key"_s);
    QTRY_COMPARE(field->text(), u"oldNEW"_s);
    QCOMPARE(m.linesWith(u"請安裝 gnome-keyring"_s), isBack ? 0 : 1);
    QCOMPARE(m.secrets.secrets.value(u"deeplApiKey"_s), isBack ? "oldNEW" : "old");
    QTest::keyClicks(field, u"!"_s);
    m.settle();
    QCOMPARE(m.secrets.secrets.value(u"deeplApiKey"_s), isBack ? "oldNEW!" : "old");
}

void SettingsFormTest::aKeyShownInClearIsToldNobody()
{
    Fixture m;
    m.settings.write(settings::translationEngine, 4);
    m.show();
    m.view->setCurrentIndex(1);
    auto *field = m.control<QLineEdit>(u"API Key"_s);
    QTest::keyClicks(field, u"hidden"_s);
    const QImage dots = field->grab().toImage();
    m.control<QToolButton>(u"顯示 API Key"_s)->click();
    QVERIFY(field->grab().toImage() != dots);
    QTest::keyClicks(field, u"-shown"_s);
    auto *accessible = QAccessible::queryAccessibleInterface(field);
    const QString text = accessible->text(QAccessible::Value) + accessible->textInterface()->text(0, 12);
    for (const QChar letter : u"hidenswo-"_s)
        QVERIFY2(!text.contains(letter), qPrintable(text));
    field->selectAll();
    QVERIFY(!field->hasSelectedText());
    // A click goes to the letter that is seen there.
    QTest::mouseClick(field, Qt::LeftButton, {}, {3, field->height() / 2});
    QTest::keyClicks(field, u"0"_s);
    QCOMPARE(field->text(), u"0hidden-shown"_s);
    m.control<QToolButton>(u"隱藏 API Key"_s)->click();
    field->selectAll();
    QVERIFY(field->hasSelectedText());
}

void SettingsFormTest::lettersReachTheControls_data()
{
    QTest::addColumn<int>("language");
    QTest::addColumn<int>("engine");
    for (const AppLanguage language : {AppLanguage::English, AppLanguage::TraditionalChinese}) {
        for (int engine = 0; engine < 8; ++engine)
            QTest::addRow("%s-%d", qPrintable(rawValue(language)), engine) << int(language) << engine;
    }
}

void SettingsFormTest::lettersReachTheControls()
{
    QFETCH(int, language);
    QFETCH(int, engine);
    Fixture m;
    m.settings.write(settings::translationEngine, engine);
    m.show();
    m.texts.setLanguage(AppLanguage(language));
    for (int tab = 0; tab < m.view->count(); ++tab) {
        m.view->setCurrentIndex(tab);
        QStringList letters;
        for (int each = 0; each < m.view->count(); ++each)
            letters.append(QKeySequence::mnemonic(m.view->tabText(each)).toString());
        const auto widgets = m.view->currentWidget()->findChildren<QWidget *>();
        for (const QWidget *widget : widgets) {
            const auto *label = qobject_cast<const QLabel *>(widget);
            const bool leads = (label && label->buddy() && label->buddy()->focusPolicy() != Qt::NoFocus) ||
                               qobject_cast<const QCheckBox *>(widget) ||
                               widget->accessibleName() == m.text(u"測試連線"_s);
            if (leads && Fixture::isOffered(widget))
                letters.append(QKeySequence::mnemonic(widget->property("text").toString()).toString());
        }
        QVERIFY(!letters.contains(QString()));
        QCOMPARE(QSet<QString>(letters.begin(), letters.end()).size(), letters.size());
    }
    // And they work: from the picker of languages to the second tab and to its first picker.
    m.view->setCurrentIndex(0);
    const auto press = [&](const QString &text) {
        const QKeySequence keys = QKeySequence::mnemonic(text);
        QTest::keyClick(&*m.view, Qt::Key(keys[0].key()), Qt::AltModifier);
    };
    m.view->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&*m.view));
    press(m.view->tabText(1));
    QCOMPARE(m.view->currentIndex(), 1);
    for (const QLabel *label : m.view->findChildren<QLabel *>()) {
        if (label->accessibleName() == m.text(u"目標語言"_s))
            press(label->text());
    }
    QCOMPARE(QApplication::focusWidget(), m.control<QComboBox>(m.text(u"目標語言"_s)));
}

void SettingsFormTest::strangeValuesAreShownAsTheyAct_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QVariant>("stored");
    QTest::addColumn<QString>("name"); // of the control
    QTest::addColumn<QVariant>("shown");
    const auto row = [](QLatin1StringView key, const QVariant &stored, const QString &name, const QVariant &shown) {
        QTest::addRow("%s %s", key.data(), qPrintable(stored.toString())) << QString(key) << stored << name << shown;
    };
    row(settings::glassOpacity.key, 1e300, u"玻璃透明度：100%"_s, 20);
    row(settings::glassOpacity.key, 1e-300, u"玻璃透明度：10%"_s, 2);
    row(settings::fontSize.key, 1e300, u"自訂文字大小：48 pt"_s, 48);
    row(settings::fontSize.key, -1e300, u"自訂文字大小：12 pt"_s, 12);
    row(settings::translationEngine.key, 99, u"翻譯引擎"_s, 0);
    row(settings::translationEngine.key, 4294967297LL, u"翻譯引擎"_s, 0);
    row(settings::neonBorderColor.key, u"green"_s, u"邊框發光顏色："_s, u"white"_s);
    row(settings::targetLanguageCode.key, u"fr"_s, u"目標語言"_s, u"zh-Hant"_s);
    row(settings::triggerMode.key, 7, u"操作模式"_s, 0);
}

void SettingsFormTest::strangeValuesAreShownAsTheyAct()
{
    QFETCH(QString, key);
    QFETCH(QVariant, stored);
    QFETCH(QString, name);
    QFETCH(QVariant, shown);
    Fixture m;
    m.settings.setValue(key, QJsonValue::fromVariant(stored));
    m.show();
    const bool isNumber = key == settings::glassOpacity.key || key == settings::fontSize.key;
    QCOMPARE(isNumber ? m.control<QSlider>(name)->value() : m.control<QComboBox>(name)->currentData(), shown);
    QCOMPARE(m.settings.value(key), QJsonValue::fromVariant(stored));
    QVERIFY(m.posted.isEmpty());
    if (key == settings::translationEngine.key) {
        m.view->setCurrentIndex(1);
        QCOMPARE(m.linesWith(m.text(u"Apple 內建翻譯"_s)), 1);
        QVERIFY(!m.control<QPushButton>(u"測試連線"_s)->isEnabled());
    }
}

void SettingsFormTest::aLongHotkeyIsElided()
{
    Fixture m;
    m.settings.write(settings::hotkeyString, QString(300, u'W'));
    m.show();
    m.view->setCurrentIndex(2);
    const auto *recorder = m.control<QPushButton>(u"顯示 / 隱藏翻譯視窗："_s);
    QVERIFY2(recorder->text().startsWith(u"WWW"_s) && recorder->text().endsWith(u'…'), qPrintable(recorder->text()));
    auto *content = m.view->currentWidget()->findChild<QWidget *>(u"content"_s);
    QTRY_COMPARE(clippedTexts(*content).join(u" | "_s), QString());
    QVERIFY(content->width() <= m.view->width());
}

void SettingsFormTest::whatIsWrittenIntoTheFileIsShown()
{
    Fixture m;
    m.show();
    m.settings.write(settings::autoHide, true);
    m.settings.flush();
    auto *toggle = m.control<QCheckBox>(u"失去焦點時自動隱藏玻璃板"_s);
    QTRY_VERIFY(toggle->isChecked());
    for (const QByteArray value : {"false", "true", "false"}) { // more than once, in place
        QFile file(m.services.settingsFile);
        QVERIFY(file.open(QIODevice::ReadWrite));
        file.resize(0);
        file.write("{\"autoHide\": " + value + "}");
        file.close();
        QTRY_COMPARE(toggle->isChecked(), value == "true");
    }
}

void SettingsFormTest::whatWasTypedIsNotOverwrittenByWhatIsLoaded()
{
    Fixture m;
    m.secrets.secrets.insert(u"deeplApiKey"_s, "stored");
    m.settings.write(settings::translationEngine, 4);
    m.keys.emplace(m.settings, m.keychain, m.mainQueue);
    m.view.emplace(m.services, *m.keys);
    m.view->show();
    auto *field = m.control<QLineEdit>(u"API Key"_s);
    QTest::keyClicks(field, u"new"_s); // before the load has come back
    m.settle();
    QCOMPARE(field->text(), u"new"_s);
    QCOMPARE(m.secrets.secrets.value(u"deeplApiKey"_s), "new");
}

QTEST_MAIN(SettingsFormTest)
#include "SettingsFormTest.moc"
