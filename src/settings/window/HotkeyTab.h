#pragma once

#include "FormPage.h"
#include "GlobalHotkeys.h"

#include <QList>

#include <functional>

namespace lucentra {

class FormSection;
class HotkeyButton;
struct StoredHotkey;

/// The recorder of the hotkey that shows and hides the pane, and the fixed hotkey.
class HotkeyTab : public FormPage
{
public:
    explicit HotkeyTab(SettingsForm &form);

private:
    HotkeyButton *makeRecorder(const StoredHotkey &hotkey);
    void addRecorder(FormSection &section);
    void addDesktopShortcuts(FormSection &section);
    void addFixedHotkey(FormSection &section);
    void addRefusal(FormSection &section, HotkeyAction action);
    void addLiveHotkey(FormSection &section);
    void showStored();

    SettingsForm &m_form;
    HotkeyButton *m_recorder = nullptr;
    QList<std::function<void()>> m_showRefusals; ///< each shows or hides the line about a refused hotkey
    QWidget *m_keyDialog = nullptr; ///< the row of the button that opens it
};

} // namespace lucentra
