#pragma once

#include "plxutils/export.h"

/* Angles and rounding. */

#ifdef __cplusplus
extern "C" {
#endif

/* The value of pi that all conversions of angles use: 4 (4 atan(1/5) - atan(1/239)), which in double
 * precision lies one unit in the last place above the nearest double. */
PLX_EXPORT double PI(void);
/* Degrees to radians. */
PLX_EXPORT double deg_to_rad(double d);
/* Radians to degrees. */
PLX_EXPORT double rad_to_deg(double r);
/* Rounds half away from zero at `digits` decimals; negative digits round to tens, hundreds and so on. A
 * value that is too large to be scaled comes back unchanged; a power of ten beyond the range of double gives
 * 0. */
PLX_EXPORT double RoundDouble(double v, int digits);

#ifdef __cplusplus
}
#endif
