// Every exported function on wild arguments: it returns, or throws a documented exception, and soon.
// ZUL_FUZZ_CALLS is the number of calls of each function.
#include <gtest/gtest.h>
#include <time.h>
#ifndef _WIN32
#include <sys/time.h>
#endif

#include <algorithm>
#include <array>
#include <climits>
#include <cmath>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <limits>
#include <sstream>
#include <stdexcept>
#include <string>
#include <typeinfo>
#include <vector>

#include "distributions/families.h"
#include "support/float_mode.h"
#include "support/wild_arguments.h"
#include "zul/frame.h"

namespace zul {
namespace {

using test::Function;
using test::Type;

constexpr double kNA = 1.23456e30;
#ifdef ZUL_TEST_SANITIZED
constexpr double kLimit = 1;  // seconds of one call
#else
constexpr double kLimit = 0.05;
#endif

int Calls() {
    const char* calls = std::getenv("ZUL_FUZZ_CALLS");
    return calls == nullptr ? 2000 : static_cast<int>(std::strtol(calls, nullptr, 10));
}

double ThreadSeconds() {
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

std::string Call(const Function& function, const std::vector<double>& arguments) {
    std::ostringstream text;
    text.precision(17);
    text << function.name << "(";
    for (std::size_t i = 0; i < arguments.size(); ++i)
        text << (i == 0 ? "" : ", ") << arguments[i];
    text << ")";
    return text.str();
}

// What is running, for the message of a crash or of a call without end.
const Function* current = nullptr;
const std::vector<double>* currentArguments = nullptr;

void Die(int signal) {
    std::fprintf(stderr, "signal %d in %s\n", signal, Call(*current, *currentArguments).c_str());
    std::_Exit(1);
}

#ifdef _WIN32
// Without timers and signals the test program ends at a crash, and a call without end at ctest's limit.
constexpr std::array kSignals = {SIGABRT};
void SetTimer(int) {}
#else
#ifdef ZUL_TEST_SANITIZED
constexpr std::array kSignals = {SIGVTALRM, SIGABRT};
#else
constexpr std::array kSignals = {SIGVTALRM, SIGABRT, SIGSEGV};
#endif
// Raises SIGVTALRM after some seconds of computing; 0: never.
void SetTimer(int seconds) {
    const itimerval limit{{}, {seconds, 0}};
    setitimer(ITIMER_VIRTUAL, &limit, nullptr);
}
#endif

// A function and arguments that it is made for.
struct Subject {
    const Function* function;
    bool bare;
    std::vector<std::vector<double>> ordinary;
};

std::vector<Subject> SubjectsOf(const test::Family& family) {
    std::vector<Subject> subjects;
    for (const Function* function : family.Functions())
        subjects.push_back({function, family.bare, {}});
    for (const test::Parameters& parameters : family.parameters) {
        const test::Distribution d = family.With(parameters);
        for (const test::Applied& f : d.Functions()) {
            for (const double p : {1e-6, 0.3, 0.5, 0.999}) {
                std::vector<double> arguments = {f.function == &family.invCdf ? p : d.quantile(p)};
                arguments.insert(arguments.end(), f.parameters.begin(), f.parameters.end());
                std::ranges::find(subjects, f.function, &Subject::function)->ordinary.push_back(arguments);
            }
        }
    }
    return subjects;
}

std::vector<Subject> Subjects(const std::string& family) {
    for (const test::Family& candidate : test::Families())
        if (candidate.name == family) return SubjectsOf(candidate);
    std::vector<Subject> subjects;
    for (const auto& [function, arguments] : test::Statistics())
        subjects.push_back({&function, function.name == "Psi", {arguments}});
    return subjects;
}

class Fuzzer {
public:
    explicit Fuzzer(const std::string& name) : wild_(std::hash<std::string>()(name)) {}

    double Real() {
        constexpr std::array kBad = {kNA, -kNA, std::numeric_limits<double>::quiet_NaN(),
                                     std::numeric_limits<double>::infinity(),
                                     -std::numeric_limits<double>::infinity()};
        const double kind = wild_.Uniform();
        if (kind < 0.02) return kBad[Index(kBad.size())];
        if (kind < 0.4) return wild_.OrSpecial(wild_.Fraction());
        if (kind < 0.55) return std::floor(wild_.Power(0, 4));
        const double size = wild_.OrSpecial(wild_.Positive());
        return kind < 0.85 ? size : -size;
    }

    int Integer() {
        constexpr std::array kEnds = {INT_MIN, INT_MIN + 1, -1, 0, 1, 2, INT_MAX - 1, INT_MAX};
        const double kind = wild_.Uniform();
        if (kind < 0.1) return kEnds[Index(kEnds.size())];
        const int size = static_cast<int>(wild_.Power(0, kind < 0.7 ? 3 : 9.33));
        return kind < 0.95 ? size : -size;
    }

    double Argument(Type type) {
        switch (type) {
            case Type::Flag:
                return wild_.Uniform() < 0.5 ? 0 : 1;
            case Type::Alternative:
                return std::floor(wild_.Uniform(-2, 3));
            case Type::Integer:
                return Integer();
            default:
                return Real();
        }
    }

    // Ordinary arguments, all or some of them replaced.
    std::vector<double> Draw(const Subject& subject) {
        std::vector<double> arguments = subject.ordinary[Index(subject.ordinary.size())];
        const double share = wild_.Uniform() < 0.4 ? 1 : wild_.Uniform();
        for (std::size_t i = 0; i < arguments.size(); ++i)
            if (wild_.Uniform() < share) arguments[i] = Argument(subject.function->types[i]);
        return arguments;
    }

private:
    std::size_t Index(std::size_t count) {
        return static_cast<std::size_t>(wild_.Uniform(0, static_cast<double>(count)));
    }
    test::WildArguments wild_;
};

bool IsDocumented(const std::exception& error) {
    return typeid(error) == typeid(std::invalid_argument) || typeid(error) == typeid(std::runtime_error) ||
           typeid(error) == typeid(std::overflow_error);
}

// One more parameter after those before it.
double DrawParameter(test::Domain domain, const std::vector<double>& before, bool whole,
                     test::WildArguments& wild) {
    using enum test::Domain;
    const double size = wild.Uniform() < 0.7 ? wild.Power(-2, 3) : wild.Power(-6, 7);
    const double count = std::floor(wild.Power(0, wild.Uniform() < 0.7 ? 3 : 9));
    switch (domain) {
        case Real:
            return wild.Uniform() < 0.5 ? size : -size;
        case Fraction:
            return wild.Fraction();
        case Noncentrality:
            return wild.Uniform() < 0.5 ? 0 : size;
        case Exponent:
            return wild.Uniform(-5, 10);
        case Above:
            return before.back() + (whole ? count : size);
        case Count:
            return count;
        case UpToFirst:
            return std::floor(before.front() * wild.Uniform());
        default:
            return size;
    }
}

std::vector<double> DrawParameters(const std::vector<test::Domain>& domains, test::WildArguments& wild) {
    std::vector<double> values;
    values.reserve(domains.size());
    for (const test::Domain domain : domains)
        values.push_back(DrawParameter(domain, values, domains.front() == test::Domain::Count, wild));
    return values;
}

// Calls evaluate(), which calls the function with these arguments so many times.
template <typename Evaluate>
void Check(const Subject& subject, const std::vector<double>& arguments, int times, Evaluate evaluate) {
    current = subject.function;
    currentArguments = &arguments;
    SetTimer(10);
    const double start = ThreadSeconds();
    std::string complaint;
    try {
        const double result = evaluate();
        if (!subject.bare && test::ModeWithoutFlags() != test::kDefaultMode)
            complaint = "left the default mode";
        if (!subject.bare && result == kNA) complaint = "gave the missing value";
    } catch (const std::exception& error) {
        const unsigned mode = test::ModeWithoutFlags();
        ResetFpuStates();
        if (subject.bare || mode != test::kTrappingMode || !IsDocumented(error)) complaint = error.what();
    }
    const double seconds = ThreadSeconds() - start;
    if (seconds > kLimit * times) complaint = "took " + std::to_string(seconds) + " s";
    EXPECT_EQ(complaint, "") << Call(*subject.function, arguments);
}

class Fuzz : public testing::TestWithParam<std::string> {
protected:
    void SetUp() override {
        for (const int number : kSignals)
            std::signal(number, Die);
    }
    void TearDown() override { SetTimer(0); }
};

TEST_P(Fuzz, ScalarCallsReturnOrThrow) {
    Fuzzer fuzzer(GetParam());
    for (const Subject& subject : Subjects(GetParam())) {
        for (int i = 0; i < Calls(); ++i) {
            const std::vector<double> arguments = fuzzer.Draw(subject);
            Check(subject, arguments, 1, [&] { return subject.function->call(arguments); });
        }
    }
}

TEST_P(Fuzz, ArrayCallsReturnOrThrow) {
    Fuzzer fuzzer(GetParam());
    for (const Subject& subject : Subjects(GetParam())) {
        if (!subject.function->each) continue;
        for (int i = 0; i < Calls() / 10; ++i) {
            const std::vector<double> arguments = fuzzer.Draw(subject);
            std::array<double, 5> x{};
            std::ranges::generate(x, [&] { return fuzzer.Draw(subject).front(); });
            Check(subject, arguments, static_cast<int>(x.size()), [&] {
                subject.function->each(x.data(), x.data(), x.size(), test::Arguments(arguments).subspan(1));
                return std::ranges::find(x, kNA) == x.end() ? 0 : kNA;
            });
        }
    }
}

// NaN when it throws.
double ValueOf(const test::Applied& f, double x) {
    try {
        return f(x);
    } catch (const std::exception&) {
        ResetFpuStates();
        return std::numeric_limits<double>::quiet_NaN();
    }
}

void CheckTails(const test::Distribution& d, bool discrete, double x) {
    const double lower = ValueOf(d.lower, x);
    const double upper = ValueOf(d.upper, x);
    const double density = ValueOf(d.pdf, x);
    EXPECT_FALSE(density < 0 || lower < 0 || lower > 1 || upper < 0 || upper > 1)
        << d.lower.Name() << " at " << x << ": " << lower << " " << upper << " " << density;
    const double mass = discrete ? density : 0;
    EXPECT_FALSE(std::abs(lower + upper - 1 - mass) > 2e-9 + 1e-5 * mass)
        << d.lower.Name() << " at " << x << ": " << lower << " " << upper << " " << mass;
}

// The lower tail passes p at the quantile, but for the rounding of the quantile and of locations in it.
void CheckQuantile(const test::Distribution& d, bool discrete, double p, double x) {
    double size = std::abs(x);
    for (const double parameter : d.quantile.parameters)
        size = std::max(size, std::abs(parameter));
    const double rounding = size * 1e-15;
    const double below = ValueOf(d.lower, discrete ? x - 1 : x - rounding);
    const double above = ValueOf(d.lower, discrete ? x : x + rounding);
    EXPECT_FALSE(below > p + 2e-9 || above < p - 2e-9)
        << d.quantile.Name() << " at " << p << " = " << x << ": " << below << " " << above;
}

TEST_P(Fuzz, ValidParametersGiveTailsAndQuantiles) {
    test::WildArguments wild(std::hash<std::string>()(GetParam()));
    for (const test::Family& family : test::Families()) {
        // The user's table may be any.
        if (family.name != GetParam() || family.name == "Discrete") continue;
        const bool discrete = family.kind == test::Kind::Discrete;
        for (int i = 0; i < Calls(); ++i) {
            const test::Distribution d = family.With({DrawParameters(family.domains, wild), 0, 0});
            const double p = wild.Fraction();
            const double x = ValueOf(d.quantile, p);
            // Some quantiles lie beyond the range of a double.
            if (std::isfinite(x) && x != 0 && std::abs(x) < 1e29) {
                CheckTails(d, discrete, x);
                CheckQuantile(d, discrete, p, x);
            }
            const double any = wild.Uniform() < 0.5 ? wild.Positive() : -wild.Positive();
            CheckTails(d, discrete, discrete ? std::floor(any) : any);
        }
    }
}

std::vector<std::string> Names() {
    std::vector<std::string> names = {"Statistics"};
    for (const test::Family& family : test::Families())
        names.push_back(family.name);
    return names;
}

INSTANTIATE_TEST_SUITE_P(Families, Fuzz, testing::ValuesIn(Names()),
                         [](const auto& family) { return family.param; });

}  // namespace
}  // namespace zul
