// SQLite in this program's terms: handles that close themselves, parameters instead of text, Result instead
// of codes. Errors: Busy (another process held the file for longer than patience lasts), Damaged, Failed.
#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "base/result.h"
#include "store/patience.h"

namespace velmora::store::embedded {

class Statement {
 public:
  // Parameters count from 1, columns from 0.
  Statement& Bind(int parameter, std::int64_t value);
  Statement& Bind(int parameter, std::string_view value);
  Statement& BindNull(int parameter);
  // True: a row stands ready. False: the end.
  Result<bool> Step();
  // Steps to the end; for what gives no rows.
  Status Run();
  // Ready for new parameters.
  void Reset();

  std::int64_t Number(int column) const;
  std::string Text(int column) const;
  bool IsNull(int column) const;

 private:
  friend class Sqlite;
  struct Finalize {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
  };
  explicit Statement(sqlite3_stmt* statement) : statement_(statement) {}
  std::unique_ptr<sqlite3_stmt, Finalize> statement_;
};

class Sqlite {
 public:
  enum class Mode { ReadOnly, ReadWrite, Create };

  // The schema of the file is not trusted: views and triggers in it run no functions.
  static Result<Sqlite> Open(const std::string& hostPath, Mode mode);

  // Usual at first.
  void SetPatience(Patience patience);
  // One or more statements without parameters.
  Status Execute(const char* sql);
  Result<Statement> Prepare(std::string_view sql);
  std::int64_t LastRowId() const;
  // What is wrong with the database, whose file is given, "" for nothing: SQLite's own check, and whether all
  // of its pages are there (SQLite takes what is missing of the last one for zeros). Unfinished when the file
  // is open for reading only and a write was interrupted.
  Result<std::string> FindDamage(const std::string& hostPath);
  // False also after an error at which SQLite rolled back by itself (a full disk).
  bool IsInTransaction() const;

 private:
  struct CloseHandle {
    void operator()(sqlite3* handle) const { sqlite3_close_v2(handle); }
  };
  explicit Sqlite(sqlite3* handle) : handle_(handle) {}
  std::unique_ptr<sqlite3, CloseHandle> handle_;
};

// A write transaction: rolled back unless committed.
class SqliteTransaction {
 public:
  static Result<SqliteTransaction> Begin(Sqlite& database);
  SqliteTransaction(SqliteTransaction&& other) noexcept;
  SqliteTransaction& operator=(SqliteTransaction&&) = delete;
  ~SqliteTransaction();
  Status Commit();

 private:
  explicit SqliteTransaction(Sqlite& database) : database_(&database) {}
  Sqlite* database_;
};

}  // namespace velmora::store::embedded
