// Any bytes as records that are searched, renamed and given other paths: everything else of a record stays.
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "require.h"
#include "store/archive_records.h"
#include "store/record_edit.h"

namespace {

using velmora::store::DirRecord;

using velmora::fuzz::Require;

void TryRecord(const DirRecord& original, std::string_view text) {
  if (const auto rebuilt = velmora::store::RebuildRecord(original, original, text)) {
    Require(rebuilt->Head() == original.Head() && rebuilt->Tail() == original.Tail());
    Require(rebuilt->TextArea().size() == DirRecord::TextSize);
    Require(rebuilt->Name().has_value());
  }
  const std::string path = original.Path().value_or("");
  const std::array<velmora::store::PathReplacement, 2> pairs{
      {{path.substr(0, path.size() / 2), std::string(text)}, {std::string(text), "\\X"}}};
  DirRecord record = original;
  const auto changed = velmora::store::ReplaceRecordPath(record, pairs);
  if (!changed || !*changed) Require(record == original);
  Require(record.Head() == original.Head() && record.Tail() == original.Tail());
  if (changed && *changed) Require(record.Path().has_value());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view content(reinterpret_cast<const char*>(data), size);
  const std::string_view text = content.substr(0, size % 40);
  for (std::size_t number = 1; number <= velmora::store::CountRecords(content); ++number) {
    const DirRecord record = *velmora::store::RecordAt(content, number);
    TryRecord(record, text);
    // What has a path is found by it, at its number or before.
    if (const auto path = record.Path()) {
      const auto found = velmora::store::FindRecordIn(content, {.Path = *path});
      Require(found && found->Number >= 1 && static_cast<std::size_t>(found->Number) <= number);
    }
  }
  return 0;
}
