#pragma once

#include "FormPage.h"

namespace lucentra {

/// How the pane looks. Main thread only.
class AppearanceTab : public FormPage
{
public:
    explicit AppearanceTab(SettingsForm &form, QWidget *parent = nullptr);
};

} // namespace lucentra
