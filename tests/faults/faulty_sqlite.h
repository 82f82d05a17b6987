// SQLite's way to the disk, failing on demand. It is the default of the process while it lives.
#pragma once

#include <memory>

namespace velmora::faults {

enum class SqliteFault { Open, Read, Write, Sync, Truncate, Delete };

class FaultySqlite {
 public:
  FaultySqlite();
  ~FaultySqlite();
  FaultySqlite(const FaultySqlite&) = delete;
  FaultySqlite& operator=(const FaultySqlite&) = delete;

  // The `nth` call of the kind from now on fails, and with `lasts` every later one.
  void FailOn(SqliteFault kind, int nth, bool lasts);
  void Heal();
  int FailuresSoFar() const;

  struct State;

 private:
  std::unique_ptr<State> state_;
};

}  // namespace velmora::faults
