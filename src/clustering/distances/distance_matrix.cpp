#include "clustering/distances/distance_matrix.h"

#include <algorithm>

#include "frame/large_pages.h"
#include "frame/missing_value.h"
#include "frame/recover.h"

namespace zul::dax::clustering {
namespace {

// In doubles: memory that the C library gives back when it is freed, so that the hint ends with the matrix.
constexpr std::size_t kManyElements = (std::size_t{32} << 20) / sizeof(double);

// n (n + 1) / 2 copies of a value, for n >= 0.
void FillTriangle(std::vector<double>& storage, int n, double value) {
    const std::size_t size = UpperRowStart(static_cast<std::size_t>(n), static_cast<std::size_t>(n));
    // The old storage goes before the new one comes, so that there is never twice as much.
    if (size > storage.capacity()) storage = std::vector<double>();
    storage.reserve(size);
    if (size > kManyElements) frame::PreferLargePages(storage.data(), size * sizeof(double));
    storage.assign(size, value);
}

}  // namespace

DistanceMatrix::~DistanceMatrix() = default;

int DistanceMatrix::RowCount() const {
    return RowCountImpl();
}

double DistanceMatrix::operator()(int i, int j) const {
    return GetImpl(i, j);
}

// Deliberate: the row count is asked for and not used. Matrices of hosts may count on being asked.
void DistanceMatrix::Set(int i, int j, double value) {
    RowCountImpl();
    SetImpl(i, j, value);
}

StatlibraryErrorCode DistanceMatrix::Init(int n, double value) {
    return InitImpl(n, value);
}

DistanceMatrixImpl::DistanceMatrixImpl(int n) : dimension_(n), rowCount_(n) {
    FillTriangle(storage_, n, 0);
}

int DistanceMatrixImpl::RowCountImpl() const {
    return rowCount_;
}

std::size_t DistanceMatrixImpl::Index(int i, int j) const {
    const auto row = static_cast<std::size_t>(std::min(i, j));
    return UpperRowStart(row, static_cast<std::size_t>(dimension_)) +
           static_cast<std::size_t>(std::max(i, j)) - row;
}

double DistanceMatrixImpl::GetImpl(int i, int j) const {
    return Contains(i, j) ? storage_[Index(i, j)] : frame::kQuietNaN;
}

void DistanceMatrixImpl::SetImpl(int i, int j, double value) {
    if (Contains(i, j)) storage_[Index(i, j)] = value;
}

// Deliberate: the row count stays as it is.
StatlibraryErrorCode DistanceMatrixImpl::InitImpl(int n, double value) {
    dimension_ = 0;
    storage_.clear();
    return frame::OnAnyException(types::Failure, [&] {
        if (n < 0) return types::Failure;
        FillTriangle(storage_, n, value);
        dimension_ = n;
        return types::Success;
    });
}

StatlibraryErrorCode DistanceMatrixImpl::Resize(int n) {
    if (n < 0 || storage_.size() != UpperRowStart(static_cast<std::size_t>(n), static_cast<std::size_t>(n)))
        return Init(n, 0);
    dimension_ = n;
    return types::Success;
}

DistanceMatrix* MakeDistanceMatrix(int n) {
    if (n < 0) return nullptr;
    return frame::OnAnyException<DistanceMatrix*>(nullptr, [&] { return new DistanceMatrixImpl(n); });
}

}  // namespace zul::dax::clustering
