#include "tables/shared_strings.h"

#include <algorithm>
#include <functional>
#include <utility>

#include "tables/record_writing.h"

namespace velmora::tables {
namespace {

constexpr std::size_t TextHeaderSize = 3;  // count and flags, never split
constexpr std::size_t MinTextsPerBucket = 8, MaxBuckets = 128;
constexpr std::uint32_t FreeSlot = 0xFFFFFFFF;
constexpr std::size_t FewestSlots = 64;

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

std::size_t SharedStrings::FindSlot(std::string_view text, std::size_t hash) const {
  const std::size_t mask = slots_.size() - 1;
  for (std::size_t slot = hash & mask;; slot = (slot + 1) & mask) {
    if (slots_[slot] == FreeSlot) return slot;
    const Entry& entry = entries_[slots_[slot]];
    if (entry.Hash == hash && entry.Text == text) return slot;
  }
}

// At most half full, and a power of two.
void SharedStrings::Grow() {
  slots_.assign(std::max(FewestSlots, slots_.size() * 2), FreeSlot);
  for (std::size_t i = 0; i < entries_.size(); ++i) {
    slots_[FindSlot(entries_[i].Text, entries_[i].Hash)] = static_cast<std::uint32_t>(i);
  }
}

std::uint32_t SharedStrings::IndexOf(std::string_view text) {
  ++uses_;
  if (entries_.size() * 2 >= slots_.size()) Grow();
  const std::size_t hash = std::hash<std::string_view>()(text);
  std::uint32_t& index = slots_[FindSlot(text, hash)];
  if (index == FreeSlot) {
    index = static_cast<std::uint32_t>(entries_.size());
    entries_.push_back({text, hash});
  }
  return index;
}

std::uint32_t SharedStrings::IndexOfCopy(std::string text) {
  return IndexOf(own_.emplace_back(std::move(text)));
}

void SharedStrings::AppendTo(std::string& stream) const {
  TableWriter table(stream);
  table.Begin(biff::Id::Sst);
  AppendLittle(stream, uses_);
  AppendLittle(stream, static_cast<std::uint32_t>(entries_.size()));
  const std::size_t perBucket = std::max(MinTextsPerBucket, (entries_.size() + MaxBuckets - 1) / MaxBuckets);
  std::string buckets;
  for (std::size_t i = 0; i < entries_.size(); ++i) {
    const Place place = table.Append(EncodedText(entries_[i].Text));
    if (i % perBucket != 0) continue;
    AppendLittle(buckets, place.InStream);
    AppendLittle(buckets, place.InRecord);
    AppendLittle(buckets, std::uint16_t{0});
  }
  table.End();
  AppendRecord(stream, biff::Id::ExtSst, static_cast<std::uint16_t>(perBucket), std::string_view(buckets));
}

}  // namespace velmora::tables
