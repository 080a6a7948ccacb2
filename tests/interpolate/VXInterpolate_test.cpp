#include "plxutils/interpolate/VXInterpolate.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace {

struct Sample {
    double value, x, z;
};

/// {z, distance, value, weight} of each result.
using Rows = std::vector<std::vector<double>>;

Rows rows(const cgPointList& list) {
    Rows result;
    for (int i = 0; i < list.count(); ++i) {
        result.push_back({list[i].z(), list[i][0], list[i][1], list[i][2]});
    }
    return result;
}

Rows project(VXInterpolate& interpolate, double x, double z, bool expected) {
    cgPointList out;
    out.append(cgPoint(7, 7, 7, 0));
    EXPECT_EQ(interpolate.project_point(x, 0, z, out), expected);
    return rows(out);
}

TEST(VXInterpolate, DistancesValuesAndWeights) {
    const struct {
        const char* name;
        int method, power;
        double reach;
        std::vector<Sample> samples;
        bool in_reach;
        Rows expected;
    } table[] = {
        {"no samples", 1, 2, 9, {}, false, {}},
        {"inverse distance", 1, 2, 9, {{5, 1, 0}, {6, -2, 0}}, true, {{0, 2, 6, 0.2}, {0, 1, 5, 0.8}}},
        {"bounded", 2, 2, 9, {{5, 1, 0}, {6, -2, 0}}, true, {{0, 2, 6, 0}, {0, 1, 5, 1}}},
        {"power 0", 2, 0, 9, {{5, 1, 0}, {6, -2, 0}}, true, {{0, 2, 6, 0.5}, {0, 1, 5, 0.5}}},
        {"hit, bounded", 2, 1, 9, {{5, 0, 0}, {6, -2, 0}}, true, {{0, 2, 6, 0}, {0, 1e-10, 5, 1}}},
        {"reach is inclusive", 1, 2, 1, {{5, 1, 0}, {6, -2, 0}}, true, {{0, 1, 5, 1}}},
        {"nearest when out of reach", 1, 2, 0.5, {{5, 1, 0}, {6, -2, 0}}, false, {{0, 1, 5, 1}}},
        {"stretched z", 1, 1, 20, {{5, 0, 1}, {6, 0, -2}}, true, {{-2, 20, 6, 1 / 3.}, {1, 10, 5, 2 / 3.}}},
        {"too far", 1, 2, 1, {{5, 1e16, 0}}, false, {}},
        {"not a number", 1, 2, 1, {{5, NAN, 0}}, false, {}},
    };
    for (const auto& t : table) {
        for (const int depth : {-1, 1, 3, 1 << 30}) {
            SCOPED_TRACE(testing::Message() << t.name << ", depth " << depth);
            VXInterpolate interpolate(t.method, depth, t.reach, 10.0);
            interpolate.set_pow(t.power);
            // A tree lists by octants and a plain list as added: both in rising order here.
            for (auto s = t.samples.rbegin(); s != t.samples.rend(); ++s) {
                interpolate.add_point(s->value, s->x, 0, s->z);
            }
            for (int again = 0; again < 2; ++again) {
                const Rows found = project(interpolate, 0, 0, t.in_reach);
                ASSERT_EQ(found.size(), t.expected.size());
                for (std::size_t i = 0; i < found.size(); ++i) {
                    for (std::size_t j = 0; j < 4; ++j) EXPECT_NEAR(found[i][j], t.expected[i][j], 1e-15);
                }
            }
        }
    }
}

TEST(VXInterpolate, ExactHitWeighsNotANumber) {
    VXInterpolate interpolate;
    interpolate.add_point(5, 1, 0, 0);
    const Rows hit = project(interpolate, 1, 0, true);
    ASSERT_EQ(hit.size(), 1u);
    EXPECT_TRUE(std::isnan(hit[0][3]));
}

TEST(VXInterpolate, ChangesAfterAQuery) {
    VXInterpolate interpolate(1, 3, 4.0, 2.0);
    interpolate.add_point(5, 1, 0, 1);
    EXPECT_EQ(project(interpolate, 1, 0, true), (Rows{{1, 2, 5, 1}}));
    interpolate.set_hv_anisotropy(4.0);  // the sample stays at 2
    EXPECT_EQ(project(interpolate, 1, 0, true), (Rows{{0.5, 2, 5, 1}}));
    VXInterpolate copy(interpolate), assigned;
    assigned.add_point(1, 1, 1, 1);
    assigned = interpolate;
    interpolate.add_point(6, 1, 0, -0.5);
    EXPECT_EQ(project(interpolate, 1, 0, true), (Rows{{-0.5, 2, 6, 0.5}, {0.5, 2, 5, 0.5}}));
    interpolate.clear_data();
    EXPECT_EQ(project(interpolate, 1, 0, false), Rows());
    EXPECT_EQ(project(copy, 1, 0, true), (Rows{{0.5, 2, 5, 1}}));
    EXPECT_EQ(project(assigned, 1, 0, true), (Rows{{0.5, 2, 5, 1}}));
}

}  // namespace
