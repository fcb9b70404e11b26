#pragma once

#include "SettingsForm.h"

#include <QTabWidget>

namespace lucentra {

class APIKeys;
class TranslationTab;

/// The settings form: five tabs. Every control writes its setting at once, and follows changes made elsewhere.
class SettingsView : public QTabWidget
{
public:
    SettingsView(const SettingsServices &services, APIKeys &keys);

    /// Goes to the translation models, if the engine uses them.
    void showModels();
    /// Updates all values.
    void refresh();

protected:
    void changeEvent(QEvent *event) override;

private:
    void addPage(QWidget *page, const QString &titleKey, const QString &symbol);
    void showSymbols();
    void assignLetters();

    SettingsForm m_form;
    TranslationTab *m_translation;
    QStringList m_symbols; ///< one per tab
    QStringList m_titles;  ///< text keys, one per tab
};

} // namespace lucentra
