#include "plxutils/geometry/cgPoint.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <utility>

#include "geometry/tolerance_band.h"

namespace {

/// n values of d, zeros when it is null; null when n is 0.
std::unique_ptr<double[]> copy_values(int n, const double* d) {
    if (n < 1) return nullptr;
    const auto count = static_cast<std::size_t>(n);
    if (!d) return std::make_unique<double[]>(count);
    std::unique_ptr<double[]> values(new double[count]);
    std::memcpy(values.get(), d, count * sizeof(double));
    return values;
}

}  // namespace

cgPoint::cgPoint(double x, double y, double z, int n) : cgPoint(x, y, z, n, nullptr) {}

cgPoint::cgPoint(double x, double y, double z, int n, const double* d)
    : m_x(x), m_y(y), m_z(z), m_num_data(std::max(n, 0)), m_data(copy_values(n, d)) {}

cgPoint::cgPoint(const cgPoint& p) : cgPoint(p.m_x, p.m_y, p.m_z, p.m_num_data, p.m_data.get()) {}

cgPoint::cgPoint(cgPoint&& p) noexcept
    : cgElement(p),
      m_x(p.m_x),
      m_y(p.m_y),
      m_z(p.m_z),
      m_num_data(std::exchange(p.m_num_data, 0)),
      m_data(std::move(p.m_data)) {}

void cgPoint::SetPoint(double x, double y, double z, int n, const double* d) {
    m_x = x;
    m_y = y;
    m_z = z;
    n = std::max(n, 0);
    if (n != m_num_data) {
        m_data = copy_values(n, d);
        m_num_data = n;
    } else if (n > 0 && d) {
        std::memmove(m_data.get(), d, static_cast<std::size_t>(n) * sizeof(double));
    } else if (n > 0) {
        std::fill_n(m_data.get(), n, 0.0);
    }
}

cgPoint cgPoint::operator=(const cgPoint& p) {
    if (this != &p) SetPoint(p.m_x, p.m_y, p.m_z, p.m_num_data, p.m_data.get());
    return *this;
}

void cgPoint::swap(cgPoint& other) noexcept {
    std::swap(m_x, other.m_x);
    std::swap(m_y, other.m_y);
    std::swap(m_z, other.m_z);
    std::swap(m_num_data, other.m_num_data);
    m_data.swap(other.m_data);
}

void cgPoint::AvgWithPoint(cgPoint& other, double w) {
    const double rest = 1.0 - w;
    m_x = m_x * rest + other.m_x * w;
    m_y = m_y * rest + other.m_y * w;
    m_z = m_z * rest + other.m_z * w;
    if (m_num_data != other.m_num_data) return;
    for (std::size_t i = 0; i < index(m_num_data); ++i) m_data[i] = m_data[i] * rest + other.m_data[i] * w;
}

void cgPoint::PrintPoint() const {
    std::printf("Point: [%lf,%lf,%lf-%d]", m_x, m_y, m_z, m_num_data);
    for (std::size_t i = 0; i < index(m_num_data); ++i) std::printf(" [%1.1lf]", m_data[i]);
    std::fputs("\n", stdout);
}

double cgPoint::GetDistance(const cgPoint& p) const { return std::sqrt(GetDistanceSquared(p)); }

cgPoint cgPoint::operator+(const cgVector& v) const {
    return {m_x + v.x, m_y + v.y, m_z + v.z, m_num_data, m_data.get()};
}

cgPoint cgPoint::operator-(const cgVector& v) const {
    return {m_x - v.x, m_y - v.y, m_z - v.z, m_num_data, m_data.get()};
}

int cgPoint::ptCompare(const cgPoint& p) const {
    if (m_x != p.m_x) return m_x < p.m_x ? -1 : 1;
    if (m_y != p.m_y) return m_y < p.m_y ? -1 : 1;
    if (m_z != p.m_z) return m_z < p.m_z ? -1 : 1;
    return 0;
}

int cgPoint::ptCompareWithData(const cgPoint& p, int firstData, int lastData, double tolX, double tolY,
                               double tolZ, double* dataTol) const {
    if (const int order = plx::compare_in_band(m_x, p.m_x, tolX)) return order;
    if (const int order = plx::compare_in_band(m_y, p.m_y, tolY)) return order;
    if (const int order = plx::compare_in_band(m_z, p.m_z, tolZ)) return order;
    if (m_num_data != p.m_num_data) return m_num_data < p.m_num_data ? -1 : 1;
    const int last = std::min(m_num_data - 1, lastData);
    for (int i = std::max(firstData, 0); i <= last; ++i) {
        const double tolerance = dataTol ? dataTol[i] : 0.0;
        if (const int order = plx::compare_in_band(m_data[index(i)], p.m_data[index(i)], tolerance))
            return order;
    }
    return 0;
}

bool cgPoint::dataLessThan(cgPoint& p, const int& i) {
    if (i < 0 || i >= m_num_data || i >= p.m_num_data) return false;
    return m_data[index(i)] < p.m_data[index(i)];
}
