// Order statistics of all pairs of values without forming all pairs: the averages of the pairs of one sample and the
// differences of two samples. The results are those of sorting the pairs, to the bit, but that a zero is +0.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace zul::hypothesis {

// The pairs of an array in rows and columns, along both of which they ascend since rounding is monotone. Key(i, j) has
// the order of the values of the pairs and Value() makes one of it.

// Pairs i <= j of n sorted values, by their averages.
class Averages {
public:
    Averages(const double* sorted, std::size_t n) : x_(sorted), n_(n) {}
    std::size_t Rows() const { return n_; }
    std::size_t Columns() const { return n_; }
    static std::size_t FirstColumn(std::size_t row) { return row; }
    std::uint64_t Count() const;
    double Key(std::size_t i, std::size_t j) const { return x_[i] + x_[j]; }
    static double Value(double key) { return key / 2; }

private:
    const double* x_;
    std::size_t n_;
};

// The same of huge values, whose sums would overflow: the halves are added.
class AveragesOfHalves : public Averages {
public:
    AveragesOfHalves(const double* sorted, std::size_t n) : Averages(sorted, n), x_(sorted) {}
    double Key(std::size_t i, std::size_t j) const { return x_[i] / 2 + x_[j] / 2; }
    static double Value(double key) { return key; }

private:
    const double* x_;
};

// The differences x - y of all pairs of two sorted samples.
class Differences {
public:
    Differences(const double* sortedX, std::size_t countX, const double* sortedY, std::size_t countY)
        : x_(sortedX), lastY_(sortedY + countY - 1), rows_(countX), columns_(countY) {}
    std::size_t Rows() const { return rows_; }
    std::size_t Columns() const { return columns_; }
    static std::size_t FirstColumn(std::size_t) { return 0; }
    std::uint64_t Count() const { return std::uint64_t{rows_} * columns_; }
    double Key(std::size_t i, std::size_t j) const { return x_[i] - *(lastY_ - j); }
    static double Value(double key) { return key; }

private:
    const double* x_;
    const double* lastY_;
    std::size_t rows_;
    std::size_t columns_;
};

// Selects by cutting the pairs at trial values, in time proportional to rows and columns for each of them. It supersedes
// pivots that are weighted medians of the rows (D. B. Johnson and T. Mizoguchi, Selecting the K-th element in X + Y and
// X_1 + ... + X_m, 1978).
template <typename Pairs>
class PairSelection {
public:
    // The more room, the fewer cuts. None of the values may be NaN.
    PairSelection(const Pairs& pairs, std::span<double> room);
    // The k-th smallest, k from 1 to the number of pairs.
    double Smallest(std::uint64_t k) { return Result(SmallestKey(k)); }
    double Median();

private:
    // What lies on both sides of a value: the number of pairs not above it, the largest of these, the smallest above.
    struct Cut {
        std::uint64_t count;
        double notAbove;
        double above;
    };
    // Keys that exist and have the one that is sought between them, with the numbers of pairs below and up to them.
    struct Bracket {
        double low;
        double high;
        std::uint64_t below;
        std::uint64_t upTo;
    };
    // Of zeros of both signs +0.
    static double Result(double key) { return Pairs::Value(key) + 0.0; }
    Cut CutAt(double value);
    static void Narrow(const Cut& cut, std::uint64_t k, Bracket* bracket);
    Bracket FirstBracket(std::uint64_t k) const;
    double SmallestKey(std::uint64_t k);
    double SelectCollected(std::uint64_t k, const Bracket& bracket);

    static constexpr std::size_t kKept = 32;

    Pairs pairs_;
    std::span<double> room_;
    std::array<Cut, kKept> cuts_;
    std::size_t kept_ = 0;
};

extern template class PairSelection<Averages>;
extern template class PairSelection<AveragesOfHalves>;
extern template class PairSelection<Differences>;

}  // namespace zul::hypothesis
