#pragma once

#include "FormPage.h"

namespace lucentra {

/// Interface language, and how the program behaves on the desktop. Main thread only.
class GeneralTab : public FormPage
{
public:
    explicit GeneralTab(SettingsForm &form, QWidget *parent = nullptr);

private:
    void addLanguageSection(SettingsForm &form);
    void addSystemSection(SettingsForm &form);
};

} // namespace lucentra
