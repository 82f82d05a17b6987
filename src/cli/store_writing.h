// One call of a command that puts entries into an archive: the target, who watches, and what has been done so
// far.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "base/result.h"
#include "cli/store_access.h"
#include "run/console_front_end.h"
#include "store/archive.h"

namespace velmora::cli {

class StoreWriting {
 public:
  // Signs on and makes what is missing of the archive's path; otherwise the exit status, once it has been
  // told why.
  static tl::expected<StoreWriting, int> Open(const std::string& storeOption, std::string_view archivePath,
                                              std::string_view title);

  store::DvAccount& Account() { return *access_.Account; }
  store::DvArchive& Target() { return *target_; }
  platform::FileSystem& Files() { return *access_.FileSystem; }
  run::Progress& Progress() { return console_->Set().progress; }

  void NoteDone() { ++done_; }
  void Report(std::string_view origin, const Error& error);
  // Shows how far the work has come. True once the user has cancelled it.
  bool IsCancelled(std::int64_t position, std::int64_t total);
  // Commits and tells the numbers; the exit status. `counted`: "3 Mails zugestellt" for 3.
  int Finish(const std::function<std::string(std::int64_t)>& counted);

 private:
  explicit StoreWriting(SignedOnStore access) : access_(std::move(access)) {}

  SignedOnStore access_;
  std::shared_ptr<store::DvArchive> target_;
  std::unique_ptr<run::ConsoleFrontEnd> console_;
  std::int64_t done_ = 0;
  std::int64_t errors_ = 0;
  bool isCancelled_ = false;
};

}  // namespace velmora::cli
