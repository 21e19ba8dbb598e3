// Two and several variances, and the studentized range and modulus beneath them: statuses, bounds in order, p-values in
// [0, 1], nothing left of what the record held, critical values that have their level.
#include "zul/variances.h"

#include "fuzz/support/tests.h"
#include "zul/multiple_comparison.h"

namespace zul::fuzz {
namespace {

void TwoSamples(Input& input) {
    const Settings s{input};
    const Data x = Sample(input);
    const Data y = Sample(input);
    v0::TwoVariance r;
    SetDoubles(&r, 0, Data(14, kUnwritten));
    const bool withData = input.Byte() < 200;
    r.n1 = CountOf(x, withData, input);
    r.n2 = CountOf(y, withData, input);
    r.variance1 = withData ? kUnwritten : AnyReal(input);
    r.variance2 = withData ? kUnwritten : AnyReal(input);
    const auto name = [&] {
        return Call("RunTwoVariance", r.n1, r.n2, r.variance1, r.variance2, s.confidence);
    };
    v0::TwoVariance plain = r;
    const auto run = [&](auto* record, auto... test) {
        StatusOf(Mode::Bare, name, {0, 30000, 30007, s.HasType() ? 0 : 30002}, [&] {
            return withData ? RunTwoVariance(record, x.data(), y.data(), s.confidence, s.type, test...)
                            : RunTwoVariance(record, s.confidence, s.type, test...);
        });
    };
    run(&plain);
    run(&r, s.alternative, s.hypothesised);
    ExpectWithin(name, 0, 1, {r.fPValue, r.bonettPValue, r.levenePValue});
    const bool inOrder =
        !(r.fLowerBound > r.fUpperBound || r.bonettLowerBound > r.bonettUpperBound * (1 + 1e-12));
    Expect(inOrder || !(s.confidence >= 0.5 && s.confidence < 1), name, "the bounds are not in order");
    Expect(Same(plain.fLowerBound, r.fLowerBound), name, "the overloads differ");
    Expect(Same(plain.bonettUpperBound, r.bonettUpperBound), name, "the overloads differ");
}

void SeveralSamples(Input& input) {
    constexpr std::size_t kMostGroups = 6;
    const double confidence = Confidence(input);
    std::array<unsigned, kMostGroups> sizes{};
    Data data;
    v0::VariancesTest r;
    SetDoubles(&r, 0, Data(9, kUnwritten));
    r.groups = input.Choice<unsigned>(kMostGroups + 1);
    for (unsigned i = 0; i < r.groups; ++i) {
        sizes[i] = input.Choice<unsigned>(16) + (input.Byte() < 200 ? 2 : 0);
        data = Joined({data, Values(input, sizes[i])});
    }
    Data out(5 * kMostGroups, kUnwritten);
    const auto array = [&out](std::size_t k) { return out.data() + k * kMostGroups; };
    const auto name = [&] { return Call("RunVariancesTest", r.groups, confidence); };
    StatusOf(Mode::Bare, name, {0, 30000, 30007}, [&] {
        return RunVariancesTest(&r, data.data(), sizes.data(), confidence, array(0), array(1), array(2),
                                array(3), array(4));
    });
    ExpectWithin(name, 0, 1, {r.comparisonPValue, r.levenePValue, r.bartlettPValue});
    for (std::size_t i = 0; i < out.size(); ++i)
        Expect(IsWritten(out[i]) == (i % kMostGroups < r.groups), name, "the length of an array");
    for (std::size_t i = 0; i < r.groups; ++i)
        Expect(!(array(1)[i] > array(2)[i]), name, "the bounds are not in order");
}

// The level returns from its critical value, but for the rounding of tails next to 1.
void CriticalValue(Input& input) {
    const bool isRange = input.Flag();
    const double alpha = input.Fraction();
    const auto groups = static_cast<unsigned>(input.Byte() < 230 ? 1 + input.Choice(200) : input.Word());
    const double df = input.Byte() < 200 ? input.Size() : AnyReal(input);
    const auto critical = isRange ? GetStudentizedRangeCritValue : GetStudentizedMaximumModulusCritValue;
    const auto tail = isRange ? GetStudentizedRangePValue : GetStudentizedMaximumModulusPValue;
    double x = kUnwritten;
    double p = kUnwritten;
    const auto name = [&] { return Call("critical value", isRange, alpha, groups, df, x, p); };
    const auto run = [&] { p = tail(x = critical(alpha, groups, df), groups, df); };
    Expect(Checked(Mode::Framed, name, run), name, "threw");
    const bool isDomain = alpha > 0 && alpha < 1 && df > 0 && groups > (isRange ? 1U : 0U);
    Expect(x != x ? !isDomain || df < 0.5 || alpha < 1e-100 : isDomain && x >= 0, name, "value");
    Expect(x != x || alpha < 1e-250 || std::abs(p - alpha) <= 1e-10 * alpha, name, "another level");
}

}  // namespace

void RunInput(Input& input) {
    input.OneOf(std::array{TwoSamples, SeveralSamples, CriticalValue})(input);
}

}  // namespace zul::fuzz
