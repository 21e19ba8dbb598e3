// The operations of one level: included by the source of each. All is in an unnamed namespace or inlined, so that a
// source that is compiled for a better processor keeps its code to itself.
#pragma once

#include <cstddef>
#include <cstring>
#include <limits>

#include "clustering/rows/row_lanes.h"
#include "elementary/core/value.h"
#include "processor/prefetch.h"

#if defined(__clang__)
#pragma clang fp exceptions(ignore)
#endif

namespace zul::dax::clustering {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
// The distances in a column lie in another page each; their latency halves the speed unless they are asked for so
// many rows in advance. It changed little between 24 and 48.
constexpr std::ptrdiff_t kRowsAhead = 32;

using elementary::kLanesOf;
using elementary::Load;
using elementary::Store;

// The first where it is less: never NaN unless the second is.
template <class D>
ZUL_INLINE D Smaller(D a, D b) {
    return a < b ? a : b;
}

// Of so many lanes, in pairs: a chain of them would take longer than many a row.
template <std::size_t kFirst, std::size_t kCount, class D>
ZUL_INLINE double SmallestLane(D lanes) {
    if constexpr (kCount == 1)
        return lanes[kFirst];
    else
        return Smaller(SmallestLane<kFirst, kCount / 2>(lanes),
                       SmallestLane<kFirst + kCount / 2, kCount / 2>(lanes));
}

// The smallest of value(i) for i < n; value(i, D()) is a vector of them.
template <class D, class Value>
ZUL_INLINE double SmallestOf(Value value, std::size_t n) {
    double least = kInfinity;
    std::size_t i = 0;
    if constexpr (kLanesOf < D >> 1) {
        constexpr std::size_t kChains = 4;
        D leasts[kChains];
        for (D& lanes : leasts)
            lanes = kInfinity - D{};
        for (; n - i >= kChains * kLanesOf<D>; i += kChains * kLanesOf<D>)
            for (std::size_t chain = 0; chain < kChains; ++chain)
                leasts[chain] = Smaller(value(i + chain * kLanesOf<D>, D()), leasts[chain]);
        for (; n - i >= kLanesOf<D>; i += kLanesOf<D>)
            leasts[0] = Smaller(value(i, D()), leasts[0]);
        const D lanes = Smaller(Smaller(leasts[0], leasts[1]), Smaller(leasts[2], leasts[3]));
        least = SmallestLane<0, kLanesOf<D>>(lanes);
    }
    for (; i < n; ++i)
        least = Smaller(value(i, double()), least);
    return least;
}

template <class D>
double Smallest(const double* values, std::size_t n) {
    return SmallestOf<D>([=](std::size_t i, auto lanes) { return Load<decltype(lanes)>(values + i); }, n);
}

template <class D>
double SmallestPresent(const double* values, const double* absent, std::size_t n) {
    return SmallestOf<D>(
        [=](std::size_t i, auto lanes) {
            return Load<decltype(lanes)>(values + i) + Load<decltype(lanes)>(absent + i);
        },
        n);
}

#if defined(__GNUC__)
// Vectors of int of so many bytes.
template <std::size_t kBytes>
struct NumbersOf;

template <>
struct NumbersOf<16> {
    using Type = int __attribute__((vector_size(16)));
};

template <>
struct NumbersOf<32> {
    using Type = int __attribute__((vector_size(32)));
};

template <>
struct NumbersOf<64> {
    using Type = int __attribute__((vector_size(64)));
};

template <class Mask>
ZUL_INLINE bool IsAnySet(Mask mask) {
#if defined(__AVX512F__)
    if constexpr (sizeof mask == sizeof(__m512i)) {
        const auto bits = __builtin_bit_cast(__m512i, mask);
        return _mm512_test_epi64_mask(bits, bits) != 0;
    }
#endif
#if defined(__AVX2__)
    if constexpr (sizeof mask == sizeof(__m256i)) {
        const auto bits = __builtin_bit_cast(__m256i, mask);
        return _mm256_testz_si256(bits, bits) == 0;
    }
#endif
    if constexpr (sizeof mask == sizeof(__m128i))
        return _mm_movemask_epi8(__builtin_bit_cast(__m128i, mask)) != 0;
    return false;
}
#endif

template <class D>
std::size_t FindEqual(const double* values, double value, std::size_t from, std::size_t n) {
    std::size_t i = from;
#if defined(__GNUC__)
    if constexpr (kLanesOf < D >> 1) {
        const D wanted = value - D{};
        while (n - i >= kLanesOf<D> && !IsAnySet(Load<D>(values + i) == wanted))
            i += kLanesOf<D>;
    }
#endif
    while (i < n && values[i] != value)
        ++i;
    return i;
}

// One more than the last place i < n for which value(i) is the wanted one; value(i, D()) is a vector of them.
template <class D, class Value>
ZUL_INLINE std::size_t EndOfLastOf(Value value, double wanted, std::size_t n) {
    std::size_t end = n;
#if defined(__GNUC__)
    if constexpr (kLanesOf < D >> 1) {
        const D all = wanted - D{};
        while (end >= kLanesOf<D> && !IsAnySet(value(end - kLanesOf<D>, D()) == all))
            end -= kLanesOf<D>;
    }
#endif
    while (end > 0 && value(end - 1, double()) != wanted)
        --end;
    return end;
}

template <class D>
LastPlace LastSmallest(const double* values, std::size_t n) {
    const auto value = [=](std::size_t i, auto lanes) { return Load<decltype(lanes)>(values + i); };
    const double smallest = SmallestOf<D>(value, n);
    return {smallest, EndOfLastOf<D>(value, smallest, n)};
}

template <class D>
LastPlace LastSmallestPresent(const double* values, const double* absent, std::size_t n) {
    const auto value = [=](std::size_t i, auto lanes) {
        return Load<decltype(lanes)>(values + i) + Load<decltype(lanes)>(absent + i);
    };
    const double smallest = SmallestOf<D>(value, n);
    return {smallest, EndOfLastOf<D>(value, smallest, n)};
}

template <class D>
std::size_t FindNotAbove(const double* values, const double* bounds, double limit, std::size_t from,
                         std::size_t n) {
    std::size_t i = from;
#if defined(__GNUC__)
    if constexpr (kLanesOf < D >> 1) {
        const D limits = limit - D{};
        for (; n - i >= kLanesOf<D>; i += kLanesOf<D>) {
            const D lanes = Load<D>(values + i);
            if (IsAnySet((lanes <= limits) | (lanes <= Load<D>(bounds + i)))) break;
        }
    }
#endif
    while (i < n && !(values[i] <= limit || values[i] <= bounds[i]))
        ++i;
    return i;
}

template <bool kBelow>
ZUL_INLINE bool IsConcerned(const RowChanges& changes, std::size_t i) {
    const Links links = changes.links[i];
    return changes.updated[i] < changes.distances[i] ||
           (kBelow && changes.updated[i] <= changes.outcomes[i]) || links.neighbour == changes.joined ||
           links.neighbour == changes.absorbed || links.outcome == changes.joined ||
           links.outcome == changes.absorbed;
}

template <class D, bool kBelow>
std::size_t FindChange(const RowChanges& changes, std::size_t from, std::size_t end) {
    std::size_t i = from;
#if defined(__GNUC__)
    if constexpr (kLanesOf < D >> 1) {
        using Numbers = typename NumbersOf<sizeof(D)>::Type;
        static_assert(sizeof(Links) == sizeof(double));
        const Numbers joined = changes.joined - Numbers{};
        const Numbers absorbed = changes.absorbed - Numbers{};
        for (; end - i >= kLanesOf<D>; i += kLanesOf<D>) {
            const D updated = Load<D>(changes.updated + i);
            auto isNear = updated < Load<D>(changes.distances + i);
            if constexpr (kBelow) isNear |= updated <= Load<D>(changes.outcomes + i);
            Numbers links;
            std::memcpy(&links, changes.links + i, sizeof links);
            const auto isLinked = (links == joined) | (links == absorbed);
            if (IsAnySet(isNear | __builtin_bit_cast(decltype(isNear), isLinked))) break;
        }
    }
#endif
    while (i < end && !IsConcerned<kBelow>(changes, i))
        ++i;
    return i;
}

// In the rows before the joined cluster's and those before the absorbed one's the distances lie in columns.
template <class D, class Formula>
void Update(const RowUpdate& update) {
    const Cluster joined = update.joined;
    const double height = joined.height;
    const int lo = joined.number;
    const int hi = update.absorbed;
    double* const loRow = update.rows[lo];
    const double* const hiRow = update.rows[hi];
    const int* const last = update.active + update.activeCount - 1;
    const auto rowAhead = [&](const int* next) {
        return update.rows[last - next > kRowsAhead ? next[kRowsAhead] : *last];
    };
    const int* next = update.active;
    for (; *next != lo; ++next) {
        const double* const ahead = rowAhead(next);
        processor::Prefetch(ahead + lo);
        processor::Prefetch(ahead + hi);
        double* const row = update.rows[*next];
        row[lo] = Formula::Update(height, row[lo], row[hi], joined, update.sizes[*next]);
        update.updated[*next] = row[lo];
    }
    for (++next; *next != hi; ++next) {
        processor::Prefetch(rowAhead(next) + hi);
        const double toAbsorbed = update.rows[*next][hi];
        loRow[*next] = Formula::Update(height, loRow[*next], toAbsorbed, joined, update.sizes[*next]);
        update.updated[*next] = loRow[*next];
    }
    const auto updateRow = [&](std::size_t i, auto lanes) {
        using Lanes = decltype(lanes);
        const Lanes distance = Formula::Update(height, Load<Lanes>(loRow + i), Load<Lanes>(hiRow + i), joined,
                                               Load<Lanes>(update.sizes + i));
        Store(loRow + i, distance);
        Store(update.updated + i, distance + Load<Lanes>(update.absent + i));
    };
    std::size_t i = static_cast<std::size_t>(hi) + 1;
    for (; update.positions - i >= kLanesOf<D>; i += kLanesOf<D>)
        updateRow(i, D());
    for (; i < update.positions; ++i)
        updateRow(i, double());
}

// Source: R. Sibson, SLINK: an optimally efficient algorithm for the single-link cluster method, The Computer
// Journal 16, 1973. The objects come in descending order, so that the last of a cluster is the lowest.
bool AddObject(const PointerRepresentation& to, std::size_t a, double* nearest) {
    double* const heights = to.heights;
    int* const lower = to.lower;
    const int self = static_cast<int>(a);
    heights[a] = kInfinity;
    lower[a] = self;
    bool isNumber = true;
    for (std::size_t i = to.objects - 1; i > a; --i) {
        const double height = heights[i];
        const double distance = nearest[i];
        const int next = lower[i];
        const bool isNearer = distance <= height;
        const double other = isNearer ? height : distance;
        nearest[next] = Smaller(other, nearest[next]);
        heights[i] = isNearer ? distance : height;
        lower[i] = isNearer ? self : next;
        isNumber &= distance == distance;
    }
    for (std::size_t i = to.objects - 1; i > a; --i) {
        const int next = lower[i];
        const int isLower =
            -static_cast<int>(heights[i] >= heights[next]);  // without a branch: it has no pattern
        lower[i] = (self & isLower) | (next & ~isLower);
    }
    return isNumber;
}

template <class D>
constexpr RowLanes MakeRowLanes() {
    return {Smallest<D>,
            SmallestPresent<D>,
            FindEqual<D>,
            LastSmallest<D>,
            LastSmallestPresent<D>,
            FindNotAbove<D>,
            FindChange<D, false>,
            FindChange<D, true>,
            AddObject,
            {Update<D, AverageLinkage>, Update<D, SingleLinkage>, Update<D, CompleteLinkage>,
             Update<D, WardLinkage>, Update<D, McQuittyLinkage>, Update<D, MedianLinkage>,
             Update<D, CentroidLinkage>}};
}

}  // namespace
}  // namespace zul::dax::clustering
