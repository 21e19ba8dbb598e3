// The tables of tests/data/fitting. Records and arrays are full of old results before each call.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "fitting/fits.h"
#include "support/reference_table.h"
#include "zul/fitting.h"

namespace zul {
namespace {

using test::FittedFamily;
using test::Number;
using test::Numbers;
using test::Row;
using Values = std::vector<double>;

constexpr double kOld = -7;
constexpr std::size_t kField = 4;

// The results of a case by their names in the table.
using Fields = std::map<std::string, double>;

std::map<int, std::vector<Row>> ReadCases(const std::string& name) {
    std::map<int, std::vector<Row>> cases;
    for (Row& row : test::ReadTable("fitting/" + name + ".csv", ';'))
        cases[std::stoi(row.at(0))].push_back(row);
    return cases;
}

void ExpectRows(const std::vector<Row>& rows, const Fields& fields) {
    SCOPED_TRACE("case " + rows[0][0] + " " + rows[0][1]);
    const auto isStatus = [](const Row& row) { return row.at(kField) == "status"; };
    EXPECT_TRUE(fields.at("status") == 0 || std::any_of(rows.begin(), rows.end(), isStatus));
    for (const Row& row : rows) {
        ASSERT_TRUE(fields.contains(row[kField])) << row[kField];
        const double actual = fields.at(row[kField]);
        const double expected = Number(row.at(5));
        const double allowed = Number(row.at(6)) * std::abs(expected) + Number(row.at(7));
        EXPECT_TRUE(std::isfinite(expected) ? std::abs(actual - expected) <= allowed
                                            : test::IsNear(actual, expected, 0))
            << row[kField] << " is " << actual << " instead of " << row[5];
    }
}

const FittedFamily& FamilyOf(const std::string& name) {
    const auto& families = test::FittedFamilies();
    return *std::find_if(families.begin(), families.end(), [&](const auto& f) { return f.name == name; });
}

TEST(FittingReference, Fits) {
    for (const auto& [number, rows] : ReadCases("fits")) {
        const FittedFamily& family = FamilyOf(rows[0][1].substr(3));
        const Values data = Numbers(rows[0][2]);
        v2::DistributionFit fit;
        for (int i = 0; i < 3; ++i)
            fit.parameter[i] = fit.standardError[i] = fit.covariance[i] = kOld;
        fit.logLikelihood = kOld;
        fit.parameters = fit.iterations = 7;
        fit.n = static_cast<unsigned>(data.size());
        Fields fields = {{"status", family.fit(&fit, data.data())}};
        for (std::size_t i = 0; i < family.parameters.size(); ++i) {
            fields["parameter." + family.parameters[i]] = fit.parameter[i];
            fields["standardError." + family.parameters[i]] = fit.standardError[i];
        }
        for (std::size_t i = 0; i < 3; ++i) {
            fields[std::vector<std::string>{"covariance[0][1]", "covariance[0][2]", "covariance[1][2]"}[i]] =
                fit.covariance[i];
            EXPECT_TRUE(i < fit.parameters || std::isnan(fit.parameter[i]));
        }
        fields["logLikelihood"] = fit.logLikelihood;
        fields["parameters"] = fit.parameters;
        ExpectRows(rows, fields);
    }
}

TEST(FittingReference, PublishedEstimates) {
    for (const Row& row : test::ReadTable("fitting/published.csv", ';')) {
        SCOPED_TRACE(row.at(0) + " " + row.at(1) + " " + row.at(2));
        const FittedFamily& family = FamilyOf(row[1].substr(3));
        const Values data = test::ReadSample(row[0]);
        v2::DistributionFit fit;
        fit.n = static_cast<unsigned>(data.size());
        EXPECT_EQ(family.fit(&fit, data.data()), 0);
        const auto place = std::find(family.parameters.begin(), family.parameters.end(), row[2]);
        const double actual =
            row[2] == "logLikelihood" ? fit.logLikelihood : fit.parameter[place - family.parameters.begin()];
        EXPECT_TRUE(test::IsNear(actual, Number(row.at(3)), Number(row.at(4))));
    }
}

// The text between the brackets of a field of that name.
std::string Index(const std::string& field, const std::string& name) {
    return field.starts_with(name + "[") ? field.substr(name.size() + 1, field.size() - name.size() - 2) : "";
}

TEST(FittingReference, ProbabilityPlots) {
    for (const auto& [number, rows] : ReadCases("prob_plots")) {
        const std::string& routine = rows[0][1];
        const FittedFamily& family = FamilyOf(routine.substr(6, routine.size() - 11));
        const Values data = Numbers(rows[0][2]);
        const Values arguments = Numbers(rows[0][3]);
        std::vector<std::string> names;
        for (const Row& row : rows)
            for (const char* name : {"percentile", "lower", "upper"})
                if (const std::string index = Index(row[kField], name); !index.empty())
                    names.push_back(index);
        Values percents;
        for (const std::string& name : names)
            percents.push_back(Number(name));
        v2::ProbabilityPlot plot;
        plot.n = static_cast<unsigned>(data.size());
        plot.percents = static_cast<unsigned>(percents.size());
        plot.andersonDarling = plot.correlation = plot.parameter[0] = plot.parameter[1] = kOld;
        Values points[3];
        for (Values& out : points)
            out.assign(data.size(), kOld);
        Values lines[3];
        for (Values& out : lines)
            out.assign(percents.size(), kOld);
        Fields fields = {
            {"status", family.plot(&plot, data.data(),
                                   static_cast<v2::PlottingPosition>(static_cast<int>(arguments.at(0))),
                                   arguments.at(1), points[0].data(), points[1].data(), points[2].data(),
                                   percents.data(), lines[0].data(), lines[1].data(), lines[2].data())}};
        for (std::size_t i = 0; i < 2 && i < family.parameters.size(); ++i)
            fields["parameter." + family.parameters[i]] = plot.parameter[i];
        fields["andersonDarling"] = plot.andersonDarling;
        fields["correlation"] = plot.correlation;
        for (std::size_t i = 0; i < data.size(); ++i)
            for (std::size_t k = 0; k < 3; ++k)
                fields[std::vector<std::string>{"x[", "probability[", "score["}[k] + std::to_string(i) +
                       "]"] = points[k][i];
        for (std::size_t i = 0; i < percents.size(); ++i)
            for (std::size_t k = 0; k < 3; ++k)
                fields[std::vector<std::string>{"percentile[", "lower[", "upper["}[k] + names[i] + "]"] =
                    lines[k][i];
        ExpectRows(rows, fields);
    }
}

TEST(FittingReference, Curves) {
    for (const auto& [number, rows] : ReadCases("curves")) {
        const Values parameters = Numbers(rows[0][2]);
        const Values a = Numbers(rows[0][3]);
        v2::DistributionFit fit;
        std::copy(parameters.begin(), parameters.end(), fit.parameter);
        const auto points = static_cast<unsigned>(a.at(5));
        Values x(points, kOld);
        Values y(points, kOld);
        Fields fields = {
            {"status", v2::RunKelGrCurveFit(&fit, static_cast<v2::DistributionFamily>(static_cast<int>(a[0])),
                                            static_cast<unsigned>(a[1]), a[2], a[3], a[4], points, x.data(),
                                            y.data())}};
        for (unsigned i = 0; i < points; ++i) {
            fields["x[" + std::to_string(i) + "]"] = x[i];
            fields["y[" + std::to_string(i) + "]"] = y[i];
        }
        ExpectRows(rows, fields);
    }
}

TEST(FittingReference, CurvesEndAtTheirEnds) {
    v2::DistributionFit fit;
    fit.parameter[0] = 0;
    fit.parameter[1] = 1;
    double x[3] = {};
    const auto run = [&](double width) {
        return v2::RunKelGrCurveFit(&fit, v2::DistributionFamily::Normal, 10, width, 1, 1e-20, 3, x, nullptr);
    };
    EXPECT_EQ(run(0), 0);
    EXPECT_EQ(x[2], 1e-20);
    EXPECT_EQ(run(-0.5), 30000);
    EXPECT_TRUE(std::isnan(x[0]));
}

}  // namespace
}  // namespace zul
