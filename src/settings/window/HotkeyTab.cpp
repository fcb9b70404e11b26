#include "HotkeyTab.h"

#include "FormSection.h"
#include "HotkeyButton.h"
#include "HotkeyManager.h"
#include "Mnemonics.h"
#include "Settings.h"
#include "SettingsForm.h"
#include "SettingsStore.h"
#include "VirtualKeys.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QTextDocument>

#include <utility>

using namespace Qt::StringLiterals;

namespace lucentra {

struct StoredHotkey
{
    Setting<qint64> code;
    Setting<qint64> modifiers;
    Setting<QString> text;
};

HotkeyTab::HotkeyTab(SettingsForm &form)
    : m_form(form)
{
    auto *section = new FormSection(form, u"全域快捷鍵"_s);
    addRecorder(*section);
    addFixedHotkey(*section);
    addLiveHotkey(*section);
    addDesktopShortcuts(*section);
    section->addFooter(u"設定後，可在任何情境下呼叫/隱藏翻譯板。默認為 ⌥T。欲清除請按 ESC。"_s);
    addSection(section);
    form.keepText([this] { showStored(); });
    form.keepValue([this] { showStored(); });
}

/// A button that stores what it records.
HotkeyButton *HotkeyTab::makeRecorder(const StoredHotkey &hotkey)
{
    const SettingsServices &services = m_form.services();
    auto *recorder = new HotkeyButton(services.texts, services.scheduler);
    constexpr int recorderWidth = 120;
    recorder->setMinimumWidth(recorderWidth);
    recorder->onHotkeyChanged = [hotkey, &settings = services.settings](quint32 flags, quint32 keyCode,
                                                                        const QString &combination) {
        constexpr quint32 storedBits = 0xFFFF;
        settings.write(hotkey.modifiers, flags);
        settings.write(hotkey.code, keyCode & storedBits);
        settings.write(hotkey.text, combination); // last, since it announces all three
    };
    recorder->onRecordingChanged = [this](bool isRecording) {
        m_form.services().hotkeys.setRecording(isRecording);
        m_form.refreshValues(); // the same combination may have been refused before
    };
    return recorder;
}

void HotkeyTab::addRecorder(FormSection &section)
{
    m_recorder = makeRecorder({settings::hotkeyCode, settings::hotkeyModifiers, settings::hotkeyString});
    section.addRow(u"顯示 / 隱藏翻譯視窗："_s, m_recorder);
    addRefusal(section, HotkeyAction::TogglePane);
}

void HotkeyTab::addRefusal(FormSection &section, HotkeyAction action)
{
    QLabel *refusal = makeSmallPrint();
    section.addRemark(refusal);
    m_showRefusals.append([this, refusal, action] {
        const SettingsServices &services = m_form.services();
        setTone(*refusal, Tone::Bad);
        refusal->setText(m_form.text(u"系統不接受這個組合鍵，可能已有其他程式使用。請改用別的組合鍵。"_s));
        refusal->parentWidget()->setVisible(services.hotkeys.areKeysChosenHere() && services.hotkeys.isRefused(action));
    });
}

void HotkeyTab::addFixedHotkey(FormSection &section)
{
    auto *fixed = new QLabel;
    fixed->setTextFormat(Qt::PlainText);
    QLabel *label = section.addRow(u"翻譯目前區域："_s, fixed);
    m_form.keepValue([this, fixed] {
        const QString keys = m_form.services().hotkeys.keysOfDesktop(HotkeyAction::TranslateArea);
        fixed->setText(keys.isEmpty() ? desktopNameOfHotkey(u"⌥Return"_s) : keys);
    });
    m_form.keepText([this, fixed, label] {
        fixed->setAccessibleName(label->accessibleName() + u" "_s + fixed->text());
        fixed->setToolTip(m_form.text(u"按住 Option，再按主鍵盤上的 Return（↩）鍵"_s));
    });
}

void HotkeyTab::addLiveHotkey(FormSection &section)
{
    HotkeyButton *recorder =
        makeRecorder({settings::liveHotkeyCode, settings::liveHotkeyModifiers, settings::liveHotkeyString});
    auto *row = new QWidget;
    auto *layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    auto *remove = new QPushButton;
    layout->addWidget(remove);
    layout->addWidget(recorder);
    row->setFocusProxy(recorder);
    const QLabel *label = section.addRow(u"開啟 / 停止即時翻譯："_s, row);
    addRefusal(section, HotkeyAction::SwitchLive);
    const auto show = [this, recorder, remove, label] {
        const QString stored = m_form.services().settings.read(settings::liveHotkeyString);
        recorder->setEnabled(m_form.services().hotkeys.areKeysChosenHere());
        const QString unset = m_form.text(u"未設定"_s);
        recorder->setDefaultTitle(stored.isEmpty() ? unset : stored);
        remove->setText(m_form.text(u"清除"_s));
        remove->setVisible(!stored.isEmpty());
        recorder->setAccessibleName(label->accessibleName() + u' ' +
                                    (stored.isEmpty() ? unset : desktopNameOfHotkey(stored)));
        remove->setAccessibleName(remove->text() + u' ' + label->accessibleName());
    };
    connect(remove, &QPushButton::clicked, this, [this] {
        m_form.services().settings.write(settings::liveHotkeyString, QString());
        m_form.refreshValues();
    });
    m_form.keepText(show);
    m_form.keepValue(show);
}

void HotkeyTab::addDesktopShortcuts(FormSection &section)
{
    const SettingsServices &services = m_form.services();
    if (services.setDesktopShortcuts)
        section.addToggle(u"由桌面的快捷鍵呼叫 Lucentra"_s,
                          {services.areDesktopShortcutsSet, [this, set = services.setDesktopShortcuts](bool isOn) {
                               set(isOn);
                               showStored();
                           }});
    QPushButton *button = section.addButton(u"在桌面的設定中變更…"_s, [this] {
        if (const auto open = m_form.services().hotkeys.keyDialog())
            open();
    });
    m_keyDialog = button->parentWidget();
    if (services.shortcutConfiguration.isEmpty())
        return;
    auto *line = new QLabel(services.shortcutConfiguration);
    line->setTextFormat(Qt::PlainText);
    line->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    section.addRow(u"加入桌面設定檔的一行："_s, line);
}

void HotkeyTab::showStored()
{
    const SettingsServices &services = m_form.services();
    m_recorder->setEnabled(services.hotkeys.areKeysChosenHere());
    const QString keysOfDesktop = services.hotkeys.keysOfDesktop(HotkeyAction::TogglePane);
    const QString stored = services.settings.read(settings::hotkeyString);
    m_recorder->setDefaultTitle(keysOfDesktop.isEmpty() ? stored : keysOfDesktop);
    const QString keys = keysOfDesktop.isEmpty() ? desktopNameOfHotkey(stored) : keysOfDesktop;
    // Escaped, since a tool tip would interpret what a file says as HTML and load pictures.
    m_recorder->setToolTip(Qt::convertFromPlainText(keys.left(100)));
    m_recorder->setAccessibleDescription(keys.left(100)); // else it would be the tool tip with its HTML
    for (const auto &show : std::as_const(m_showRefusals))
        show();
    m_keyDialog->setVisible(bool(services.hotkeys.keyDialog()));
}

} // namespace lucentra
