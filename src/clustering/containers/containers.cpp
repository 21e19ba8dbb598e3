#include <cstdint>

#include "clustering/containers/rectangular_array.h"
#include "clustering/containers/vector.h"
#include "frame/recover.h"
#include "zul/clustering.h"

namespace zul::dax::types {
namespace {

template <typename T>
IVector<T>* MakeVector(std::size_t n, T value) {
    return frame::OnBadAlloc<IVector<T>*>(nullptr, [&] { return new Vector<T>(n, value); });
}

}  // namespace

IVector<double>* MakeIVectorDouble(std::size_t n, double value) {
    return MakeVector(n, value);
}

IVector<int>* MakeIVectorInt(std::size_t n, int value) {
    return MakeVector(n, value);
}

IRectangularArray<double>* MakeIRectangularArrayDouble(int rows, int columns) {
    if (rows < 0 || columns < 0) return nullptr;
    return frame::OnBadAlloc<IRectangularArray<double>*>(nullptr, [&] {
        return new RectangularArray(static_cast<std::uint32_t>(rows), static_cast<std::uint32_t>(columns));
    });
}

}  // namespace zul::dax::types
