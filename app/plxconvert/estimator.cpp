#include "plxconvert/estimator.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

#include "plxconvert/messages.h"

namespace plx::tool {

namespace {

/// Eight samples in a leaf, when they are spread evenly.
int depth_for(std::size_t samples) {
    constexpr int kDeepest = 8;
    int depth = 1;
    for (std::size_t full = 64; full < samples && depth < kDeepest; full *= 8) ++depth;
    return depth;
}

/// Extents of the samples with heights stretched, the largest first.
std::array<double, 3> extents(const std::vector<Sample>& samples, double anisotropy) {
    std::array<double, 3> low{}, high{};
    bool first = true;
    for (const Sample& s : samples) {
        const std::array<double, 3> place = {s.x, s.y, s.z * anisotropy};
        for (std::size_t i = 0; i < 3; ++i) {
            low[i] = first ? place[i] : std::min(low[i], place[i]);
            high[i] = first ? place[i] : std::max(high[i], place[i]);
        }
        first = false;
    }
    std::array<double, 3> size = {high[0] - low[0], high[1] - low[1], high[2] - low[2]};
    std::sort(size.rbegin(), size.rend());
    return size;
}

/// Without a bound by their number every node would look at a good part of all samples.
double default_reach(const std::vector<Sample>& samples, double anisotropy) {
    constexpr double kPi = 3.14159265358979323846, kEnough = 50.0;
    const std::array<double, 3> size = extents(samples, anisotropy);
    const double part = kEnough / static_cast<double>(std::max<std::size_t>(samples.size(), 1));
    // In a box that is thin in a direction the ball of its volume is too small: what counts is its area.
    const double dense = std::max({part * size[0] / 2.0, std::sqrt(part * size[0] * size[1] / kPi),
                                   std::cbrt(part * size[0] * size[1] * size[2] * 0.75 / kPi)});
    return std::min(std::hypot(size[0], size[1], size[2]) / 4.0, dense);
}

}  // namespace

void complete(InterpolationRules& rules, const std::vector<Sample>& samples) {
    if (rules.reach < 0.0) rules.reach = default_reach(samples, rules.anisotropy);
    if (rules.depth < 1) rules.depth = depth_for(samples.size());
}

Estimator::Estimator(const InterpolationRules& rules, const std::vector<Sample>& samples)
    : rules_(rules), interpolate_(rules.method, rules.depth, rules.reach, rules.anisotropy) {
    interpolate_.set_pow(rules.power);
    for (const Sample& s : samples) interpolate_.add_point(s.value, s.x, s.y, s.z);
}

double Estimator::at(const std::array<double, 3>& place) {
    // The interpolation stretches the samples' heights only; the place must stand in the same space.
    const double height = place[2] * rules_.anisotropy;
    const bool reached = interpolate_.project_point(place[0], place[1], height, found_);
    if (found_.count() == 0) {
        throw InputFault("no sample is found from the node at " + std::to_string(place[0]) + " " +
                         std::to_string(place[1]) + " " + std::to_string(place[2]) +
                         ": it lies too far away");
    }
    ++(reached ? in_reach_ : took_nearest_);
    if (!reached) {
        find_equally_near(place[0], place[1], height);
        return plain_mean();
    }
    double sum = 0.0, weights = 0.0;
    const cgPointList& found = found_;
    for (int i = 0; i < found.count(); ++i) {
        sum += found[i][1] * found[i][2];
        weights += found[i][2];
    }
    // Powers of very small distances overflow, and the weights of what is left are any number then.
    constexpr double kRounding = 1e-6;
    const bool sound = std::isfinite(sum) && std::fabs(weights - 1.0) <= kRounding;
    return sound ? sum : plain_mean();
}

/// Several samples may stand at the nearest place, of which only one is given to a node out of reach.
void Estimator::find_equally_near(double x, double y, double height) {
    constexpr double kRounding = 1e-12;
    interpolate_.set_reach(found_[0][0] * (1.0 + kRounding));
    interpolate_.project_point(x, y, height, found_);
    interpolate_.set_reach(rules_.reach);
}

/// Weights are no numbers when a sample stands at the place itself, and with method 2 when all in reach are
/// equally far: then those at the place count, or each by its distance relative to the nearest one.
double Estimator::plain_mean() const {
    double nearest = found_[0][0];
    for (int i = 1; i < found_.count(); ++i) nearest = std::min(nearest, found_[i][0]);
    double sum = 0.0, weights = 0.0;
    for (int i = 0; i < found_.count(); ++i) {
        const double distance = found_[i][0];
        const double weight =
            distance > nearest ? std::pow(nearest / distance, static_cast<double>(rules_.power)) : 1.0;
        sum += weight * found_[i][1];
        weights += weight;
    }
    return sum / weights;
}

}  // namespace plx::tool
