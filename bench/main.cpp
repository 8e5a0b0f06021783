#include "bench/benches.h"

#include <QApplication>

#include <cstdio>

using namespace plotwell::bench;

namespace plotwell::bench {

long long argValue(const QStringList& args, const QString& name, long long fallback)
{
    const int at = args.indexOf(name);
    if (at < 0 || at + 1 >= args.size())
        return fallback;
    bool ok = false;
    const long long v = args.at(at + 1).toLongLong(&ok);
    return ok ? v : fallback;
}

QString argText(const QStringList& args, const QString& name, const QString& fallback)
{
    const int at = args.indexOf(name);
    return at < 0 || at + 1 >= args.size() ? fallback : args.at(at + 1);
}

} // namespace plotwell::bench

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QStringList args = app.arguments();
    args.removeFirst();
    const QString which = args.isEmpty() ? QString() : args.takeFirst();
    if (which == QLatin1String("load"))
        return runLoadBench(args);
    if (which == QLatin1String("frame"))
        return runFrameBench(args);
    if (which == QLatin1String("save"))
        return runSaveBench(args);
    if (which == QLatin1String("hittest"))
        return runHitTestBench(args);
    if (which == QLatin1String("draw"))
        return runDrawBench(args);
    if (which == QLatin1String("idle"))
        return runIdleBench(args);
    if (which == QLatin1String("export"))
        return runExportBench(args);
    if (which == QLatin1String("history"))
        return runHistoryBench(args);
    if (which == QLatin1String("follow"))
        return runFollowBench(args);
    std::fprintf(stderr,
                 "usage: plotwell-bench load  --lines N --labels M\n"
                 "       plotwell-bench frame --lines N --labels M --size WxH [--view fit|zoom4] [--turns T]\n"
                 "       plotwell-bench save  --lines N --labels M\n"
                 "       plotwell-bench hittest --lines N --labels M [--points P]\n"
                 "       plotwell-bench draw --lines N\n"
                 "       plotwell-bench idle --lines N --labels M --seconds S [--select K]\n"
                 "       plotwell-bench export --lines N --labels M [--side PIXELS]\n"
                 "       plotwell-bench history --lines N\n"
                 "       plotwell-bench follow --lines N --labels M [--count C]\n");
    return 2;
}
