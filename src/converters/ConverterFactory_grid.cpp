#include "plxutils/converters/ConverterFactory.h"
#include "plxutils/core/VXNumeric.h"
#include "plxutils/math/VX4X4Matrix.h"

void ConverterFactory::get_cell_pos(int n, int& k, int& i, int& j) {
    k = i = j = 0;
    if (n < 1 || nrow < 1 || ncol < 1) return;
    const long long per_layer = static_cast<long long>(nrow) * ncol;
    const long long in_layer = n % per_layer;
    k = static_cast<int>(n / per_layer);
    i = static_cast<int>(in_layer / ncol);
    j = static_cast<int>(in_layer % ncol);
}

bool ConverterFactory::node_active(const int& r, const int& c, const int& k, VXArray<int>& active) {
    const auto flag = [&](int row, int column) { return active(row * ncol + column, k, 0, 0) == 1; };
    if (r < nrow && c < ncol && flag(r, c)) return true;
    if (r > 0 && c < ncol && flag(r - 1, c)) return true;
    if (r > 0 && c >= 1 && flag(r - 1, c - 1)) return true;
    return r < nrow && c >= 1 && flag(r, c - 1);
}

bool ConverterFactory::cell_center(double& x, double& y, double& z, VXArray<double>& elevations,
                                   VXArray<double>& corners, VXArray<int>&, double turn, double dx, double dy,
                                   double dz, int i, int j, int k) {
    z = (elevations(j * ncol + i, k, 0, 0) + elevations(j * ncol + i, k + 1, 0, 0)) * 0.5;
    x = (corners(i, j, 2 * k, 0) + corners(i + 1, j, 2 * k, 0)) * 0.5;
    y = (corners(i, j, 2 * k, 1) + corners(i, j + 1, 2 * k, 1)) * 0.5;
    VX4X4Matrix transform;
    transform.ZRot(PI() * turn / 180.0);
    transform.Translate(dx, dy, dz);
    transform.transformPoint(x, y, z);
    return true;
}

bool ConverterFactory::check_extents(double x, double y) {
    return !crop_to_extents || (x >= x_min && x <= x_max && y >= y_min && y <= y_max);
}
