#include "clustering/rows/chunk_bounds.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "frame/missing_value.h"
#include "processor/prefetch.h"

namespace zul::dax::clustering {
namespace {

constexpr double kUnknown = -std::numeric_limits<double>::infinity();

}  // namespace

void ChunkBounds::Use(std::size_t rows, std::size_t columns) {
    layers_.clear();
    stride_ = 0;
    for (unsigned shift = kShift;; shift += kShift) {
        const std::size_t count = ((columns - 1) >> shift) + 1;
        layers_.push_back({stride_, count, shift});
        stride_ += count;
        if (count <= kTop) break;
    }
    bounds_.assign(rows * stride_, frame::kQuietNaN);
    for (std::size_t row = 0; row < rows; ++row)
        Forget(row);
}

void ChunkBounds::Forget(std::size_t row) {
    for (const Layer& layer : layers_) {
        const std::size_t first = std::min((row + 1) >> layer.shift, layer.count);
        std::fill_n(&bounds_[row * stride_ + layer.start] + first, layer.count - first, kUnknown);
    }
}

void ChunkBounds::Include(std::size_t row, std::size_t column, double distance) {
    for (const Layer& layer : layers_) {
        double& bound = bounds_[row * stride_ + layer.start + (column >> layer.shift)];
        // What is not below this one is not below those of the layers above either.
        if (!(distance < bound || std::isnan(bound))) return;
        bound = distance;
    }
}

bool ChunkBounds::FindNearest(std::size_t row, Chunk& chunk) const {
    const double* const bounds = &bounds_[row * stride_];
    std::size_t begin = 0;
    std::size_t end = kTop;
    for (auto layer = layers_.rbegin(); layer != layers_.rend(); ++layer) {
        const std::size_t count = std::min(end, layer->count) - begin;
        const LastPlace smallest = lanes_.lastSmallest(bounds + layer->start + begin, count);
        if (smallest.end == 0) return false;
        chunk = {begin + smallest.end - 1, smallest.value};
        begin = chunk.number * kChunk;
        end = begin + kChunk;
    }
    return true;
}

void ChunkBounds::Set(std::size_t row, Chunk chunk) {
    double* const bounds = &bounds_[row * stride_];
    bounds[chunk.number] = chunk.bound;
    std::size_t changed = chunk.number;
    for (std::size_t above = 1; above < layers_.size(); ++above) {
        const Layer& layer = layers_[above - 1];
        const std::size_t begin = changed / kChunk * kChunk;
        const LastPlace smallest =
            lanes_.lastSmallest(bounds + layer.start + begin, std::min(kChunk, layer.count - begin));
        changed /= kChunk;
        bounds[layers_[above].start + changed] = smallest.end > 0 ? smallest.value : frame::kQuietNaN;
    }
}

void ChunkBounds::Prefetch(std::size_t row, std::size_t column) const {
    constexpr std::size_t kLine = 64 / sizeof(double);
    for (const Layer& layer : layers_) {
        const std::size_t begin = (column >> layer.shift) / kChunk * kChunk;
        const double* const bounds = &bounds_[row * stride_ + layer.start];
        for (std::size_t i = begin; i < std::min(begin + kChunk, layer.count); i += kLine)
            processor::Prefetch(bounds + i);
    }
}

}  // namespace zul::dax::clustering
