#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "plxutils/export.h"
#include "plxutils/geometry/cgPointList.h"
#include "plxutils/geometry/cgPointTree.h"

/// Inverse-distance weighting of scattered samples. Answers which samples contribute to a place, with their
/// distances, values and weights, and leaves the weighted sum to the caller.
///
/// Samples are kept in a tree that the first query after a change of the samples builds over their extents.
/// Queries write into the tree: one interpolator, one thread. Copies take settings and samples.
class PLX_EXPORT VXInterpolate {
public:
    /// Method 1, depth 3, reach 0, anisotropy 10.
    VXInterpolate();
    /// The power is 2.
    ///
    /// @param method         1 weighs by d^-power; any other by ((R - d) / (R d))^power, R being the largest
    ///                       distance found, so that the farthest sample weighs 0.
    /// @param depth          of the search tree; below 1 every query looks at every sample.
    /// @param reach          samples up to this distance contribute.
    /// @param hv_anisotropy  factor on the z of the samples, not on the z of a query.
    VXInterpolate(int method, int depth, double reach, double hv_anisotropy);
    VXInterpolate(const VXInterpolate& src);
    VXInterpolate& operator=(const VXInterpolate& src);
    ~VXInterpolate();

    void set_method(int m) { method = m; }
    void set_reach(double r) { reach = r; }
    /// Takes effect when the samples change next.
    void set_depth(int d) { depth = d; }
    /// Stretches samples added from now on; results are divided by the factor at the time of the query.
    void set_hv_anisotropy(double a) { hv_anisotropy = a; }
    void set_pow(int p) { m_pow = p; }

    void add_point(double value, double x, double y, double z);
    void clear_data();

    /// Gathers the samples within reach of (x, y, z), distances measured in stretched coordinates.
    ///
    /// @param[out] out  emptied first; each point has the sample's x, y and unstretched z, and three values:
    ///                  [0] distance, [1] sample value, [2] weight. The weights sum to 1; distances are not
    ///                  bounded below, so a sample hit exactly weighs NaN with method 1, and so do the
    ///                  samples of method 2 when all are equally far.
    /// @return true when a sample lies within reach. Otherwise out holds the nearest sample with weight 1,
    ///         or nothing when there is no sample closer than 1e15.
    bool project_point(double x, double y, double z, cgPointList& out);

private:
    void set_weights(std::vector<cgPoint*>& found) const;
    void append_result(const cgPoint& sample, double distance, double weight, cgPointList& out) const;

    std::int32_t method = 1;
    double m_pow = 2.0;
    std::int32_t depth = 3;
    double reach = 0.0;
    double hv_anisotropy = 10.0;
    std::unique_ptr<cgPointTree> tree;
    cgPointList samples;
    std::vector<cgPoint*> found_;  // of the last query; kept for its memory
};
