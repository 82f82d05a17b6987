#include "tables/globals_reading.h"

#include <map>
#include <optional>

#include "tables/record_reading.h"
#include "tables/table_errors.h"

namespace velmora::tables {
namespace {

using biff::Id;

class GlobalsReader {
 public:
  explicit GlobalsReader(std::string_view stream) : records_(stream) {}

  Result<Globals> Read() {
    const std::optional<Record> first = records_.Next();
    if (!first || !IsStart(*first)) return FailDamaged();
    for (;;) {
      const std::optional<Record> record = records_.Next();
      if (!record) return FailDamaged();
      if (record->Id == Id::Eof) break;
      if (record->Id == Id::FilePass) {
        return Fail(table_error::NotAWorkbook, "Die Arbeitsmappe ist verschlüsselt");
      }
      const bool isSound = Take(*record);
      if (IsTooBig()) return FailTooBig();
      if (!isSound) return FailDamaged();
    }
    globals_.End = records_.Position();
    for (const std::uint16_t format : numberFormats_) globals_.CellFormats.push_back(KindOf(format));
    return std::move(globals_);
  }

 private:
  // An empty text takes three bytes of the file and many times as much here. No more texts than cells are of
  // any use.
  bool IsTooBig() const {
    return globals_.Sheets.size() > MaxSheets || globals_.Strings.size() > MaxCells ||
           textBytes_ > MaxTextBytes;
  }

  bool IsStart(const Record& record) {
    if (record.Id != Id::Bof || record.Data.size() < 2 * sizeof(std::uint16_t)) return false;
    const auto version = ReadLittle<std::uint16_t>(record.Data, 0);
    if (version == biff::VersionBiff5) globals_.Texts = TextForm::Biff5;
    return (version == biff::VersionBiff8 || version == biff::VersionBiff5) &&
           ReadLittle<std::uint16_t>(record.Data, sizeof version) == biff::SubstreamGlobals;
  }

  // Whether the record is sound.
  bool Take(const Record& record) {
    switch (record.Id) {
      case Id::Date1904: {
        const auto isOn = PieceReader({record.Data}).Number<std::uint16_t>();
        globals_.Is1904 = isOn.value_or(0) != 0;
        return isOn.has_value();
      }
      case Id::Format:
        return TakeFormat(record);
      case Id::Xf:
        return TakeCellFormat(record);
      case Id::BoundSheet:
        return TakeSheet(record);
      case Id::Sst:
        return TakeStrings(record);
      default:
        return true;
    }
  }

  bool TakeFormat(const Record& record) {
    PieceReader data({record.Data});
    const auto number = data.Number<std::uint16_t>();
    const auto code = globals_.Texts == TextForm::Biff8 ? data.RichText() : data.ShortText(globals_.Texts);
    if (!number || !code) return false;
    formats_[*number] = KindOfFormatCode(*code);
    return true;
  }

  bool TakeCellFormat(const Record& record) {
    PieceReader data({record.Data});
    if (!data.Number<std::uint16_t>()) return false;  // the font
    const auto format = data.Number<std::uint16_t>();
    if (format) numberFormats_.push_back(*format);
    return format.has_value();
  }

  bool TakeSheet(const Record& record) {
    PieceReader data({record.Data});
    const auto start = data.Number<std::uint32_t>();
    const auto state = data.Number<std::uint8_t>();
    const auto type = data.Number<std::uint8_t>();
    auto name = data.ShortText(globals_.Texts);
    if (!start || !state || !type || !name) return false;
    constexpr std::uint8_t stateBits = 0x03;
    globals_.Sheets.push_back({std::move(*name), *start, *type == biff::SheetTypeWorksheet,
                               (*state & stateBits) != biff::SheetVisible});
    return true;
  }

  bool TakeStrings(const Record& record) {
    PieceReader data(records_.WithContinuations(record));
    const auto uses = data.Number<std::uint32_t>();
    const auto count = data.Number<std::uint32_t>();
    if (!uses || !count) return false;
    for (std::uint32_t i = 0; i < *count && !IsTooBig(); ++i) {
      auto text = data.RichText();
      if (!text) return false;
      textBytes_ += text->size();
      globals_.Strings.push_back(std::move(*text));
    }
    return true;
  }

  DateKind KindOf(std::uint16_t format) const {
    const auto own = formats_.find(format);
    return own != formats_.end() ? own->second : KindOfBuiltInFormat(format);
  }

  RecordReader records_;
  Globals globals_;
  std::map<std::uint16_t, DateKind> formats_;
  std::vector<std::uint16_t> numberFormats_;
  std::size_t textBytes_ = 0;
};

}  // namespace

Result<Globals> ReadGlobals(std::string_view stream) { return GlobalsReader(stream).Read(); }

}  // namespace velmora::tables
