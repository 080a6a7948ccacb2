#include "plxutils/core/VXNumeric.h"

#include <cmath>
#include <cstdint>

namespace {

// The powers that double holds exactly come from a table, because pow may miss them by a bit.
double power_of_ten(std::int64_t exponent) {
    static constexpr double kExact[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                        1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                        1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
    return exponent <= 22 ? kExact[exponent] : std::pow(10.0, static_cast<double>(exponent));
}

double round_half_away(double v) {
    const double size = std::fabs(v);
    const double below = std::floor(size);
    const double rounded = size - below < 0.5 ? below : std::ceil(size);
    return v < 0 ? -rounded : rounded;
}

}  // namespace

double PI() {
    static const double value = 4 * (4 * std::atan(1.0 / 5.0) - std::atan(1.0 / 239.0));
    return value;
}

double deg_to_rad(double d) { return d * PI() / 180; }

double rad_to_deg(double r) { return r * 180 / PI(); }

double RoundDouble(double v, int digits) {
    if (digits == 0) return round_half_away(v);
    const std::int64_t places = digits;
    if (digits > 0) {
        const double power = power_of_ten(places);
        const double scaled = v * power;
        return std::isfinite(scaled) ? round_half_away(scaled) / power : v;
    }
    const double power = power_of_ten(-places);
    return std::isfinite(power) ? round_half_away(v / power) * power : 0;
}

double blend_vals(double a, double b, double t, bool logScale, bool smooth) {
    if (smooth) t = std::cos(PI() + PI() * t) * 0.5 + 0.5;
    if (!logScale) return t * b + (1 - t) * a;
    return std::log10(std::pow(10.0, b) * t + std::pow(10.0, a) * (1 - t));
}
