#include "tables/sheet_reading.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

#include "tables/record_reading.h"
#include "tables/table_errors.h"

namespace velmora::tables {
namespace {

using biff::Id;

struct ErrorText {
  std::uint8_t Code;
  const char* Text;
};
constexpr ErrorText ErrorTexts[] = {{0x00, "#NULL!"}, {0x07, "#DIV/0!"}, {0x0F, "#VALUE!"}, {0x17, "#REF!"},
                                    {0x1D, "#NAME?"}, {0x24, "#NUM!"},   {0x2A, "#N/A"}};  // 2.5.10 BErr

constexpr std::uint32_t RkIsHundredfold = 0x01, RkIsInteger = 0x02;  // 2.5.218 RkNumber

double DecodeRk(std::uint32_t rk) {
  // Either a whole number of 30 bits or the upper 30 bits of an IEEE number.
  const double value =
      (rk & RkIsInteger) != 0
          ? static_cast<double>(static_cast<std::int32_t>(rk) >> 2)
          : std::bit_cast<double>(std::uint64_t{rk & ~(RkIsHundredfold | RkIsInteger)} << 32);
  return (rk & RkIsHundredfold) != 0 ? value / 100 : value;
}

Cell ErrorCell(std::uint8_t code) {
  const auto* found = std::ranges::find(ErrorTexts, code, &ErrorText::Code);
  return std::string(found == std::end(ErrorTexts) ? "#N/A" : found->Text);
}

Cell TextCell(std::string text) { return text.empty() ? Cell() : Cell(std::move(text)); }

// Where a cell stands, and the index of its format: the head of every cell's record (2.5.19 Cell).
struct CellHead {
  std::size_t Row = 0, Column = 0, Format = 0;
};
constexpr std::size_t CellHeadSize = 6;

class SheetReader {
 public:
  SheetReader(std::string_view stream, const Globals& globals, const SheetEntry& entry, ReadingBudget& budget)
      : records_(stream, entry.Start), globals_(globals), entry_(entry), budget_(budget) {
    sheet_.Name = entry.Name;
    sheet_.IsHidden = entry.IsHidden;
  }

  Result<Sheet> Read() {
    const std::optional<Record> first = records_.Next();
    if (!first || !IsStart(*first)) return FailDamaged();
    // A chart within the sheet is a part of its own, whose numbers are no cells.
    for (std::size_t depth = 1; depth > 0;) {
      const std::optional<Record> record = records_.Next();
      if (!record) return FailDamaged();
      if (record->Id == Id::Bof) ++depth;
      if (record->Id == Id::Eof) --depth;
      if (depth == 1 && !Take(*record)) return isTooBig_ ? FailTooBig() : FailDamaged();
    }
    const std::size_t size = records_.Position() - entry_.Start;
    if (size > budget_.StreamBytes) return FailDamaged();
    budget_.StreamBytes -= size;
    return std::move(sheet_);
  }

 private:
  static bool IsStart(const Record& record) {
    return record.Id == Id::Bof && record.Data.size() >= 2 * sizeof(std::uint16_t) &&
           ReadLittle<std::uint16_t>(record.Data, sizeof(std::uint16_t)) == biff::SubstreamSheet;
  }

  // Whether the record is sound and within the bounds.
  bool Take(const Record& record) {
    switch (record.Id) {
      case Id::Number:
      case Id::Rk:
      case Id::BoolErr:
      case Id::Formula:
      case Id::Label:
      case Id::RString:
      case Id::LabelSst:
        return TakeCell(record);
      case Id::MulRk:
        return TakeRowOfNumbers(record);
      case Id::String:
        return TakeFormulaText(record);
      case Id::Window2:
        isFrozen_ =
            !record.Data.empty() && (ReadLittle<std::uint8_t>(record.Data, 0) & biff::WindowFrozen) != 0;
        return true;
      case Id::Pane:
        if (isFrozen_ && record.Data.size() >= 2 * sizeof(std::uint16_t)) {
          sheet_.HeaderRows = ReadLittle<std::uint16_t>(record.Data, sizeof(std::uint16_t));
        }
        return true;
      default:
        return true;
    }
  }

  static CellHead HeadOf(std::string_view data) {
    return {ReadLittle<std::uint16_t>(data, 0), ReadLittle<std::uint16_t>(data, 2),
            ReadLittle<std::uint16_t>(data, 4)};
  }

  bool TakeCell(const Record& record) {
    if (record.Data.size() < CellHeadSize) return false;
    const CellHead head = HeadOf(record.Data);
    const std::string_view value = record.Data.substr(CellHeadSize);
    formulaText_.reset();
    switch (record.Id) {
      case Id::Number:
        return value.size() >= sizeof(double) && Put(head, NumberCell(ReadDouble(value, 0), head.Format));
      case Id::Rk:
        return value.size() >= sizeof(std::uint32_t) &&
               Put(head, NumberCell(DecodeRk(ReadLittle<std::uint32_t>(value, 0)), head.Format));
      case Id::BoolErr:
        return value.size() >= 2 &&
               Put(head, value[1] != 0 ? ErrorCell(ReadLittle<std::uint8_t>(value, 0)) : Cell(value[0] != 0));
      case Id::Formula:
        return value.size() >= sizeof(double) && TakeFormula(head, value);
      case Id::LabelSst: {
        if (value.size() < sizeof(std::uint32_t)) return false;
        const auto index = ReadLittle<std::uint32_t>(value, 0);
        return index < globals_.Strings.size() && Put(head, TextCell(globals_.Strings[index]));
      }
      default:
        return TakeText(head, record);
    }
  }

  // A text within the sheet itself, as other programs than Excel write them.
  bool TakeText(const CellHead& head, const Record& record) {
    PieceReader data(records_.WithContinuations(record));
    if (!data.Skip(CellHeadSize)) return false;
    std::optional<std::string> text = data.CellText(globals_.Texts);
    return text && Put(head, TextCell(std::move(*text)));
  }

  // The value that a formula had when the workbook was saved (2.5.133 FormulaValue).
  bool TakeFormula(const CellHead& head, std::string_view value) {
    constexpr std::uint16_t noNumber = 0xFFFF;
    enum : std::uint8_t { Text, Boolean, Error, Empty };
    if (ReadLittle<std::uint16_t>(value, 6) != noNumber) {
      return Put(head, NumberCell(ReadDouble(value, 0), head.Format));
    }
    const auto result = ReadLittle<std::uint8_t>(value, 2);
    switch (ReadLittle<std::uint8_t>(value, 0)) {
      case Text:  // stands in a record of its own, with others in between for shared formulas
        formulaText_ = head;
        return true;
      case Boolean:
        return Put(head, result != 0);
      case Error:
        return Put(head, ErrorCell(result));
      default:
        return true;
    }
  }

  bool TakeFormulaText(const Record& record) {
    PieceReader data(records_.WithContinuations(record));
    if (!formulaText_) return true;
    std::optional<std::string> text = data.CellText(globals_.Texts);
    return text && Put(*std::exchange(formulaText_, std::nullopt), TextCell(std::move(*text)));
  }

  // Row, first column, a format and a number for each column, last column (2.4.175 MulRk).
  bool TakeRowOfNumbers(const Record& record) {
    constexpr std::size_t edges = 6, stride = 6;
    const std::string_view data = record.Data;
    if (data.size() < edges + stride) return false;
    CellHead head{ReadLittle<std::uint16_t>(data, 0), ReadLittle<std::uint16_t>(data, 2), 0};
    const std::size_t count = (data.size() - edges) / stride;
    for (std::size_t i = 0; i < count; ++i, ++head.Column) {
      const std::size_t at = 4 + i * stride;
      head.Format = ReadLittle<std::uint16_t>(data, at);
      if (!Put(head, NumberCell(DecodeRk(ReadLittle<std::uint32_t>(data, at + 2)), head.Format)))
        return false;
    }
    return true;
  }

  Cell NumberCell(double value, std::size_t format) const {
    if (!std::isfinite(value)) return std::string("#NUM!");
    const DateKind kind =
        format < globals_.CellFormats.size() ? globals_.CellFormats[format] : DateKind::None;
    if (kind == DateKind::None) return value;
    const bool isTimeAlone = kind == DateKind::Time && value < 1;
    const std::optional<DateTime> date =
        FromSerial(globals_.Is1904 && !isTimeAlone ? value + Days1904 : value);
    return date ? Cell(*date) : Cell(value);
  }

  bool Spend(std::size_t& budget, std::size_t amount) {
    isTooBig_ = amount > budget;
    if (!isTooBig_) budget -= amount;
    return !isTooBig_;
  }

  bool Put(const CellHead& head, Cell cell) {
    if (head.Column >= MaxColumns) return false;
    if (std::holds_alternative<std::monostate>(cell)) return true;
    if (const auto* text = std::get_if<std::string>(&cell); text && !Spend(budget_.TextBytes, text->size())) {
      return false;
    }
    if (sheet_.Rows.size() <= head.Row) {
      if (!Spend(budget_.Cells, head.Row + 1 - sheet_.Rows.size())) return false;
      sheet_.Rows.resize(head.Row + 1);
    }
    Row& row = sheet_.Rows[head.Row];
    if (row.size() <= head.Column) {
      if (!Spend(budget_.Cells, head.Column + 1 - row.size())) return false;
      row.resize(head.Column + 1);
    }
    row[head.Column] = std::move(cell);
    return true;
  }

  RecordReader records_;
  const Globals& globals_;
  const SheetEntry& entry_;
  ReadingBudget& budget_;
  Sheet sheet_;
  std::optional<CellHead> formulaText_;
  bool isFrozen_ = false, isTooBig_ = false;
};

}  // namespace

Result<Sheet> ReadSheet(std::string_view stream, const Globals& globals, const SheetEntry& entry,
                        ReadingBudget& budget) {
  return SheetReader(stream, globals, entry, budget).Read();
}

}  // namespace velmora::tables
