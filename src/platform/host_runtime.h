#pragma once

namespace plx::platform {

/// Services of the host program, under the names by which it knows them. A host that runs the library fills
/// what it has; an empty entry means that there is no such service.
///
/// Matrices are 4x4, 16 floats row by row; an output may be one of the inputs.
struct HostRuntime {
    /// The host's search paths: their number, and one of them by its index from 0 (null counts as empty).
    int (*OMget_num_paths)() = nullptr;
    const char* (*OMget_path_index)(int index) = nullptr;

    void (*MATmat4_identity)(float* matrix) = nullptr;
    /// Follows the matrix by a translation.
    void (*MATmat4_translate)(float* matrix, float x, float y, float z) = nullptr;
    void (*MATmat4_multiply)(const float* a, const float* b, float* product) = nullptr;
    void (*MATmat4_inverse)(const float* matrix, float* inverse) = nullptr;
    /// A point as row vector (x, y, z, 1) times the matrix.
    void (*MATvec3_mat4_multiply)(const float* point, const float* matrix, float* product) = nullptr;
};

/// The table of this process.
HostRuntime& host_runtime();

}  // namespace plx::platform
