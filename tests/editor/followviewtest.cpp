#include "editor/gamelog.h"
#include "editor/startup.h"

#include "tests/support/fakes.h"
#include "tests/support/files.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cmath>

using namespace plotwell;
using namespace plotwell::test;

// While the log is followed, a marker that comes within a tenth of the map's
// width or height of an edge, or lies outside, is put back in the middle by
// a pan of whole pixels; the zoom stays. Off, the view stays.
TEST(KeepPlayerInView, AWalkOffTheScreenKeepsTheMarkerInView)
{
    QTemporaryDir dir;
    const QString log = writeBytes(dir.filePath(QStringLiteral("eqlog_Torvane_quillmere.txt")), "");
    FakeWorld w;
    Editor& e = w.editor;
    startUp(e);
    EXPECT_TRUE(e.follower.keepInView) << "on at first";
    e.view.mapWidth = 6000;
    e.view.mapHeight = 4500;
    e.view.currentScale = 1.5f;
    e.view.offsetX = 3000;
    e.view.offsetY = 2250;
    followGameLog(e, log);

    const auto markerOnSurface = [&] {
        const MapPoint& at = e.follower.marker.at;
        return SurfacePoint{at.x * e.view.currentScale + e.view.offsetX, at.y * e.view.currentScale + e.view.offsetY};
    };
    // On the margin's very line the marker stays where it is, on each side.
    for (const char* onMargin : {"0, 1600", "0, -1600", "1200, 0", "-1200, 0"}) {
        appendBytes(log, QByteArray("Your Location is ") + onMargin + ", 0\n");
        pollGameLog(e);
        EXPECT_EQ(e.view.offsetX, 3000) << onMargin;
        EXPECT_EQ(e.view.offsetY, 2250) << onMargin;
    }
    // A walk east, 100 world units (150 twips) a step, in the game's y, x order.
    int stepsThatPanned = 0;
    for (int i = 0; i < 40; ++i) {
        const float offsetX = e.view.offsetX;
        appendBytes(log, QByteArray("Your Location is 0, ") + QByteArray::number(-100 * i) + ", 0\n");
        pollGameLog(e);
        const SurfacePoint at = markerOnSurface();
        EXPECT_GE(at.x, 600) << "step " << i;
        EXPECT_LE(at.x, 5400) << "step " << i;
        EXPECT_EQ(e.view.currentScale, 1.5f) << "the zoom is never changed";
        if (e.view.offsetX != offsetX) {
            ++stepsThatPanned;
            EXPECT_NEAR(at.x, 3000, 7.5f) << "back in the middle";
            EXPECT_EQ(std::fmod(double(e.view.offsetX - offsetX), 15.0), 0.0) << "by whole pixels";
        }
    }
    EXPECT_GT(stepsThatPanned, 1);

    // A jump far outside is brought back too; turned off, the view stays.
    appendBytes(log, "Your Location is 90000, 90000, 0\n");
    pollGameLog(e);
    EXPECT_NEAR(markerOnSurface().y, 2250, 7.5f);
    toggleKeepPlayerInView(e);
    EXPECT_EQ(w.settings.get(QStringLiteral("settings"), QStringLiteral("keepPlayerInView"), {}), QStringLiteral("0"));
    const float offsetY = e.view.offsetY;
    appendBytes(log, "Your Location is -90000, 90000, 0\n");
    pollGameLog(e);
    EXPECT_EQ(e.view.offsetY, offsetY);
}
