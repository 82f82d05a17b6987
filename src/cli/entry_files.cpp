#include "cli/entry_files.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <set>
#include <string>

#include "store/errors.h"

namespace velmora::cli {
namespace {

using platform::FileReader;

constexpr std::string_view LittleEndianMagic{"II*\0", 4};
constexpr std::string_view BigEndianMagic{"MM\0*", 4};
constexpr std::size_t OffsetSize = 4, CountSize = 2, EntrySize = 12;
// More pages than any fax has; a damaged file may promise them.
constexpr std::size_t MostPages = 65'535;

std::uint32_t Number(std::string_view bytes, bool isLittleEndian) {
  std::uint32_t number = 0;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    const auto byte = static_cast<unsigned char>(bytes[isLittleEndian ? bytes.size() - 1 - i : i]);
    number = number << 8 | byte;
  }
  return number;
}

// The bytes at a position; fewer at the end of the file.
Result<std::string> ReadAt(FileReader& reader, std::int64_t position, std::size_t count) {
  if (const auto sought = reader.Seek(position); !sought) return Fail(sought.error());
  return reader.Read(count);
}

// Each page has a directory of its own, which tells where the next one is.
Result<int> CountDirectories(FileReader& reader, std::uint32_t first, bool isLittleEndian) {
  std::set<std::uint32_t> seen;
  for (auto offset = first; offset != 0 && seen.size() < MostPages && seen.insert(offset).second;) {
    const auto count = ReadAt(reader, offset, CountSize);
    if (!count) return Fail(count.error());
    const auto entries = count->size() == CountSize ? Number(*count, isLittleEndian) : 0;
    const auto next =
        ReadAt(reader, std::int64_t{offset} + static_cast<std::int64_t>(CountSize + entries * EntrySize),
               OffsetSize);
    if (!next) return Fail(next.error());
    if (entries == 0 || next->size() < OffsetSize) {
      seen.erase(offset);  // it lies beyond the end of the file
      break;
    }
    offset = Number(*next, isLittleEndian);
  }
  return static_cast<int>(seen.size());
}

Result<std::unique_ptr<FileReader>> Open(platform::FileSystem& fileSystem, std::string_view path) {
  const auto entry = fileSystem.GetEntry(path);
  if (!entry) return Fail(entry.error());
  if (entry->IsFolder) return Fail(store::store_error::WrongKind, "Das ist ein Verzeichnis");
  return fileSystem.OpenReader(path);
}

}  // namespace

Result<int> CountFaxPages(platform::FileSystem& fileSystem, std::string_view path) {
  const auto reader = Open(fileSystem, path);
  if (!reader) return Fail(reader.error());
  const auto head = (*reader)->Read(LittleEndianMagic.size() + OffsetSize);
  if (!head) return Fail(head.error());
  const bool isLittleEndian = head->starts_with(LittleEndianMagic);
  if (!isLittleEndian && !head->starts_with(BigEndianMagic)) {
    return Fail(store::store_error::WrongKind, "Die Datei ist kein TIFF-Bild");
  }
  const auto offset = std::string_view(*head).substr(LittleEndianMagic.size());
  return offset.size() < OffsetSize
             ? 0
             : CountDirectories(**reader, Number(offset, isLittleEndian), isLittleEndian);
}

Status CheckWaveFile(platform::FileSystem& fileSystem, std::string_view path) {
  constexpr std::string_view container = "RIFF", content = "WAVE";
  constexpr std::size_t contentAt = 8;  // behind the size of the file
  const auto reader = Open(fileSystem, path);
  if (!reader) return Fail(reader.error());
  const auto head = (*reader)->Read(contentAt + content.size());
  if (!head) return Fail(head.error());
  if (head->starts_with(container) && head->size() == contentAt + content.size() &&
      head->ends_with(content)) {
    return {};
  }
  return Fail(store::store_error::WrongKind, "Die Datei ist keine Wave-Datei");
}

}  // namespace velmora::cli
