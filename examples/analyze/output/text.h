/// @file
/// Numbers and words of the reports and messages.
#pragma once

#include <cstddef>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace analyze {

/// The text without the spaces and tabs around it.
std::string_view WithoutBlanks(std::string_view text);

/// The finite decimal number that is the whole of the text, but for blanks around it and a leading plus sign.
///
/// "nan", "inf", hexadecimal numbers and numbers beyond the range of a double are not numbers here.
std::optional<double> ParseNumber(std::string_view text);

/// A number that the user gave, with the digits that were given, up to the 15 that a double keeps.
std::string AsGiven(double value);

/// Reading decimal data rounds them, and a spread much smaller than the mean magnifies that: of the sd of
/// six-digit measurements with a spread of a thousandth some 13 digits are theirs.
inline constexpr int kSampleDigits = 13;

/// A computed number with so many significant digits, trailing zeros kept. For NaN "not defined", and why.
std::string Significant(double value, int digits, std::string_view reason = {});

/// The same in a column: "-" for NaN, which a line below the table explains.
std::string Cell(double value, int digits);

/// One line of a table of labels and values.
void PrintRow(std::ostream& out, std::string_view label, const std::string& value);

/// The words with commas between them.
std::string Joined(const std::vector<std::string>& words);

/// The texts in quotes with commas between them, the first of them only if there are many.
std::string Listed(const std::vector<std::string>& texts);

/// The text in small letters.
std::string Lower(std::string_view text);

/// The text with a question mark for each control character, so that it stays on one line.
std::string OneLine(std::string_view text);

/// The text in single quotes, its end cut off if it is too long for a message.
std::string Quoted(std::string_view text);

/// The text, or its end after "..." if it has more than `width` characters.
std::string ShortenedToEnd(std::string_view text, std::size_t width);

}  // namespace analyze
