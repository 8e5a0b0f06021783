#pragma once

#include <QString>

namespace plotwell {

// The zoom control in the tool frame: the strip lblScale with its caption and
// the red marker line lnScale, in twips relative to the frame.
struct ZoomStrip {
    static constexpr float kLeft = 60;
    static constexpr float kTop = 600;
    static constexpr float kWidth = 3615;
    static constexpr float kHeight = 255;

    QString caption;       // "Scale: " and the scale
    float markerX1 = 180;  // X1 and X2 of lnScale
};

// The location read-out under the mouse: lblX, lblY, lblZ and lblLoc.
struct LocationReadout {
    QString x = QStringLiteral("0");
    QString y = QStringLiteral("0");
    QString z = QStringLiteral("0");
    QString loc = QStringLiteral("Loc: ");
};

} // namespace plotwell
