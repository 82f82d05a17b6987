// One use of a prepared statement of a message database.
#pragma once

#include <concepts>
#include <utility>

#include "store/embedded/message_database.h"

namespace velmora::store::embedded {

class MessageDatabase::Query {
 public:
  Query(const MessageDatabase& database, Statement& statement)
      : database_(&database), statement_(&statement) {}
  Query(Query&& other) noexcept
      : database_(other.database_), statement_(std::exchange(other.statement_, nullptr)) {}
  Query& operator=(Query&&) = delete;
  // A statement that is not reset keeps its lock.
  ~Query() {
    if (statement_ != nullptr) statement_->Reset();
  }

  template <typename... T>
  Query& With(const T&... values) {
    int parameter = 0;
    (BindOne(++parameter, values), ...);
    return *this;
  }
  // A value into one parameter, counted from 1.
  void BindField(int parameter, const FieldValue& value, ColumnKind kind);

  Result<bool> Step() {
    const auto row = statement_->Step();
    if (!row) return database_->Describe(row.error());
    return *row;
  }
  Status Run() {
    if (const auto done = statement_->Run(); !done) return database_->Describe(done.error());
    return {};
  }

  std::int64_t Number(int column) const { return statement_->Number(column); }
  bool IsNull(int column) const { return statement_->IsNull(column); }
  std::string Text(int column) const { return statement_->Text(column); }
  FieldValue Field(int column, ColumnKind kind) const;
  // Of a field without a column: its kind in `column`, its number or text in the next one.
  FieldValue CodedField(int column) const;

 private:
  void BindOne(int parameter, std::string_view value) { statement_->Bind(parameter, value); }
  template <std::integral T>
  void BindOne(int parameter, T value) {
    statement_->Bind(parameter, static_cast<std::int64_t>(value));
  }

  const MessageDatabase* database_;
  Statement* statement_;
};

// Without a transaction of its own each statement locks the file, looks for a journal and unlocks. This one
// is over when it returns: nobody waits for it, and the file can be closed.
template <typename Read>
auto MessageDatabase::InOneReading(Read read) -> decltype(read()) {
  if (sqlite_.IsInTransaction()) return read();
  auto begin = Prepare("BEGIN");
  if (!begin) return Fail(begin.error());
  if (const auto begun = begin->Run(); !begun) return Fail(begun.error());
  auto result = read();
  auto end = Prepare("ROLLBACK");  // nothing was written, and this ends it whatever has happened
  if (!end) return Fail(end.error());
  if (const auto ended = end->Run(); !ended && result) return Fail(ended.error());
  return result;
}

}  // namespace velmora::store::embedded
