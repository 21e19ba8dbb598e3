#include "distributions/counts/discrete.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "distributions/bare_call.h"
#include "frame/missing_value.h"
#include "zul/distributions.h"

namespace zul {
namespace kernels {

using frame::kQuietNaN;

KeyTable::KeyTable(const double* keys, const double* values, int count) {
    entries_.reserve(static_cast<std::size_t>(std::max(count, 0)));
    for (int i = 0; i < count; ++i) {
        if (!std::isnan(keys[i])) entries_.push_back({keys[i], values[i]});
    }
    const auto before = [](const Entry& a, const Entry& b) { return a.key < b.key; };
    // Stable, so that the first of equal keys comes first.
    std::stable_sort(entries_.begin(), entries_.end(), before);
    const auto isRepeated = [](const Entry& a, const Entry& b) { return a.key == b.key; };
    entries_.erase(std::unique(entries_.begin(), entries_.end(), isRepeated), entries_.end());
}

const KeyTable::Entry* KeyTable::LowerBound(double key) const {
    return std::lower_bound(begin(), end(), key, [](const Entry& entry, double k) { return entry.key < k; });
}

double DiscretePdfKernel::operator()(double x) const {
    const KeyTable::Entry* const at = table_.LowerBound(x);
    return at != table_.end() && at->key == x ? at->value : 0;
}

double DiscreteCdfKernel::operator()(double x) const {
    if (table_.IsEmpty() || std::isnan(x)) return kQuietNaN;
    const KeyTable::Entry* const at = table_.LowerBound(x);
    if (at == table_.end()) return upper_ ? 0 : 1;
    const double before = at == table_.begin() ? 0 : at[-1].value;
    if (upper_) return 1 - before;
    return at->key == x ? at->value : before;
}

double DiscreteInvCdfKernel::operator()(double p) const {
    if (table_.IsEmpty() || std::isnan(p)) return kQuietNaN;
    const KeyTable::Entry* const at = table_.LowerBound(p);
    // Deliberate: the number 1, not a value of the table.
    return at != table_.end() ? at->value : 1;
}

}  // namespace kernels

double DiscretePdf(double x, const double* values, const double* probabilities, int n) {
    return kernels::DiscretePdfKernel(values, probabilities, n)(x);
}

double DiscreteCdf(double x, const double* values, const double* cumulative, int n, bool upper) {
    return kernels::DiscreteCdfKernel(values, cumulative, n, upper)(x);
}

double DiscreteInvCdf(double p, const double* values, const double* cumulative, int n) {
    return kernels::DiscreteInvCdfKernel(values, cumulative, n)(p);
}

void DiscretePdf(double* out, const double* in, std::size_t count, const double* values,
                 const double* probabilities, int n) {
    kernels::BareEach(out, in, count, kernels::DiscretePdfKernel(values, probabilities, n));
}

void DiscreteCdf(double* out, const double* in, std::size_t count, const double* values,
                 const double* cumulative, int n, bool upper) {
    kernels::BareEach(out, in, count, kernels::DiscreteCdfKernel(values, cumulative, n, upper));
}

void DiscreteInvCdf(double* out, const double* in, std::size_t count, const double* values,
                    const double* cumulative, int n) {
    kernels::BareEach(out, in, count, kernels::DiscreteInvCdfKernel(values, cumulative, n));
}

}  // namespace zul
