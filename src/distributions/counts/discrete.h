// The kernels of the discrete distribution that the caller gives as a table; the exports run without the call
// frame. Each kernel is built once per call, which allocates: std::bad_alloc may leave the constructor.
#pragma once

#include <vector>

namespace zul::kernels {

// An ordered table with unique keys: of several pairs with the same key the first counts. A NaN, which has no
// place in an order, is left out.
class KeyTable {
public:
    struct Entry {
        double key;
        double value;
    };
    KeyTable(const double* keys, const double* values, int count);
    bool IsEmpty() const { return entries_.empty(); }
    const Entry* begin() const { return entries_.data(); }
    const Entry* end() const { return entries_.data() + entries_.size(); }
    // The first entry with a key >= key, or end().
    const Entry* LowerBound(double key) const;

private:
    std::vector<Entry> entries_;
};

// The probability of x, 0 when x is not in the table.
class DiscretePdfKernel {
public:
    DiscretePdfKernel(const double* values, const double* probabilities, int n)
        : table_(values, probabilities, n) {}
    double operator()(double x) const;

private:
    KeyTable table_;
};

// The cumulative probability of the largest value <= x, 0 below the first value and 1 above the last. The
// upper tail is 1 minus the cumulative probability of the value before x, 1 up to the first value and 0 above
// the last. NaN for an empty table or a NaN x.
class DiscreteCdfKernel {
public:
    DiscreteCdfKernel(const double* values, const double* cumulative, int n, bool upper)
        : table_(values, cumulative, n), upper_(upper) {}
    double operator()(double x) const;

private:
    KeyTable table_;
    bool upper_;
};

// The value of the first cumulative probability >= p, and the number 1 when there is none. NaN for an empty
// table or a NaN p.
class DiscreteInvCdfKernel {
public:
    DiscreteInvCdfKernel(const double* values, const double* cumulative, int n)
        : table_(cumulative, values, n) {}
    double operator()(double p) const;

private:
    KeyTable table_;
};

}  // namespace zul::kernels
