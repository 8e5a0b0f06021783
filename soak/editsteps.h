#pragma once

#include "soak/step.h"

namespace plotwell::soak {

class Generator;
class World;

// Editing what exists: the Move tool's double click, Edit > Move Selection...
// and Label Properties... with typed answers (hostile ones among them), Snap
// to Line Ends and Keep Player in View switched on and off. The Move tool's
// drags, with every button and modifier, are the press and key steps with
// the Move tool chosen.
Step makeDoubleClick(Generator& g);
void runDoubleClick(World& w, const Step& s);
Step makeMoveSelection(Generator& g);
void runMoveSelection(World& w, const Step& s);
Step makeLabelProperties(Generator& g);
void runLabelProperties(World& w, const Step& s);
Step makeSnap(Generator& g);
void runSnap(World& w, const Step& s);
Step makeKeepInView(Generator& g);
void runKeepInView(World& w, const Step& s);

} // namespace plotwell::soak
