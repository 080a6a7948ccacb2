#pragma once

#include "plxutils/export.h"

class VX4X4Matrix;

/// Takes a view matrix apart.
///
/// @param p, q            the scale is measured in units of k = -p / q.
/// @param[in,out] view    scaled to unit length and rotated back about Y and X.
/// @param[out] azimuth    degrees
/// @param[out] elevation  degrees
/// @param[out] scale      length of the transformed X unit vector (its translation included) over k
/// @param[out] yRot       degrees; this and the X rotation are also printed on standard output
/// @return always true; divisions by zero are not guarded and leave infinities or NaN in the results.
PLX_EXPORT bool GetAzElSettings(double p, double q, VX4X4Matrix& view, double& azimuth, double& elevation,
                                double& scale, double& yRot);
