#include "HotkeyTab.h"

#include "FormSection.h"
#include "HotkeyRow.h"
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

HotkeyTab::HotkeyTab(SettingsForm &form, QWidget *parent)
    : FormPage(parent)
    , m_form(form)
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

void HotkeyTab::addRecorder(FormSection &section)
{
    const SettingsServices &services = m_form.services();
    m_recorder =
        new HotkeyRow(services.settings, {settings::hotkeyCode, settings::hotkeyModifiers, settings::hotkeyString},
                      services.texts, services.scheduler);
    constexpr int recorderWidth = 120;
    m_recorder->setMinimumWidth(recorderWidth);
    m_recorder->onRecordingChanged = [this, change = services.hotkeyRecordingChanged](bool isRecording) {
        change(isRecording);
        showStored(); // the same combination may have been refused before
    };
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
        refusal->parentWidget()->setVisible(services.areHotkeysChosenHere() && services.isHotkeyRefused(action));
    });
}

void HotkeyTab::addFixedHotkey(FormSection &section)
{
    auto *fixed = new QLabel;
    fixed->setTextFormat(Qt::PlainText);
    QLabel *label = section.addRow(u"翻譯目前區域："_s, fixed);
    m_form.keepValue([this, fixed] {
        const QString keys = m_form.services().keysOfDesktop(HotkeyAction::TranslateArea);
        fixed->setText(keys.isEmpty() ? desktopNameOfHotkey(u"⌥Return"_s) : keys);
    });
    m_form.keepText([this, fixed, label] {
        fixed->setAccessibleName(label->accessibleName() + u" "_s + fixed->text());
        fixed->setToolTip(m_form.text(u"按住 Option，再按主鍵盤上的 Return（↩）鍵"_s));
    });
}

void HotkeyTab::addLiveHotkey(FormSection &section)
{
    const SettingsServices &services = m_form.services();
    auto *recorder = new HotkeyRow(
        services.settings, {settings::liveHotkeyCode, settings::liveHotkeyModifiers, settings::liveHotkeyString},
        services.texts, services.scheduler);
    recorder->setMinimumWidth(m_recorder->minimumWidth());
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
        recorder->setEnabled(m_form.services().areHotkeysChosenHere());
        recorder->setDefaultTitle(stored.isEmpty() ? m_form.text(u"未設定"_s) : stored);
        remove->setText(m_form.text(u"清除"_s));
        remove->setVisible(!stored.isEmpty());
        recorder->setAccessibleName(label->text() + u' ' + recorder->defaultTitle());
        remove->setAccessibleName(remove->text() + u' ' + label->text());
    };
    recorder->onRecordingChanged = [this, show, change = services.hotkeyRecordingChanged](bool isRecording) {
        change(isRecording);
        if (!isRecording)
            show();
        showStored();
    };
    connect(remove, &QPushButton::clicked, this, [this, &settings = services.settings, show] {
        settings.write(settings::liveHotkeyString, QString());
        show();
        showStored();
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
    addKeyDialog(section);
    if (services.shortcutConfiguration.isEmpty())
        return;
    auto *line = new QLabel(services.shortcutConfiguration);
    line->setTextFormat(Qt::PlainText);
    line->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    section.addRow(u"加入桌面設定檔的一行："_s, line);
}

void HotkeyTab::addKeyDialog(FormSection &section)
{
    auto *button = new QPushButton;
    button->setAutoDefault(false);
    auto *content = new QWidget;
    auto *layout = new QHBoxLayout(content);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(button);
    layout->addStretch(1);
    m_keyDialog = section.addWidget(content);
    connect(button, &QPushButton::clicked, this, [this] {
        if (const auto open = m_form.services().keyDialog())
            open();
    });
    m_form.keepText([this, button] { setMnemonicText(*button, m_form.text(u"在桌面的設定中變更…"_s)); });
}

void HotkeyTab::showStored()
{
    const SettingsServices &services = m_form.services();
    m_recorder->setEnabled(services.areHotkeysChosenHere());
    m_recorder->showStored();
    QString keys = services.keysOfDesktop(HotkeyAction::TogglePane);
    if (keys.isEmpty())
        keys = desktopNameOfHotkey(services.settings.read(settings::hotkeyString));
    else
        m_recorder->setDefaultTitle(keys);
    // Escaped, since a tool tip would interpret what a file says as HTML and load pictures.
    m_recorder->setToolTip(Qt::convertFromPlainText(keys.left(100)));
    for (const auto &show : std::as_const(m_showRefusals))
        show();
    m_keyDialog->setVisible(bool(services.keyDialog()));
}

} // namespace lucentra
