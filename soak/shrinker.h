#pragma once

#include "soak/step.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <string>
#include <vector>

namespace plotwell::soak {

// This program run again as a child process, so that a crash or a sanitizer
// report ends the child and not the run that watches it.
struct ChildRun {
    bool failed = false;
    // What failed, the same for the same fault however the steps led there:
    // the invariant's kind, the sanitizer's finding and where, a crash, a hang.
    std::string signature;
    QByteArray out;
    QByteArray err;
};

ChildRun runChild(const QStringList& arguments, int timeoutSeconds);

// Drops steps, in ever smaller blocks down to single steps, as long as what
// is left still fails with the same signature when replayed in a child.
// The first step, the start, always stays. Stops trying after budgetSeconds.
std::vector<Step> shrinkSteps(std::vector<Step> steps, const std::string& signature, const QString& workFolder,
                              int budgetSeconds);

} // namespace plotwell::soak
