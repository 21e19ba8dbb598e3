#include "clustering/rows/chunk_bounds.h"

#include <algorithm>
#include <limits>

namespace zul::dax::clustering {
namespace {

constexpr double kUnknown = -std::numeric_limits<double>::infinity();

}  // namespace

void ChunkBounds::Use(std::size_t rows) {
    chunks_ = (rows + kChunk - 1) / kChunk;
    bounds_.assign(rows * chunks_, kUnknown);
}

void ChunkBounds::Forget(std::size_t row) {
    std::fill_n(Row(row), chunks_, kUnknown);
}

}  // namespace zul::dax::clustering
