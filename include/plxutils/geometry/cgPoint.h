#pragma once

#include <cmath>
#include <cstddef>
#include <memory>

#include "plxutils/export.h"
#include "plxutils/geometry/cgElement.h"
#include "plxutils/geometry/cgVector.h"

/// A position in space that carries num_data attached values (concentrations, heads, materials, ...).
/// Copies are deep. Comparisons look at the coordinates only, exactly, without a tolerance.
class PLX_EXPORT cgPoint : public cgElement {
public:
    /// (0, 0, 0) without data.
    cgPoint() = default;
    /// n values of 0.0; n below 0 counts as 0.
    cgPoint(double x, double y, double z, int n);
    /// n values copied from d; null gives zeros.
    cgPoint(double x, double y, double z, int n, const double* d);
    cgPoint(const cgPoint& p);
    /// Leaves p without data.
    cgPoint(cgPoint&& p) noexcept;
    ~cgPoint() = default;

    /// New coordinates and values; d may point into this point's own data.
    void SetPoint(double x, double y, double z, int n, const double* d);
    /// The result is a copy of this point.
    cgPoint operator=(const cgPoint& p);
    void swap(cgPoint& other) noexcept;

    double x() const { return m_x; }
    double y() const { return m_y; }
    double z() const { return m_z; }
    int num_data() const { return m_num_data; }
    /// num_data values; null when there are none.
    double* data() { return m_data.get(); }
    const double* data() const { return m_data.get(); }
    /// Value i; 0.0 outside [0, num_data).
    double operator[](const int& i) { return i >= 0 && i < m_num_data ? m_data[index(i)] : 0.0; }
    double operator[](const int& i) const { return i >= 0 && i < m_num_data ? m_data[index(i)] : 0.0; }

    /// Moves toward other by the weight w (0 stays, 1 arrives). The values are blended the same way when both
    /// have the same number of them, and stay as they are otherwise.
    void AvgWithPoint(cgPoint& other, double w);
    /// Prints "Point: [x,y,z-num_data]" and the values on standard output.
    void PrintPoint() const;

    double GetDistance(const cgPoint& p) const override;
    double GetDistance2D(const cgPoint& p) const { return std::sqrt(GetDistance2DSquared(p)); }
    double GetDistanceSquared(const cgPoint& p) const {
        const double dx = m_x - p.m_x, dy = m_y - p.m_y, dz = m_z - p.m_z;
        return dx * dx + dy * dy + dz * dz;
    }
    double GetDistance2DSquared(const cgPoint& p) const {
        const double dx = m_x - p.m_x, dy = m_y - p.m_y;
        return dx * dx + dy * dy;
    }

    /// The point moved by v, with its data.
    cgPoint operator+(const cgVector& v) const;
    cgPoint operator-(const cgVector& v) const;
    cgVector operator+(const cgPoint& p) const { return {m_x + p.m_x, m_y + p.m_y, m_z + p.m_z}; }
    /// The vector from p to this point.
    cgVector operator-(const cgPoint& p) const { return {m_x - p.m_x, m_y - p.m_y, m_z - p.m_z}; }

    bool operator==(const cgPoint& p) const { return m_x == p.m_x && m_y == p.m_y && m_z == p.m_z; }
    bool operator!=(const cgPoint& p) const { return !(*this == p); }
    /// The first coordinate in which the two differ decides.
    bool operator<(const cgPoint& p) const {
        if (m_x != p.m_x) return m_x < p.m_x;
        return m_y != p.m_y ? m_y < p.m_y : m_z < p.m_z;
    }
    bool operator>(const cgPoint& p) const { return p < *this; }
    bool operator<=(const cgPoint& p) const { return *this < p || *this == p; }
    bool operator>=(const cgPoint& p) const { return p < *this || *this == p; }
    /// -1, 0 or 1 by x, then y, then z.
    int ptCompare(const cgPoint& p) const;
    /// -1, 0 or 1 by x, y, z, the number of values, then the values firstData to lastData (inclusive), each
    /// within its tolerance (a half-width; the edges of the band count as equal).
    ///
    /// @param dataTol  tolerance of each value, indexed like the data up to min(num_data - 1, lastData);
    ///                 null means exact.
    int ptCompareWithData(const cgPoint& p, int firstData, int lastData, double tolX, double tolY,
                          double tolZ, double* dataTol) const;
    /// True when value `index` of this point is below that of p; false when either has none at that index.
    bool dataLessThan(cgPoint& p, const int& index);

private:
    static std::size_t index(int i) { return static_cast<std::size_t>(i); }

    double m_x = 0.0;
    double m_y = 0.0;
    double m_z = 0.0;
    int m_num_data = 0;
    std::unique_ptr<double[]> m_data;
};

inline void swap(cgPoint& a, cgPoint& b) noexcept { a.swap(b); }
