#pragma once

#include "FormPage.h"

namespace lucentra {

/// What the program is, and how its makers are reached. Main thread only.
class AboutTab : public FormPage
{
public:
    explicit AboutTab(SettingsForm &form, QWidget *parent = nullptr);
};

} // namespace lucentra
