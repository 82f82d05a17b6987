#include "store/archive_record.h"

#include <algorithm>

#include "base/code_page.h"
#include "base/text.h"
#include "store/errors.h"
#include "store/text_area.h"

namespace velmora::store {
namespace {

std::string MakeItem(char tag, std::string_view text) {
  std::string item(1, tag);
  item += text;
  item += '\0';
  return item;
}

bool IsControl(char32_t character) { return character < 0x20 || (character >= 0x7F && character <= 0x9F); }

std::string NameBytes(std::string_view name, std::size_t room) {
  return ToCodePage(CleanArchiveName(name), Unmappable::Underscore).substr(0, room);
}

void Fill(char* block, std::size_t size, std::string_view bytes) {
  const std::size_t used = std::min(size, bytes.size());
  std::copy_n(bytes.begin(), used, block);
  std::fill(block + used, block + size, '\0');
}

}  // namespace

std::optional<TextItem> FindItem(std::string_view area, char tag) {
  const std::size_t position = area.find(tag);
  if (position == std::string_view::npos) return std::nullopt;
  const std::size_t end = area.find('\0', position + 1);
  if (end == std::string_view::npos) return std::nullopt;
  return TextItem{position, area.substr(position + 1, end - position - 1)};
}

std::optional<DirRecord> DirRecord::FromBytes(std::string_view bytes) {
  if (bytes.size() != Size) return std::nullopt;
  DirRecord record;
  std::copy(bytes.begin(), bytes.end(), record.bytes_.begin());
  return record;
}

Result<DirRecord> DirRecord::Make(std::string_view path, std::string_view name) {
  if (path.empty()) return Fail(store_error::BadName, "Ein Archiveintrag braucht einen Pfad");
  if (const Status checked = CheckPathCharacters(path); !checked) return Fail(checked.error());
  std::string area = MakeItem(PathTag, ToCodePage(path));
  // Room for the name's tag, one character and its NUL.
  if (area.size() + 3 > TextSize) return FailPathTooLong();
  area += MakeItem(NameTag, NameBytes(name, TextSize - area.size() - 2));
  DirRecord record;
  record.SetTextArea(area);
  return record;
}

void DirRecord::SetHead(std::string_view head) { Fill(bytes_.data(), HeadSize, head); }

void DirRecord::SetTextArea(std::string_view text) { Fill(bytes_.data() + HeadSize, TextSize, text); }

void DirRecord::SetTail(std::string_view tail) { Fill(bytes_.data() + HeadSize + TextSize, TailSize, tail); }

std::optional<std::string> DirRecord::Path() const {
  const std::optional<TextItem> item = FindItem(TextArea(), PathTag);
  if (!item) return std::nullopt;
  return FromCodePage(item->Text);
}

std::optional<std::string> DirRecord::Name() const {
  const std::optional<TextItem> item = FindItem(TextArea(), NameTag);
  if (!item) return std::nullopt;
  return FromCodePage(item->Text);
}

Status DirRecord::SetName(std::string_view name) {
  const std::string area(UsedPart(TextArea()));
  std::string before = area;
  std::string behind;
  if (const std::optional<TextItem> item = FindItem(area, NameTag)) {
    before = area.substr(0, item->TagPosition);
    behind = area.substr(item->End());
  }
  if (before.size() + behind.size() + 3 > TextSize) return FailNoRoomForName();
  const std::size_t room = TextSize - before.size() - behind.size() - 2;
  SetTextArea(before + MakeItem(NameTag, NameBytes(name, room)) + behind);
  return {};
}

std::string CleanArchiveName(std::string_view name) {
  std::string clean;
  clean.reserve(name.size());
  for (std::size_t position = 0; position < name.size();) {
    const char32_t character = NextCharacter(name, position);
    const bool forbidden = character == U'/' || character == U'\\' || IsControl(character);
    AppendCharacter(clean, forbidden ? U'-' : character);
  }
  return FromCodePage(ToCodePage(clean, Unmappable::Underscore));
}

std::size_t CountRecords(std::string_view content) { return content.size() / DirRecord::Size; }

std::optional<DirRecord> RecordAt(std::string_view content, std::size_t number) {
  if (number == 0 || number > CountRecords(content)) return std::nullopt;
  return DirRecord::FromBytes(content.substr((number - 1) * DirRecord::Size, DirRecord::Size));
}

}  // namespace velmora::store
