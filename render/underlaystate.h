#pragma once

#include <QImage>

namespace plotwell {

// The underlay picture under the map and its switches.
struct UnderlayState {
    bool underlayOn = false;
    bool tracingPaperOn = false;
    bool aspectChecked = true; // chkAspect "Maintain Aspect"
    QImage picture; // the picture box p
    // The picture is the program's own start-up picture, not one the user
    // chose: pictures of the map written to files leave it out.
    bool builtIn = false;
};

} // namespace plotwell
