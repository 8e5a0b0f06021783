#pragma once

#include "soak/step.h"

#include <vector>

namespace plotwell::soak {

class Generator;
class World;

// The steps that act on the program as a whole, for the table in
// stepkinds.cpp: Edit > Undo and Redo, the clock that the recovery copies
// are timed by, the end of the program as closing the window ends it,
// File > Recover Unsaved Layers and File > Export Picture...

Step makeUndo(Generator& g);
void runUndo(World& w, const Step& s);
Step makeRedo(Generator& g);
void runRedo(World& w, const Step& s);
Step makeClock(Generator& g);
void runClock(World& w, const Step& s);
Step makeEnd(Generator& g);
void runEnd(World& w, const Step& s);
Step makeRecover(Generator& g);
void runRecover(World& w, const Step& s);
Step makeExport(Generator& g);
void runExport(World& w, const Step& s);

// A run of undos, often followed by redos: mostly a step or two, now and
// then dozens, or more than the history holds; through the Edit menu or
// with Ctrl held on the map.
std::vector<Step> undoRun(Generator& g);
// Whether the step is an edit that users often take back at once.
bool oftenUndone(const Step& step, const World& w);

// Takes note of the layers with unsaved edits of a program that has ended:
// recovering them in a later run must bring them back as they were.
void noteLeftLayers(World& w);

} // namespace plotwell::soak
