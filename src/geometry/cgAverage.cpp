#include "plxutils/geometry/cgAverage.h"

cgPoint AverageTwoPoints(cgPoint& a, cgPoint& b) {
    // Unlike the other means this one keeps the first point's values when the numbers differ; the refinement
    // of edges relies on it.
    cgPoint result(a);
    result.AvgWithPoint(b, 0.5);
    return result;
}

cgPoint AverageThreePoints(cgPoint& a, cgPoint& b, cgPoint& c) {
    const bool with_data = a.num_data() == b.num_data() && a.num_data() == c.num_data();
    cgPoint result((a.x() + b.x() + c.x()) / 3.0, (a.y() + b.y() + c.y()) / 3.0,
                   (a.z() + b.z() + c.z()) / 3.0, with_data ? a.num_data() : 0);
    for (int i = 0; i < result.num_data(); ++i) result.data()[i] = (a[i] + b[i] + c[i]) / 3.0;
    return result;
}

cgPoint AverageFourPoints(cgPoint& a, cgPoint& b, cgPoint& c, cgPoint& d) {
    const int n = a.num_data();
    const bool with_data = n == b.num_data() && n == c.num_data() && n == d.num_data();
    cgPoint result((a.x() + b.x() + c.x() + d.x()) * 0.25, (a.y() + b.y() + c.y() + d.y()) * 0.25,
                   (a.z() + b.z() + c.z() + d.z()) * 0.25, with_data ? n : 0);
    for (int i = 0; i < result.num_data(); ++i) {
        result.data()[i] = (a[i] + b[i] + c[i]) * 0.25 + d[i] * 0.25;
    }
    return result;
}

cgPoint AveragePoints(int n, cgPoint* pts) {
    if (n < 1 || !pts) return {};
    double x = 0.0, y = 0.0, z = 0.0;
    bool with_data = true;
    for (int p = 0; p < n; ++p) {
        x += pts[p].x();
        y += pts[p].y();
        z += pts[p].z();
        with_data = with_data && pts[p].num_data() == pts[0].num_data();
    }
    cgPoint result(x / n, y / n, z / n, with_data ? pts[0].num_data() : 0);
    for (int i = 0; i < result.num_data(); ++i) {
        double sum = 0.0;
        for (int p = 0; p < n; ++p) sum += pts[p][i];
        result.data()[i] = sum / n;
    }
    return result;
}
