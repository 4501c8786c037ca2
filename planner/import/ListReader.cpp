#include "planner/import/ListReader.h"

#include <algorithm>
#include <utility>

#include "embedded/Error.h"
#include "embedded/storage/OrdinaryFile.h"
#include "planner/import/Values.h"

namespace biwplan {

namespace {

using embedded::CsvOptions;
using embedded::CsvReader;
using embedded::InputError;

// Unlike Split, keeps empty names: they skip a column.
std::vector<std::string_view> OrderNames(std::string_view order) {
  std::vector<std::string_view> names;
  for (std::size_t begin = 0; begin <= order.size();) {
    const std::size_t end = std::min(order.find_first_of(",;\t", begin), order.size());
    names.push_back(Trimmed(order.substr(begin, end - begin)));
    begin = end + 1;
  }
  return names;
}

constexpr double kLeastPositive = 0.001;

std::size_t FirstRowWidth(std::istream& stream, const std::string& source, char delimiter) {
  CsvOptions options;
  options.delimiter = delimiter;
  options.dropTrailingEmpty = true;
  CsvReader reader(stream, source, options);
  const std::size_t width = reader.Next() ? reader.Fields().size() : 0;
  stream.clear();
  stream.seekg(0);
  return width;
}

// Without a header the first row is data, whose part numbers may be joined by more semicolons than
// there are commas between its columns; so whatever gives the declared number of columns counts.
CsvOptions OptionsFor(std::istream& stream, const std::string& source, const std::string& order) {
  CsvOptions options;
  if (order.empty() || stream.tellg() != std::istream::pos_type(0)) return options;
  const std::size_t declared = OrderNames(order).size();
  std::size_t best = 0;
  for (const char delimiter : {',', ';', '\t'}) {
    const std::size_t width = std::min(FirstRowWidth(stream, source, delimiter), declared);
    if (width <= std::max<std::size_t>(best, 1)) continue;
    best = width;
    options.delimiter = delimiter;
  }
  return options;
}

}  // namespace

std::ifstream OpenList(const std::string& iPath) {
  embedded::RequireOrdinaryFile(iPath, "name a readable CSV file");
  std::ifstream stream(iPath, std::ios::binary);
  if (!stream) throw InputError(iPath + " cannot be opened; name a readable CSV file");
  return stream;
}

ListReader::ListReader(std::istream& iStream, const std::string& iSource,
                       std::vector<ColumnSpec> iSpecs, const std::string& iOrder)
    : source_(iSource),
      specs_(std::move(iSpecs)),
      csv_(iStream, iSource, OptionsFor(iStream, iSource, iOrder)),
      isOrderDeclared_(!iOrder.empty()) {
  if (isOrderDeclared_) {
    map_ = MapColumns("the declared column order " + Quoted(iOrder), OrderNames(iOrder), specs_);
  } else {
    ReadHeader();
  }
  FindLastRequired();
}

void ListReader::ReadHeader() {
  bool hasRow = csv_.Next();
  // Spreadsheets declare their delimiter like this.
  if (hasRow && csv_.Fields().front().starts_with("sep=")) hasRow = csv_.Next();
  if (!hasRow) {
    throw InputError(source_ + ": the list is empty; its first row must name the columns");
  }
  map_ = MapColumns(csv_.Place(), csv_.Fields(), specs_);
}

void ListReader::FindLastRequired() {
  for (std::size_t i = 0; i < specs_.size(); ++i) {
    if (!map_.positions[i]) continue;
    lastUsed_ = std::max(lastUsed_, *map_.positions[i]);
    isOpenEnded_ = isOpenEnded_ || TakesRest(i);
    if (specs_[i].isRequired) lastRequired_ = std::max(lastRequired_, *map_.positions[i]);
  }
}

bool ListReader::TakesRest(std::size_t column) const {
  return specs_[column].takesRest && map_.positions[column] &&
         *map_.positions[column] + 1 == map_.width;
}

std::size_t ListReader::RequireOneOf(const std::vector<std::size_t>& iColumns) const {
  std::string names;
  for (const std::size_t column : iColumns) {
    if (Has(column)) return column;
    names += (names.empty() ? "" : " or ") + std::string(FieldName(column));
  }
  throw InputError(source_ + ": no column is headed " + names + "; the list needs one that is");
}

bool ListReader::Next(std::size_t iMostRows) {
  if (!csv_.Next()) return false;
  if (rowsRead_ == iMostRows) {
    throw InputError(csv_.Place() + ": the list has more than " + std::to_string(iMostRows) +
                     " rows; split it");
  }
  ++rowsRead_;
  return true;
}

void ListReader::RequireLength(std::size_t length) const {
  if (csv_.Fields().size() >= length) return;
  throw RowError(FaultKind::ShortRow,
                 "the row ends after " + std::to_string(csv_.Fields().size()) + " of at least " +
                     std::to_string(length) +
                     " fields; every field up to the last required one must be there");
}

void ListReader::RequireField(std::size_t iColumn) const {
  RequireLength(*map_.positions[iColumn] + 1);
}

void ListReader::CheckLength() {
  RequireLength(lastRequired_ + 1);
  const std::vector<std::string_view>& fields = csv_.Fields();
  if (fields.size() <= lastUsed_) ++shortened_;
  if (isOrderDeclared_ || isOpenEnded_ || fields.size() <= map_.width) return;
  const auto extra = fields.begin() + static_cast<std::ptrdiff_t>(map_.width);
  if (std::all_of(extra, fields.end(), [](std::string_view field) { return field.empty(); }))
    return;
  throw RowError(FaultKind::LongRow,
                 "the row has " + std::to_string(fields.size()) + " fields where the header has " +
                     std::to_string(map_.width) +
                     "; put a field that contains the delimiter, or a decimal comma, in quotes");
}

std::string_view ListReader::Text(std::size_t iColumn) const {
  const std::optional<std::size_t> position = map_.positions[iColumn];
  if (!position || *position >= csv_.Fields().size()) return {};
  return csv_.Fields()[*position];
}

std::vector<std::string_view> ListReader::Texts(std::size_t iColumn) const {
  if (!TakesRest(iColumn)) return {Text(iColumn)};
  const std::vector<std::string_view>& fields = csv_.Fields();
  const std::size_t first = std::min(*map_.positions[iColumn], fields.size());
  return {fields.begin() + static_cast<std::ptrdiff_t>(first), fields.end()};
}

double ListReader::Number(std::size_t iColumn) const {
  return ParseNumber(FieldName(iColumn), Text(iColumn));
}

double ListReader::NumberOr(std::size_t iColumn, double iDefault) const {
  return Text(iColumn).empty() ? iDefault : Number(iColumn);
}

std::optional<double> ListReader::OptionalNumber(std::size_t iColumn) const {
  if (Text(iColumn).empty()) return std::nullopt;
  return Number(iColumn);
}

std::optional<double> ListReader::PositiveNumber(std::size_t iColumn) const {
  const std::optional<double> number = OptionalNumber(iColumn);
  if (!number || *number >= kLeastPositive) return number;
  throw RowError(FaultKind::BadNumber, std::string(FieldName(iColumn)) + " is " +
                                           Quoted(Text(iColumn)) + "; it must be at least 0.001");
}

std::optional<double> ListReader::NonNegativeNumber(std::size_t iColumn) const {
  const std::optional<double> number = OptionalNumber(iColumn);
  if (!number || *number >= 0) return number;
  throw RowError(FaultKind::BadNumber, std::string(FieldName(iColumn)) + " is " +
                                           Quoted(Text(iColumn)) + "; it must not be negative");
}

std::vector<double> ListReader::NumbersOrNone(const std::vector<std::size_t>& iColumns) const {
  std::vector<double> numbers;
  const auto isEmpty = [this](std::size_t column) { return Text(column).empty(); };
  if (std::all_of(iColumns.begin(), iColumns.end(), isEmpty)) return numbers;
  for (const std::size_t column : iColumns) numbers.push_back(Number(column));
  return numbers;
}

std::vector<std::string> ListReader::Notes() const {
  std::vector<std::string> notes;
  if (!map_.ignored.empty()) {
    std::string note = source_ + ": columns not used:";
    for (const std::string& name : map_.ignored) note += ' ' + name;
    notes.push_back(note);
  }
  if (shortened_ > 0) {
    notes.push_back(source_ + ": rows that end before the last column: " +
                    std::to_string(shortened_) + "; the fields they lack count as empty");
  }
  return notes;
}

}  // namespace biwplan
