#pragma once

#include "Callback.h"

#include <QMainWindow>
#include <QUuid>

namespace lucentra {

class HistoryManager;
class HistoryView;
class LocalizationManager;
class Scheduler;
class SettingsStore;

/// The window of the history. It is created once and hidden when it is closed. Its geometry is stored as
/// "HistoryWindow".
class HistoryWindowController : public QMainWindow
{
    Q_OBJECT

public:
    struct Services
    {
        HistoryManager &history;
        SettingsStore &settings;
        const LocalizationManager &texts;
        Scheduler &scheduler;
        /// Asks the desktop to give the window the focus.
        Callback<QWindow &> activate;
    };

    explicit HistoryWindowController(const Services &services);
    ~HistoryWindowController() override;

    /// Shows the window above the others, with the focus.
    void showWindow();
    /// Goes to an entry in the shown window. Does nothing if there is no such entry.
    void showEntry(const QUuid &id);
    /// Updates all texts after a change of the interface language.
    void refreshTexts();

protected:
    void closeEvent(QCloseEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    void restoreFrame();
    void saveFrame();

    const Services m_services;
    HistoryView *m_view;
    bool m_hasFrame = false;
};

} // namespace lucentra
