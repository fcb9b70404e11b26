#pragma once

#include "FormSection.h"
#include "TranslationEngine.h"

namespace lucentra {

/// The consent to send text to one remote engine, with an explanation and a link to the privacy policy.
class ConsentSection : public FormSection
{
public:
    ConsentSection(SettingsForm &form, TranslationEngine engine, QWidget *parent = nullptr);
};

} // namespace lucentra
