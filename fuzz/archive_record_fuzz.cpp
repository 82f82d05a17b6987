// Any bytes as a list of records: reading, renaming and the head must stay inside the record.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "require.h"
#include "store/archive_record.h"
#include "store/embedded/list_cache.h"
#include "store/embedded/record_properties.h"

namespace {

using velmora::store::DirRecord;

using velmora::fuzz::Require;

void TryRecord(const DirRecord& original) {
  DirRecord record = original;
  if (const auto path = record.Path()) {
    const auto made = DirRecord::Make(*path, record.Name().value_or(""));
    Require(!made || made->Path() == path);
  }
  if (record.SetName("Neuer Name")) Require(record.Name().has_value());
  Require(record.Head() == original.Head() && record.Tail() == original.Tail());
  const auto head = velmora::store::embedded::ReadHead(record);
  velmora::store::embedded::WriteHead(record, head);
  Require(velmora::store::embedded::ReadHead(record) == head);
  Require(record.TextArea().size() == DirRecord::TextSize && record.Tail() == original.Tail());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view content(reinterpret_cast<const char*>(data), size);
  for (std::size_t number = 1; number <= velmora::store::CountRecords(content); ++number)
    TryRecord(*velmora::store::RecordAt(content, number));

  // A list read in one go and one that grew into it are the same.
  velmora::store::embedded::ArchiveList whole, grown;
  whole.Assign(std::string(content));
  grown.Assign(std::string(content.substr(0, size / 2)));
  grown.Assign(std::string(content));
  Require(whole.Records().size() == grown.Records().size());
  for (const auto& record : whole.Records()) {
    const auto* same = grown.WithNumber(record.Number);
    Require(same != nullptr && same->Key == record.Key && same->Name == record.Name);
    Require(whole.NamingDirectory(record.Key) == grown.NamingDirectory(record.Key));
  }
  return 0;
}
