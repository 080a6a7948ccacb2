#include "plxutils/math/ViewAngles.h"

#include <cmath>
#include <cstdio>

#include "plxutils/core/VXNumeric.h"
#include "plxutils/math/VX4X4Matrix.h"

namespace {

struct Position {
    double x;
    double y;
    double z;
};

Position transformed(const VX4X4Matrix& view, Position p) {
    view.transformPoint(p.x, p.y, p.z);
    return p;
}

double degrees(double radians) { return radians * 180.0 / PI(); }

double azimuth_of(const Position& p) {
    const double angle = degrees(std::atan(p.y / p.x));
    if (p.x >= 0.0) return 180.0 + angle;
    return p.y < 0.0 ? angle : angle + 360.0;
}

}  // namespace

bool GetAzElSettings(double p, double q, VX4X4Matrix& view, double& azimuth, double& elevation, double& scale,
                     double& yRot) {
    const double k = -p / q;
    const Position unit_x = transformed(view, {1.0, 0.0, 0.0});
    scale = std::sqrt(unit_x.x * unit_x.x + unit_x.y * unit_x.y + unit_x.z * unit_x.z) / k;
    const double s = 1.0 / (k * scale);
    view.Scale(s, s, s);

    Position unit_z = transformed(view, {0.0, 0.0, 1.0});
    const double y_angle = std::atan(unit_z.x / unit_z.z);
    view.YRot(-y_angle);
    yRot = degrees(y_angle);
    std::printf("yRot: %lf\n", yRot);

    unit_z = transformed(view, {0.0, 0.0, 1.0});
    const double x_angle = degrees(std::atan(unit_z.y / unit_z.z));
    std::printf("xRot: %lf\n", x_angle);
    elevation = (x_angle >= 0.0 ? 90.0 : -90.0) - x_angle;
    view.XRotDeg(elevation - 90.0);

    azimuth = azimuth_of(transformed(view, {1.0, 0.0, 0.0}));
    return true;
}
