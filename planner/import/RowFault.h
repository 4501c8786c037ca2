#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "embedded/Error.h"

namespace biwplan {

// Why a row of a list cannot be used.
enum class FaultKind {
  ShortRow,
  LongRow,
  BadText,
  DuplicateId,
  BadNumber,
  NotFinite,
  UnknownWord,
  MissingPart,
  AmbiguousName,
  TooManyNames,
  BrokenSeam,
  DanglingReference,
  Cycle,
};

// A few words for a summary: "short row".
std::string_view Describe(FaultKind iKind);

struct RowFault {
  // From 1.
  long line;
  FaultKind kind;
  // What is wrong and what would be right; names neither file nor line.
  std::string text;
};

class RowError;

// What is wrong with a list, row by row.
class RowFaults {
 public:
  void Add(long iLine, FaultKind iKind, std::string iText);
  // Runs what reads a row; a RowError becomes a fault and answers false.
  template <class Use>
  bool Try(long iLine, const Use& iUse);
  // By line.
  std::vector<RowFault> Sorted() &&;

 private:
  std::vector<RowFault> faults_;
};

// Thrown while a row is read; whoever walks the rows turns it into a RowFault.
class RowError : public std::runtime_error {
 public:
  RowError(FaultKind iKind, const std::string& iText);
  FaultKind Kind() const { return kind_; }

 private:
  FaultKind kind_;
};

template <class Use>
bool RowFaults::Try(long iLine, const Use& iUse) {
  try {
    iUse();
    return true;
  } catch (const RowError& error) {
    Add(iLine, error.Kind(), error.what());
    return false;
  }
}

// Its text has a line for each fault and is printable as it is.
class RefusedRows : public embedded::InputError {
 public:
  using embedded::InputError::InputError;
};

// Throws RefusedRows, with file and line of each fault; `iRead` is the number of rows read. Does
// nothing when there is no fault.
void RefuseFaults(const std::string& iSource, std::size_t iRead,
                  const std::vector<RowFault>& iFaults);

// "file, line 7: reason".
std::string Located(const std::string& iSource, const RowFault& iFault);

// The text between quotes, cut after some forty characters, as Printable makes it.
std::string Quoted(std::string_view iText);

}  // namespace biwplan
