#pragma once

#include "FormPage.h"

namespace lucentra {

/// The settings of the interface language and of the behaviour on the desktop.
class GeneralTab : public FormPage
{
public:
    explicit GeneralTab(SettingsForm &form, QWidget *parent = nullptr);

private:
    void addLanguageSection(SettingsForm &form);
    void addSystemSection(SettingsForm &form);
};

} // namespace lucentra
