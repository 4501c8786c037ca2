#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

namespace embedded {

// An open database file with its prepared statements, each compiled once. Everything that fails
// is an InputError that names the file and what would be right; memory alone is std::bad_alloc.
class Connection {
 public:
  enum class Mode { Open, Create };

  Connection(const std::filesystem::path& iFile, Mode iMode);
  ~Connection();
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  // `iSql` is kept by its address and must live for ever.
  sqlite3_stmt* Statement(std::string_view iSql);
  // Runs a statement that is not worth keeping.
  void Run(const std::string& iSql);
  void Check(int iCode);
  // Waits a short while for another program to end its writing; once that was in vain, no step
  // waits until one succeeds. Gives the code.
  int Step(sqlite3_stmt* iStatement);
  [[noreturn]] void Fail(const std::string& iWhat) const;

 private:
  sqlite3_stmt* Compile(std::string_view sql);
  void BePatient(bool patient);
  void Close();

  std::string name_;
  sqlite3* database_ = nullptr;
  std::unordered_map<std::string_view, sqlite3_stmt*> statements_;
  bool isPatient_ = false;
};

// One use of a statement: binds ?1, ?2, ... to the values in order and gives the statement back
// at the end. A statement has one use at a time.
class Query {
 public:
  template <class... Values>
  Query(Connection& iConnection, std::string_view iSql, const Values&... iValues)
      : connection_(iConnection), statement_(iConnection.Statement(iSql)) {
    int position = 0;
    (Bind(++position, iValues), ...);
  }
  ~Query();
  Query(const Query&) = delete;
  Query& operator=(const Query&) = delete;

  // Moves on to the next row; false behind the last.
  bool Next();
  // Of the current row, columns from 0.
  std::string Text(int iColumn) const;
  std::int64_t Integer(int iColumn) const;
  // The first column of all rows.
  std::vector<std::string> Texts();
  // Runs a statement that changes data; false when the entry would stand there twice.
  bool Change();

 private:
  void Bind(int position, std::string_view text);
  void Bind(int position, std::int64_t number);

  Connection& connection_;
  sqlite3_stmt* statement_;
};

}  // namespace embedded
