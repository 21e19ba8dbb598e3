#include "output/text.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <limits>
#include <system_error>

namespace analyze {
namespace {

// Room for any double in the formats below: sign, point, exponent and 15 digits.
constexpr std::size_t kNumberLength = 32;
// So much of a cell still lets a message fit on one line of a terminal.
constexpr std::size_t kQuotedLength = 40;
// More texts than these are not listed in a message.
constexpr std::size_t kListedTexts = 8;
constexpr std::size_t kLabelWidth = 18;
constexpr std::size_t kRowWidth = 42;

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

std::string Significant(double value, int digits, std::string_view reason) {
    if (!std::isnan(value)) return Formatted("%#.*g", value, digits);
    std::string text = "not defined";
    if (!reason.empty()) text.append(": ").append(reason);
    return text;
}

std::string Cell(double value, int digits) {
    return std::isnan(value) ? "-" : Significant(value, digits);
}

void PrintRow(std::ostream& out, std::string_view label, const std::string& value) {
    std::string line(label);
    line.resize(std::max(line.size(), kLabelWidth), ' ');
    // A long label takes from the width of the value, a long value goes beyond it.
    const std::size_t length = line.size() + value.size();
    const std::size_t gap = line.back() == ' ' ? 0 : 1;
    line.append(length + gap < kRowWidth ? kRowWidth - length : gap, ' ');
    out << "  " << line << value << '\n';
}

std::string Joined(const std::vector<std::string>& words) {
    std::string list;
    for (const std::string& word : words)
        list.append(list.empty() ? "" : ", ").append(word);
    return list;
}

std::string Listed(const std::vector<std::string>& texts) {
    std::string list;
    for (std::size_t i = 0; i < texts.size() && i < kListedTexts; ++i)
        list += (i == 0 ? "" : ", ") + Quoted(texts[i]);
    return list + (texts.size() > kListedTexts ? ", ..." : "");
}

std::string Lower(std::string_view text) {
    std::string lower(text);
    std::ranges::transform(lower, lower.begin(),
                           [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return lower;
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
