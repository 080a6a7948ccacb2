#include "plxutils/interpolate/VXInterpolate.h"

#include <algorithm>
#include <cmath>

namespace {

/// The values of a sample and of a result.
enum Slot { kDistance, kValue, kWeight, kSlots };

constexpr double kNearestDistance = 1e-10;  // smallest distance that the bounded weights work with

}  // namespace

VXInterpolate::VXInterpolate() = default;

VXInterpolate::VXInterpolate(int method_, int depth_, double reach_, double hv_anisotropy_)
    : method(method_), depth(depth_), reach(reach_), hv_anisotropy(hv_anisotropy_) {}

VXInterpolate::VXInterpolate(const VXInterpolate& src)
    : method(src.method),
      m_pow(src.m_pow),
      depth(src.depth),
      reach(src.reach),
      hv_anisotropy(src.hv_anisotropy),
      samples(src.samples) {}

VXInterpolate& VXInterpolate::operator=(const VXInterpolate& src) {
    if (this == &src) return *this;
    samples = src.samples;
    tree.reset();
    method = src.method;
    m_pow = src.m_pow;
    depth = src.depth;
    reach = src.reach;
    hv_anisotropy = src.hv_anisotropy;
    return *this;
}

VXInterpolate::~VXInterpolate() = default;

void VXInterpolate::add_point(double value, double x, double y, double z) {
    tree.reset();
    const double values[kSlots] = {-1.0, value, 0.0};
    samples.append(cgPoint(x, y, z * hv_anisotropy, kSlots, values));
}

void VXInterpolate::clear_data() {
    tree.reset();
    samples.clear();
}

bool VXInterpolate::project_point(double x, double y, double z, cgPointList& out) {
    out.clear();
    if (samples.count() == 0) return false;
    if (!tree) {
        const cgBox extents = samples.GetExtents();
        tree = std::make_unique<cgPointTree>(depth, extents.min, extents.max);
        tree->Populate(samples);
    }
    // Deliberate: the samples' z is stretched, the query's is not; hosts pass it as they need it.
    const cgPoint query(x, y, z, 0);
    tree->find_stored(query, reach, found_);
    if (found_.empty()) {
        cgPoint nearest;
        double distance = 0.0;
        if (tree->FindClosestPoint(query, nearest, distance)) append_result(nearest, distance, 1.0, out);
        return false;
    }
    set_weights(found_);
    for (const cgPoint* sample : found_)
        append_result(*sample, (*sample)[kDistance], (*sample)[kWeight], out);
    return true;
}

/// Writes the weights, and the distances as far as the method raises them, into the samples.
void VXInterpolate::set_weights(std::vector<cgPoint*>& found) const {
    double farthest = 0.0;
    if (method != 1) {
        for (cgPoint* sample : found) {
            double& distance = sample->data()[kDistance];
            distance = std::max(distance, kNearestDistance);
            farthest = std::max(farthest, distance);
        }
    }
    double sum = 0.0;
    for (cgPoint* sample : found) {
        const double distance = sample->data()[kDistance];
        double& weight = sample->data()[kWeight];
        weight = method == 1 ? std::pow(distance, -m_pow)
                             : std::pow((farthest - distance) / (farthest * distance), m_pow);
        sum += weight;
    }
    for (cgPoint* sample : found) sample->data()[kWeight] /= sum;
}

void VXInterpolate::append_result(const cgPoint& sample, double distance, double weight,
                                  cgPointList& out) const {
    const double values[kSlots] = {distance, sample[kValue], weight};
    out.append(cgPoint(sample.x(), sample.y(), sample.z() / hv_anisotropy, kSlots, values));
}
