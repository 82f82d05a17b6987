// An archive of the store's tree.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/date_time.h"
#include "base/result.h"
#include "store/item.h"
#include "store/rules.h"

namespace velmora::store {

enum class EntryOrder { Store, ByDate, BySubject };  // Store: rising keys; BySubject: without regard to case

class DvArchive {
 public:
  virtual ~DvArchive() = default;

  // --- Identity. ---
  virtual std::string FullPath()
      const = 0;                       // path in the tree, "/Archive/...": the key by which it is found again
  virtual std::string ID() const = 0;  // physical directory, UNC, without "\" at the end
  virtual bool IsShortCut() const = 0;  // reached over a link record; ID is then the target's
  // Made by the store itself, or the root: never deleted, renamed or moved.
  virtual bool IsSpecial() { return false; }

  // --- Properties; writes stand in memory until Update. ---
  virtual Result<std::string> DisplayName() = 0;
  virtual Status SetDisplayName(std::string_view name) = 0;
  virtual Result<int> DisplayType() = 0;  // DvDisplayAs..., see vocabulary.h
  virtual Status SetDisplayType(int type) = 0;
  virtual Result<bool> Hidden() = 0;
  virtual Status SetHidden(bool hidden) = 0;
  virtual Result<bool> Packed() = 0;
  virtual Result<bool> AdminOnly() = 0;
  virtual Result<DateTime> LastModification() = 0;
  virtual Result<std::uint32_t> AccessRights() = 0;  // of the signed-on user, see vocabulary.h
  virtual Status Update() = 0;

  // --- Content. ---
  virtual Result<std::vector<std::shared_ptr<DvArchive>>>
  SubArchives() = 0;  // in record order, links included
  virtual Result<int> SubArchiveCount() = 0;
  virtual Result<int> MessageCount() = 0;
  virtual Result<std::unique_ptr<DvEntries>> GetEntries(std::uint32_t filter,
                                                        EntryOrder order = EntryOrder::Store) = 0;
  virtual Result<std::unique_ptr<DvItem>> GetEntry(EntryKey key) = 0;
  virtual Result<std::unique_ptr<DvItemView>> ItemView(EntryKey key) = 0;
  virtual DvRules& Rules() = 0;

  // --- Making and removing. ---
  // "Name{DIR}": text in braces anywhere is the directory, the rest the display name. A taken directory gets
  // a fresh name. An empty display name shows the directory's name.
  virtual Result<std::shared_ptr<DvArchive>> CreateSubArchive(std::string_view name) = 0;
  virtual Result<std::unique_ptr<DvItemView>> CreateItem(
      int type) = 0;  // not stored before its Update or Submit
  virtual Result<std::unique_ptr<DvItem>> CreateEntry(int type) = 0;  // stored at once
  // Refused while anything is left in it, and for roots and special archives. On a link: removes the record
  // only.
  virtual Status Delete() = 0;
  virtual Status Move(DvArchive& target) = 0;
};

}  // namespace velmora::store
