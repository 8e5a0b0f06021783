#include "view/displayoptions.h"

#include <cmath>

namespace plotwell {

bool outsideHeightRange(const DisplayOptions& options, float z, float currentZ)
{
    return options.heightFilterOn && float(std::fabs(double(z) - double(currentZ))) > options.heightRange;
}

} // namespace plotwell
