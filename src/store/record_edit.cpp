#include "store/record_edit.h"

#include <cstddef>

#include "base/code_page.h"
#include "base/text.h"
#include "store/text_area.h"

namespace velmora::store {
namespace {

// Puts the text area together again. What has moved out of it is lost; an item that this cuts ends with a NUL
// all the same, or its text would seem to go on in the tail.
void SetGrownArea(DirRecord& record, std::string area) {
  if (area.size() > DirRecord::TextSize) {
    area.resize(DirRecord::TextSize);
    area.back() = '\0';
  }
  record.SetTextArea(area);
}

bool EndsPathComponent(std::string_view old, std::string_view rest) {
  return rest.empty() || rest.front() == '\\' || rest.front() == ':' || old.ends_with('\\') ||
         old.ends_with(':');
}

// Every occurrence of `old` in `text` replaced; false without one.
bool ReplaceOccurrences(std::string& text, const PathReplacement& pair) {
  if (pair.Old.empty()) return false;
  const std::size_t length = CountCharacters(pair.Old);
  std::string result;
  bool found = false;
  for (std::size_t position = 0; position < text.size();) {
    const std::string_view rest = std::string_view(text).substr(position);
    const std::string_view candidate = LeftCharacters(rest, length);
    if (EqualsFold(candidate, pair.Old) && EndsPathComponent(pair.Old, rest.substr(candidate.size()))) {
      result += pair.New;
      position += candidate.size();
      found = true;
      continue;
    }
    const std::size_t start = position;
    (void)NextCharacter(text, position);  // only the way to the next one is wanted
    result.append(text, start, position - start);
  }
  if (found) text = std::move(result);
  return found;
}

}  // namespace

Result<DirRecord> RebuildRecord(const DirRecord& source, const DirRecord& fixedParts, std::string_view name) {
  const std::string_view area = source.TextArea();
  const std::size_t tag = area.find(DirRecord::NameTag);
  const std::optional<TextItem> item = FindItem(area, DirRecord::NameTag);
  std::string rebuilt(tag == std::string_view::npos ? UsedPart(area) : area.substr(0, tag));
  // The name's tag, one character and its NUL.
  if (rebuilt.size() + 3 > DirRecord::TextSize) return FailNoRoomForName();
  rebuilt += DirRecord::NameTag;
  rebuilt += ToCodePage(CleanArchiveName(name), Unmappable::Underscore)
                 .substr(0, DirRecord::TextSize - rebuilt.size() - 1);
  rebuilt += '\0';
  if (item) rebuilt += area.substr(item->End());
  DirRecord record;
  record.SetHead(fixedParts.Head());
  record.SetTail(fixedParts.Tail());
  SetGrownArea(record, std::move(rebuilt));
  return record;
}

Result<bool> ReplaceRecordPath(DirRecord& record, std::span<const PathReplacement> replacements) {
  const std::string_view area = record.TextArea();
  const std::optional<TextItem> item = FindItem(area, DirRecord::PathTag);
  if (!item) return false;
  std::string path = FromCodePage(item->Text);
  bool changed = false;
  for (const PathReplacement& pair : replacements) changed = ReplaceOccurrences(path, pair) || changed;
  if (!changed) return false;
  if (const Status checked = CheckPathCharacters(path); !checked) return Fail(checked.error());
  std::string rebuilt(area.substr(0, item->TagPosition + 1));
  rebuilt += ToCodePage(path);
  rebuilt += '\0';
  if (rebuilt.size() > DirRecord::TextSize) return FailPathTooLong();
  rebuilt += area.substr(item->End());
  SetGrownArea(record, std::move(rebuilt));
  return true;
}

}  // namespace velmora::store
