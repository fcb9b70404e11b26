#include "Tabs.h"

#include "FormSection.h"
#include "LocalizationManager.h"
#include "Settings.h"
#include "SettingsForm.h"
#include "SettingsStore.h"

#include <QFontDatabase>
#include <QSlider>

#include <cmath>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

constexpr double opacitySteps = 20; ///< in the whole range from 0 to 1
constexpr int leastOpacity = 2;
constexpr int leastFontSize = 12;
constexpr int greatestFontSize = 48;

/// Opacity and size as the sliders can show them, whatever number the file has.
double shownOpacity(const SettingsStore &store)
{
    return std::fmin(std::fmax(store.read(settings::glassOpacity), leastOpacity / opacitySteps), 1);
}

int shownFontSize(const SettingsStore &store)
{
    return int(std::fmin(std::fmax(store.read(settings::fontSizeInForm), leastFontSize), greatestFontSize));
}

void addBorderColor(FormSection &section)
{
    section.addPicker(u"邊框發光顏色："_s,
                      {{u"古典透白 (Classic White - 預設)"_s, u"white"_s},
                       {u"淡雅水藍 (Subtle Blue)"_s, u"blue"_s},
                       {u"柔和櫻粉 (Soft Pink)"_s, u"pink"_s},
                       {u"極簡無邊框 (No Border)"_s, u"none"_s}},
                      section.stored<QVariant>(settings::neonBorderColor));
}

void addOpacity(SettingsForm &form, FormSection &section)
{
    const LocalizationManager &texts = form.services().texts;
    SettingsStore &store = form.services().settings;
    section.addSlider(
        [&texts, &store] { return texts.formatted(u"玻璃透明度：%d%%"_s, int(shownOpacity(store) * 100)); },
        leastOpacity, int(opacitySteps),
        {[&store] { return qRound(shownOpacity(store) * opacitySteps); },
         [&store](int step) { store.write(settings::glassOpacity, step / opacitySteps); }});
}

void addTone(FormSection &section)
{
    section.addPicker(u"玻璃色調"_s,
                      {{u"深色底、白字"_s, int(GlassTone::Dark)}, {u"淺色底、黑字"_s, int(GlassTone::Light)}},
                      section.stored<QVariant>(settings::glassTone));
}

void addFontFamily(FormSection &section)
{
    QList<PickerOption> options{{u"自動（依目標語言）"_s, QString()}};
    for (const QString &family : QFontDatabase::families()) {
        if (!QFontDatabase::isPrivateFamily(family))
            options.append({family, family});
    }
    section.addPicker(u"譯文字型"_s, options, section.stored<QVariant>(settings::overlayFontFamily));
}

void addFontSize(SettingsForm &form, FormSection &section)
{
    const LocalizationManager &texts = form.services().texts;
    SettingsStore &store = form.services().settings;
    section.addToggle(u"自動調整文字大小"_s, section.stored<bool>(settings::isFontSizeAuto));
    QSlider *slider =
        section.addSlider([&texts, &store] { return texts.formatted(u"自訂文字大小：%d pt"_s, shownFontSize(store)); },
                          leastFontSize, greatestFontSize,
                          {[&store] { return shownFontSize(store); },
                           [&store](int size) { store.write(settings::fontSizeInForm, size); }});
    form.keepValue([slider, &store] { slider->parentWidget()->setEnabled(!store.read(settings::isFontSizeAuto)); });
}

} // namespace

FormPage *makeAppearanceTab(SettingsForm &form)
{
    auto *section = new FormSection(form, u"玻璃板樣式"_s);
    addBorderColor(*section);
    addOpacity(form, *section);
    addTone(*section);
    addFontFamily(*section);
    addFontSize(form, *section);
    auto *tab = new FormPage;
    tab->addSection(section);
    return tab;
}

} // namespace lucentra
