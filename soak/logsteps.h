#pragma once

#include "soak/step.h"

namespace plotwell::soak {

class Generator;
class World;

// The game's log, followed by the editor while the game writes to it:
// Tools > Follow Game Log..., Record Path and Stop Following, and the game
// writing (locations, chatter, unfinished lines, a log emptied or deleted).
Step makeFollowLog(Generator& g);
void runFollowLog(World& w, const Step& s);
Step makeRecordPath(Generator& g);
void runRecordPath(World& w, const Step& s);
Step makeStopFollowing(Generator& g);
void runStopFollowing(World& w, const Step& s);
Step makeLogLine(Generator& g);
void runLogLine(World& w, const Step& s);

} // namespace plotwell::soak
