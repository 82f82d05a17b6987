// Records out of a stream from outside: nothing is believed of a length or a count.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tables/biff.h"
#include "tables/byte_order.h"

namespace velmora::tables {

struct Record {
  biff::Id Id;
  std::string_view Data;
};

// Goes through a stream record by record.
class RecordReader {
 public:
  explicit RecordReader(std::string_view stream, std::size_t position = 0)
      : stream_(stream), position_(position) {}

  std::size_t Position() const { return position_; }
  // Nothing at the end of the stream, and when a record reaches beyond it.
  std::optional<Record> Next();
  // The data of a record that Next has given and of the CONTINUE records behind it, which are passed.
  std::vector<std::string_view> WithContinuations(const Record& record);

 private:
  std::string_view stream_;
  std::size_t position_;
};

// How the workbook keeps texts: BIFF5 has one byte for a character.
enum class TextForm { Biff8, Biff5 };

// Reads numbers and texts out of a record and its continuations. What reaches beyond the end gives nothing.
class PieceReader {
 public:
  explicit PieceReader(std::vector<std::string_view> pieces) : pieces_(std::move(pieces)) {}

  template <std::unsigned_integral T>
  std::optional<T> Number() {
    const std::optional<std::string> bytes = Bytes(sizeof(T));
    return bytes ? std::optional(ReadLittle<T>(*bytes, 0)) : std::nullopt;
  }
  std::optional<std::string> Bytes(std::size_t count);
  bool Skip(std::size_t count);

  // BIFF8: the text behind its count and flags as UTF-8. A continuation within the text begins with new
  // flags.
  std::optional<std::string> Units(std::size_t count, std::uint8_t flags);
  // BIFF8: a text with its formatting runs and phonetics, which are skipped (2.5.293).
  std::optional<std::string> RichText();
  // The text of a cell behind a count of two bytes. The code page of BIFF5 is taken for Windows-1252.
  std::optional<std::string> CellText(TextForm form);
  // The same behind a count of one byte, without runs.
  std::optional<std::string> ShortText(TextForm form);

 private:
  // Goes on to the next piece only when more is asked for: at the very end of one, a text still has to begin.
  bool HasMore();
  std::optional<std::string> CodePageText(std::size_t count);
  std::size_t Left() const { return piece_ < pieces_.size() ? pieces_[piece_].size() - at_ : 0; }

  std::vector<std::string_view> pieces_;
  std::size_t piece_ = 0, at_ = 0;
};

}  // namespace velmora::tables
