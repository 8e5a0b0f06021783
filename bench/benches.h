#pragma once

#include <QStringList>

namespace plotwell::bench {

// Each benchmark takes its own arguments (after its name), prints one
// "name: value" a line and returns the exit status.
int runLoadBench(const QStringList& args);
int runFrameBench(const QStringList& args);
int runSaveBench(const QStringList& args);
int runHitTestBench(const QStringList& args);
int runDrawBench(const QStringList& args);
int runIdleBench(const QStringList& args);
int runExportBench(const QStringList& args);
int runHistoryBench(const QStringList& args);
int runFollowBench(const QStringList& args);
int runSnapBench(const QStringList& args);

// The value of "--name N" in args, or fallback.
long long argValue(const QStringList& args, const QString& name, long long fallback);
QString argText(const QStringList& args, const QString& name, const QString& fallback);

} // namespace plotwell::bench
