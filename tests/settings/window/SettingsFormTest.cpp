#include "Columns.h"
#include "Files.h"
#include "SettingsFixture.h"
#include "TestProgram.h"

#include <QApplication>
#include <QCheckBox>
#include <QPushButton>
#include <QSlider>
#include <QTabBar>

using namespace lucentra;
using namespace Qt::StringLiterals;

namespace {

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
    void noTextIsCutOff_data()
    {
        const auto row = columns<int, double>("language", "fontScale");
        for (const AppLanguage language : allAppLanguages) {
            if (language != AppLanguage::System)
                QTest::addRow("%s, large", qPrintable(rawValue(language))) << int(language) << 1.6;
        }
        row("English", int(AppLanguage::English), 1.0);
    }

    void noTextIsCutOff()
    {
        const auto [language, fontScale] = fetched<int, double>();
        const QFont before = QApplication::font();
        QFont font = before;
        font.setPointSizeF(font.pointSizeF() * fontScale);
        QApplication::setFont(font);
        const auto restore = qScopeGuard([&] { QApplication::setFont(before); });
        SettingsFixture m;
        m.settings.write(settings::liveHotkeyString, u"F9"_s);
        m.hotkeys.registerHotkeys(); // which are refused
        if (AppLanguage(language) == AppLanguage::TraditionalChinese)
            m.settings.write(settings::hotkeyString, QString(300, u'W'));
        m.show();
        m.texts.setLanguage(AppLanguage(language));
        m.view->resize(m.view->minimumSizeHint().expandedTo({520, 440}));
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
                QVERIFY(content->width() <= m.view->width() ||
                        AppLanguage(language) != AppLanguage::TraditionalChinese);
            }
        }
    }

    void testsNeedWhatTheEngineNeeds_data()
    {
        const auto row = columns<int, bool, QString, QString, bool>("engine", "consent", "key", "model", "possible");
        row("on the device: nothing", 0, false, {}, {}, true);
        row("Google without a key", 1, true, {}, {}, true);
        row("Google without consent", 1, false, u"k"_s, {}, false);
        row("a key of blanks", 4, true, u" \n"_s, {}, false);
        row("DeepL", 4, true, u"k"_s, {}, true);
        row("Microsoft without a region", 2, true, u"k"_s, u" "_s, true);
        row("OpenAI without a model", 5, true, u"k"_s, u" "_s, false);
        row("OpenAI", 5, true, u"k"_s, u"m"_s, true);
        row("a compatible endpoint without a model", 7, true, u"k"_s, {}, false);
        row("no such engine", 42, true, u"k"_s, u"m"_s, false);
    }

    void testsNeedWhatTheEngineNeeds()
    {
        const auto [engine, consent, key, model] = fetched<int, bool, QString, QString>();
        SettingsFixture m;
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

    void controlsWriteAndTell()
    {
        SettingsFixture m;
        m.show();
        m.control<QSlider>(u"玻璃透明度：75%"_s)->setValue(-5);
        QCOMPARE(m.settings.read(settings::glassOpacity), 0.1);
        QVERIFY(!m.control<QSlider>(u"自訂文字大小：20 pt"_s)->isEnabled());
        m.control<QCheckBox>(u"自動調整文字大小"_s)->click();
        m.control<QSlider>(u"自訂文字大小：20 pt"_s)->setValue(33);
        QCOMPARE(m.settings.read(settings::fontSize), 33.0);
        for (int time = 0; time < 2; ++time) { // chosen once more, they report nothing
            SettingsFixture::choose(m.control<QComboBox>(u"邊框發光顏色："_s), u"pink"_s);
            SettingsFixture::choose(m.control<QComboBox>(u"目標語言"_s), u"ko"_s);
            SettingsFixture::choose(m.control<QComboBox>(u"點擊玻璃板"_s), time);
            SettingsFixture::choose(m.control<QComboBox>(u"操作模式"_s), 1);
            QCOMPARE(int(m.settings.read(settings::translationClickGesture)), time);
            QCOMPARE(m.settings.read(settings::triggerMode), TriggerMode::Manual);
        }
        QCOMPARE(m.posted, (QStringList{u"UpdateGlassOpacity"_s, u"UpdateNeonBorder"_s, u"TargetLanguageChanged"_s,
                                        u"TranslationClickGestureChanged"_s, u"TranslationClickGestureChanged"_s}));
        // Each engine has a consent of its own.
        m.settings.write(settings::consentKey(4), true);
        SettingsFixture::choose(m.control<QComboBox>(u"翻譯引擎"_s), 4);
        QVERIFY(m.control<QCheckBox>(u"允許將文字傳送至 DeepL"_s)->isChecked());
        SettingsFixture::choose(m.control<QComboBox>(u"翻譯引擎"_s), 5);
        QVERIFY(!m.control<QCheckBox>(u"允許將文字傳送至 OpenAI"_s)->isChecked());
    }

    void aRefusedLoginItemSwitchesBack()
    {
        SettingsFixture m;
        m.show();
        auto *toggle = m.control<QCheckBox>(u"開機自動啟動"_s);
        toggle->click();
        QTRY_VERIFY(!toggle->isChecked());
    }

    void lettersReachTheControls()
    {
        SettingsFixture m;
        m.show();
        for (int i = 0; i < 24; ++i) { // the four other tabs, and that of the engines with each of them
            m.texts.setLanguage(i % 2 ? AppLanguage::English : AppLanguage::TraditionalChinese);
            m.settings.write(settings::translationEngine, std::min(i / 2, 7));
            m.view->refresh();
            m.view->setCurrentIndex(i < 16 ? 1 : i < 18 ? 0 : i / 2 - 7);
            QStringList letters;
            for (int each = 0; each < m.view->count(); ++each)
                letters.append(QKeySequence::mnemonic(m.view->tabText(each)).toString());
            const auto widgets = m.view->currentWidget()->findChildren<QWidget *>();
            for (const QWidget *widget : widgets) {
                const auto *label = qobject_cast<const QLabel *>(widget);
                const bool leads = (label && label->buddy() && label->buddy()->focusPolicy() != Qt::NoFocus) ||
                                   qobject_cast<const QCheckBox *>(widget) ||
                                   widget->accessibleName() == m.text(u"測試連線"_s);
                if (!leads || !SettingsFixture::isOffered(widget))
                    continue;
                const QString shown = widget->property("text").toString();
                QVERIFY2(i % 2 == 0 || !shown.contains(u"(&"_s), qPrintable(shown)); // in English
                letters.append(QKeySequence::mnemonic(shown).toString());
            }
            QVERIFY(!letters.contains(QString()) && !letters.contains(u"Alt+T"_s)); // which shows and hides the pane
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

    void strangeValuesAreShownAsTheyAct_data()
    {
        // name: of the control
        columns<QString, QVariant, QString, QVariant>("key", "stored", "name", "shown");
        const auto row = [](QLatin1StringView key, const QVariant &stored, const QString &name, const QVariant &shown) {
            QTest::addRow("%s %s", key.data(), qPrintable(stored.toString()))
                << QString(key) << stored << name << shown;
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

    void strangeValuesAreShownAsTheyAct()
    {
        const auto [key, stored, name, shown] = fetched<QString, QVariant, QString, QVariant>();
        SettingsFixture m;
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

    void storedTextsAreNoMarkup()
    {
        SettingsFixture m;
        m.settings.write(settings::hotkeyString, u"<img src=\"/dev/zero\">"_s);
        m.show();
        for (const QWidget *widget : m.view->findChildren<QWidget *>())
            QVERIFY2(!widget->toolTip().contains(u"<img"_s), qPrintable(widget->toolTip()));
    }

    void keysThatTheDesktopHasChosenAreShown()
    {
        SettingsFixture m;
        m.settings.write(settings::liveHotkeyString, u"F9"_s);
        m.hotkeys.registerHotkeys(); // which are refused
        m.show(3);
        const QString refused = u"系統不接受這個組合鍵"_s;
        QCOMPARE(m.linesWith(refused), 2);
        auto *button = m.control<QPushButton>(u"顯示 / 隱藏翻譯視窗："_s);
        QVERIFY(button->isEnabled());
        m.keys.chosen = u"<b>F7</b>"_s;
        m.view->refresh();
        QCOMPARE(m.linesWith(refused), 0);
        QVERIFY(!button->isEnabled());
        QCOMPARE(button->text(), m.keys.chosen);
        QVERIFY(!button->toolTip().contains(u"<b>"_s));
        m.control<QPushButton>(u"在桌面的設定中變更…"_s)->click();
        QCOMPARE(m.keys.dialogs, 1);
    }

    void whatIsWrittenIntoTheFileIsShown()
    {
        SettingsFixture m;
        m.settings.followFile();
        m.show();
        SettingsStore(m.folder.filePath(u"preferences.json"_s)).write(settings::autoHide, true); // another process
        auto *toggle = m.control<QCheckBox>(u"失去焦點時自動隱藏玻璃板"_s);
        QTRY_VERIFY(toggle->isChecked());
        for (const QByteArray value : {"false", "true", "false"}) { // more than once, in place
            writeFile(m.folder.filePath(u"preferences.json"_s), "{\"autoHide\": " + value + "}");
            QTRY_COMPARE(toggle->isChecked(), value == "true");
        }
    }
};

static const TestClass<SettingsFormTest, QApplication> settingsFormTest;
#include "SettingsFormTest.moc"
