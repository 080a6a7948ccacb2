#pragma once

#include <stddef.h>

#include "plxutils/export.h"

/* Services of the host program that the library can use; each entry may be null. */

#ifdef __cplusplus
extern "C" {
#endif

/* The entries have the names by which hosts know these services. Matrices are 4x4, 16 floats row by row; an
 * output may be one of the inputs. */
typedef struct PLX_HostServices {
    /* sizeof(PLX_HostServices) where the host was compiled: later versions add entries at the end. An
     * entry that it holds in part only counts as null. */
    size_t size;
    /* The number of the host's search paths, and one of them by its index from 0 (null counts as empty); the
     * text belongs to the host. Used for the tokens "$XP_PATH<1>" to "$XP_PATH<9>" of file names, in place of
     * the environment variable XP_PATH, when both are there. */
    int (*OMget_num_paths)(void);
    const char* (*OMget_path_index)(int index);

    void (*MATmat4_identity)(float* matrix);
    /* Follows the matrix by a translation. */
    void (*MATmat4_translate)(float* matrix, float x, float y, float z);
    void (*MATmat4_multiply)(const float* a, const float* b, float* product);
    void (*MATmat4_inverse)(const float* matrix, float* inverse);
    /* A point as row vector (x, y, z, 1) times the matrix: three floats in, three out. */
    void (*MATvec3_mat4_multiply)(const float* point, const float* matrix, float* product);
} PLX_HostServices;

/* Gives the library the host's services for the rest of the process, in place of those given before. The
 * struct is copied; null takes all services away. The search paths are collected once, when the first file
 * name with such a token is used: services given later have no effect on them, and names with such tokens
 * that a service uses meanwhile find no paths. What a service throws ends there, if it is a C++ exception of
 * the library's own runtime: a path is then empty, a number 0, a matrix what it was. Returns 1, or 0 when
 * size is too small to be one; then nothing changes. */
PLX_EXPORT int PLX_set_host_services(const PLX_HostServices* services);

#ifdef __cplusplus
}
#endif
