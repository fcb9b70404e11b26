#pragma once

#include "SettingsServices.h"

#include <QObject>

#include <functional>
#include <vector>

namespace lucentra {

/// What all parts of the settings form have in common: the services, and how a control stays true. Texts are set anew
/// when the interface language changes; values are read anew when anything of the settings changes, wherever it was
/// changed. Main thread only.
class SettingsForm : public QObject
{
public:
    explicit SettingsForm(const SettingsServices &services, QObject *parent = nullptr);

    const SettingsServices &services() const { return m_services; }

    /// The text for a key in the interface language.
    QString text(const QString &key) const;

    /// Calls now, and again after each change of the interface language or of the palette. What the function touches
    /// must live as long as the form.
    void keepText(std::function<void()> apply);
    /// Calls now, and again after each change of a setting.
    void keepValue(std::function<void()> apply);

    /// Sets every text anew, and what goes by the palette with it.
    void refreshTexts();
    /// Reads every value anew.
    void refreshValues();

    /// Called after either, and after a change of what is shown.
    std::function<void()> onRefreshed;

private:
    const SettingsServices &m_services;
    std::vector<std::function<void()>> m_texts;
    std::vector<std::function<void()>> m_values;
};

} // namespace lucentra
