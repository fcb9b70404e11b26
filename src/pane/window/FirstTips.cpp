#include "FirstTips.h"

#include "GlassView.h"
#include "LocalizationManager.h"
#include "Settings.h"
#include "SettingsStore.h"
#include "TipCard.h"

#include <QAccessible>
#include <QScopedValueRollback>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

/// Between a card and the pane's edges, and beneath the capsule and the window's buttons. Points.
constexpr int edgeDistance = 12;
constexpr int topDistance = 44;

/// Where a tip may be, its own place first.
QList<QPoint> placesFor(FirstTip tip, QSize pane, QSize card)
{
    const int right = pane.width() - card.width() - edgeDistance;
    const int bottom = pane.height() - card.height() - edgeDistance;
    const int middle = (pane.width() - card.width()) / 2;
    const QPoint bottomMiddle(middle, bottom), topLeft(edgeDistance, topDistance), topRight(right, topDistance);
    QList<QPoint> places{bottomMiddle, {right, bottom}, {edgeDistance, bottom}, topRight, topLeft};
    if (tip == FirstTip::Models) // beneath the button that opens the settings
        places.prepend(topRight);
    if (tip == FirstTip::Hotkey) // beneath the buttons that hide the pane
        places.prepend(topLeft);
    return places;
}

} // namespace

FirstTips::FirstTips(GlassView &pane, SettingsStore &settings, const LocalizationManager &texts,
                     Circumstances circumstances)
    : m_pane(pane)
    , m_settings(settings)
    , m_texts(texts)
    , m_circumstances(std::move(circumstances))
{
    pane.onTextsChanged = [this] { update(); };
    texts.observeLanguage(this, [this] {
        if (!m_card)
            return;
        hide();
        show(m_shown);
        update();
    });
    update();
}

FirstTips::~FirstTips()
{
    m_pane.onTextsChanged = nullptr;
    delete m_card;
}

bool FirstTips::isDone(FirstTip tip) const
{
    return m_settings.read(settings::firstTipsDone) & qint64(tip);
}

void FirstTips::done(FirstTip tip)
{
    if (!isDone(tip))
        m_settings.write(settings::firstTipsDone, m_settings.read(settings::firstTipsDone) | qint64(tip));
    if (m_card && m_shown == tip) {
        hide();
        update();
    }
}

bool FirstTips::isDue(FirstTip tip) const
{
    if (isDone(tip))
        return false;
    switch (tip) {
    case FirstTip::Drag:
        return m_pane.hints().isPristine();
    case FirstTip::Missing:
        return m_isTipOwed && !m_circumstances.missing().isEmpty();
    case FirstTip::Models:
        return m_isTipOwed && m_circumstances.lacksModels();
    case FirstTip::Hotkey:
        return m_isTipOwed && !m_circumstances.hotkey().isEmpty();
    }
    return false;
}

void FirstTips::update()
{
    if (m_isUpdating)
        return;
    const QScopedValueRollback updating(m_isUpdating, true);
    const bool isTranslated = m_pane.hasTranslations();
    m_isTipOwed = isTranslated && (m_isTipOwed || !m_wasTranslated);
    m_wasTranslated = isTranslated;
    if (isTranslated)
        done(FirstTip::Drag);
    if (m_card && !place()) {
        hide();
        m_isTipOwed = isTranslated;
    }
    for (const FirstTip tip : {FirstTip::Drag, FirstTip::Missing, FirstTip::Models, FirstTip::Hotkey}) {
        if (m_card)
            return;
        if (!isDue(tip))
            continue;
        show(tip);
        if (!place())
            hide(); // another one may be smaller
    }
}

QString FirstTips::textOf(FirstTip tip) const
{
    switch (tip) {
    case FirstTip::Drag:
        return m_texts.localized(u"把這塊翻譯板拖到您看不懂的文字上。"_s);
    case FirstTip::Missing:
        return m_circumstances.missing();
    case FirstTip::Models:
        return m_texts.localized(
            u"這部電腦已經能翻譯程式的選單與訊息。網頁、遊戲等其他文字需要翻譯模型，下載一次即可離線使用。"_s);
    case FirstTip::Hotkey:
        return m_texts.formatted(u"按 %@ 可隨時顯示或隱藏翻譯板。"_s, m_circumstances.hotkey());
    }
    return {};
}

void FirstTips::show(FirstTip tip)
{
    m_shown = tip;
    m_card = m_pane.addTip(textOf(tip), tip == FirstTip::Models ? m_texts.localized(u"取得翻譯模型…"_s) : QString());
    m_card->onAction = m_circumstances.openModels;
    m_card->onClosed = [this, tip] { done(tip); };
}

void FirstTips::hide()
{
    m_pane.removeView(std::exchange(m_card, nullptr));
}

/// Shows the card in its place. Returns false if there is none.
bool FirstTips::place()
{
    const QSize size = m_card->sizeOn(m_pane.width());
    const QRect whole = m_pane.rect().adjusted(edgeDistance, topDistance, -edgeDistance, -edgeDistance);
    const QRegion texts = m_pane.textPlaces();
    const QList<QPoint> places = placesFor(m_shown, m_pane.size(), size);
    const auto free = std::find_if(places.begin(), places.end(), [&](QPoint corner) {
        return whole.contains(QRect(corner, size)) && !texts.intersects(QRect(corner, size));
    });
    if (free == places.end())
        return false;
    m_card->setGeometry(QRect(*free, size));
    if (!m_card->isVisible()) {
        m_isTipOwed = false;
        m_card->show();
        QAccessibleEvent alert(m_card, QAccessible::Alert);
        QAccessible::updateAccessibility(&alert);
    }
    return true;
}

} // namespace lucentra
