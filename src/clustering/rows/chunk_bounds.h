#pragma once

#include <cmath>
#include <cstddef>
#include <vector>

namespace zul::dax::clustering {

// For each chunk of each row what is known of its smallest distance: nothing in the chunk is nearer. NaN: nothing is
// in it. A search among the bounds reads one of 64 numbers of a row; they take a 32nd of the memory of the distances.
class ChunkBounds {
public:
    static constexpr std::size_t kChunk = 64;

    bool IsUsed() const { return chunks_ > 0; }
    // The number of chunks of a row.
    std::size_t Chunks() const { return chunks_; }
    // Takes so many rows in use; nothing is known.
    void Use(std::size_t rows);
    double* Row(std::size_t row) { return &bounds_[row * chunks_]; }
    // Nothing is known of a row any more.
    void Forget(std::size_t row);
    // A distance in a row has changed.
    void Include(std::size_t row, std::size_t column, double distance) {
        double& bound = Row(row)[column / kChunk];
        if (distance < bound || std::isnan(bound)) bound = distance;
    }

private:
    std::size_t chunks_ = 0;
    std::vector<double> bounds_;
};

}  // namespace zul::dax::clustering
