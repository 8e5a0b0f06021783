// plotwell-soak: drives the editor through long random sequences of what a
// user does, checking after every step that nothing is lost or broken. See
// kUsage below, and README.md ("Checking harder").

#include "soak/random.h"
#include "soak/runner.h"
#include "soak/shrinker.h"

#include <QCommandLineParser>
#include <QDir>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QTemporaryDir>

#include <cstdio>
#include <cstdlib>

using namespace plotwell::soak;

namespace {

const char kUsage[] =
    "Runs the editor through random steps made from a seed: clicks, drags, keys, the wheel, the palette, typed\n"
    "texts, menus, loading generated and hostile map files, saving, following a game log as it is written,\n"
    "undo and redo, the program ended and its unsaved layers recovered, picture export. After every step it\n"
    "checks the view, the selection, the records, the player's marker and the history; every so many steps it\n"
    "saves every layer and loads it back, and undoes and redoes every edit. A failure, a crash or a sanitizer\n"
    "report is cut down to a short sequence of steps that still fails, which is printed and written to a file\n"
    "for --replay.";

// The statuses of a run.
constexpr int kClean = 0;
constexpr int kFound = 1;
constexpr int kBadArguments = 2;
constexpr int kFailedHere = 3; // a child's failure, for the run that watches it

QElapsedTimer g_clock;
qint64 g_deadline = 0;
bool beforeDeadline()
{
    return g_clock.elapsed() < g_deadline;
}

void reportFailure(const Failure& failure)
{
    std::fprintf(stderr, "soak failure: %s\n", failure.message.c_str());
}

// In a child: episodes of steps until the time or the step budget is spent,
// each recorded to the file as it runs.
int runChildEpisodes(std::uint64_t seed, double seconds, std::size_t maxSteps, std::size_t episodeSteps,
                     const QString& recordPath, const QString& folder)
{
    g_clock.start();
    g_deadline = qint64(seconds * 1000);
    std::size_t steps = 0;
    std::size_t episode = 0;
    while (steps < maxSteps && beforeDeadline()) {
        std::FILE* record = std::fopen(QFile::encodeName(recordPath).constData(), "wb");
        if (!record) {
            std::fprintf(stderr, "plotwell-soak: cannot write %s\n", qPrintable(recordPath));
            return kBadArguments;
        }
        std::fprintf(record, "# seed %llu, run %zu\n", static_cast<unsigned long long>(seed), episode);
        const EpisodeResult result = runEpisode(mixSeed(seed, episode), std::min(episodeSteps, maxSteps - steps),
                                                RunOptions{folder, record, 100}, beforeDeadline);
        std::fclose(record);
        steps += result.steps;
        if (result.failure) {
            reportFailure(*result.failure);
            return kFailedHere;
        }
        ++episode;
    }
    std::printf("steps %zu seconds %.3f runs %zu\n", steps, double(g_clock.elapsed()) / 1000, episode);
    return kClean;
}

int replay(const QString& path, const QString& folder)
{
    std::string error;
    const auto steps = readSteps(path, &error);
    if (!steps) {
        std::fprintf(stderr, "plotwell-soak: %s: %s\n", qPrintable(path), error.c_str());
        return kBadArguments;
    }
    if (auto failure = replaySteps(*steps, RunOptions{folder, nullptr, 100})) {
        reportFailure(*failure);
        return kFailedHere;
    }
    std::printf("plotwell-soak: %zu steps replayed, nothing failed\n", steps->size());
    return kClean;
}

// Runs the steps in a child and, when it fails, cuts the steps down and tells.
int soak(std::uint64_t seed, double seconds, std::size_t maxSteps, std::size_t episodeSteps, const QString& outFolder,
         int shrinkSeconds)
{
    // Every file of the children, a crashed one's too, stays in here.
    QTemporaryDir work;
    const QString record = QDir(work.path()).filePath(QStringLiteral("run.txt"));
    const ChildRun run = runChild({QStringLiteral("--child"), QStringLiteral("--seed"), QString::number(seed),
                                   QStringLiteral("--seconds"), QString::number(seconds), QStringLiteral("--steps"),
                                   QString::number(maxSteps), QStringLiteral("--run-steps"),
                                   QString::number(episodeSteps), QStringLiteral("--record"), record,
                                   QStringLiteral("--folder"), QDir(work.path()).filePath(QStringLiteral("files"))},
                                  int(seconds) + 900);
    if (!run.failed) {
        const QStringList figures = QString::fromLatin1(run.out).split(QLatin1Char(' '));
        const double steps = figures.value(1).toDouble();
        const double taken = figures.value(3).toDouble();
        std::printf(
            "plotwell-soak: seed %llu: %.0f steps in %.1f s, %.0f steps per second, %s runs of up to %zu steps\n",
            static_cast<unsigned long long>(seed), steps, taken, taken > 0 ? steps / taken : 0.0,
            qPrintable(figures.value(5).trimmed()), episodeSteps);
        return kClean;
    }
    std::fprintf(stderr, "plotwell-soak: seed %llu failed: %s\n%s\n", static_cast<unsigned long long>(seed),
                 run.signature.c_str(), run.err.right(6000).constData());
    std::string error;
    const auto steps = readSteps(record, &error);
    if (!steps || steps->empty()) {
        std::fprintf(stderr, "plotwell-soak: the steps could not be read back: %s\n", error.c_str());
        return kFound;
    }
    QFile recordFile(record);
    recordFile.open(QIODevice::ReadOnly);
    const std::string runName = recordFile.readLine().mid(2).trimmed().toStdString();
    std::fprintf(stderr, "plotwell-soak: %s failed after %zu steps; shortening the sequence...\n", runName.c_str(),
                 steps->size());
    const std::vector<Step> shortest = shrinkSteps(*steps, run.signature, work.path(), shrinkSeconds);
    const QString out = QDir(outFolder).filePath(QStringLiteral("soak-failure-%1.txt").arg(seed));
    writeSteps(out, shortest, runName + ": " + run.signature);
    std::fprintf(stderr, "plotwell-soak: %s: %s; %zu steps still fail:\n", runName.c_str(), run.signature.c_str(),
                 shortest.size());
    // The file holds every step whole; a 40,000-character caption is cut short here.
    constexpr std::size_t kShown = 240;
    for (const Step& step : shortest) {
        const std::string line = stepLine(step);
        std::fprintf(stderr, "  %s%s\n", line.substr(0, kShown).c_str(), line.size() > kShown ? " ..." : "");
    }
    std::fprintf(stderr, "plotwell-soak: written to %s; run again with: plotwell-soak --replay %s\n", qPrintable(out),
                 qPrintable(out));
    return kFound;
}

// Qt's warnings about the hostile files the steps load (a truncated picture,
// ...) are expected; only its critical messages are shown.
void quietMessages(QtMsgType type, const QMessageLogContext&, const QString& message)
{
    if (type == QtCriticalMsg || type == QtFatalMsg)
        std::fprintf(stderr, "%s\n", qPrintable(message));
}

} // namespace

int main(int argc, char** argv)
{
    qInstallMessageHandler(quietMessages);
    // Drawing text needs a GUI application; no window is ever shown.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(QString::fromLatin1(kUsage));
    parser.addHelpOption();
    const QCommandLineOption seedOption(QStringLiteral("seed"), QStringLiteral("The seed of the run (default 1)."),
                                        QStringLiteral("N"), QStringLiteral("1"));
    const QCommandLineOption secondsOption(QStringLiteral("seconds"),
                                           QStringLiteral("Stop after so many seconds (default 10)."),
                                           QStringLiteral("S"), QStringLiteral("10"));
    const QCommandLineOption stepsOption(QStringLiteral("steps"), QStringLiteral("Stop after so many steps."),
                                         QStringLiteral("N"), QStringLiteral("1000000000"));
    const QCommandLineOption runOption(QStringLiteral("run-steps"),
                                       QStringLiteral("Start a fresh editor after so many steps (default 500)."),
                                       QStringLiteral("N"), QStringLiteral("500"));
    const QCommandLineOption outOption(QStringLiteral("out"),
                                       QStringLiteral("Where a failing sequence is written (default: here)."),
                                       QStringLiteral("FOLDER"), QStringLiteral("."));
    const QCommandLineOption shrinkOption(QStringLiteral("shrink-seconds"),
                                          QStringLiteral("Time to spend shortening a failing sequence (default 600)."),
                                          QStringLiteral("S"), QStringLiteral("600"));
    const QCommandLineOption replayOption(QStringLiteral("replay"),
                                          QStringLiteral("Run the steps written in FILE and tell whether they fail."),
                                          QStringLiteral("FILE"));
    // The run that a soak starts as its child, and where it writes its steps.
    QCommandLineOption hiddenChild(QStringLiteral("child"));
    hiddenChild.setFlags(QCommandLineOption::HiddenFromHelp);
    QCommandLineOption recordOption(QStringLiteral("record"), QString(), QStringLiteral("FILE"));
    recordOption.setFlags(QCommandLineOption::HiddenFromHelp);
    QCommandLineOption folderOption(QStringLiteral("folder"), QString(), QStringLiteral("FOLDER"));
    folderOption.setFlags(QCommandLineOption::HiddenFromHelp);
    parser.addOptions({seedOption, secondsOption, stepsOption, runOption, outOption, shrinkOption, replayOption,
                       hiddenChild, recordOption, folderOption});
    parser.process(app);

    bool ok = true;
    const std::uint64_t seed = parser.value(seedOption).toULongLong(&ok);
    bool valid = ok;
    const double seconds = parser.value(secondsOption).toDouble(&ok);
    valid = valid && ok && seconds >= 0;
    const std::size_t maxSteps = parser.value(stepsOption).toULongLong(&ok);
    valid = valid && ok;
    const std::size_t runSteps = parser.value(runOption).toULongLong(&ok);
    valid = valid && ok && runSteps > 0;
    const int shrinkSeconds = parser.value(shrinkOption).toInt(&ok);
    valid = valid && ok;
    if (!valid) {
        std::fprintf(stderr, "plotwell-soak: the seed, the seconds and the step counts must be numbers\n");
        return kBadArguments;
    }

    // A step that runs for a minute is a hang, even under the sanitizers.
    constexpr int kHangSeconds = 60;
    if (parser.isSet(replayOption) || parser.isSet(hiddenChild)) {
        startWatchdog(kHangSeconds);
        // The steps' files go where the watching run says, or to a temporary folder.
        const QTemporaryDir temporary;
        const QString folder = parser.isSet(folderOption) ? parser.value(folderOption) : temporary.path();
        if (parser.isSet(replayOption))
            return replay(parser.value(replayOption), folder);
        return runChildEpisodes(seed, seconds, maxSteps, runSteps, parser.value(recordOption), folder);
    }
    return soak(seed, seconds, maxSteps, runSteps, parser.value(outOption), shrinkSeconds);
}
