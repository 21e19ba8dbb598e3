#include <cstdint>
#include <vector>

#include "clustering/containers/vector.h"
#include "frame/recover.h"
#include "zul/clustering.h"

namespace zul::dax::types {
namespace {

class RectangularArray final : public IRectangularArray<double> {
public:
    RectangularArray(std::uint32_t rows, std::uint32_t columns)
        : rows_(rows, std::vector<double>(columns)), rowCount_(rows), columnCount_(columns) {}

    const double& At(int row, int column) const override { return rows_[Index(row)][Index(column)]; }
    double& At(int row, int column) override { return rows_[Index(row)][Index(column)]; }
    double Set(int row, int column, const double& value) override { return At(row, column) = value; }
    int RowCount() const override { return static_cast<int>(rowCount_); }
    int ColumnCount() const override { return static_cast<int>(columnCount_); }

private:
    static std::size_t Index(int i) { return static_cast<std::size_t>(i); }

    std::vector<std::vector<double>> rows_;
    std::uint32_t rowCount_;
    std::uint32_t columnCount_;
};

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
