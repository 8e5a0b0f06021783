#include "soak/runner.h"

#include "soak/generator.h"
#include "soak/historycheck.h"
#include "soak/invariants.h"
#include "soak/programsteps.h"
#include "soak/stepkinds.h"
#include "soak/world.h"

#include <QDir>
#include <QFile>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <functional>
#include <memory>
#include <thread>

namespace plotwell::soak {
namespace {

std::atomic<std::uint64_t> g_stepsEnded{0};

Failure failure(const std::string& message)
{
    return {message.substr(0, message.find(':')), message};
}

QString emptyFolder(const QString& path)
{
    QDir(path).removeRecursively();
    QDir().mkpath(path);
    return path;
}

// The runs of the program on one machine, one after another, and the steps
// run on them.
class Session {
public:
    explicit Session(const RunOptions& options)
        : m_options(options), m_files(emptyFolder(options.folder + "/files")),
          m_machine(emptyFolder(options.folder + "/recovery")), m_world(std::make_unique<World>(m_files, m_machine))
    {
    }

    // The program running now.
    World& world() { return *m_world; }

    // Runs a step; nested, when called, gives a step to run inside it while
    // it lets pending events run. The first thing broken after it, if any.
    std::optional<Failure> perform(const Step& step, const std::function<std::optional<Step>()>& nested)
    {
        record(step);
        World& world = *m_world;
        world.events.once = [this, &world, &nested] {
            std::optional<Step> inner = nested();
            if (!inner)
                return;
            record(*inner);
            const Answers outer = world.answers;
            runStep(world, *inner);
            world.answers = outer;
        };
        runStep(world, step);
        world.events.once = nullptr;
        ++g_stepsEnded;
        if (world.fault)
            return failure(*world.fault);
        if (auto broken = brokenInvariant(world.editor))
            return failure(*broken);
        if (auto fault = m_watch.check(world.editor))
            return failure(*fault);
        if (world.editor.shell.ended) {
            if (auto fault = startAgain())
                return fault;
        }
        if (++m_steps % std::size_t(m_options.roundTripEvery) == 0) {
            m_undoDue = true;
            if (auto fault = roundTrip())
                return fault;
        }
        // Undoing ends a gesture: the check waits for the gesture to end.
        if (m_undoDue && !m_world->editor.history.gestureOpen())
            return undoAndRedo();
        return std::nullopt;
    }

    // The checks at the end of a run.
    std::optional<Failure> finish()
    {
        if (auto fault = undoAndRedo())
            return fault;
        return roundTrip();
    }

private:
    std::optional<Failure> roundTrip()
    {
        if (auto fault = roundTripFault(m_world->editor, m_options.folder + QStringLiteral("/roundtrip")))
            return failure(*fault);
        return std::nullopt;
    }

    std::optional<Failure> undoAndRedo()
    {
        m_undoDue = false;
        if (auto fault = undoRedoFault(m_world->editor, m_watch))
            return failure(*fault);
        return std::nullopt;
    }

    // The program has ended, once the step in which its shutdown timer
    // ticked has returned, as the window's does: the copies of its unsaved
    // layers are written, and a fresh one starts on the same files and the
    // same recovery folder.
    std::optional<Failure> startAgain()
    {
        if (!m_world->recovery.flush(m_world->editor))
            return failure("recovery: a copy of an unsaved layer could not be written as the program ended");
        noteLeftLayers(*m_world);
        const QSizeF window = m_world->nextWindow;
        m_world.reset();
        // A program takes longer than this to start, and the copies of two
        // runs are told apart by the times they were written.
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        m_world = std::make_unique<World>(m_files, m_machine);
        startProgram(*m_world, window);
        m_watch = HistoryWatch();
        return std::nullopt;
    }

private:
    void record(const Step& step)
    {
        if (!m_options.record)
            return;
        const std::string line = stepLine(step) + "\n";
        std::fwrite(line.data(), 1, line.size(), m_options.record);
        std::fflush(m_options.record);
    }

    RunOptions m_options;
    QString m_files;
    Machine m_machine;
    std::unique_ptr<World> m_world;
    HistoryWatch m_watch;
    std::size_t m_steps = 0;
    bool m_undoDue = false;
};

} // namespace

std::optional<Failure> replaySteps(const std::vector<Step>& steps, const RunOptions& options)
{
    Session session(options);
    for (std::size_t i = 0; i < steps.size(); ++i) {
        // A nested step runs inside this one if it lets events run, else after it.
        bool consumed = false;
        const bool hasNested = i + 1 < steps.size() && steps[i + 1].nested;
        const auto nested = [&]() -> std::optional<Step> {
            if (!hasNested || consumed)
                return std::nullopt;
            consumed = true;
            return steps[i + 1];
        };
        if (auto failure = session.perform(steps[i], nested))
            return failure;
        if (consumed)
            ++i;
    }
    return session.finish();
}

EpisodeResult runEpisode(std::uint64_t seed, std::size_t maxSteps, const RunOptions& options, bool (*keepGoing)())
{
    Session session(options);
    Generator generator(seed, session.world());
    EpisodeResult result;
    const auto nested = [&generator]() -> std::optional<Step> {
        if (!generator.rng.chance(0.3))
            return std::nullopt;
        return generator.nestedStep();
    };
    const auto none = []() -> std::optional<Step> { return std::nullopt; };
    result.failure = session.perform(startStep(generator), none);
    while (!result.failure && result.steps < maxSteps && keepGoing()) {
        result.failure = session.perform(generator.next(), nested);
        generator.follow(session.world());
        ++result.steps;
    }
    if (!result.failure)
        result.failure = session.finish();
    return result;
}

std::optional<std::vector<Step>> readSteps(const QString& path, std::string* error)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        if (error)
            *error = file.errorString().toStdString();
        return std::nullopt;
    }
    std::vector<Step> steps;
    int number = 0;
    while (!file.atEnd()) {
        ++number;
        const QByteArray line = file.readLine().trimmed();
        if (line.isEmpty() || line.startsWith('#'))
            continue;
        auto step = parseStepLine(std::string_view(line.constData(), std::size_t(line.size())));
        if (!step || (step->kind != "start" && !findStepKind(step->kind))) {
            if (error)
                *error = "line " + std::to_string(number) + " is not a step";
            return std::nullopt;
        }
        steps.push_back(std::move(*step));
    }
    return steps;
}

bool writeSteps(const QString& path, const std::vector<Step>& steps, const std::string& comment)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return false;
    file.write(QByteArray::fromStdString("# " + comment + "\n"));
    for (const Step& step : steps)
        file.write(QByteArray::fromStdString(stepLine(step) + "\n"));
    return file.flush();
}

void startWatchdog(int seconds)
{
    std::thread([seconds] {
        std::uint64_t last = g_stepsEnded;
        int still = 0;
        for (;;) {
            std::this_thread::sleep_for(std::chrono::seconds(1));
            const std::uint64_t now = g_stepsEnded;
            still = now == last ? still + 1 : 0;
            last = now;
            if (still >= seconds) {
                std::fprintf(stderr, "soak failure: hang: a step did not end within %d seconds\n", seconds);
                std::fflush(stderr);
                std::abort();
            }
        }
    }).detach();
}

} // namespace plotwell::soak
