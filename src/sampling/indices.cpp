#include "sampling/indices.h"

#include <memory>
#include <new>
#include <numeric>

namespace zul::sampling {
namespace {

// The conversion rounds down.
unsigned IndexBelow(unsigned end, double u) {
    return static_cast<unsigned>(u * end);
}

}  // namespace

void DrawIndices(objects::UniformSource* source, unsigned* out, unsigned population, unsigned count) {
    for (unsigned i = 0; i < count; ++i)
        out[i] = IndexBelow(population, source->Next());
}

bool DrawIndicesWithoutReplacement(objects::UniformSource* source, unsigned* out, unsigned population,
                                   unsigned count) {
    const std::unique_ptr<unsigned[]> pool(new (std::nothrow) unsigned[population]);
    if (!pool) return false;
    std::iota(pool.get(), pool.get() + population, 0U);
    for (unsigned i = 0; i < count; ++i) {
        const unsigned left = population - i;
        const unsigned index = IndexBelow(left, source->Next());
        out[i] = pool[index];
        pool[index] = pool[left - 1];
    }
    return true;
}

}  // namespace zul::sampling
