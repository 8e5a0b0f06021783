#pragma once

namespace plotwell {

// Turns the wheel's angle deltas into whole notches. A mouse wheel sends 120
// (eighths of a degree) a notch; a touchpad sends small deltas many times a
// second, which are added up so that it zooms no faster than a wheel.
class WheelNotches {
public:
    static constexpr int kNotch = 120;

    // The whole notches the delta completes, signed; 0 while a notch builds up.
    int feed(int angleDelta);

private:
    int m_rest = 0;
};

} // namespace plotwell
