#pragma once

#include <QMainWindow>

#include <functional>

namespace lucentra {

class HistoryManager;
class HistoryView;
class LocalizationManager;
class Scheduler;
class SettingsStore;

/// The window of the history. It is made once and hidden when it is closed; its place and size are kept as
/// "HistoryWindow". Main thread only.
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
        /// Has the desktop give the window the focus, wherever it is now.
        std::function<void(QWindow &)> activate;
    };

    /// What is referred to must outlive the window.
    explicit HistoryWindowController(const Services &services);
    ~HistoryWindowController() override;

    /// Shows the window above the others, with the focus.
    void showWindow();
    /// Gives title and content their texts in the interface language.
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
