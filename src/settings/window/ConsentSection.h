#pragma once

#include "FormSection.h"
#include "TranslationEngine.h"

namespace lucentra {

/// The consent to send text to one remote engine, what becomes of the text, and the way to the privacy policy. Main
/// thread only.
class ConsentSection : public FormSection
{
public:
    ConsentSection(SettingsForm &form, TranslationEngine engine, QWidget *parent = nullptr);
};

} // namespace lucentra
