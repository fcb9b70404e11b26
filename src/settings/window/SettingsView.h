#pragma once

#include "SettingsForm.h"

#include <QTabWidget>

namespace lucentra {

class APIKeys;

/// The settings form: five tabs over the settings. Every control writes what it stands for at once, and shows at once
/// what was changed elsewhere. What it shows comes from the stores when it is made. Main thread only.
class SettingsView : public QTabWidget
{
public:
    /// The keys outlive the view.
    SettingsView(const SettingsServices &services, APIKeys &keys, QWidget *parent = nullptr);

    /// Reads every value anew.
    void refresh();

protected:
    void changeEvent(QEvent *event) override;

private:
    void addPage(QWidget *page, const QString &titleKey, const QString &symbol);
    void showSymbols();
    void assignLetters();

    SettingsForm m_form;
    QStringList m_symbols; ///< a tab each
    QStringList m_titles;  ///< the keys of their texts
};

} // namespace lucentra
