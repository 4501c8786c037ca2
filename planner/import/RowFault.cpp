#include "planner/import/RowFault.h"

#include <algorithm>
#include <utility>

#include "planner/report/Printable.h"

namespace biwplan {

namespace {

constexpr std::size_t kQuotedBytes = 40;
// A list without a single good row needs no line for each.
constexpr std::size_t kMostListed = 1000;

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
    case FaultKind::AmbiguousName:
      return "ambiguous part";
    case FaultKind::TooManyNames:
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

void RowFaults::Add(long iLine, FaultKind iKind, std::string iText) {
  faults_.push_back({iLine, iKind, std::move(iText)});
}

std::vector<RowFault> RowFaults::Sorted() && {
  std::stable_sort(faults_.begin(), faults_.end(),
                   [](const RowFault& a, const RowFault& b) { return a.line < b.line; });
  return std::move(faults_);
}

RowError::RowError(FaultKind iKind, const std::string& iText)
    : std::runtime_error(iText), kind_(iKind) {}

std::string Located(const std::string& iSource, const RowFault& iFault) {
  return iSource + ", line " + std::to_string(iFault.line) + ": " + iFault.text;
}

void RefuseFaults(const std::string& iSource, std::size_t iRead,
                  const std::vector<RowFault>& iFaults) {
  if (iFaults.empty()) return;
  std::string text = Printable(iSource) + ": nothing is imported, because " +
                     std::to_string(iFaults.size()) +
                     (iFaults.size() == 1 ? " fault was" : " faults were") + " found in " +
                     std::to_string(iRead) + (iRead == 1 ? " row:" : " rows:");
  const std::size_t listed = std::min(iFaults.size(), kMostListed);
  for (std::size_t i = 0; i < listed; ++i) text += '\n' + Printable(Located(iSource, iFaults[i]));
  if (listed < iFaults.size()) {
    text += "\n... and " + std::to_string(iFaults.size() - listed) + " more";
  }
  throw RefusedRows(text);
}

std::string Quoted(std::string_view iText) {
  const bool isCut = iText.size() > kQuotedBytes;
  std::size_t length = isCut ? kQuotedBytes : iText.size();
  while (isCut && length > 0 && ContinuesCharacter(iText[length])) --length;
  return '"' + Printable(iText.substr(0, length)) + (isCut ? "...\"" : "\"");
}

}  // namespace biwplan
