#pragma once

#include "FormPage.h"

namespace lucentra {

/// The settings of the pane's appearance.
class AppearanceTab : public FormPage
{
public:
    explicit AppearanceTab(SettingsForm &form, QWidget *parent = nullptr);
};

} // namespace lucentra
