#pragma once

#include <cstddef>
#include <memory>

#include "plxutils/export.h"

/// Dense matrix of doubles of any size, row-major, indices from 0.
///
/// Misuse is never thrown: it prints a fixed message on standard output and goes on with a neutral value.
/// Sizes below 0 count as 0. Zero tests are absolute: an element "is 0" when it rounds to 0 at 8 decimals
/// (4 decimals in the backward pass of set_to_rref), whatever the scale of the matrix.
class PLX_EXPORT VXMatrix {
public:
    /// All elements 0.0; a square matrix starts as the identity.
    VXMatrix(int rows, int cols);
    VXMatrix(const VXMatrix& b);
    ~VXMatrix() = default;
    VXMatrix& operator=(const VXMatrix& b);

    /// Product, rows x b.cols, each element summed in ascending order of the inner index.
    /// Prints a message and returns a copy of this matrix when the inner sizes differ.
    VXMatrix operator*(const VXMatrix& b) const;

    int num_rows() const { return rows; }
    int num_cols() const { return cols; }
    /// The rows*cols elements, row by row; valid until the size changes.
    const double* values() const { return m.get(); }

    /// New size; the common top-left block is kept, new elements are 0.0.
    void reset_dim(int r, int c);
    /// Takes the size r x c and r*c values, row by row. With null values only the size is taken.
    void SetMat(int r, int c, const double* values);
    /// @return 1 after storing; 0 and a message when the index is out of bounds.
    int set_element(int r, int c, double v);
    /// @return the element; 0 and a message when the index is out of bounds.
    double return_elem(int r, int c) const;
    /// @return 1; 0 and a message when the matrix is not square.
    int set_to_identity();

    /// Out of bounds prints a message; nothing changes.
    void swap_rows(int a, int b);
    void swap_columns(int a, int b);
    /// Divides a row by d, which is taken by value because callers pass an element of that very row.
    /// Out of bounds or d exactly 0.0 prints a message; nothing changes.
    void divide_row(int r, double d);

    /// Row echelon form with unit pivots. The first row that is not zero in the column is the pivot row.
    /// @return 1
    int set_to_ref();
    /// Echelon form, then elimination above the diagonal. Pivots off the diagonal are not eliminated, and a
    /// square matrix loses its last diagonal element. A matrix with more rows than columns starts at its
    /// last column.
    /// @return 1
    int set_to_rref();
    /// Inverse by Gauss-Jordan reduction of [A | I]. When A times the result is not the identity at
    /// 8 decimals a warning is printed and the result is returned all the same; at map coordinates the
    /// warning also comes for good inverses.
    VXMatrix inverse() const;
    /// Every element rounded to 8 decimals equals that of the identity; false and a message when not square.
    bool is_identity() const;
    /// Prints the rows on standard output, "%.8lf " per element.
    void display() const;

    /// Eigenvalues and eigenvectors of a symmetric 3x3 matrix by cyclic rotations; this matrix is destroyed.
    ///
    /// @param[out] v  3x3, the eigenvectors as columns.
    /// @param[out] d  3 eigenvalues, unsorted; null does nothing.
    /// Prints a message when 50 sweeps were not enough.
    void jacobi(VXMatrix& v, double* d);

protected:
    /// Unchecked access.
    double& at(int r, int c) { return m[position(r, c)]; }
    double at(int r, int c) const { return m[position(r, c)]; }

    int rows;
    int cols;
    std::unique_ptr<double[]> m;

private:
    struct JacobiState;

    std::size_t position(int r, int c) const {
        return static_cast<std::size_t>(r) * static_cast<std::size_t>(cols) + static_cast<std::size_t>(c);
    }
    std::size_t size() const { return static_cast<std::size_t>(rows) * static_cast<std::size_t>(cols); }
    bool inside(int r, int c) const { return r >= 0 && r < rows && c >= 0 && c < cols; }
    void set_row(int r, const double* values);
    void subtract_row(int target, int source, double factor, int first_column);
    void rot(double s, double tau, int i, int j, int k, int l);
    void jacobi_pair(JacobiState& state, int p, int q);
};
