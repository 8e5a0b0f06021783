#pragma once

#include "document/maprecords.h"

#include <QString>

#include <array>

namespace plotwell {

// The layer rows: a check box per layer whose value is the layer's visibility
// and whose caption its display name. The marker of the active layer is red.
struct LayerControls {
    std::array<bool, kLayerCount> checked{true, false, false, false};
    std::array<QString, kLayerCount> captions{defaultLayerName(0), defaultLayerName(1), defaultLayerName(2),
                                              defaultLayerName(3)};
};

} // namespace plotwell
