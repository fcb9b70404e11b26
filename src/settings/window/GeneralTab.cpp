#include "Tabs.h"

#include "FormSection.h"
#include "LocalizationManager.h"
#include "LoginItem.h"
#include "MainQueue.h"
#include "Settings.h"
#include "SettingsForm.h"

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

QWidget *makeLanguageSection(SettingsForm &form)
{
    auto *section = new FormSection(form, u"介面語言"_s);
    QList<PickerOption> options;
    for (const AppLanguage language : allAppLanguages)
        options.append({pickerLabelKey(language), rawValue(language)});
    LocalizationManager &texts = form.services().texts;
    section->addPicker(u"介面語言"_s, options,
                       {[&texts] { return rawValue(texts.language()); },
                        [&texts](const QVariant &value) {
                            texts.setLanguage(appLanguageFromRawValue(value.toString()));
                            texts.syncTargetLanguage();
                        }});
    return section;
}

QWidget *makeSystemSection(SettingsForm &form)
{
    auto *section = new FormSection(form, u"系統行為"_s);
    const SettingsServices &services = form.services();
    const auto launchAtLogin = [&services, &form](bool isOn) {
        const auto changed = services.loginItem.setEnabled(isOn);
        if (changed)
            return;
        services.diagnostics(u"SMAppService failed: "_s + changed.error().description);
        services.mainQueue.post(&form, [&form] { form.refreshValues(); }); // shows the actual state
    };
    section->addToggle(u"開機自動啟動"_s, {[&services] { return services.loginItem.isEnabled(); }, launchAtLogin});
    section->addToggle(u"失去焦點時自動隱藏玻璃板"_s, section->stored<bool>(settings::autoHide));
    section->addToggle(u"翻譯完成後自動複製到剪貼簿"_s, section->stored<bool>(settings::autoCopy));
    auto inDock = section->stored<bool>(settings::showInDock);
    inDock.write = [write = inDock.write, apply = services.applyDockPresence](const bool &isOn) {
        write(isOn);
        apply(isOn);
    };
    section->addToggle(u"在下方 Dock 欄顯示圖示"_s, inDock);
    return section;
}

} // namespace

FormPage *makeGeneralTab(SettingsForm &form)
{
    auto *tab = new FormPage;
    tab->addSection(makeLanguageSection(form));
    tab->addSection(makeSystemSection(form));
    return tab;
}

} // namespace lucentra
