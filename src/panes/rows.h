// The rows of the lists behind the panes. A row knows what it stands for and where it was appended; its
// slots, key and tag are derived where a view or dialog asks for them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

#include "base/date_time.h"
#include "store/item.h"

namespace velmora::panes {

// What a row stands for: the digit behind the "T" of its key. Archive lists and file lists count on their
// own.
namespace entry_type {
inline constexpr int None = 0;
inline constexpr int ControlEntry = 1, ArchiveEntry = 2, MessageEntry = 3, RoutingEntry = 4;
inline constexpr int DirBackEntry = 1, DirEntry = 2, FileEntry = 3;
}  // namespace entry_type

// What a slot holds: an archive list's row has eight of them, a file list's four.
using SlotValue = std::variant<std::monostate, bool, std::int64_t, std::string, DateTime>;
inline constexpr int ArchiveSlotCount = 8;

// --- Rows of an archive list. ---

struct ControlRow {};  // the way to the parent
inline constexpr std::string_view ControlText = "[..]", DirBackText = " [..]";

struct ArchiveRow {
  std::string DisplayName;
  std::string ID;  // physical directory; of a short-cut its target's
  int Icon = 0;    // position in store::ListImageKeys
  bool IsShortCut = false;
  bool IsHidden = false;
  bool IsCircular = false;  // a short-cut that leads back above this list
};

struct MessageRow {
  store::EntryKey RecNo = 0;
  int ItemType = 0;     // of the store
  int DisplayType = 0;  // see store/display_type.h
  int AttachmentCount = 0;
  DateTime StatusTime{};
  std::string Subject{}, From{}, To{};
  std::string Attachments{};  // names joined by ";"; of a link its destination
};

struct RoutingRow {
  std::string Name;
  int Number = 0;  // index in DvRules
  int Mode = 0;    // see RoutingMode in archive_list.h
  std::string FirstCondition{}, FirstDestination{};
  bool IsEnabled = false;
};

struct ListRow {
  std::uint32_t UnsortedIndex = 0;  // where it was appended, before any sort
  std::variant<ControlRow, ArchiveRow, MessageRow, RoutingRow> Content;
};

int EntryTypeOf(const ListRow& row);
// Slots 0 to 7; nothing for an empty slot.
SlotValue SlotOf(const ListRow& row, int slot);
std::string DescriptorOf(const ListRow& row);  // slot 7: "I3", "T2I3", "T0R3"
// `index`: the row's place in the list as it stands: "T1I0", "T2AI5", "T2SI5", "T3I7", "T4I2".
std::string KeyOf(const ListRow& row, std::size_t index);
std::string TagOf(const ListRow& row);  // "..", the archive's ID, "R" + number

// --- Rows of a file list. ---

struct FileRow {
  std::uint32_t UnsortedIndex = 0;
  int EntryType = entry_type::FileEntry;
  std::string Name{};      // " [..]" of a DirBackEntry
  std::string FullPath{};  // "" of a DirBackEntry
  DateTime Modified{};
  std::int64_t Size = 0;  // of a file
};

SlotValue SlotOf(const FileRow& row, int slot);  // slots 0 to 3
std::string DescriptorOf(const FileRow& row);    // slot 3 and tag: "T2I3"
std::string KeyOf(const FileRow& row);           // ".." , the full path of a directory, the name of a file

// --- What a key tells. ---

// The entry type of an archive list's key, entry_type::None for another text.
int RowEntryType(std::string_view key);
bool IsShortCutKey(std::string_view key);
// The digits behind the last "I"; -1 without.
int RowIndex(std::string_view key);

}  // namespace velmora::panes
