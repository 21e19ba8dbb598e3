// Writes docs/accuracy.md: the worst relative error of each numerical routine over its reference table, and of
// each exported distribution function beside the tolerance of the row.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <functional>
#include <iterator>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "distributions/families.h"
#include "frame/error_state.h"
#include "frame/guarded.h"
#include "numerics/beta/beta_quantiles.h"
#include "numerics/beta/incomplete_beta.h"
#include "numerics/beta/noncentral_beta.h"
#include "numerics/beta/noncentral_t.h"
#include "numerics/beta/student_t.h"
#include "numerics/counts/binomial.h"
#include "numerics/counts/hypergeometric.h"
#include "numerics/counts/poisson.h"
#include "numerics/elementary.h"
#include "numerics/gamma/gamma_quantiles.h"
#include "numerics/gamma/gamma_tails.h"
#include "numerics/gamma/incomplete_gamma.h"
#include "numerics/gamma/noncentral_gamma.h"
#include "numerics/limits.h"
#include "numerics/normal.h"
#include "support/reference_table.h"

namespace zul::test {
namespace {

using namespace numerics;

// A row of a table with its numbers by heading.
class Cells {
public:
    Cells(const Row& heading, const Row& row) : heading_(heading), row_(row) {}
    const std::string& Text(const std::string& name) const {
        const auto column = std::find(heading_.begin(), heading_.end(), name) - heading_.begin();
        return row_.at(static_cast<std::size_t>(column));
    }
    double operator[](const std::string& name) const { return Number(Text(name)); }
    // The first cells, as they stand in the report.
    std::string Arguments(std::size_t count) const {
        std::string text;
        for (std::size_t i = 0; i < count; ++i) {
            char number[32];
            std::snprintf(number, sizeof number, "%.6g", Number(row_.at(i)));
            text += (i == 0 ? "" : ", ") + heading_.at(i) + " = " + number;
        }
        return text;
    }

private:
    const Row& heading_;
    const Row& row_;
};

struct Worst {
    double error = 0;
    int rows = 0;
    std::string where;
};

// The worst errors of one table, by routine and quantity.
class Errors {
public:
    void Add(const std::string& quantity, double actual, double expected, const std::string& where) {
        if (expected != 0) AddError(quantity, std::abs(actual / expected - 1), where);
    }
    void AddError(const std::string& quantity, double error, const std::string& where) {
        Worst& worst = worst_[quantity];
        ++worst.rows;
        if (error < worst.error && !worst.where.empty()) return;
        worst.error = error;
        worst.where = where;
    }
    void Print() const {
        for (const auto& [quantity, worst] : worst_) {
            std::printf("| %s | %d | %.1e | %s |\n", quantity.c_str(), worst.rows, worst.error,
                        worst.where.c_str());
        }
    }

private:
    std::map<std::string, Worst> worst_;
};

struct Table {
    std::string file;
    std::size_t arguments;  // the columns that are arguments
    std::function<void(const Cells&, const std::string& where, Errors&)> evaluate;
};

template <typename Evaluate>
void AddTails(const std::string& routine, const Cells& row, const std::string& where, Errors& errors,
              Evaluate evaluate) {
    double lower = 0;
    double upper = 0;
    frame::ErrorState().level = frame::LevelOk;
    evaluate(&lower, &upper);
    if (frame::ErrorState().level == frame::LevelUnderflow) return;
    errors.Add(routine + ", lower tail", lower, row["lower"], where);
    errors.Add(routine + ", upper tail", upper, row["upper"], where);
}

void Elementary(const Cells& row, const std::string&, Errors& errors) {
    static const std::map<std::string, double (*)(double)> functions = {{"GammaFn", GammaFn},
                                                                        {"LogGammaFn", LogGammaFn},
                                                                        {"StirlingTerm", StirlingTerm},
                                                                        {"Log1p", Log1p},
                                                                        {"Expm1", Expm1},
                                                                        {"Erfc", Erfc},
                                                                        {"LogGamma", frame::LogGamma}};
    errors.Add(row.Text("function"), functions.at(row.Text("function"))(row["argument"]), row["expected"],
               "x = " + row.Text("argument"));
}

void GammaQuantile(const Cells& row, const std::string&, Errors& errors) {
    const bool lower = row.Text("tail") == "L";
    double x = 0;
    (lower ? gamma_lower_quant : gamma_upper_quant)(row["probability"], row["a"], &x);
    errors.Add(lower ? "gamma_lower_quant" : "gamma_upper_quant", x, row["quantile"],
               "a = " + row.Text("a") + ", tail = " + row.Text("probability"));
}

void BetaQuantile(const Cells& row, const std::string& where, Errors& errors) {
    const bool upper = row["upper"] != 0;
    double x = 0;
    double complement = 0;
    (upper ? beta_upper_quant : beta_lower_quant)(row["tail"], BetaShapes(row["a"], row["b"]), &x,
                                                  &complement);
    const std::string routine = upper ? "beta_upper_quant" : "beta_lower_quant";
    errors.Add(routine + ", x", x, row["quantile"], where);
    errors.Add(routine + ", 1 - x", complement, row["complement"], where);
}

// From the tails away from the centre, where the quantile is well conditioned.
void TQuantile(const Cells& row, const std::string& where, Errors& errors) {
    const bool upper = row["t"] > 0;
    const double tail = row[upper ? "upper" : "lower"];
    if (tail > 0.45 || tail < 1e-280) return;
    double t = 0;
    (upper ? t_upper_qt : t_lower_qt)(tail, row["df"], &t);
    if (frame::ErrorState().Failed()) return;
    errors.Add(upper ? "t_upper_qt" : "t_lower_qt", t, row["t"], where);
}

const std::vector<Table>& Tables() {
    static const std::vector<Table> tables = {
        {"gamma_elementary", 1, Elementary},
        {"gamma_pair", 2,
         [](const Cells& row, const std::string& where, Errors& errors) {
             AddTails("gamma_df", row, where, errors, [&](double* lower, double* upper) {
                 gamma_df(row["x"], row["a"], lower, upper, nullptr);
             });
         }},
        {"gamma_tails", 2,
         [](const Cells& row, const std::string& where, Errors& errors) {
             AddTails("FineGammaTails", row, where, errors, [&](double* lower, double* upper) {
                 GammaTails tails{};
                 if (!FineGammaTails(row["x"], row["a"], &tails)) return;
                 *lower = tails.lower;
                 *upper = tails.upper;
             });
         }},
        {"gamma_quantiles", 1, GammaQuantile},
        {"beta_pair", 3,
         [](const Cells& row, const std::string& where, Errors& errors) {
             if (row["level"] != 0) return;
             AddTails("beta_df", row, where, errors, [&](double* lower, double* upper) {
                 beta_df(row["x"], BetaShapes(row["a"], row["b"]), lower, upper, nullptr);
             });
         }},
        {"beta_quantiles", 3, BetaQuantile},
        {"student_t", 2,
         [](const Cells& row, const std::string& where, Errors& errors) {
             AddTails("t_df", row, where, errors,
                      [&](double* lower, double* upper) { t_df(row["t"], row["df"], lower, upper); });
             TQuantile(row, where, errors);
         }},
        {"noncentral_chi2", 3,
         [](const Cells& row, const std::string& where, Errors& errors) {
             AddTails("chi2_ncdf", row, where, errors, [&](double* lower, double* upper) {
                 chi2_ncdf(row["x"], row["df"], row["noncentrality"], lower, upper);
             });
         }},
        {"noncentral_beta", 4,
         [](const Cells& row, const std::string& where, Errors& errors) {
             AddTails("beta_ncdf", row, where, errors, [&](double* lower, double* upper) {
                 beta_ncdf(row["x"], BetaShapes(row["a"], row["b"]), row["noncentrality"], lower, upper);
             });
         }},
        {"noncentral_t", 3,
         [](const Cells& row, const std::string& where, Errors& errors) {
             AddTails("t_ncdf", row, where, errors, [&](double* lower, double* upper) {
                 t_ncdf(row["t"], row["df"], row["delta"], lower, upper);
             });
         }},
        {"binomial", 3,
         [](const Cells& row, const std::string& where, Errors& errors) {
             AddTails("binomial_df", row, where, errors, [&](double* lower, double* upper) {
                 binomial_df(row["k"], BinomialShape(row["n"], row["probability"]), lower, upper);
             });
         }},
        {"poisson", 2,
         [](const Cells& row, const std::string& where, Errors& errors) {
             AddTails("poisson_df", row, where, errors,
                      [&](double* lower, double* upper) { poisson_df(row["k"], row["mean"], lower, upper); });
         }},
        {"hypergeometric", 4,
         [](const Cells& row, const std::string& where, Errors& errors) {
             AddTails("hypergeo_df", row, where, errors, [&](double* lower, double* upper) {
                 double mass = 0;
                 hypergeo_df(row["k"], HypergeometricShape(row["N"], row["M"], row["n"]), lower, upper,
                             &mass);
             });
         }},
    };
    return tables;
}

void Report(const Table& table) {
    const std::string file = "numerics/" + table.file + ".csv";
    const Row heading = ReadHeading(file, ',');
    Errors errors;
    for (const Row& cells : ReadTable(file, ',')) {
        const Cells row(heading, cells);
        const bool named = table.file == "gamma_elementary";
        table.evaluate(row, named ? "" : row.Arguments(table.arguments), errors);
    }
    std::printf("\n### %s\n\n| routine | rows | worst relative error | at |\n|---|---|---|---|\n",
                table.file.c_str());
    errors.Print();
}

// The worst relative error of each function, and the largest part of the tolerance of its row that an error takes:
// where a result is ill-conditioned the row says so.
void ReportExports() {
    struct WorstOfFunction {
        Worst error;
        double partOfTolerance = 0;
    };
    std::map<std::string, WorstOfFunction> functions;
    for (const std::string& table : ReferenceTables()) {
        for (const Row& row : ReadTable("distributions/" + table + ".csv", ';')) {
            const double expected = Number(row.at(2));
            const std::vector<double> arguments = Numbers(row.at(1));
            const double actual = FunctionOf(row.at(0), arguments.size()).call(arguments);
            const double error = actual == expected || expected == 0 ? 0 : std::abs(actual / expected - 1);
            WorstOfFunction& function =
                functions[row.at(0) + (table == "upper_quantiles" ? ", upper tail" : "")];
            ++function.error.rows;
            if (error > 0)  // some have to be equal
                function.partOfTolerance = std::max(function.partOfTolerance, error / Number(row.at(3)));
            if (error < function.error.error) continue;
            function.error.error = error;
            function.error.where = row.at(1);
        }
    }
    std::printf(
        "\n## Distributions\n\n| function | rows | worst relative error | at | part of its tolerance |\n"
        "|---|---|---|---|---|\n");
    for (const auto& [name, worst] : functions)
        std::printf("| %s | %d | %.1e | %s | %.1e |\n", name.c_str(), worst.error.rows, worst.error.error,
                    worst.error.where.c_str(), worst.partOfTolerance);
}

// The tolerances of the tables whose rows name a routine, a field and the relative tolerance of its value.
struct ToleranceTable {
    std::string file;
    char separator;
    std::size_t routine, tolerance;
};

struct Tolerances {
    int values = 0;                 // those with the tolerance 0, statuses and counts, among them
    std::multiset<double> inOrder;  // the others
};

void ReportTolerances() {
    static const std::map<std::string, std::string> functions = {
        {"sum", "GetSum"},
        {"mean", "GetSampleMean"},
        {"variance", "GetSampleVariance"},
        {"variance_given_mean", "GetSampleVariance, with a given mean"},
        {"skewness", "GetKelSkewnessAndKurtosis, skewness"},
        {"kurtosis", "GetKelSkewnessAndKurtosis, kurtosis"},
        {"geometric_mean", "GetGeometricMean"},
        {"kel_trimmed_mean", "GetKelTrimmedMean"},
        {"trimmed_mean", "GetTrimmedMean"},
        {"quantile", "GetSampleQuantiles"},
        {"five", "GetKelFiveNumberSummary"},
        {"boxplot", "RunKelBoxplotHelper"},
        {"covariance", "GetCovariance"},
        {"pearson", "GetPearsonCorrelation"},
        {"spearman", "GetSpearmanCorrelation"},
        {"variance_x", "GetCovariance"},
        {"variance_y", "GetCovariance"},
    };
    std::map<std::string, Tolerances> tolerances;
    for (const ToleranceTable& table : {ToleranceTable{"descriptive/univariate", ',', 1, 5},
                                        {"descriptive/bivariate", ',', 2, 5},
                                        {"hypothesis/variances", ';', 1, 6},
                                        {"hypothesis/rank_tests", ';', 1, 6},
                                        {"hypothesis/rank_tests_edges", ';', 1, 6},
                                        {"contingency/tables", ';', 1, 6},
                                        {"fitting/fits", ';', 1, 6},
                                        {"fitting/prob_plots", ';', 1, 6},
                                        {"fitting/curves", ';', 1, 6}}) {
        for (const Row& row : ReadTable(table.file + ".csv", table.separator)) {
            const std::string& routine = row.at(table.routine);
            const auto name = functions.find(routine);
            Tolerances& function =
                tolerances[name == functions.end() ? routine.substr(0, routine.find('.')) : name->second];
            ++function.values;
            if (const double tolerance = Number(row.at(table.tolerance)); tolerance > 0)
                function.inOrder.insert(tolerance);
        }
    }
    std::printf(
        "\n## Statistics and tests\n\n| function | values | tolerance of the middle one | largest "
        "tolerance |\n|---|---|---|---|\n");
    for (const auto& [name, function] : tolerances) {
        const auto& inOrder = function.inOrder;
        if (inOrder.empty()) continue;
        std::printf("| %s | %d | %.1e | %.1e |\n", name.c_str(), function.values,
                    *std::next(inOrder.begin(), static_cast<std::ptrdiff_t>(inOrder.size() / 2)),
                    *inOrder.rbegin());
    }
}

}  // namespace
}  // namespace zul::test

int main() {
    std::printf(
        "# Accuracy\n\n"
        "Written by `./dev accuracy`. First the exported functions, over the values of `tests/data`, which "
        "have 16 "
        "digits and\nmore; then the numerical routines behind them, over tables of 30 digits and more. All "
        "digits, "
        "the wrong ones too, are the\nsame on every processor and platform, by every compiler and with every "
        "option: "
        "no function of a C library is behind\nthem but exact ones, such as maxima, remainders and "
        "roundings. "
        "`zul_results hash` prints the number and the hash of\nresults of all functions, which `README.md` "
        "states. "
        "Accuracies over wider grids stand at the declarations.\n\n"
        "Of the distributions, the worst relative error of each function: tails go down to 1e-250, and both "
        "count "
        "alike, each\nrelative to itself. What rests on the incomplete gamma and beta pairs is as good as "
        "their "
        "series, which stop at 1e-9. The\nerror of a quantile is that of its tail times its condition, and "
        "is large "
        "near 0; the last column has the largest part of\nthe tolerance of its row that an error takes, "
        "which is "
        "below 1.\n");
    zul::test::ReportExports();
    std::printf(
        "\nOf the other functions the relative tolerances to which the tests hold the fields of their "
        "records: the "
        "middle one and\nthe largest, which allows for the conditioning of the data and for the tails behind "
        "p-values. Statuses and counts have to\nbe equal. The t and z tests, proportions, one variance, "
        "Anderson-Darling and runs tests and the p-value of a correlation\nare held to 1e-8 for bounds and "
        "p-values "
        "and to 1e-11 for the arithmetic before them, deviates to 1e-12, distances to\n1e-14.\n");
    zul::test::ReportTolerances();
    std::printf("\n## Numerical routines\n");
    for (const zul::test::Table& table : zul::test::Tables())
        zul::test::Report(table);
}
