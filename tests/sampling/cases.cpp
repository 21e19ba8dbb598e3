#include <algorithm>
#include <cstdlib>
#include <sstream>

#include "sampling/slots.h"

namespace zul::test {
namespace {

// Those that no branch of a method needs come from the table of the families.
constexpr const char* kCases =
    "Beta 2 3; Beta 20 1.5; Beta 7 7; Beta 0.5 0.7; Beta 0.6 4; Beta 4 0.6; Beta 1 1; Beta 0.02 3; "
    "Cauchy 1 2; ChiSquare 1; ChiSquare 2; ChiSquare 11; Exponential 2 -1; F 3 12; F 1 30; Gamma 0.2 "
    "3 1; Gamma 0.9 1 0; Gamma 1 2 0; Gamma 1.000000001 2 0; Gamma 1.4 1 0; Gamma 3.999 1 0; Gamma 4 "
    "0.5 -2; Gamma 60 1 0; Lambda 0.3 1 2; Lambda -0.2 0 1; Laplace 1 2; LargestExtremeValue 1 2; "
    "Logistic 1 2; LogLogistic 0 0.1 1; Lognormal 0 0.5 1; Normal -3 2; SmallestExtremeValue 1 2; T "
    "10 0; T 1.5 0; T 9 1; Triangular 0 1 4; Triangular 0 4 4; Uniform -2 4; Weibull 2 1 0; "
    "IntegerUniform -2 4; Bernoulli 0.3; Binomial 20 0.3; Binomial 300 0.9; Hypergeometric 50 20 10; "
    "Hypergeometric 12 10 9; NegBinomial 0.3 4; NegBinomial 0.6 1; NegBinomialTrials 1 0.3 4; "
    "NegBinomialTrials 0 0.8 2; Poisson 0.7; Poisson 40; Discrete 1 2 3 4 5 6 9 1 4 0 2 7; Discrete "
    "7 0.1";

}  // namespace

Case ReadCase(const std::string& text) {
    std::istringstream words(text);
    Case read;
    words >> read.slot;
    for (std::string word; words >> word;)
        read.parameters.push_back(std::strtod(word.c_str(), nullptr));
    return read;
}

const std::vector<Case>& Cases() {
    static const std::vector<Case> cases = [] {
        std::vector<Case> all;
        std::istringstream text(kCases);
        for (std::string one; std::getline(text, one, ';');)
            all.push_back(ReadCase(one));
        for (const Family& family : Families()) {
            const std::string& name = family.operation.name;
            if (!name.empty() && std::ranges::find(all, name, &Case::slot) == all.end())
                all.push_back({name, family.parameters.front()});
        }
        return all;
    }();
    return cases;
}

}  // namespace zul::test
