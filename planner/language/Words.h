#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace biwplan {

// Splits a line into words. Blanks separate words, quotes hold them together: between '...' every
// character is meant as it stands, between "..." \" and \\ are a quote and a backslash. A word that
// begins with # ends the line. InputError for a quote that is not closed and for what is no text.
std::vector<std::string> SplitWords(std::string_view iLine);

// A line that is split into these words.
std::string InOneLine(const std::vector<std::string>& iWords);

// The word as SplitWords reads it back.
std::string QuotedWord(const std::string& iWord);

}  // namespace biwplan
