#include "planner/flow/DotText.h"

#include <algorithm>

#include "embedded/storage/Utf8.h"

namespace biwplan {

namespace {

constexpr char kBreak[] = "<br/>";

bool ContinuesCharacter(char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; }

bool IsControl(char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; }

void Replace(std::string& ioText, std::string_view from, std::string_view to) {
  for (std::size_t at = 0; (at = ioText.find(from, at)) != std::string::npos; at += to.size()) {
    ioText.replace(at, from.size(), to);
  }
}

// Only what an XML file may hold.
std::string Readable(std::string_view text) {
  constexpr std::string_view kReplacement = "\xEF\xBF\xBD";
  std::string readable(text);
  if (!embedded::IsUtf8(text)) {
    std::replace_if(
        readable.begin(), readable.end(), [](char c) { return (c & 0x80) != 0; }, '?');
  }
  Replace(readable, "\xEF\xBF\xBE", kReplacement);
  Replace(readable, "\xEF\xBF\xBF", kReplacement);
  return readable;
}

std::string Escaped(char c) {
  switch (c) {
    case '&':
      return "&amp;";
    case '<':
      return "&lt;";
    case '>':
      return "&gt;";
    case '"':
      return "&quot;";
    case '\\':
      return "\\\\";
    case '\n':
      return kBreak;
    default:
      return {IsControl(c) ? ' ' : c};
  }
}

// Where the line ends that begins the text.
std::size_t LineEnd(std::string_view text, std::size_t width) {
  std::size_t end = 0;
  std::size_t lastBlank = std::string_view::npos;
  for (std::size_t count = 0; end < text.size(); ++end) {
    if (text[end] == '\n') return end;
    if (!ContinuesCharacter(text[end]) && ++count > width) {
      return text[end] == ' ' || lastBlank == std::string_view::npos ? end : lastBlank;
    }
    if (text[end] == ' ' && end > 0) lastBlank = end;
  }
  return end;
}

}  // namespace

std::string DotName(std::string_view iText) {
  std::string name = "\"";
  for (const char c : Readable(iText)) {
    if (c == '"') {
      name += "\\\"";
    } else if (c == '\\') {
      name += "\\\\";
    } else if (c == '&') {
      // An entity would be read otherwise.
      name += "&amp;";
    } else {
      name += IsControl(c) ? ' ' : c;
    }
  }
  return name + '"';
}

std::string DotLabel(std::string_view iText) {
  std::string label;
  for (const char c : Readable(iText)) label += Escaped(c);
  return label;
}

std::string DotLines(std::string_view iText, std::size_t iWidth) {
  std::string lines;
  while (true) {
    const std::size_t end = LineEnd(iText, iWidth);
    lines += DotLabel(iText.substr(0, end));
    if (end == iText.size()) return lines;
    iText.remove_prefix(end);
    if (iText.front() == ' ' || iText.front() == '\n') iText.remove_prefix(1);
    lines += kBreak;
  }
}

std::string DotFont(const std::string& iAttributes, const std::string& iLabel) {
  return "<font " + iAttributes + ">" + iLabel + "</font>";
}

}  // namespace biwplan
