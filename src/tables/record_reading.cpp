#include "tables/record_reading.h"

#include <algorithm>

#include "base/code_page.h"
#include "tables/utf16.h"

namespace velmora::tables {
namespace {

constexpr std::size_t RunSize = 4;  // a formatting run: where it starts, its font (2.5.129)

}  // namespace

std::optional<Record> RecordReader::Next() {
  if (position_ > stream_.size() || stream_.size() - position_ < biff::RecordHeaderSize) return std::nullopt;
  const auto id = static_cast<biff::Id>(ReadLittle<std::uint16_t>(stream_, position_));
  const std::size_t size = ReadLittle<std::uint16_t>(stream_, position_ + sizeof(std::uint16_t));
  const std::size_t start = position_ + biff::RecordHeaderSize;
  if (stream_.size() - start < size) return std::nullopt;
  position_ = start + size;
  return Record{id, stream_.substr(start, size)};
}

std::vector<std::string_view> RecordReader::WithContinuations(const Record& record) {
  std::vector<std::string_view> pieces = {record.Data};
  for (RecordReader ahead = *this;;) {
    const std::optional<Record> next = ahead.Next();
    if (!next || next->Id != biff::Id::Continue) return pieces;
    pieces.push_back(next->Data);
    *this = ahead;
  }
}

bool PieceReader::HasMore() {
  while (piece_ < pieces_.size() && at_ == pieces_[piece_].size()) {
    ++piece_;
    at_ = 0;
  }
  return piece_ < pieces_.size();
}

std::optional<std::string> PieceReader::Bytes(std::size_t count) {
  std::string bytes;
  while (bytes.size() < count && HasMore()) {
    const std::size_t part = std::min(count - bytes.size(), Left());
    bytes += pieces_[piece_].substr(at_, part);
    at_ += part;
  }
  if (bytes.size() < count) return std::nullopt;
  return bytes;
}

bool PieceReader::Skip(std::size_t count) {
  while (count > 0 && HasMore()) {
    const std::size_t part = std::min(count, Left());
    count -= part;
    at_ += part;
  }
  return count == 0;
}

std::optional<std::string> PieceReader::Units(std::size_t count, std::uint8_t flags) {
  std::u16string units;
  for (bool isFirst = true; units.size() < count; isFirst = false) {
    // Where the text goes on in the next record, its flags stand there again.
    if (!isFirst) {
      const auto again = Number<std::uint8_t>();
      if (!again) return std::nullopt;
      flags = *again;
    }
    const std::size_t unitSize = (flags & biff::HighByte) != 0 ? 2 : 1;
    // What is left of this record: all that is wanted, or what fits.
    const std::size_t part = std::min(count - units.size(), Left() / unitSize);
    const std::string_view bytes = Left() > 0 ? pieces_[piece_].substr(at_, part * unitSize) : "";
    for (std::size_t i = 0; i < part; ++i) {
      units += static_cast<char16_t>(unitSize == 2 ? ReadLittle<std::uint16_t>(bytes, 2 * i)
                                                   : ReadLittle<std::uint8_t>(bytes, i));
    }
    const bool endsInUnit = units.size() < count && part * unitSize != Left();
    if (endsInUnit) return std::nullopt;
    at_ += part * unitSize;
  }
  return FromUtf16(units);
}

std::optional<std::string> PieceReader::RichText() {
  const auto count = Number<std::uint16_t>();
  const auto flags = Number<std::uint8_t>();
  if (!count || !flags) return std::nullopt;
  std::optional<std::uint16_t> runs = 0;
  std::optional<std::uint32_t> extra = 0;
  if ((*flags & biff::RichString) != 0) runs = Number<std::uint16_t>();
  if ((*flags & biff::ExtString) != 0) extra = Number<std::uint32_t>();
  if (!runs || !extra) return std::nullopt;
  std::optional<std::string> text = Units(*count, *flags);
  if (!text || !Skip(std::size_t{*runs} * RunSize + *extra)) return std::nullopt;
  return text;
}

std::optional<std::string> PieceReader::CodePageText(std::size_t count) {
  const std::optional<std::string> bytes = Bytes(count);
  return bytes ? std::optional(FromCodePage(*bytes)) : std::nullopt;
}

std::optional<std::string> PieceReader::CellText(TextForm form) {
  if (form == TextForm::Biff8) return RichText();
  const auto count = Number<std::uint16_t>();
  return count ? CodePageText(*count) : std::nullopt;
}

std::optional<std::string> PieceReader::ShortText(TextForm form) {
  const auto count = Number<std::uint8_t>();
  if (!count) return std::nullopt;
  if (form == TextForm::Biff5) return CodePageText(*count);
  const auto flags = Number<std::uint8_t>();
  return flags ? Units(*count, *flags) : std::nullopt;
}

}  // namespace velmora::tables
