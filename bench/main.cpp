#include "bench/benches.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <cstdio>
#include <cstdlib>
#include <cstring>

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

namespace {

// Two screens for the offscreen platform, one of a device pixel to a logical
// one and one of ratio, each 1920 x 1080 logical pixels, described in a file
// that lives as long as the program.
QString screensAtRatio(double ratio, QTemporaryDir& dir)
{
    const QString path = dir.filePath(QStringLiteral("screens.json"));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return {};
    const auto screen = [](const char* name, int x, double r) {
        return QStringLiteral(
                   R"({ "name": "%1", "x": %2, "y": 0, "width": %3, "height": %4, "logicalDpi": %5, "logicalBaseDpi": 96 })")
            .arg(QLatin1String(name))
            .arg(x)
            .arg(qRound(1920 * r))
            .arg(qRound(1080 * r))
            .arg(96 * r);
    };
    file.write(QStringLiteral(R"({ "screens": [ %1, %2 ] })")
                   .arg(screen("plain", 0, 1), screen("dense", 1920, ratio))
                   .toUtf8());
    return path;
}

double ratioArgument(int argc, char** argv)
{
    for (int i = 1; i + 1 < argc; ++i)
        if (std::strcmp(argv[i], "--ratio") == 0)
            return std::atof(argv[i + 1]);
    return 1;
}

} // namespace

int main(int argc, char** argv)
{
    // The window's benchmarks run offscreen, on a screen of the ratio asked for.
    // The platform's arguments are cut at every colon, a Windows drive
    // letter's too: the file is named from its own folder, the working one
    // while the platform starts.
    QTemporaryDir screens;
    const double ratio = ratioArgument(argc, argv);
    const QString workingFolder = QDir::currentPath();
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        const QString config = ratio >= 0.25 && ratio <= 8 ? screensAtRatio(ratio, screens) : QString();
        const bool found = !config.isEmpty() && QDir::setCurrent(screens.path());
        qputenv("QT_QPA_PLATFORM", found ? QByteArray("offscreen:configfile=screens.json") : QByteArray("offscreen"));
    }
    QApplication app(argc, argv);
    QDir::setCurrent(workingFolder);
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
    if (which == QLatin1String("snap"))
        return runSnapBench(args);
    std::fprintf(
        stderr,
        "usage: plotwell-bench load  --lines N --labels M\n"
        "       plotwell-bench frame --lines N --labels M --size WxH [--view fit|zoom4] [--turns T] [--ratio R]\n"
        "       plotwell-bench save  --lines N --labels M\n"
        "       plotwell-bench hittest --lines N --labels M [--points P]\n"
        "       plotwell-bench draw --lines N\n"
        "       plotwell-bench idle --lines N --labels M --seconds S [--select K] [--ratio R]\n"
        "       plotwell-bench export --lines N --labels M [--side PIXELS]\n"
        "       plotwell-bench history --lines N\n"
        "       plotwell-bench follow --lines N --labels M [--count C]\n"
        "       plotwell-bench snap --lines N [--points P]\n");
    return 2;
}
