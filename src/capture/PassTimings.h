#pragma once

#include <QElapsedTimer>
#include <QString>

namespace lucentra {

/// The durations of a pass's stages. With QT_LOGGING_RULES=lucentra.pass.debug=true each pass that ends in overlays
/// logs one line, "capture 4.2 ms, recognition 61.0 ms ...".
class PassTimings
{
public:
    PassTimings() { m_clock.start(); }

    /// Whether the log category is enabled.
    static bool areReported();

    /// Ends the current stage, which began at the end of the previous one.
    void finish(const QString &stage);
    void report() const;

private:
    QElapsedTimer m_clock;
    QString m_stages;
};

} // namespace lucentra
