#include "SettingsView.h"

#include "HotkeyTab.h"
#include "Mnemonics.h"
#include "Symbol.h"
#include "Tabs.h"
#include "TranslationTab.h"

#include <QEvent>
#include <QTabBar>

#include <utility>

using namespace Qt::StringLiterals;

namespace lucentra {

SettingsView::SettingsView(const SettingsServices &services, APIKeys &keys)
    : m_form(services)
    , m_translation(new TranslationTab(m_form, keys))
{
    setDocumentMode(true);
    setUsesScrollButtons(false); // the window is wide enough for all tabs
    setIconSize(QSize(20, 20));
    addPage(makeGeneralTab(m_form), u"一般"_s, u"gearshape"_s);
    addPage(m_translation, u"翻譯"_s, u"book"_s);
    addPage(makeAppearanceTab(m_form), u"外觀"_s, u"palette"_s);
    addPage(new HotkeyTab(m_form), u"快捷鍵"_s, u"keyboard"_s);
    addPage(makeAboutTab(m_form), u"關於"_s, u"info"_s);
    tabBar()->lower(); // so that a screen reader reads it before the page
    m_form.onRefreshed = [this] { assignLetters(); };
    showSymbols();
    assignLetters();
}

void SettingsView::addPage(QWidget *page, const QString &titleKey, const QString &symbol)
{
    addTab(page, m_form.text(titleKey)); // without its letter for now
    m_symbols.append(symbol);
    m_titles.append(titleKey);
}

void SettingsView::assignLetters()
{
    QStringList titles;
    for (const QString &key : std::as_const(m_titles))
        titles.append(m_form.text(key));
    assignMnemonics(*this, titles);
}

void SettingsView::showModels()
{
    setCurrentWidget(m_translation);
    m_translation->showModels();
}

void SettingsView::refresh()
{
    m_form.refreshValues();
}

void SettingsView::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::PaletteChange) {
        showSymbols();
        m_form.refreshTexts();
    }
    QTabWidget::changeEvent(event);
}

void SettingsView::showSymbols()
{
    for (int i = 0; i < m_symbols.size(); ++i)
        setTabIcon(i, symbolIcon(m_symbols[i], palette().color(QPalette::Active, QPalette::ButtonText)));
}

} // namespace lucentra
