#include "PaneControls.h"

#include "ControlCapsuleView.h"
#include "GlassView.h"
#include "LocalizationManager.h"
#include "Settings.h"
#include "SettingsStore.h"
#include "TargetLanguageOption.h"

using namespace Qt::StringLiterals;

namespace lucentra {

PaneControls::PaneControls(GlassView &pane, SettingsStore &settings, const LocalizationManager &texts)
    : m_pane(pane)
    , m_settings(settings)
    , m_texts(texts)
{
    ControlCapsuleView &capsule = pane.capsule();
    capsule.onTranslateTapped = [this] { performTranslateAction(); };
    capsule.onTriggerModeTapped = [this] { toggleTriggerMode(); };
    capsule.onKeyboardTapped = [this] { toggleInputMode(); };
    capsule.onCopyTapped = [this] { manualInput.copy(); };
    capsule.onTargetLanguageSelected = [this](const QString &code) { selectTargetLanguage(code); };
    pane.onBodyClicked = [this](int count) {
        if (!m_pane.isInputMode() && count == (isDoubleClickGesture() ? 2 : 1))
            performTranslateAction();
    };
    settings.observe(settings::triggerMode, this, [this] { updateCapsule(); });
    settings.observe(notifications::targetLanguageChanged, this, [this] { updateCapsule(); });
    settings.observe(notifications::translationClickGestureChanged, this,
                     [this] { showHint(isDoubleClickGesture() ? u"雙擊玻璃板即可翻譯"_s : u"單擊玻璃板即可翻譯"_s); });
    texts.observeLanguage(this, [this] {
        if (m_pane.hints().isPristine())
            showPristineHint();
    });
    updateCapsule();
}

void PaneControls::updateCapsule()
{
    m_pane.capsule().set(&ControlCapsuleState::isManual, m_settings.read(settings::triggerMode) == TriggerMode::Manual);
    m_pane.capsule().set(&ControlCapsuleState::targetLanguageCode, m_settings.read(settings::targetLanguageCode));
}

void PaneControls::showHint(const QString &textKey)
{
    m_pane.hints().showHint(m_texts.localized(textKey), true);
}

void PaneControls::showPristineHint()
{
    const QString gesture = m_texts.localized(isDoubleClickGesture() ? u"雙擊翻譯"_s : u"單擊翻譯"_s);
    const bool isManual = m_settings.read(settings::triggerMode) == TriggerMode::Manual;
    m_pane.hints().showStart(m_texts.formatted(isManual ? u"%@・拖曳移動"_s : u"移動或縮放後自動翻譯・%@"_s, gesture));
}

bool PaneControls::isDoubleClickGesture() const
{
    return m_settings.read(settings::translationClickGesture) == ClickGesture::DoubleClick;
}

void PaneControls::performTranslateAction()
{
    m_pane.hints().dismissPristineHint();
    const Callback<> &act = m_pane.isInputMode() ? manualInput.submit : onTranslateTapped;
    act();
}

void PaneControls::toggleTriggerMode()
{
    const bool becomesManual = m_settings.read(settings::triggerMode) != TriggerMode::Manual;
    m_settings.write(settings::triggerMode, becomesManual ? TriggerMode::Manual : TriggerMode::AfterMoving);
    showHint(becomesManual ? u"框選翻譯"_s : u"自動辨識"_s);
}

void PaneControls::selectTargetLanguage(const QString &code)
{
    m_settings.write(settings::targetLanguageFollowsInterface, false);
    m_settings.write(settings::targetLanguageCode, code);
    const QString name = m_texts.localized(targetLanguageOption(code).name.toString());
    m_pane.hints().showHint(m_texts.formatted(u"目標語言：%@"_s, name), true);
}

void PaneControls::toggleInputMode()
{
    const bool isInputMode = !m_pane.isInputMode();
    m_pane.setInputPanel(nullptr);
    manualInput.reset();
    if (isInputMode)
        m_pane.setInputPanel(manualInput.makePanel(&m_pane));
    m_pane.capsule().set(&ControlCapsuleState::isInputMode, isInputMode);
    m_pane.capsule().set(&ControlCapsuleState::translationActionState, TranslationActionState::translate);
    showHint(isInputMode ? u"手動輸入"_s : u"框選翻譯"_s);
}

} // namespace lucentra
