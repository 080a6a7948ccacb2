#pragma once

#include <array>
#include <vector>

#include "plxconvert/samples.h"
#include "plxutils/geometry/cgPointList.h"
#include "plxutils/interpolate/VXInterpolate.h"

namespace plx::tool {

/// How values between samples are found.
struct InterpolationRules {
    int method = 1;  ///< 1 inverse distance, 2 inverse distance that ends at the farthest sample in reach
    int power = 2;
    double reach = -1.0;       ///< negative: as the samples' number and extents want it
    int depth = 0;             ///< of the search tree; 0: as the number of samples wants it
    double anisotropy = 10.0;  ///< what heights are multiplied by before distances are measured
};

/// Distances to a sample and a node that are farther than this are not found.
constexpr double kFarthestStretched = 1e14;

/// Fills in reach and depth where a person gave none. The reach is the distance within which some fifty
/// samples lie at their mean density, yet at most a quarter of the samples' diagonal.
void complete(InterpolationRules& rules, const std::vector<Sample>& samples);

/// Values between samples, each a weighted mean of the samples in reach, or the mean of the nearest ones.
class Estimator {
public:
    Estimator(const InterpolationRules& rules, const std::vector<Sample>& samples);

    /// @throws InputFault for a place so far away that no sample is found; never within kFarthestStretched.
    double at(const std::array<double, 3>& place);
    int in_reach() const { return in_reach_; }
    int took_nearest() const { return took_nearest_; }

private:
    void find_equally_near(double x, double y, double height);
    double plain_mean() const;

    InterpolationRules rules_;
    VXInterpolate interpolate_;
    cgPointList found_;
    int in_reach_ = 0, took_nearest_ = 0;
};

}  // namespace plx::tool
