#include "faulty_sqlite.h"

#include <sqlite3.h>

#include <new>

namespace velmora::faults {

struct FaultySqlite::State {
  // True when this call is one that fails.
  bool IsDue(SqliteFault kind) {
    if (kind != Kind || CallsToGo == 0) return false;
    if (--CallsToGo > 0) return false;
    if (Lasts) CallsToGo = 1;
    ++Failures;
    return true;
  }

  sqlite3_vfs Vfs{};
  sqlite3_vfs* Real = nullptr;
  SqliteFault Kind = SqliteFault::Open;
  int CallsToGo = 0;  // 0: none fails
  bool Lasts = false;
  int Failures = 0;
};

namespace {

using State = FaultySqlite::State;

// The file of the real system stands behind it in memory.
struct File {
  sqlite3_file Base;
  State* Faults;
  sqlite3_file* Real;
};

State& FaultsOf(sqlite3_vfs* vfs) { return *static_cast<State*>(vfs->pAppData); }
File& Of(sqlite3_file* file) { return *reinterpret_cast<File*>(file); }
const sqlite3_io_methods& Real(sqlite3_file* file) { return *Of(file).Real->pMethods; }
bool IsDue(sqlite3_file* file, SqliteFault kind) { return Of(file).Faults->IsDue(kind); }

const sqlite3_io_methods Methods = {
    .iVersion = 1,
    .xClose = [](sqlite3_file* file) { return Real(file).xClose(Of(file).Real); },
    .xRead =
        [](sqlite3_file* file, void* bytes, int count, sqlite3_int64 offset) {
          if (IsDue(file, SqliteFault::Read)) return SQLITE_IOERR_READ;
          return Real(file).xRead(Of(file).Real, bytes, count, offset);
        },
    .xWrite =
        [](sqlite3_file* file, const void* bytes, int count, sqlite3_int64 offset) {
          if (!IsDue(file, SqliteFault::Write)) return Real(file).xWrite(Of(file).Real, bytes, count, offset);
          (void)Real(file).xWrite(Of(file).Real, bytes, count / 2, offset);  // half of it fits
          return SQLITE_FULL;
        },
    .xTruncate =
        [](sqlite3_file* file, sqlite3_int64 size) {
          if (IsDue(file, SqliteFault::Truncate)) return SQLITE_IOERR_TRUNCATE;
          return Real(file).xTruncate(Of(file).Real, size);
        },
    .xSync =
        [](sqlite3_file* file, int flags) {
          if (IsDue(file, SqliteFault::Sync)) return SQLITE_IOERR_FSYNC;
          return Real(file).xSync(Of(file).Real, flags);
        },
    .xFileSize = [](sqlite3_file* file,
                    sqlite3_int64* size) { return Real(file).xFileSize(Of(file).Real, size); },
    .xLock = [](sqlite3_file* file, int level) { return Real(file).xLock(Of(file).Real, level); },
    .xUnlock = [](sqlite3_file* file, int level) { return Real(file).xUnlock(Of(file).Real, level); },
    .xCheckReservedLock = [](sqlite3_file* file,
                             int* isHeld) { return Real(file).xCheckReservedLock(Of(file).Real, isHeld); },
    .xFileControl = [](sqlite3_file* file, int what,
                       void* value) { return Real(file).xFileControl(Of(file).Real, what, value); },
    .xSectorSize = [](sqlite3_file* file) { return Real(file).xSectorSize(Of(file).Real); },
    .xDeviceCharacteristics =
        [](sqlite3_file* file) { return Real(file).xDeviceCharacteristics(Of(file).Real); },
    .xShmMap = nullptr,
    .xShmLock = nullptr,
    .xShmBarrier = nullptr,
    .xShmUnmap = nullptr,
    .xFetch = nullptr,
    .xUnfetch = nullptr,
};

int OpenFile(sqlite3_vfs* vfs, const char* name, sqlite3_file* file, int flags, int* outFlags) {
  State& faults = FaultsOf(vfs);
  file->pMethods = nullptr;
  if (faults.IsDue(SqliteFault::Open)) return SQLITE_CANTOPEN;
  File& opened = Of(file);
  opened.Faults = &faults;
  opened.Real = reinterpret_cast<sqlite3_file*>(&opened + 1);
  const int result = faults.Real->xOpen(faults.Real, name, opened.Real, flags, outFlags);
  if (opened.Real->pMethods != nullptr) file->pMethods = &Methods;
  return result;
}

int DeleteOne(sqlite3_vfs* vfs, const char* name, int syncDirectory) {
  State& faults = FaultsOf(vfs);
  if (faults.IsDue(SqliteFault::Delete)) return SQLITE_IOERR_DELETE;
  return faults.Real->xDelete(faults.Real, name, syncDirectory);
}

}  // namespace

FaultySqlite::FaultySqlite() : state_(std::make_unique<State>()) {
  sqlite3_initialize();
  state_->Real = sqlite3_vfs_find(nullptr);
  // What is not named here gets the real system's routines, none of which looks at the structure it is given.
  state_->Vfs = *state_->Real;
  state_->Vfs.iVersion = 1;
  state_->Vfs.pNext = nullptr;
  state_->Vfs.zName = "velmora-faulty";
  state_->Vfs.szOsFile = static_cast<int>(sizeof(File)) + state_->Real->szOsFile;
  state_->Vfs.pAppData = state_.get();
  state_->Vfs.xOpen = OpenFile;
  state_->Vfs.xDelete = DeleteOne;
  sqlite3_vfs_register(&state_->Vfs, 1);
}

FaultySqlite::~FaultySqlite() {
  sqlite3_vfs_unregister(&state_->Vfs);
  sqlite3_vfs_register(state_->Real, 1);
}

void FaultySqlite::FailOn(SqliteFault kind, int nth, bool lasts) {
  state_->Kind = kind;
  state_->CallsToGo = nth;
  state_->Lasts = lasts;
}
void FaultySqlite::Heal() { state_->CallsToGo = 0; }
int FaultySqlite::FailuresSoFar() const { return state_->Failures; }

}  // namespace velmora::faults
