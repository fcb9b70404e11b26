#pragma once

#include "FormSection.h"
#include "Result.h"

#include <functional>

class QProgressBar;
class QPushButton;

namespace lucentra {

/// The button that tests the selected engine, and the result of the test.
class ConnectionSection : public FormSection
{
public:
    /// `canTest` returns whether the form has all that a test needs. `beforeTest` calls its argument after all typed
    /// keys are stored.
    ConnectionSection(SettingsForm &form, std::function<bool()> canTest,
                      std::function<void(std::function<void()> then)> beforeTest);

    /// Updates whether a test is possible.
    void refresh();
    /// Drops the result, and that of a running test, because another engine is selected.
    void forget();

private:
    void start();
    void finish(const Result<QString> &outcome);

    const std::function<bool()> m_canTest;
    const std::function<void(std::function<void()>)> m_beforeTest;
    QPushButton *m_button;
    QProgressBar *m_busy;
    QLabel *m_result;
    bool m_isTestingConnection = false;
    bool m_isGood = false; ///< the result that is shown
    int m_test = 0;        ///< number of the last test; the results of earlier ones are ignored
};

} // namespace lucentra
