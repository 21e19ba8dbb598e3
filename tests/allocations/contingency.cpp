#include "allocations/calls.h"
#include "contingency/tables.h"

namespace zul::test {
namespace {

constexpr double kCounts[] = {3, 1, 2, 0, 4, 5};
constexpr int kRows[] = {0, 1, 1};
constexpr int kColumns[] = {2, 0, 2};

template <typename... Arguments>
AllocatingCall Make(Arguments... arguments) {
    return {"MakeIContingencyTable", [=](int) {
                int status = -1;
                IContingencyTable* table = MakeIContingencyTable(&status, arguments...);
                const bool isMade = table != nullptr;
                DeleteIContingencyTable(&table);
                return Judge(status == 0 && isMade && table == nullptr, status == kOutOfMemory && !isMade);
            }};
}

// The measures before the failure are taken back.
AllocatingCall Associate() {
    int status = -1;
    static const TablePtr kTable = MakeTable({3, 1, 2, 0, 4, 5}, 2, 3, &status);
    return Filling("GetAssociation", "nnnnnnnnnnnnnnnn", [](double* out) {
        return WithRecord<16>(TableAssociation(), out,
                              [](TableAssociation* r) { return kTable->GetAssociation(r); });
    });
}

}  // namespace

std::vector<AllocatingCall> AllocatingContingency() {
    return {Make(kCounts, 2U, 3U), Make(kRows, kColumns, 3U, 2U, 3U), Associate()};
}

}  // namespace zul::test
