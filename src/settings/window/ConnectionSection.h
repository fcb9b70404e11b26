#pragma once

#include "FormSection.h"
#include "Result.h"

#include <functional>

class QProgressBar;
class QPushButton;

namespace lucentra {

/// The button that tries the selected engine, and what came of it. Main thread only.
class ConnectionSection : public FormSection
{
public:
    /// `canTest` says whether what is filled in suffices; `beforeTest` calls back once all that was typed is stored.
    ConnectionSection(SettingsForm &form, std::function<bool()> canTest,
                      std::function<void(std::function<void()> then)> beforeTest, QWidget *parent = nullptr);

    /// Looks anew whether a test is possible.
    void refresh();
    /// Drops a test that runs, and its result line: they belong to another engine.
    void forget();

private:
    void start();
    void finish(const Result<QString> &outcome);
    void showOutcome(const QString &line, bool isGood);

    const std::function<bool()> m_canTest;
    const std::function<void(std::function<void()>)> m_beforeTest;
    QPushButton *m_button;
    QProgressBar *m_busy;
    QLabel *m_result;
    bool m_isTestingConnection = false;
    bool m_isGood = false; ///< what the result line says
    int m_test = 0;        ///< counts tests, so that the end of a dropped one is known
};

} // namespace lucentra
