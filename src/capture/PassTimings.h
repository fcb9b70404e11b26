#pragma once

#include <QElapsedTimer>
#include <QString>

#include <memory>

namespace lucentra {

/// How long the stages of a pass take, for those who want to know: with QT_LOGGING_RULES=lucentra.pass.debug=true each
/// pass that ends in overlays says so in one line, "capture 4.2 ms, recognition 61.0 ms ...". One thread after
/// another.
class PassTimings
{
public:
    /// Begins the first stage; nothing where nobody wants to know.
    static std::shared_ptr<PassTimings> start();

    /// Ends the stage that began with the end of the one before.
    void finish(const QString &stage);
    void report() const;

private:
    PassTimings() { m_clock.start(); }

    QElapsedTimer m_clock;
    QString m_stages;
};

} // namespace lucentra
