#pragma once

#include <string>
#include <string_view>

namespace embedded {

// Appends the text as it stands between the quotes of a JSON text. It must be UTF-8.
void AppendJsonText(std::string& ioJson, std::string_view iText);

// The text in quotes for a message: on one line, and shortened when it is long.
std::string Quoted(std::string_view iText);

}  // namespace embedded
