#pragma once

#include "document/maprecords.h"

#include <QString>

#include <array>

namespace plotwell {

// The captions of the layer rows' check boxes: each layer's display name.
struct LayerControls {
    std::array<QString, kLayerCount> captions{defaultLayerName(0), defaultLayerName(1), defaultLayerName(2),
                                              defaultLayerName(3)};
};

} // namespace plotwell
