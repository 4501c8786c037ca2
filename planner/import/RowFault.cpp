#include "planner/import/RowFault.h"

#include "embedded/Error.h"

namespace biwplan {

namespace {

constexpr std::size_t kQuotedBytes = 40;

bool ContinuesCharacter(char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; }

}  // namespace

std::string_view Describe(FaultKind iKind) {
  switch (iKind) {
    case FaultKind::ShortRow:
      return "short row";
    case FaultKind::LongRow:
      return "long row";
    case FaultKind::BadText:
      return "bad text";
    case FaultKind::DuplicateId:
      return "duplicate id";
    case FaultKind::BadNumber:
      return "bad number";
    case FaultKind::NotFinite:
      return "number not finite";
    case FaultKind::UnknownWord:
      return "unknown type";
    case FaultKind::MissingPart:
      return "missing part";
    case FaultKind::AmbiguousPart:
      return "ambiguous part";
    case FaultKind::TooManyParts:
      return "too many parts";
    case FaultKind::BrokenSeam:
      return "broken seam";
    case FaultKind::DanglingReference:
      return "dangling reference";
    case FaultKind::Cycle:
      return "cycle";
  }
  return "fault";
}

RowError::RowError(FaultKind iKind, const std::string& iText)
    : std::runtime_error(iText), kind_(iKind) {}

std::string Located(const std::string& iSource, const RowFault& iFault) {
  return iSource + ", line " + std::to_string(iFault.line) + ": " + iFault.text;
}

void RefuseFaults(const std::string& iSource, std::size_t iRead,
                  const std::vector<RowFault>& iFaults) {
  if (iFaults.empty()) return;
  std::string text = iSource + ": nothing is imported, because " + std::to_string(iFaults.size()) +
                     " of " + std::to_string(iRead) + " rows cannot be used:";
  for (const RowFault& fault : iFaults) text += "\n" + Located(iSource, fault);
  throw embedded::InputError(text);
}

std::string Quoted(std::string_view iText) {
  const bool isCut = iText.size() > kQuotedBytes;
  std::size_t length = isCut ? kQuotedBytes : iText.size();
  while (isCut && length > 0 && ContinuesCharacter(iText[length])) --length;
  std::string quoted = "\"";
  for (const char c : iText.substr(0, length)) {
    quoted += static_cast<unsigned char>(c) < 0x20 || c == 0x7F ? ' ' : c;
  }
  return quoted + (isCut ? "...\"" : "\"");
}

}  // namespace biwplan
