#include "text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <iomanip>
#include <limits>
#include <system_error>

namespace analyze {
namespace {

// Room for any double in the formats below: sign, point, exponent and 15 digits.
constexpr std::size_t kNumberLength = 32;
// So much of a cell still lets a message fit on one line of a terminal.
constexpr std::size_t kQuotedLength = 40;
constexpr int kLabelWidth = 18;
constexpr int kValueWidth = 24;

std::string Formatted(const char* format, double value, int digits) {
    char buffer[kNumberLength];
    std::snprintf(buffer, sizeof buffer, format, digits, value);
    return buffer;
}

}  // namespace

std::string_view WithoutBlanks(std::string_view text) {
    constexpr std::string_view kBlanks = " \t";
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::optional<double> ParseNumber(std::string_view text) {
    text = WithoutBlanks(text);
    // from_chars knows no plus sign; a minus sign after it would be its own.
    if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
    double value = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    if (error != std::errc() || stop != end || !std::isfinite(value)) return std::nullopt;
    return value;
}

std::string AsGiven(double value) {
    return Formatted("%.*g", value, std::numeric_limits<double>::digits10);
}

std::string Significant(double value, int digits) {
    return std::isnan(value) ? "not defined" : Formatted("%#.*g", value, digits);
}

void PrintRow(std::ostream& out, std::string_view label, const std::string& value) {
    out << "  " << std::left << std::setw(kLabelWidth) << label << std::right << std::setw(kValueWidth)
        << value << '\n';
}

std::string OneLine(std::string_view text) {
    const auto isControl = [](char c) { return (c >= 0 && c < ' ') || c == '\x7f'; };
    std::string line(text);
    std::ranges::replace_if(line, isControl, '?');
    return line;
}

std::string Quoted(std::string_view text) {
    std::string quoted(1, '\'');
    quoted.append(text.substr(0, kQuotedLength)).append(text.size() > kQuotedLength ? "...'" : "'");
    return quoted;
}

std::string ShortenedToEnd(std::string_view text, std::size_t width) {
    constexpr std::string_view kGap = "...";
    if (text.size() <= width) return std::string(text);
    return std::string(kGap).append(text.substr(text.size() - width + kGap.size()));
}

}  // namespace analyze
