#include "soak/shrinker.h"

#include "soak/runner.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QProcess>

#include <cstdio>

namespace plotwell::soak {
namespace {

// "ERROR: AddressSanitizer: heap-buffer-overflow on address ..." gives
// "AddressSanitizer heap-buffer-overflow"; "/x/y.cpp:12:7: runtime error: ..."
// gives "runtime error at y.cpp:12"; "soak failure: view: ..." gives "view".
std::string signatureOf(const QByteArray& err, bool crashed, bool timedOut)
{
    for (const QByteArray& raw : err.split('\n')) {
        const QString line = QString::fromLocal8Bit(raw);
        static const QString soak = QStringLiteral("soak failure: ");
        if (line.startsWith(soak))
            return line.mid(soak.size()).section(QLatin1Char(':'), 0, 0).toStdString();
        const int sanitizer = line.indexOf(QStringLiteral("Sanitizer: "));
        if (line.contains(QStringLiteral("ERROR: ")) && sanitizer >= 0) {
            const QString tool = line.left(sanitizer + 9).section(QLatin1Char(' '), -1);
            return (tool + QLatin1Char(' ') + line.mid(sanitizer + 11).section(QLatin1Char(' '), 0, 0)).toStdString();
        }
        const int runtime = line.indexOf(QStringLiteral(": runtime error:"));
        if (runtime >= 0) {
            const QString where = QFileInfo(line.left(runtime).section(QLatin1Char(':'), 0, 0)).fileName();
            return ("runtime error at " + where + QLatin1Char(':') + line.left(runtime).section(QLatin1Char(':'), 1, 1))
                .toStdString();
        }
    }
    if (timedOut)
        return "hang";
    return crashed ? "crash" : "exit";
}

} // namespace

ChildRun runChild(const QStringList& arguments, int timeoutSeconds)
{
    QProcess process;
    process.start(QCoreApplication::applicationFilePath(), arguments);
    ChildRun run;
    const bool finished = process.waitForStarted() && process.waitForFinished(timeoutSeconds * 1000);
    if (!finished) {
        process.kill();
        process.waitForFinished();
    }
    run.out = process.readAllStandardOutput();
    run.err = process.readAllStandardError();
    const bool crashed = process.exitStatus() != QProcess::NormalExit;
    run.failed = !finished || crashed || process.exitCode() != 0;
    if (run.failed)
        run.signature = signatureOf(run.err, crashed, !finished);
    return run;
}

std::vector<Step> shrinkSteps(std::vector<Step> steps, const std::string& signature, const QString& workFolder,
                              int budgetSeconds)
{
    QElapsedTimer clock;
    clock.start();
    const QString candidateFile = QDir(workFolder).filePath(QStringLiteral("candidate.txt"));
    const auto stillFails = [&](const std::vector<Step>& candidate) {
        writeSteps(candidateFile, candidate, "a candidate of the shrinker");
        const ChildRun run = runChild({QStringLiteral("--replay"), candidateFile, QStringLiteral("--folder"),
                                       QDir(workFolder).filePath(QStringLiteral("files"))},
                                      600);
        return run.failed && run.signature == signature;
    };
    int tries = 0;
    for (std::size_t block = steps.size() / 2; block >= 1; block /= 2) {
        // The start stays; blocks are tried from the end, where the fault is.
        std::size_t end = steps.size();
        while (end > 1) {
            if (clock.elapsed() > qint64(budgetSeconds) * 1000)
                return steps;
            const std::size_t begin = end > block + 1 ? end - block : 1;
            std::vector<Step> candidate(steps.begin(), steps.begin() + std::ptrdiff_t(begin));
            candidate.insert(candidate.end(), steps.begin() + std::ptrdiff_t(end), steps.end());
            ++tries;
            if (stillFails(candidate)) {
                steps = std::move(candidate);
                std::fprintf(stderr, "plotwell-soak: shrinking: %zu steps still fail (%d tries)\n", steps.size(),
                             tries);
            }
            end = begin;
        }
        if (block > steps.size())
            block = steps.size();
    }
    return steps;
}

} // namespace plotwell::soak
