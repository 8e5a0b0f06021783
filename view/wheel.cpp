#include "view/wheel.h"

namespace plotwell {

int WheelNotches::feed(int angleDelta)
{
    // Turning back drops what had built up the other way.
    if ((angleDelta > 0 && m_rest < 0) || (angleDelta < 0 && m_rest > 0))
        m_rest = 0;
    m_rest += angleDelta;
    const int notches = m_rest / kNotch;
    m_rest -= notches * kNotch;
    return notches;
}

} // namespace plotwell
