#pragma once

#include <QList>
#include <QString>

#include <functional>

namespace lucentra {

/// A fact about this computer, for people.
struct ReportedFact
{
    QString label;
    QString value;
    QString advice{}; ///< what is wrong and how to mend it; empty if nothing is
};

/// What this session offers, which of it the program uses, and why. `localized` looks up a text key in
/// the interface language. Doesn't need the toolkit's connection to the display. Blocks, for a few seconds if the
/// desktop doesn't answer.
QList<ReportedFact> sessionReport(const std::function<QString(const QString &key)> &localized);

} // namespace lucentra
