#include "render/displayoptions.h"

#include <gtest/gtest.h>

#include <vector>

using namespace plotwell;

namespace {

TEST(DisplayOptions, ClampIntRaisesThenLowers)
{
    const struct {
        std::int16_t value, low, high, result;
    } cases[] = {{-5, 0, 255, 0}, {300, 0, 255, 255}, {128, 0, 255, 128}, {0, 0, 255, 0}, {-32768, 50, 255, 50},
                 // low above high: raised first, then lowered, so high wins.
                 {10, 200, 100, 100}};
    for (const auto& c : cases)
        EXPECT_EQ(clampInt(c.value, c.low, c.high), c.result) << c.value;
}

TEST(DisplayOptions, FlashFallsThenRisesInACycleOfEight)
{
    DisplayOptions options;
    std::vector<int> levels;
    for (int frame = 0; frame < 21; ++frame) {
        levels.push_back(options.flashLevel);
        advanceFlash(options);
    }
    EXPECT_EQ(levels, (std::vector<int>{255, 191, 127, 63, 1, 65, 129, 193, 254, 190, 126, 62, 1, 65, 129, 193, 254,
                                        190, 126, 62, 1}));
}

TEST(DisplayOptions, FlashStepsWhetherOrNotFlashingIsChecked)
{
    DisplayOptions options;
    options.flashChecked = false;
    advanceFlash(options);
    EXPECT_EQ(options.flashLevel, 191);
}

} // namespace
