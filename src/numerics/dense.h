// Small dense matrices and the Cholesky factor. Whole numbers of rows and columns; every loop is in order, so that
// results are the same everywhere.
// Source: G. H. Golub and C. F. Van Loan, Matrix Computations, 4th ed., 2013, 3.1, 3.5 and 4.2.
#pragma once

#include <algorithm>
#include <cstddef>
#include <limits>
#include <memory>

#include "elementary/logarithm.h"
#include "elementary/root.h"

namespace zul::numerics {

// Zeros, as many as asked for. A number that no memory holds throws std::bad_alloc.
template <typename T>
class DenseValues {
public:
    explicit DenseValues(std::size_t count) : values_(count == 0 ? nullptr : new T[count]()) {}
    T* Data() { return values_.get(); }
    const T* Data() const { return values_.get(); }

private:
    std::unique_ptr<T[]> values_;
};

// The number of values of a triangle with its diagonal. size < 2^32, so that nothing overflows.
constexpr std::size_t TriangleSize(std::size_t size) {
    return size % 2 == 0 ? size / 2 * (size + 1) : (size + 1) / 2 * size;
}

// Rows and columns, row by row.
template <typename T>
class matrix {  // NOLINT(readability-identifier-naming): as the matrices of its kind
public:
    matrix() : matrix(0, 0) {}
    matrix(std::size_t rows, std::size_t columns) : rows_(rows), columns_(columns), values_(rows * columns) {}
    // Zeros, whatever stood there.
    void Resize(std::size_t rows, std::size_t columns) { *this = matrix(rows, columns); }
    std::size_t Rows() const { return rows_; }
    std::size_t Columns() const { return columns_; }
    T& operator()(std::size_t row, std::size_t column) { return values_.Data()[row * columns_ + column]; }
    const T& operator()(std::size_t row, std::size_t column) const {
        return values_.Data()[row * columns_ + column];
    }

private:
    std::size_t rows_;
    std::size_t columns_;
    DenseValues<T> values_;
};

// An upper triangle, packed by rows: its elements are those with row <= column.
template <typename T>
class UTmatrix {
public:
    explicit UTmatrix(std::size_t size = 0) : size_(size), values_(TriangleSize(size)) {}
    void Resize(std::size_t size) { *this = UTmatrix(size); }
    std::size_t Size() const { return size_; }
    T& operator()(std::size_t row, std::size_t column) { return values_.Data()[Place(row, column)]; }
    const T& operator()(std::size_t row, std::size_t column) const {
        return values_.Data()[Place(row, column)];
    }
    const T* Data() const { return values_.Data(); }

private:
    std::size_t Place(std::size_t row, std::size_t column) const {
        return row * size_ - TriangleSize(row) + column;
    }
    std::size_t size_;
    DenseValues<T> values_;
};

// A symmetric matrix, packed as its upper triangle: (row, column) and (column, row) are one element.
template <typename T>
class Smatrix {
public:
    explicit Smatrix(std::size_t size = 0) : triangle_(size) {}
    void Resize(std::size_t size) { triangle_.Resize(size); }
    std::size_t Size() const { return triangle_.Size(); }
    T& operator()(std::size_t row, std::size_t column) {
        return row <= column ? triangle_(row, column) : triangle_(column, row);
    }
    const T& operator()(std::size_t row, std::size_t column) const {
        return row <= column ? triangle_(row, column) : triangle_(column, row);
    }

private:
    UTmatrix<T> triangle_;
};

// a b.
template <typename T>
matrix<T> Product(const matrix<T>& a, const matrix<T>& b) {
    matrix<T> product(a.Rows(), b.Columns());
    for (std::size_t i = 0; i < a.Rows(); ++i)
        for (std::size_t k = 0; k < a.Columns(); ++k)
            for (std::size_t j = 0; j < b.Columns(); ++j)
                product(i, j) += a(i, k) * b(k, j);
    return product;
}

// a' a.
template <typename T>
Smatrix<T> TransposeProduct(const matrix<T>& a) {
    Smatrix<T> product(a.Columns());
    for (std::size_t k = 0; k < a.Rows(); ++k)
        for (std::size_t i = 0; i < a.Columns(); ++i)
            for (std::size_t j = i; j < a.Columns(); ++j)
                product(i, j) += a(k, i) * a(k, j);
    return product;
}

// The inner product of two columns as far as the rows above an end, in their order.
template <typename T>
T ColumnProduct(const UTmatrix<T>& u, std::size_t i, std::size_t j, std::size_t end) {
    const T* const values = u.Data();
    std::size_t row = 0;  // its place less its number
    T sum = 0;
    for (std::size_t k = 0; k < end; ++k) {
        sum += values[row + i] * values[row + j];
        row += u.Size() - k - 1;
    }
    return sum;
}

// The factor u of a = u' u. False, and no factor, at the first pivot that is not above the rounding of the largest
// element of the diagonal: an indefinite or a singular matrix, or NaN.
template <typename T>
bool Factor(const Smatrix<T>& a, UTmatrix<T>& u) {
    const std::size_t n = a.Size();
    u.Resize(n);
    T largest = 0;
    for (std::size_t i = 0; i < n; ++i)
        largest = std::max(largest, a(i, i));
    const T least = static_cast<T>(n) * std::numeric_limits<T>::epsilon() * largest;
    for (std::size_t i = 0; i < n; ++i) {
        const T pivot = a(i, i) - ColumnProduct(u, i, i, i);
        if (!(pivot > least)) return false;
        u(i, i) = elementary::Sqrt(pivot);
        for (std::size_t j = i + 1; j < n; ++j)
            u(i, j) = (a(i, j) - ColumnProduct(u, i, j, i)) / u(i, i);
    }
    return true;
}

// x, in place of b, with u' x = b.
template <typename T>
void SolveTransposed(const UTmatrix<T>& u, T* b) {
    for (std::size_t i = 0; i < u.Size(); ++i) {
        for (std::size_t k = 0; k < i; ++k)
            b[i] -= u(k, i) * b[k];
        b[i] /= u(i, i);
    }
}

// x, in place of b, with u x = b.
template <typename T>
void Solve(const UTmatrix<T>& u, T* b) {
    for (std::size_t i = u.Size(); i-- > 0;) {
        for (std::size_t k = i + 1; k < u.Size(); ++k)
            b[i] -= u(i, k) * b[k];
        b[i] /= u(i, i);
    }
}

// The inverse of u' u.
template <typename T>
Smatrix<T> Inverse(const UTmatrix<T>& u) {
    const std::size_t n = u.Size();
    Smatrix<T> inverse(n);
    matrix<T> column(n, 1);
    for (std::size_t j = 0; j < n; ++j) {
        column.Resize(n, 1);
        column(j, 0) = 1;
        SolveTransposed(u, &column(0, 0));
        Solve(u, &column(0, 0));
        for (std::size_t i = 0; i <= j; ++i)
            inverse(i, j) = column(i, 0);
    }
    return inverse;
}

// The logarithm of the determinant of u' u.
inline double LogDeterminant(const UTmatrix<double>& u) {
    double sum = 0;
    for (std::size_t i = 0; i < u.Size(); ++i)
        sum += elementary::Log(u(i, i));
    return 2 * sum;
}

// An estimate of the reciprocal condition number of u' u, never below it but for rounding: the square of the
// smallest element of the diagonal over the largest one. None: 1.
template <typename T>
T ReciprocalCondition(const UTmatrix<T>& u) {
    if (u.Size() == 0) return 1;
    T smallest = u(0, 0);
    T largest = u(0, 0);
    for (std::size_t i = 1; i < u.Size(); ++i) {
        smallest = std::min(smallest, u(i, i));
        largest = std::max(largest, u(i, i));
    }
    const T ratio = smallest / largest;
    return ratio * ratio;
}

}  // namespace zul::numerics
