#pragma once

#include "soak/step.h"

#include <string_view>
#include <vector>

namespace plotwell::soak {

class Generator;
class World;

// One kind of step: what the user does and how the window hands it to the
// editor. Adding a kind of step to the soak is adding one entry to the table
// in stepkinds.cpp, with a function that makes its parameters and one that
// runs it.
struct StepKind {
    const char* name;
    // How often the generator picks it, against the others; 0: never at random.
    int weight;
    // May run inside another step's pending events, as user input can.
    bool nestable;
    Step (*make)(Generator&);
    void (*run)(World&, const Step&);
};

const std::vector<StepKind>& stepKinds();
const StepKind* findStepKind(std::string_view name);

// The first step of every run: the window's start-up at a size, with presets
// in the settings store.
Step startStep(Generator& generator);

// Runs a step as the window would hand it over: the handler, then the frame
// marked as changed.
void runStep(World& world, const Step& step);

} // namespace plotwell::soak
