#pragma once

#include "soak/step.h"

#include <QString>

#include <cstdint>
#include <cstdio>
#include <optional>
#include <string>
#include <vector>

namespace plotwell::soak {

// What broke: an invariant after a step or the round trip, by its kind
// ("view", "selection", "round trip", ...) and the whole message.
struct Failure {
    std::string kind;
    std::string message;
};

struct RunOptions {
    // The run's files go here; the folder is emptied first.
    QString folder;
    // When set, every step is written here, flushed, before it runs, so
    // that a run that crashes leaves the steps that led to the crash.
    std::FILE* record = nullptr;
    // Save and load every layer, and undo and redo every edit, after so
    // many steps, and at the end.
    int roundTripEvery = 100;
};

// Runs written steps on a fresh editor, checking after each.
std::optional<Failure> replaySteps(const std::vector<Step>& steps, const RunOptions& options);

struct EpisodeResult {
    std::size_t steps = 0;
    std::optional<Failure> failure;
};

// Runs a start step and then up to maxSteps steps made at random from the
// seed, on a fresh editor, checking after each; stops early once
// keepGoing() says so.
EpisodeResult runEpisode(std::uint64_t seed, std::size_t maxSteps, const RunOptions& options, bool (*keepGoing)());

// Steps read from a file written by RunOptions::record; lines starting with
// "#" are comments. None when a line is not a step.
std::optional<std::vector<Step>> readSteps(const QString& path, std::string* error = nullptr);
bool writeSteps(const QString& path, const std::vector<Step>& steps, const std::string& comment);

// Ends the program with a report when no step has ended for so many seconds:
// a hang is a fault like a crash.
void startWatchdog(int seconds);

} // namespace plotwell::soak
