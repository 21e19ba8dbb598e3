// The exported distribution functions, p-values and critical values.
#include <vector>

#include "distributions/families.h"
#include "fuzz/support/check.h"
#include "fuzz/support/input.h"

namespace zul::fuzz {
namespace {

double Argument(test::Type type, Input& input) {
    switch (type) {
        case test::Type::Flag:
            return input.Flag() ? 1 : 0;
        case test::Type::Alternative:
            return static_cast<double>(input.Choice(5)) - 2;
        case test::Type::Integer:
            return input.Integer();
        default:
            return input.Real();
    }
}

void CallOne(const test::Family& family, Input& input) {
    const test::Function& function = *family.Functions()[input.Choice(3)];
    std::vector<double> arguments;
    for (const test::Type type : function.types)
        arguments.push_back(Argument(type, input));
    Checked(
        family.bare ? Mode::Bare : Mode::Framed, [&] { function.call(arguments); },
        [&] { return function.name; });
}

}  // namespace
}  // namespace zul::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace zul;
    fuzz::Input input(data, size);
    const auto& families = test::Families();
    fuzz::CallOne(families[input.Choice(families.size())], input);
    return 0;
}
