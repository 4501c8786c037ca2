#pragma once

#include <cstdint>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>
#include <unordered_map>

struct sqlite3;
struct sqlite3_stmt;

namespace biwplan {

// A database could not do what was asked; the text says why, to follow the name of its file.
class DatabaseFault : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// An open SQLite file with its prepared statements. DatabaseFault for what fails, DamagedHistory
// for a file that is no sound database, std::bad_alloc.
class Database {
 public:
  enum class Access { Read, Write, Create };
  Database(const std::filesystem::path& iFile, Access iAccess);
  // Leaves the file alone in its folder.
  ~Database();
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;

  // `iSql` is kept by its address and must live for ever.
  sqlite3_stmt* Statement(const char* iSql);
  void Run(const char* iSql);
  void Check(int iCode);

 private:
  void Close();

  sqlite3* database_ = nullptr;
  bool hasFailed_ = false;
  std::unordered_map<const char*, sqlite3_stmt*> statements_;
};

// One use of a statement, with ?1, ?2, ... bound in order. A statement has one use at a time.
class Statement {
 public:
  template <class... Values>
  Statement(Database& ioDatabase, const char* iSql, const Values&... iValues)
      : database_(ioDatabase), statement_(ioDatabase.Statement(iSql)) {
    int position = 0;
    (Bind(++position, iValues), ...);
  }
  ~Statement();
  Statement(const Statement&) = delete;
  Statement& operator=(const Statement&) = delete;

  // Moves on to the next row; false behind the last.
  bool Next();
  void Run() { Next(); }
  // Of the row, columns from 0. Bytes are valid until the next row.
  std::int64_t Integer(int iColumn) const;
  std::string_view Bytes(int iColumn) const;
  std::string Text(int iColumn) const { return std::string(Bytes(iColumn)); }

 private:
  // Kept by its address until the use ends.
  void Bind(int position, std::string_view bytes);
  void Bind(int position, std::int64_t number);

  Database& database_;
  sqlite3_stmt* statement_;
};

// What is done while it lives is done as a whole with Commit, or not at all.
class Transaction {
 public:
  explicit Transaction(Database& ioDatabase);
  ~Transaction();
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;

  void Commit();

 private:
  Database& database_;
  bool isOpen_ = true;
};

}  // namespace biwplan
