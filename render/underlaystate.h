#pragma once

#include <QImage>

namespace plotwell {

// The underlay picture under the map and its switches.
struct UnderlayState {
    bool underlayOn = false;
    bool tracingPaperOn = false;
    bool aspectChecked = true; // chkAspect "Maintain Aspect"
    QImage picture;            // the picture box p
};

} // namespace plotwell
