#include "tables/shared_strings.h"

#include <algorithm>
#include <utility>

#include "tables/record_writing.h"

namespace velmora::tables {
namespace {

constexpr std::size_t TextHeaderSize = 3;  // count and flags, never split
constexpr std::size_t MinTextsPerBucket = 8, MaxBuckets = 128;

// Where a text of the table starts.
struct Place {
  std::uint32_t InStream;
  std::uint16_t InRecord;  // counted from the record's header
};

// Appends texts one after the other and opens a continuation record where one is full. Within a text the
// flags are said again at the start of the continuation. The format asks for whole units; pairs of surrogates
// are kept whole as well, since Gnumeric loses a text that is cut within one.
class TableWriter {
 public:
  explicit TableWriter(std::string& stream) : stream_(stream) {}

  void Begin(biff::Id id) {
    start_ = stream_.size();
    AppendRecord(stream_, id);
  }
  void End() { PutLittle(stream_, start_ + sizeof(std::uint16_t), static_cast<std::uint16_t>(DataSize())); }
  void Continue() {
    End();
    Begin(biff::Id::Continue);
  }

  Place Append(const EncodedText& text) {
    const std::size_t firstUnit = text.Units() == 0 ? 0 : text.UnitSize();
    if (Room() < TextHeaderSize + firstUnit) Continue();
    const Place place{static_cast<std::uint32_t>(stream_.size()),
                      static_cast<std::uint16_t>(stream_.size() - start_)};
    AppendLittle(stream_, static_cast<std::uint16_t>(text.Units()));
    AppendLittle(stream_, text.Flags());
    for (std::size_t done = 0;;) {
      const std::size_t count = text.WholeUnits(done, Room() / text.UnitSize());
      text.AppendUnits(stream_, done, count);
      done += count;
      if (done == text.Units()) return place;
      Continue();
      AppendLittle(stream_, text.Flags());
    }
  }

 private:
  std::size_t DataSize() const { return stream_.size() - start_ - biff::RecordHeaderSize; }
  std::size_t Room() const { return biff::MaxRecordData - DataSize(); }

  std::string& stream_;
  std::size_t start_ = 0;
};

}  // namespace

std::uint32_t SharedStrings::IndexOf(std::string_view text) {
  ++uses_;
  const auto [found, isNew] = indexes_.try_emplace(text, static_cast<std::uint32_t>(texts_.size()));
  if (isNew) texts_.push_back(text);
  return found->second;
}

std::uint32_t SharedStrings::IndexOfCopy(std::string text) {
  return IndexOf(own_.emplace_back(std::move(text)));
}

void SharedStrings::AppendTo(std::string& stream) const {
  TableWriter table(stream);
  table.Begin(biff::Id::Sst);
  AppendLittle(stream, uses_);
  AppendLittle(stream, static_cast<std::uint32_t>(texts_.size()));
  const std::size_t perBucket = std::max(MinTextsPerBucket, (texts_.size() + MaxBuckets - 1) / MaxBuckets);
  std::string buckets;
  for (std::size_t i = 0; i < texts_.size(); ++i) {
    const Place place = table.Append(EncodedText(texts_[i]));
    if (i % perBucket != 0) continue;
    AppendLittle(buckets, place.InStream);
    AppendLittle(buckets, place.InRecord);
    AppendLittle(buckets, std::uint16_t{0});
  }
  table.End();
  AppendRecord(stream, biff::Id::ExtSst, static_cast<std::uint16_t>(perBucket), std::string_view(buckets));
}

}  // namespace velmora::tables
