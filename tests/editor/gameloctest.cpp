#include "editor/gameloc.h"

#include <gtest/gtest.h>

using namespace plotwell;

TEST(GameLoc, OnlyTheGamesOwnAnswerToLocIsALocation)
{
    struct Case {
        const char* line;
        bool isLoc;
        float x, y, z; // world point: x = -second, y = -first
    };
    const Case cases[] = {
        {"[Mon Nov 23 18:00:00 2026] Your Location is 1234.56, -789.01, 2.34", true, 789.01f, -1234.56f, 2.34f},
        {"Your Location is 1,2,3 ", true, -2, -1, 3},
        {"[Mon Nov 23 18:00:00 2026] Torvane says, 'Your Location is 1, 2, 3'", false, 0, 0, 0},
        {"[Mon Nov 23 18:00:00 2026] your location is 1, 2, 3", false, 0, 0, 0},
        {"[Mon Nov 23 18:00:00 2026 Your Location is 1, 2, 3", false, 0, 0, 0},
        {"[Mon Nov 23 18:00:00 2026] Your Location is 1, 2", false, 0, 0, 0},
        {"[Mon Nov 23 18:00:00 2026] Your Location is 1, 2, 3, 4", false, 0, 0, 0},
        {"[Mon Nov 23 18:00:00 2026] Your Location is 1, 2x, 3", false, 0, 0, 0},
        {"[Mon Nov 23 18:00:00 2026] Your Location is 1, , 3", false, 0, 0, 0},
        {"[Mon Nov 23 18:00:00 2026] Your Location is 4e38, 0, 0", false, 0, 0, 0},
        {"[Mon Nov 23 18:00:00 2026] Your Location is 0, 0, -1e39", false, 0, 0, 0},
    };
    for (const Case& c : cases) {
        const auto loc = parseLocLine(c.line);
        ASSERT_EQ(loc.has_value(), c.isLoc) << c.line;
        if (loc) {
            EXPECT_EQ(loc->x, c.x) << c.line;
            EXPECT_EQ(loc->y, c.y) << c.line;
            EXPECT_EQ(loc->z, c.z) << c.line;
        }
    }
}

TEST(GameLoc, EnteringAZoneIsToldApartFromEnteringAnAreaInsideOne)
{
    const struct {
        const char* line;
        bool entered;
    } cases[] = {
        {"[Mon Nov 23 18:00:00 2026] You have entered The Plane of Knowledge.", true},
        {"You have entered Qeynos Hills.", true},
        {"[Mon Nov 23 18:00:00 2026] You have entered an area where levitation effects do not function.", false},
        {"[Mon Nov 23 18:00:00 2026] Torvane says, 'You have entered Qeynos Hills.'", false},
        {"[Mon Nov 23 18:00:00 2026] You have entered ", false},
        {"[Mon Nov 23 18:00:00 2026 You have entered Qeynos Hills.", false},
        {"[Mon Nov 23 18:00:00 2026] Your Location is 1, 2, 3", false},
    };
    for (const auto& c : cases)
        EXPECT_EQ(isZoneEntryLine(c.line), c.entered) << c.line;
}
