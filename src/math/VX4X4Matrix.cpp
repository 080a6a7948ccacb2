#include "plxutils/math/VX4X4Matrix.h"

#include <cmath>
#include <initializer_list>

#include "plxutils/core/VXNumeric.h"

namespace {

struct Element {
    int row;
    int col;
    double value;
};

VXMatrix elementary(std::initializer_list<Element> elements) {
    VXMatrix t(4, 4);
    for (const Element& e : elements) t.set_element(e.row, e.col, e.value);
    return t;
}

double radians(double degrees) { return degrees * PI() / 180.0; }

}  // namespace

VX4X4Matrix::VX4X4Matrix() : VXMatrix(4, 4), identityFlag(true), xylateOnlyFlag(true) {}

VX4X4Matrix::VX4X4Matrix(const float* values) : VX4X4Matrix() { SetMat(values); }

VX4X4Matrix::VX4X4Matrix(const VX4X4Matrix& b)
    : VXMatrix(b),
      invMat(b.invMat ? std::make_unique<VXMatrix>(*b.invMat) : nullptr),
      identityFlag(b.identityFlag),
      xylateOnlyFlag(b.xylateOnlyFlag) {}

VX4X4Matrix::VX4X4Matrix(const VXMatrix& b) : VXMatrix(b) { update(); }

VX4X4Matrix& VX4X4Matrix::operator=(const VX4X4Matrix& b) {
    if (this == &b) return *this;
    VXMatrix::operator=(b);
    invMat = b.invMat ? std::make_unique<VXMatrix>(*b.invMat) : nullptr;
    identityFlag = b.identityFlag;
    xylateOnlyFlag = b.xylateOnlyFlag;
    return *this;
}

VX4X4Matrix VX4X4Matrix::operator*(const VX4X4Matrix& b) const { return VX4X4Matrix(VXMatrix::operator*(b)); }

void VX4X4Matrix::update() {
    invMat.reset();
    identityFlag = is_identity();
    xylateOnlyFlag = is_4x4();
    for (int r = 0; r < 4 && xylateOnlyFlag; ++r) {
        for (int c = 0; c < 4; ++c) {
            const bool free = c == 3 && r < 2;
            if (!free && at(r, c) != (r == c ? 1.0 : 0.0)) xylateOnlyFlag = false;
        }
    }
}

void VX4X4Matrix::fTod(const float* in, double* out) {
    for (int i = 0; i < 16; ++i) out[i] = static_cast<double>(in[i]);
}

void VX4X4Matrix::load_identity() {
    VXMatrix::reset_dim(4, 4);
    VXMatrix::set_to_identity();
}

int VX4X4Matrix::set_element(int row, int col, double value) {
    const int stored = VXMatrix::set_element(row, col, value);
    update();
    return stored;
}

void VX4X4Matrix::SetMat(const float* values) {
    if (values) {
        double wide[16];
        fTod(values, wide);
        VXMatrix::SetMat(4, 4, wide);
    } else {
        load_identity();
    }
    update();
}

void VX4X4Matrix::MatToFloat(float* out) const {
    if (!out) return;
    for (int i = 0; i < 16; ++i) out[i] = static_cast<float>(return_elem(i / 4, i % 4));
}

void VX4X4Matrix::display() const { VXMatrix::display(); }

int VX4X4Matrix::set_to_rref() {
    const int result = VXMatrix::set_to_rref();
    update();
    return result;
}

int VX4X4Matrix::set_to_identity() {
    const int result = VXMatrix::set_to_identity();
    update();
    return result;
}

void VX4X4Matrix::swap_rows(int a, int b) {
    VXMatrix::swap_rows(a, b);
    update();
}

void VX4X4Matrix::swap_columns(int a, int b) {
    VXMatrix::swap_columns(a, b);
    update();
}

void VX4X4Matrix::divide_row(int r, double d) {
    VXMatrix::divide_row(r, d);
    update();
}

void VX4X4Matrix::MakeIdentity() {
    load_identity();
    identityFlag = true;
    xylateOnlyFlag = true;
}

void VX4X4Matrix::SetXYTranslates(double tx, double ty) {
    load_identity();
    at(0, 3) = tx;
    at(1, 3) = ty;
    update();
}

void VX4X4Matrix::premultiply(const VXMatrix& t) {
    VXMatrix::operator=(t** this);
    update();
}

void VX4X4Matrix::Translate(double tx, double ty, double tz) {
    premultiply(elementary({{0, 3, tx}, {1, 3, ty}, {2, 3, tz}}));
}

void VX4X4Matrix::Scale(double sx, double sy, double sz) {
    premultiply(elementary({{0, 0, sx}, {1, 1, sy}, {2, 2, sz}}));
}

void VX4X4Matrix::XRot(double a) { XRot(std::sin(a), std::cos(a)); }
void VX4X4Matrix::YRot(double a) { YRot(std::sin(a), std::cos(a)); }
void VX4X4Matrix::ZRot(double a) { ZRot(std::sin(a), std::cos(a)); }

void VX4X4Matrix::XRot(double s, double c) {
    premultiply(elementary({{1, 1, c}, {1, 2, -s}, {2, 1, s}, {2, 2, c}}));
}

void VX4X4Matrix::YRot(double s, double c) {
    premultiply(elementary({{0, 0, c}, {0, 2, s}, {2, 0, -s}, {2, 2, c}}));
}

void VX4X4Matrix::ZRot(double s, double c) {
    premultiply(elementary({{0, 0, c}, {0, 1, -s}, {1, 0, s}, {1, 1, c}}));
}

void VX4X4Matrix::XShear(double a) { premultiply(elementary({{0, 1, 1.0 / std::tan(a)}})); }
void VX4X4Matrix::YShear(double a) { premultiply(elementary({{1, 0, 1.0 / std::tan(a)}})); }
// Z is sheared by Y and not by X on purpose; stored views were built with it.
void VX4X4Matrix::ZShear(double a) { premultiply(elementary({{2, 1, 1.0 / std::tan(a)}})); }

void VX4X4Matrix::XRotDeg(double deg) { XRot(radians(deg)); }
void VX4X4Matrix::YRotDeg(double deg) { YRot(radians(deg)); }
void VX4X4Matrix::ZRotDeg(double deg) { ZRot(radians(deg)); }
void VX4X4Matrix::XShearDeg(double deg) { XShear(radians(deg)); }
void VX4X4Matrix::YShearDeg(double deg) { YShear(radians(deg)); }
void VX4X4Matrix::ZShearDeg(double deg) { ZShear(radians(deg)); }

void VX4X4Matrix::fill_inverse() { invMat = std::make_unique<VXMatrix>(VXMatrix::inverse()); }

VX4X4Matrix VX4X4Matrix::Inverse() {
    if (!is_4x4()) return VX4X4Matrix();
    if (identityFlag) return *this;
    if (!invMat) {
        if (xylateOnlyFlag) {
            invMat = std::make_unique<VXMatrix>(*this);
            invMat->set_element(0, 3, -at(0, 3));
            invMat->set_element(1, 3, -at(1, 3));
        } else {
            fill_inverse();
        }
    }
    return VX4X4Matrix(*invMat);
}

VX4X4Matrix VX4X4Matrix::Transpose() {
    VX4X4Matrix result;
    if (!is_4x4()) return result;
    for (int r = 0; r < 4; ++r) {
        for (int c = 0; c < 4; ++c) result.at(c, r) = at(r, c);
    }
    result.update();
    return result;
}
