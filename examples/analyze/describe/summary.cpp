#include "describe/summary.h"

#include <cmath>
#include <cstddef>
#include <string>
#include <string_view>

#include "input/counts.h"
#include "output/text.h"

namespace analyze {
namespace {

// Of skewness and kurtosis fewer digits than kSampleDigits outlast the reading of decimal data.
constexpr int kShapeDigits = 8;
constexpr int kIntervalDigits = 8;
// Columns of the boxplot, and the digits of the numbers at its ends.
constexpr std::size_t kPlotWidth = 72;
constexpr int kPlotDigits = 6;
// How far a whisker reaches from the box at most, in lengths of the box: J. W. Tukey, Exploratory data
// analysis, 1977.
constexpr double kWhiskerReach = 1.5;

std::string ModesOf(const Summary& summary) {
    if (summary.modeCount == 0) return "none";
    std::string text;
    for (unsigned i = 0; i < summary.modeCount; ++i)
        text.append(i == 0 ? "" : ", ").append(AsGiven(summary.modes[i]));
    if (summary.modeCount == summary.modes.size()) text += ", ...";
    return text + " (" + std::to_string(summary.modeFrequency) + " times)";
}

// One line of characters over a range of values.
class PlotLine {
public:
    PlotLine(double from, double to) : from_(from), to_(to), text_(kPlotWidth, ' ') {}
    // NaN has no place, nor has the infinite mean of huge values.
    void Mark(double value, char mark) {
        if (std::isfinite(value)) text_[Column(value)] = mark;
    }
    void Fill(double from, double to, char mark) {
        for (std::size_t i = Column(from); i <= Column(to); ++i)
            text_[i] = mark;
    }
    const std::string& Text() const { return text_; }

private:
    std::size_t Column(double value) const {
        if (to_ <= from_) return kPlotWidth / 2;
        // Halves, since the difference of two huge values might overflow.
        const double share = (value / 2 - from_ / 2) / (to_ / 2 - from_ / 2);
        return static_cast<std::size_t>(std::lround(share * static_cast<double>(kPlotWidth - 1)));
    }

    double from_;
    double to_;
    std::string text_;
};

}  // namespace

Summary Summarise(const std::vector<double>& values, double confidence) {
    Summary summary{};
    summary.moments = MomentsOf(values);
    const unsigned n = summary.moments.n;
    zul::v1::SecondSampleMoments moments;
    moments.count = n;
    Expect(zul::v1::GetKel2013ExtendedSummary(&moments, &summary.five, summary.modes.data(),
                                              &summary.modeCount, &summary.modeFrequency, values.data()),
           "the summary");
    zul::v1::GetKelSkewnessAndKurtosis(values.data(), n, &summary.skewness, &summary.kurtosis);
    int status = 0;
    summary.trimmedMean = zul::v1::GetKelTrimmedMean(values.data(), n, &status);
    Expect(status, "the trimmed mean");
    Expect(zul::v1::RunKelBoxplotHelper(&summary.box, confidence, values.data(), n), "the boxplot");
    return summary;
}

void PrintSummary(std::ostream& out, const Summary& summary, double confidence) {
    const std::string level = "  " + AsGiven(100 * confidence) + " % ";
    const auto row = [&out](const std::string& label, double value, int digits,
                            std::string_view reason = {}) {
        PrintRow(out, label, Significant(value, digits, reason));
    };
    const auto shape = [&](unsigned fewest, std::string_view tooFew) {
        return summary.moments.n < fewest ? tooFew : "all values are equal";
    };
    constexpr std::string_view kNoInterval = "too few values for this confidence";
    row("mean", summary.moments.mean, kSampleDigits);
    row("sd", summary.moments.sd, kSampleDigits,
        summary.moments.n > 1 ? "the values are too large" : kTooFewForSd);
    row("minimum", summary.five.minimum, kSampleDigits);
    row("first quartile", summary.five.firstQuartile, kSampleDigits);
    row("median", summary.five.median, kSampleDigits);
    row(level + "from", summary.box.medianLowerBound, kIntervalDigits, kNoInterval);
    row(level + "to", summary.box.medianUpperBound, kIntervalDigits, kNoInterval);
    row("third quartile", summary.five.thirdQuartile, kSampleDigits);
    row("maximum", summary.five.maximum, kSampleDigits);
    PrintRow(out, "modes", ModesOf(summary));
    row("5 % trimmed mean", summary.trimmedMean, kSampleDigits);
    row("skewness", summary.skewness, kShapeDigits, shape(3, "three values are needed"));
    row("excess kurtosis", summary.kurtosis, kShapeDigits, shape(4, "four values are needed"));
}

void PrintBoxplot(std::ostream& out, const std::vector<double>& values, const Summary& summary) {
    const zul::v1::KelBoxplotHelper& box = summary.box;
    const double reach = kWhiskerReach * (box.thirdQuartile - box.firstQuartile);
    double low = box.firstQuartile;
    double high = box.thirdQuartile;
    PlotLine line(box.minimum, box.maximum);
    for (const double value : values) {
        const bool outlier = value < box.firstQuartile - reach || value > box.thirdQuartile + reach;
        if (outlier) line.Mark(value, 'o');
        if (!outlier && value < low) low = value;
        if (!outlier && value > high) high = value;
    }
    line.Fill(low, high, '-');
    line.Mark(low, '|');
    line.Mark(high, '|');
    line.Fill(box.firstQuartile, box.thirdQuartile, '=');
    line.Mark(box.firstQuartile, '[');
    line.Mark(box.thirdQuartile, ']');
    line.Mark(box.medianLowerBound, '(');
    line.Mark(box.medianUpperBound, ')');
    line.Mark(box.mean, '+');
    line.Mark(box.median, 'M');

    const std::string from = Significant(box.minimum, kPlotDigits);
    const std::string to = Significant(box.maximum, kPlotDigits);
    const std::string gap(kPlotWidth - from.size() - to.size(), ' ');
    out << "Boxplot\n  " << line.Text() << "\n  " << from << gap << to
        << "\n  [ ] quartiles  M median  ( ) its interval  + mean  o more than 1.5 boxes away\n";
}

}  // namespace analyze
