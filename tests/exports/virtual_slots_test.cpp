#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <type_traits>
#include <utility>
#include <vector>

#include "zul/clustering.h"
#include "zul/contingency.h"
#include "zul/sampler.h"

// Hosts were compiled to find virtual operations at certain places of a table: these are frozen. They follow from
// the order of declaration, by the rules of the compiler.
// - g++ and clang, also for Windows: the order of declaration, after two places of the destructor.
// - Microsoft's: one place of the destructor; then those of one name together, where that name is first declared,
//   be it by `using`, and the last declared of them first. (So clang has it in its Microsoft mode, in which this
//   test has passed; that compiler itself has not built it.)
namespace zul {
namespace {

using dax::clustering::DistanceMatrix;
using dax::types::IMissingValueInfo;
using dax::types::IReadableVector;
using dax::types::IRectangularArray;
using dax::types::IVector;
using Slots = std::vector<std::size_t>;

#ifdef _MSC_VER
constexpr bool kMicrosoft = true;
#else
constexpr bool kMicrosoft = false;
#endif
constexpr std::size_t kFirst = kMicrosoft ? 1 : 2;

// An object with a table whose functions note at which place they stand: a call of an operation shows where the
// compiler looks for it.
std::size_t calledSlot;
template <std::size_t slot>
void Note() {
    calledSlot = slot;
}
template <std::size_t... slot>
constexpr std::array<void (*)(), sizeof...(slot)> TableOf(std::index_sequence<slot...>) {
    return {Note<slot>...};
}
constexpr auto kTable = TableOf(std::make_index_sequence<40>());
const auto* const object = kTable.data();

template <typename Class>
Class* volatile objectAs = reinterpret_cast<Class*>(const_cast<void (*const**)()>(&object));

template <typename T>
std::remove_cv_t<std::remove_reference_t<T>> anything{};

// The sanitizer would look for the class.
#ifdef __clang__
#define OBJECT_OF_NO_CLASS __attribute__((no_sanitize("vptr")))
#else
#define OBJECT_OF_NO_CLASS
#endif

template <typename Class, typename Result, typename... Parameters>
OBJECT_OF_NO_CLASS std::size_t SlotOf(Result (Class::*operation)(Parameters...)) {
    (objectAs<Class>->*operation)(anything<Parameters>...);
    return calledSlot;
}
template <typename Class, typename Result, typename... Parameters>
OBJECT_OF_NO_CLASS std::size_t SlotOf(Result (Class::*operation)(Parameters...) const) {
    (objectAs<Class>->*operation)(anything<Parameters>...);
    return calledSlot;
}

template <typename... Operations>
Slots SlotsOf(Operations... operations) {
    return {SlotOf(operations)...};
}

Slots InOrder(std::size_t first, std::size_t count) {
    Slots slots;
    for (std::size_t i = 0; i < count; ++i)
        slots.push_back(first + i);
    return slots;
}

class HostMatrix : public DistanceMatrix {
public:
    int RowCountImpl() const override { return 0; }
    double GetImpl(int, int) const override { return 0; }
    void SetImpl(int, int, double) override {}
    dax::types::StatlibraryErrorCode InitImpl(int, double) override { return dax::types::Success; }
};

TEST(VirtualSlots, AreThoseOfTheFirstVersion) {
    EXPECT_EQ(SlotsOf(&ISampler::Reseed, &ISampler::GetSeed, &ISampler::SampleBeta, &ISampler::SampleCauchy,
                      &ISampler::SampleChiSquare, &ISampler::SampleExponential, &ISampler::SampleF,
                      &ISampler::SampleGamma, &ISampler::SampleLambda, &ISampler::SampleLaplace,
                      &ISampler::SampleLargestExtremeValue, &ISampler::SampleLogistic,
                      &ISampler::SampleLogLogistic, &ISampler::SampleLognormal, &ISampler::SampleMVNormal,
                      &ISampler::SampleNormal, &ISampler::Reserved17, &ISampler::Reserved18,
                      &ISampler::SampleSmallestExtremeValue, &ISampler::SampleT, &ISampler::SampleTriangular,
                      &ISampler::SampleIntegerUniform, &ISampler::SampleUniform, &ISampler::SampleWeibull,
                      &ISampler::SampleBernoulli, &ISampler::SampleBinomial, &ISampler::SampleDiscrete,
                      &ISampler::SampleNegBinomial, &ISampler::SampleHypergeometric,
                      &ISampler::SampleNegBinomialTrials, &ISampler::SamplePoisson, &ISampler::SampleIndices),
              InOrder(kFirst, 32));
    using Cells = IContingencyTable;
    EXPECT_EQ(SlotsOf(&Cells::RowCount, &Cells::ColumnCount, &Cells::Count, &Cells::RowTotal,
                      &Cells::ColumnTotal, &Cells::Total, &Cells::Expected, &Cells::Residual,
                      &Cells::StandardizedResidual, &Cells::AdjustedResidual, &Cells::Contribution,
                      &Cells::GetChiSquare, &Cells::GetAssociation, &Cells::GetFisher, &Cells::GetMcNemar,
                      &Cells::GetLinearByLinear, &Cells::GetTrend, &Cells::GetRisk),
              InOrder(kFirst, 18));
    EXPECT_EQ(SlotsOf(&IMissingValueInfo::IsMissing, &IMissingValueInfo::MissingValue), InOrder(kFirst, 2));
    EXPECT_EQ(
        SlotsOf(&HostMatrix::RowCountImpl, &HostMatrix::GetImpl, &HostMatrix::SetImpl, &HostMatrix::InitImpl),
        InOrder(kFirst, 4));
    using Readable = IReadableVector<double>;
    EXPECT_EQ(SlotsOf(&Readable::SizeImpl, &Readable::AtImpl, &Readable::DataImpl, &Readable::EmptyImpl),
              InOrder(kFirst, 4));
}

TEST(VirtualSlots, OfOverloadsAreThoseOfTheFirstVersion) {
    using Vector = IVector<double>;
    using dax::types::StatlibraryErrorCode;
    using Resize = StatlibraryErrorCode (Vector::*)(std::size_t);
    using ResizeBy = StatlibraryErrorCode (Vector::*)(std::size_t, const double&);
    EXPECT_EQ(SlotsOf(static_cast<double& (Vector::*)(std::size_t)>(&Vector::AtImpl), &Vector::AssignImpl,
                      static_cast<ResizeBy>(&Vector::ResizeImpl), static_cast<Resize>(&Vector::ResizeImpl),
                      &Vector::ReserveImpl, static_cast<double* (Vector::*)()>(&Vector::DataImpl)),
              kMicrosoft ? (Slots{5, 7, 9, 8, 10, 6}) : InOrder(6, 6));
    using Array = IRectangularArray<double>;
    EXPECT_EQ(
        SlotsOf(static_cast<const double& (Array::*)(int, int) const>(&Array::At), &Array::Set,
                &Array::RowCount, &Array::ColumnCount, static_cast<double& (Array::*)(int, int)>(&Array::At)),
        kMicrosoft ? (Slots{2, 3, 4, 5, 1}) : InOrder(2, 5));
}

template <typename... Classes>
OBJECT_OF_NO_CLASS Slots SlotsOfDelete() {
    return {(delete objectAs<Classes>, calledSlot)...};
}

TEST(VirtualSlots, OfDestructorsComeFirst) {
    EXPECT_EQ((SlotsOfDelete<ISampler, IMissingValueInfo, DistanceMatrix, IReadableVector<double>,
                             IVector<double>, IRectangularArray<double>, IContingencyTable>()),
              Slots(7, kFirst - 1));
}

}  // namespace
}  // namespace zul
