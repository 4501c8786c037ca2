#pragma once

#include <cstddef>
#include <fstream>
#include <istream>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "embedded/storage/CsvReader.h"
#include "planner/import/Columns.h"
#include "planner/import/RowFault.h"

namespace biwplan {

// Opens a list for reading; InputError when there is none.
std::ifstream OpenList(const std::string& iPath);

// Reads a list row by row and finds the fields of a row by column.
class ListReader {
 public:
  // The first row names the columns, unless `iOrder` does ("id,x,y,z,parts"; an empty name skips a
  // column). `iStream` outlives the reader. InputError when a required column is missing.
  ListReader(std::istream& iStream, const std::string& iSource, std::vector<ColumnSpec> iSpecs,
             const std::string& iOrder = {});

  // The first of the columns that the list has; InputError when it has none.
  std::size_t RequireOneOf(const std::vector<std::size_t>& iColumns) const;
  // Moves on to the next row; false at the end. InputError as CsvReader, and past `iMostRows`.
  bool Next(std::size_t iMostRows);
  // RowError for a row that ends before its last required field or goes on past the header.
  void CheckLength();
  // RowError for a row that ends before this column.
  void RequireField(std::size_t iColumn) const;
  long Line() const { return csv_.Line(); }
  const std::string& Source() const { return source_; }
  std::size_t RowsRead() const { return rowsRead_; }

  bool Has(std::size_t iColumn) const { return map_.positions[iColumn].has_value(); }
  // The field of the row, valid until Next; empty when the row or the list has none.
  std::string_view Text(std::size_t iColumn) const;
  // The same with the fields behind it, when it is the last column and takes the rest.
  std::vector<std::string_view> Texts(std::size_t iColumn) const;
  std::string_view FieldName(std::size_t iColumn) const { return specs_[iColumn].field; }

  // RowError unless the field is a number.
  double Number(std::size_t iColumn) const;
  double NumberOr(std::size_t iColumn, double iDefault) const;
  std::optional<double> OptionalNumber(std::size_t iColumn) const;
  // At least 0.001, or not negative.
  std::optional<double> PositiveNumber(std::size_t iColumn) const;
  std::optional<double> NonNegativeNumber(std::size_t iColumn) const;
  // As many numbers as `iColumns` has columns, or none at all when each field is empty.
  std::vector<double> NumbersOrNone(const std::vector<std::size_t>& iColumns) const;

  // What a reader of the result should know: columns and fields that were passed over.
  std::vector<std::string> Notes() const;

 private:
  void ReadHeader();
  void FindLastRequired();
  bool TakesRest(std::size_t column) const;
  void RequireLength(std::size_t length) const;

  std::string source_;
  std::vector<ColumnSpec> specs_;
  embedded::CsvReader csv_;
  bool isOrderDeclared_;
  bool isOpenEnded_ = false;
  ColumnMap map_;
  std::size_t lastRequired_ = 0;
  std::size_t lastUsed_ = 0;
  std::size_t rowsRead_ = 0;
  std::size_t shortened_ = 0;
};

}  // namespace biwplan
