// A small store on a file system that fails on demand, and what is in it before and after a run. All paths
// lie below "/Archive": "Quelle" with messages, rules, files and archives below it, "Ziel" and "Ablage".
#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "operations/operation.h"
#include "run/run.h"
#include "store/account.h"
#include "store/embedded/store_location.h"
#include "store/session.h"
#include "support/faulty_file_system.h"
#include "support/manual_clock.h"
#include "support/scripted_front_end.h"
#include "support/temp_dir.h"

namespace velmora::faults {

using Lines = std::vector<std::string>;

// How often each message stands somewhere, by its source's bytes.
using Messages = std::map<std::string, int>;

// What stands for a message here: its subject, its length and a hash of its bytes.
std::string MessageText(std::string_view bytes);

inline constexpr int MessageCount = 6;  // below "Quelle"
inline constexpr int ArchiveCount = 3;  // "Quelle" and those below it, without the link

class StoreWorld {
 public:
  // A copy of a store that is made once per process.
  StoreWorld();
  ~StoreWorld();

  // A session of "anna"; again after SignOff.
  void SignOn();
  // Ends the session. What it could not commit is lost, as at the end of a process.
  void SignOff();

  std::shared_ptr<store::DvArchive> Open(std::string_view path);
  operations::Operation Context() { return {run, session, {}, false}; }

  // --- What is in the store, seen by a session of its own on a file system that does not fail. Only while
  // nobody is signed on: it looks once. ---
  // Each archive, link, message, rule and file below an archive, in order.
  Lines Describe(std::string_view path);
  Messages MessagesBelow(std::string_view path);
  // Each directory and file of the store with the length and a hash of its bytes, in order.
  Lines StoreFiles() const;
  // What a check of the whole store finds beyond notes.
  Lines Damage();
  // The lines of the error log, without the one that says when it began.
  Lines Log();

  test::TempDir dir;
  store::embedded::StoreLocation location{"BUERO", dir.HostPath("store")};
  std::unique_ptr<platform::FileSystem> host;
  test::FaultyFileSystem files;
  test::ManualClock clock;
  test::ScriptedFrontEnd frontEnd;
  run::Run run;
  store::Session session;

 private:
  struct Look;
  Look& Looking();
  std::unique_ptr<Look> look_;
};

}  // namespace velmora::faults
