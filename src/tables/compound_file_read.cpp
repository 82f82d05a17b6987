// Reading follows [MS-CFB]. Chains of sectors are cut short when they grow longer than the file has sectors:
// a chain that runs in a circle ends there.

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "base/text.h"
#include "tables/byte_order.h"
#include "tables/compound_file.h"
#include "tables/table_errors.h"

namespace velmora::tables {
namespace {

using Sectors = std::vector<std::uint32_t>;

// The header (2.2).
constexpr std::string_view Signature = "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1";
constexpr std::size_t HeaderSize = 512, SectorShiftAt = 0x1E, MiniSectorShiftAt = 0x20, DirectoryAt = 0x30,
                      MiniFatAt = 0x3C, DifatAt = 0x44, FirstFatSectorsAt = 0x4C, FirstFatSectors = 109;
constexpr unsigned SmallSectorShift = 9, LargeSectorShift = 12, MiniSectorShift = 6;
constexpr std::uint64_t MiniStreamCutoff = 4096;  // smaller streams lie in the mini stream
constexpr std::uint32_t LastSectorNumber = 0xFFFFFFFA, EndOfChain = 0xFFFFFFFE;  // 2.1

// A directory entry (2.6.1).
constexpr std::size_t EntrySize = 128, NameLengthAt = 0x40, TypeAt = 0x42, LeftAt = 0x44, RightAt = 0x48,
                      ChildAt = 0x4C, StartAt = 0x74, SizeAt = 0x78;
constexpr std::uint8_t TypeStream = 2, TypeRoot = 5;

struct Entry {
  std::string Name;  // "?" for what is not ASCII
  std::uint8_t Type = 0;
  std::uint32_t Left = 0, Right = 0, Child = 0, Start = 0;
  std::uint64_t Size = 0;
};

bool IsName(std::string_view a, std::string_view b) {
  return std::ranges::equal(a, b, {}, ToLowerAscii, ToLowerAscii);
}

class CompoundReader {
 public:
  explicit CompoundReader(std::string_view file) : file_(file) {}

  // Header, sector tables and directory; whether they hold together.
  bool Open() {
    if (file_.size() < HeaderSize || !file_.starts_with(Signature)) return false;
    sectorShift_ = ReadLittle<std::uint16_t>(file_, SectorShiftAt);
    if (sectorShift_ != SmallSectorShift && sectorShift_ != LargeSectorShift) return false;
    if (ReadLittle<std::uint16_t>(file_, MiniSectorShiftAt) != MiniSectorShift) return false;
    return LoadFat() && LoadDirectory();
  }

  std::optional<std::string> Stream(std::string_view name) {
    const std::optional<Entry> entry = FindAtTop(name);
    if (!entry || entry->Size > file_.size()) return std::nullopt;
    std::optional<std::string> bytes =
        entry->Size < MiniStreamCutoff ? MiniChain(entry->Start) : Chain(entry->Start);
    if (!bytes || bytes->size() < entry->Size) return std::nullopt;
    bytes->resize(static_cast<std::size_t>(entry->Size));
    return bytes;
  }

 private:
  std::size_t SectorSize() const { return std::size_t{1} << sectorShift_; }
  std::size_t SectorCount() const { return file_.size() >> sectorShift_; }

  // Empty when the sector does not lie in the file; short when the file ends in it.
  std::string_view Sector(std::uint32_t number) const {
    const std::size_t start = (std::size_t{number} + 1) << sectorShift_;
    return start < file_.size() ? file_.substr(start, SectorSize()) : std::string_view();
  }

  // The numbers of a whole sector.
  bool AppendNumbers(std::uint32_t sector, Sectors& numbers) const {
    const std::string_view bytes = Sector(sector);
    if (bytes.size() != SectorSize()) return false;
    for (std::size_t at = 0; at < bytes.size(); at += sizeof(std::uint32_t)) {
      numbers.push_back(ReadLittle<std::uint32_t>(bytes, at));
    }
    return true;
  }

  // The sectors of the FAT stand in the header and, from the 110th on, in a chain of their own (2.5).
  bool LoadFat() {
    Sectors fatSectors;
    for (std::size_t i = 0; i < FirstFatSectors; ++i) {
      fatSectors.push_back(ReadLittle<std::uint32_t>(file_, FirstFatSectorsAt + i * sizeof(std::uint32_t)));
    }
    std::uint32_t next = ReadLittle<std::uint32_t>(file_, DifatAt);
    for (std::size_t steps = 0; next <= LastSectorNumber; ++steps) {
      if (steps > SectorCount() || !AppendNumbers(next, fatSectors)) return false;
      next = fatSectors.back();
      fatSectors.pop_back();
    }
    std::erase_if(fatSectors, [](std::uint32_t sector) { return sector > LastSectorNumber; });
    if (fatSectors.size() > SectorCount()) return false;
    return std::ranges::all_of(fatSectors,
                               [this](std::uint32_t sector) { return AppendNumbers(sector, fat_); });
  }

  bool LoadDirectory() {
    const auto directory = Chain(ReadLittle<std::uint32_t>(file_, DirectoryAt));
    if (!directory || directory->size() < EntrySize) return false;
    directory_ = *directory;
    const Entry root = EntryAt(0);
    if (root.Type != TypeRoot) return false;
    auto miniStream = Chain(root.Start);
    const auto miniFat = Chain(ReadLittle<std::uint32_t>(file_, MiniFatAt));
    if (!miniStream || !miniFat) return false;
    miniStream_ = std::move(*miniStream);
    for (std::size_t at = 0; at + sizeof(std::uint32_t) <= miniFat->size(); at += sizeof(std::uint32_t)) {
      miniFat_.push_back(ReadLittle<std::uint32_t>(*miniFat, at));
    }
    return true;
  }

  std::optional<std::string> Chain(std::uint32_t start) const {
    std::string bytes;
    std::size_t steps = 0;
    for (std::uint32_t sector = start; sector != EndOfChain; sector = fat_[sector]) {
      const std::string_view content = Sector(sector);
      if (++steps > SectorCount() || sector >= fat_.size() || content.empty()) return std::nullopt;
      bytes += content;
    }
    return bytes;
  }

  std::optional<std::string> MiniChain(std::uint32_t start) const {
    std::string bytes;
    constexpr std::size_t size = std::size_t{1} << MiniSectorShift;
    for (std::uint32_t sector = start; sector != EndOfChain; sector = miniFat_[sector]) {
      const std::size_t from = std::size_t{sector} << MiniSectorShift;
      if (bytes.size() >= MiniStreamCutoff || sector >= miniFat_.size() || from >= miniStream_.size()) {
        return std::nullopt;
      }
      bytes += std::string_view(miniStream_).substr(from, size);
    }
    return bytes;
  }

  std::size_t EntryCount() const { return directory_.size() / EntrySize; }

  Entry EntryAt(std::size_t index) const {
    const std::string_view bytes = std::string_view(directory_).substr(index * EntrySize, EntrySize);
    Entry entry;
    // The length counts bytes of UTF-16 and the zero at the end.
    const std::size_t nameBytes = std::min<std::size_t>(ReadLittle<std::uint16_t>(bytes, NameLengthAt), 64);
    for (std::size_t at = 0; at + 2 < nameBytes; at += 2) {
      const auto unit = ReadLittle<std::uint16_t>(bytes, at);
      entry.Name += unit < 0x80 ? static_cast<char>(unit) : '?';
    }
    entry.Type = ReadLittle<std::uint8_t>(bytes, TypeAt);
    entry.Left = ReadLittle<std::uint32_t>(bytes, LeftAt);
    entry.Right = ReadLittle<std::uint32_t>(bytes, RightAt);
    entry.Child = ReadLittle<std::uint32_t>(bytes, ChildAt);
    entry.Start = ReadLittle<std::uint32_t>(bytes, StartAt);
    // Files of small sectors may have rubbish in the upper half (2.6.3).
    entry.Size = sectorShift_ == SmallSectorShift ? ReadLittle<std::uint32_t>(bytes, SizeAt)
                                                  : ReadLittle<std::uint64_t>(bytes, SizeAt);
    return entry;
  }

  // The entries of the root are a tree; its order is not relied on, since some writers do not keep it.
  std::optional<Entry> FindAtTop(std::string_view name) const {
    std::vector<bool> isSeen(EntryCount());
    Sectors open = {EntryAt(0).Child};
    while (!open.empty()) {
      const std::uint32_t index = open.back();
      open.pop_back();
      if (index >= isSeen.size() || isSeen[index]) continue;
      isSeen[index] = true;
      Entry entry = EntryAt(index);
      if (entry.Type == TypeStream && IsName(entry.Name, name)) return entry;
      open.push_back(entry.Left);
      open.push_back(entry.Right);
    }
    return std::nullopt;
  }

  std::string_view file_;
  unsigned sectorShift_ = SmallSectorShift;
  Sectors fat_, miniFat_;
  std::string directory_, miniStream_;
};

}  // namespace

Result<std::string> ReadCompoundStream(std::string_view file, std::string_view name,
                                       std::string_view otherName) {
  CompoundReader reader(file);
  if (!reader.Open()) return FailDamaged();
  for (const std::string_view wanted : {name, otherName}) {
    if (std::optional<std::string> bytes = reader.Stream(wanted)) return std::move(*bytes);
  }
  return FailDamaged();
}

}  // namespace velmora::tables
