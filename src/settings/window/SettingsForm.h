#pragma once

#include "Callback.h"
#include "SettingsServices.h"

#include <QObject>

#include <functional>
#include <vector>

namespace lucentra {

/// The services that all parts of the settings form share. Updates the controls' texts when the interface language
/// changes, and their values when a setting changes, also from outside the window.
class SettingsForm : public QObject
{
public:
    explicit SettingsForm(const SettingsServices &services);

    const SettingsServices &services() const { return m_services; }

    /// The text for a key in the interface language.
    QString text(const QString &key) const;

    /// Calls `apply` now and after each change of the interface language or of the palette. The objects that it uses
    /// must live as long as the form.
    void keepText(std::function<void()> apply);
    /// Calls `apply` now and after each change of a setting.
    void keepValue(std::function<void()> apply);

    /// Updates all texts, and what depends on the palette.
    void refreshTexts();
    /// Updates all values.
    void refreshValues();

    /// Called after both, and after a change of what is shown.
    Callback<> onRefreshed;

private:
    const SettingsServices &m_services;
    std::vector<std::function<void()>> m_texts;
    std::vector<std::function<void()>> m_values;
};

} // namespace lucentra
