#pragma once

#include "FormPage.h"

namespace lucentra {

/// The settings of the interface language and of the behaviour on the desktop.
FormPage *makeGeneralTab(SettingsForm &form);
/// The settings of the pane's appearance.
FormPage *makeAppearanceTab(SettingsForm &form);
/// The program's name and version.
FormPage *makeAboutTab(SettingsForm &form);

} // namespace lucentra
