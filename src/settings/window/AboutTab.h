#pragma once

#include "FormPage.h"

namespace lucentra {

/// The program's name, version and contact.
class AboutTab : public FormPage
{
public:
    explicit AboutTab(SettingsForm &form, QWidget *parent = nullptr);
};

} // namespace lucentra
