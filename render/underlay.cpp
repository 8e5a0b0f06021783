#include "render/underlay.h"

namespace plotwell {

// Painting the picture and the mesh arrives with the underlay commands; until
// then the step leaves the cleared surface as it is.
void paintUnderlay(DrawingSurface&, const UnderlayState&) {}

} // namespace plotwell
