#pragma once

#include <cstddef>
#include <vector>

#include "clustering/rows/row_lanes.h"

namespace zul::dax::clustering {

// For each chunk of each row what is known of its smallest distance: nothing in the chunk is nearer. NaN: nothing is
// in it. A row's distances are those to higher columns. The bounds take a 32nd of the memory of the distances.
//
// Where a row has many chunks, layers are above them, in which each number is the smallest of kChunk of the layer below,
// up to one that is short. So a chunk is found, and its bound is set, in a time that hardly depends on their number.
class ChunkBounds {
public:
    static constexpr unsigned kShift = 6;
    static constexpr std::size_t kChunk = 1 << kShift;

    struct Chunk {
        std::size_t number;
        double bound;
    };

    explicit ChunkBounds(const RowLanes& lanes) : lanes_(lanes) {}
    bool IsUsed() const { return stride_ > 0; }
    // Takes so many rows in use; nothing is known.
    void Use(std::size_t rows, std::size_t columns);
    // Nothing is known of a row any more.
    void Forget(std::size_t row);
    // A distance in a row has changed.
    void Include(std::size_t row, std::size_t column, double distance);
    // Of the chunks with the smallest bound of a row the highest. False: nothing is in any chunk.
    bool FindNearest(std::size_t row, Chunk& chunk) const;
    // The smallest distance in a chunk is this.
    void Set(std::size_t row, Chunk chunk);
    // What is known of a row, and of a column in it, will be needed soon.
    void Prefetch(std::size_t row, std::size_t column) const;

private:
    // A search of so many numbers takes about as long as one of kChunk of them twice.
    static constexpr std::size_t kTop = 256;
    struct Layer {
        std::size_t start;  // in what is kept of a row
        std::size_t count;  // of its numbers, of which each is of 2^shift columns
        unsigned shift;
    };

    const RowLanes& lanes_;
    std::vector<Layer> layers_;
    std::size_t stride_ = 0;
    std::vector<double> bounds_;
};

}  // namespace zul::dax::clustering
