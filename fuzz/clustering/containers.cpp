// The containers of the clustering functions.
#include <algorithm>
#include <memory>
#include <vector>

#include "fuzz/clustering/parts.h"
#include "fuzz/support/values.h"
#include "zul/clustering.h"

namespace zul::fuzz {

using dax::clustering::DistanceMatrix;
using dax::clustering::MakeDistanceMatrix;
using dax::types::IVector;
using dax::types::StatlibraryErrorCode;

// The library's matrix against a table of what was set.
void MatrixElements(Input& input) {
    const int n = static_cast<int>(input.Choice(9)) - 1;
    const std::unique_ptr<DistanceMatrix> matrix(MakeDistanceMatrix(n));
    Expect((matrix != nullptr) == (n >= 0), "MakeDistanceMatrix()");
    if (matrix == nullptr) return;
    int size = n;
    std::vector<double> expected(64, 0.0);
    const auto at = [&](int i, int j) -> double& {
        return expected[static_cast<std::size_t>(std::max(i, j)) * 8 +
                        static_cast<std::size_t>(std::min(i, j))];
    };
    for (int operation = 0; operation < 40; ++operation) {
        const auto number = [&] {
            return input.Byte() < 240 ? static_cast<int>(input.Choice(9)) - 1 : input.Integer();
        };
        const int i = number();
        const int j = number();
        const bool isInside = i >= 0 && j >= 0 && i < size && j < size;
        const double value = AnyReal(input);
        if (input.Byte() < 8) {
            const int objects = static_cast<int>(input.Choice(10)) - 1;
            StatlibraryErrorCode status = dax::types::Failure;
            Run("Init", [&] { status = matrix->Init(objects, value); });
            Expect((status == dax::types::Success) == (objects >= 0), "Init()");
            size = std::max(objects, 0);
            expected.assign(81, value);
            if (size > 8) return;
            continue;
        }
        double read = 0;
        Run("Set", [&] {
            matrix->Set(i, j, value);
            read = (*matrix)(j, i);
        });
        if (isInside) at(i, j) = value;
        Expect(isInside ? Same(read, value) : read != read, "an element of the matrix");
        Expect(matrix->RowCount() == n, "RowCount()");
    }
    for (int i = 0; i < size; ++i)
        for (int j = 0; j <= i; ++j)
            Expect(Same((*matrix)(i, j), at(i, j)), "another element of the matrix");
}

// The library's vector against the standard one.
void Vectors(Input& input) {
    const std::size_t n = input.Choice(9);
    const double first = AnyReal(input);
    const std::unique_ptr<IVector<double>> vector(dax::types::MakeIVectorDouble(n, first));
    std::vector<double> expected(n, first);
    for (int operation = 0; operation < 20; ++operation) {
        const std::size_t size = input.Choice(20);
        const std::size_t element = expected.empty() ? 0 : input.Choice(expected.size());
        const double any = AnyReal(input);
        const bool isOwn = !expected.empty() && input.Flag();
        const double value = isOwn ? expected[element] : any;
        const double& given = isOwn ? vector->AtImpl(element) : any;
        StatlibraryErrorCode status = dax::types::Failure;
        const std::size_t kind = input.Choice(5);
        Run("vector", [&] {
            status = kind == 0   ? vector->AssignImpl(size, given)
                     : kind == 1 ? vector->ResizeImpl(size, given)
                     : kind == 2 ? vector->ResizeImpl(size)
                     : kind == 3 ? vector->ReserveImpl(size * 10)
                                 : dax::types::Success;
            if (kind == 4 && !expected.empty()) vector->AtImpl(element) = any;
        });
        if (kind == 0) expected.assign(size, value);
        if (kind == 1) expected.resize(size, value);
        if (kind == 2) expected.resize(size);
        if (kind == 4 && !expected.empty()) expected[element] = any;
        const bool isSame = status == dax::types::Success && vector->size() == expected.size() &&
                            vector->EmptyImpl() == expected.empty() &&
                            std::equal(expected.begin(), expected.end(), vector->DataImpl(), SameBits);
        Expect(isSame, "the vector differs");
    }
}

}  // namespace zul::fuzz
