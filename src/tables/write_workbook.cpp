// A workbook as a file: the record stream begins with what holds for the whole workbook
// ([MS-XLS] 2.1.7.20.3), then one part for each sheet follows.

#include <algorithm>
#include <array>
#include <cstdint>
#include <set>
#include <vector>

#include "base/text.h"
#include "tables/compound_file.h"
#include "tables/record_writing.h"
#include "tables/shared_strings.h"
#include "tables/sheet_writing.h"
#include "tables/utf16.h"
#include "tables/workbook.h"

namespace velmora::tables {
namespace {

using biff::Id;

constexpr std::size_t MaxNameUnits = 31;
constexpr std::string_view ForbiddenInNames = "[]:*?/\\";
constexpr std::uint16_t CountryGermany = 49;

constexpr std::string_view Author = "Velmora";
constexpr std::size_t AuthorSize = 112;  // padded with blanks (2.4.349 WriteAccess)

// --- What must hold before anything is written. ---

Status CheckName(const std::string& name) {
  const bool isValid = !name.empty() && CountUtf16(name) <= MaxNameUnits &&
                       name.find_first_of(ForbiddenInNames) == std::string::npos &&
                       BlankControlCharacters(name) == name && name.front() != '\'' && name.back() != '\'';
  if (isValid) return {};
  return Fail(table_error::BadSheetName, "Ungültiger Name eines Tabellenblatts: " + name);
}

Status CheckNames(const Workbook& workbook) {
  if (workbook.Sheets.empty()) {
    return Fail(table_error::SheetMissing, "Die Arbeitsmappe hat kein Tabellenblatt");
  }
  std::set<std::string> names;
  for (const Sheet& sheet : workbook.Sheets) {
    if (Status checked = CheckName(sheet.Name); !checked) return checked;
    if (!names.insert(FoldCase(sheet.Name)).second) {
      return Fail(table_error::BadSheetName, "Zwei Tabellenblätter heißen " + sheet.Name);
    }
  }
  // As many as a two-byte count of them can say.
  if (workbook.Sheets.size() > MaxSheets) {
    return Fail(table_error::SheetFull, "Die Arbeitsmappe hat zu viele Tabellenblätter");
  }
  return {};
}

Status CheckBounds(const Workbook& workbook) {
  const auto full = [](const std::string& sheet) {
    return Fail(table_error::SheetFull, "Das Tabellenblatt ist voll: " + sheet);
  };
  std::size_t cells = 0, textBytes = 0;
  for (const Sheet& sheet : workbook.Sheets) {
    if (sheet.Rows.size() > MaxRows) return full(sheet.Name);
    for (const Row& row : sheet.Rows) {
      if (row.size() > MaxColumns) return full(sheet.Name);
      cells += row.size() + 1;
      for (const Cell& cell : row) {
        const auto* text = std::get_if<std::string>(&cell);
        if (text == nullptr) continue;
        textBytes += text->size();
        if (text->size() > MaxCellText && CountUtf16(*text) > MaxCellText) {
          return Fail(table_error::TextTooLong, "Der Text einer Zelle ist zu lang: " + sheet.Name);
        }
      }
    }
    if (cells > MaxCells || textBytes > MaxTextBytes) return full(sheet.Name);
  }
  return {};
}

// --- What holds for the whole workbook. ---

void AppendFont(std::string& stream, bool isBold) {
  constexpr std::uint16_t height = 200;  // twentieths of a point
  constexpr std::uint16_t automaticColor = 0x7FFF, normal = 400, bold = 700;
  AppendRecord(stream, Id::Font, height, std::uint16_t{0}, automaticColor, isBold ? bold : normal,
               std::uint16_t{0}, std::uint32_t{0},
               std::string_view(EncodedText("Arial").Whole<std::uint8_t>()));
}

// Four fonts are the default's, and the number 4 is never used: what stands fifth is number 5 (2.4.122).
constexpr int DefaultFonts = 4;
constexpr std::uint16_t DefaultFont = 0, BoldFont = 5;

struct NumberFormat {
  std::uint16_t Number;
  std::string_view Code;
};
// Numbers below 164 are Excel's own (2.4.126).
constexpr std::uint16_t GeneralFormat = 0;
constexpr NumberFormat DateAndTimeFormat = {164, "dd\\.mm\\.yyyy\\ hh:mm:ss"},
                       DateFormat = {165, "dd\\.mm\\.yyyy"}, TimeFormat = {166, "hh:mm:ss"};
constexpr NumberFormat OwnFormats[] = {DateAndTimeFormat, DateFormat, TimeFormat};

// 2.4.353: the parent of a style's format is none; a cell's is the first style.
constexpr std::uint16_t StyleXf = 0xFFF5, CellXf = 0x0001;
constexpr int StyleFormats = 15;

void AppendXf(std::string& stream, std::uint16_t font, std::uint16_t numberFormat, std::uint16_t kind) {
  constexpr std::uint8_t bottomAligned = 0x20;
  constexpr std::uint16_t automaticColors = 0x20C0;
  const auto isUsed = [](bool holds, unsigned bit) { return holds ? bit : 0U; };
  const unsigned used = isUsed(numberFormat != GeneralFormat, 0x04) | isUsed(font != DefaultFont, 0x08);
  AppendRecord(stream, Id::Xf, font, numberFormat, kind, bottomAligned, std::uint8_t{0}, std::uint8_t{0},
               static_cast<std::uint8_t>(used), std::uint64_t{0}, automaticColors);
}

void AppendFormatting(std::string& stream) {
  for (int i = 0; i < DefaultFonts; ++i) AppendFont(stream, false);
  AppendFont(stream, true);
  for (const NumberFormat& format : OwnFormats) {
    AppendRecord(stream, Id::Format, format.Number,
                 std::string_view(EncodedText(format.Code).Whole<std::uint16_t>()));
  }
  for (int i = 0; i < StyleFormats; ++i) AppendXf(stream, DefaultFont, GeneralFormat, StyleXf);
  // In the order of CellFormat.
  AppendXf(stream, DefaultFont, GeneralFormat, CellXf);
  AppendXf(stream, BoldFont, GeneralFormat, CellXf);
  for (const NumberFormat& format : OwnFormats) {
    AppendXf(stream, DefaultFont, format.Number, CellXf);
  }
  constexpr std::uint16_t builtInStyle = 0x8000;  // of the format 0: "Normal" (2.4.269)
  AppendRecord(stream, Id::Style, builtInStyle, std::uint8_t{0}, std::uint8_t{0xFF});
}

void AppendSwitch(std::string& stream, Id id, bool isOn) {
  AppendRecord(stream, id, static_cast<std::uint16_t>(isOn));
}

void AppendOrigin(std::string& stream, std::size_t sheets) {
  AppendRecord(stream, Id::InterfaceHdr, biff::CodePageUtf16);
  AppendRecord(stream, Id::Mms, std::uint16_t{0});
  AppendRecord(stream, Id::InterfaceEnd);
  std::string author = EncodedText(Author).Whole<std::uint16_t>();
  author.resize(AuthorSize, ' ');
  AppendRecord(stream, Id::WriteAccess, std::string_view(author));
  AppendRecord(stream, Id::CodePage, biff::CodePageUtf16);
  AppendSwitch(stream, Id::Dsf, false);
  std::string ids;
  for (std::size_t i = 1; i <= sheets; ++i) AppendLittle(ids, static_cast<std::uint16_t>(i));
  AppendRecord(stream, Id::RRTabId, std::string_view(ids));
  AppendRecord(stream, Id::BuiltInFnGroupCount, std::uint16_t{0x000E});
}

void AppendWindow(std::string& stream, std::size_t shown) {
  // Left, top, width and height in twentieths of a point; scroll bars and tabs; tabs as wide as 60 percent.
  AppendRecord(stream, Id::Window1, std::uint16_t{360}, std::uint16_t{270}, std::uint16_t{14940},
               std::uint16_t{9150}, std::uint16_t{0x0038}, static_cast<std::uint16_t>(shown),
               std::uint16_t{0}, std::uint16_t{1}, std::uint16_t{600});
}

// Appends the list of the sheets, whose places in the stream are not known yet; answers where each is to be
// written.
std::vector<std::size_t> AppendSheetList(std::string& stream, const Workbook& workbook, std::size_t shown) {
  std::vector<std::size_t> places;
  for (std::size_t i = 0; i < workbook.Sheets.size(); ++i) {
    places.push_back(stream.size() + biff::RecordHeaderSize);
    const bool isHidden = workbook.Sheets[i].IsHidden && i != shown;
    AppendRecord(stream, Id::BoundSheet, std::uint32_t{0}, isHidden ? biff::SheetHidden : biff::SheetVisible,
                 biff::SheetTypeWorksheet,
                 std::string_view(EncodedText(workbook.Sheets[i].Name).Whole<std::uint8_t>()));
  }
  return places;
}

// The first sheet that is not hidden; a workbook without one shows its first.
std::size_t ShownSheet(const Workbook& workbook) {
  const auto found = std::ranges::find(workbook.Sheets, false, &Sheet::IsHidden);
  return found == workbook.Sheets.end() ? 0 : static_cast<std::size_t>(found - workbook.Sheets.begin());
}

std::string MakeStream(const Workbook& workbook) {
  const std::size_t shown = ShownSheet(workbook);
  // The sheets first: the texts of their cells belong to the globals.
  std::string sheets;
  SharedStrings strings;
  std::vector<std::size_t> starts;
  for (std::size_t i = 0; i < workbook.Sheets.size(); ++i) {
    starts.push_back(sheets.size());
    AppendSheet(sheets, workbook.Sheets[i], i == shown, strings);
  }

  std::string stream;
  AppendRecord(stream, Id::Bof, biff::VersionBiff8, biff::SubstreamGlobals, biff::BuildOfExcel97,
               biff::YearOfExcel97, biff::BofFlags, biff::LowestVersion);
  AppendOrigin(stream, workbook.Sheets.size());
  for (const Id id : {Id::WinProtect, Id::Protect, Id::Password, Id::Prot4Rev, Id::Prot4RevPass}) {
    AppendSwitch(stream, id, false);
  }
  AppendWindow(stream, shown);
  for (const Id id : {Id::Backup, Id::HideObj, Id::Date1904}) AppendSwitch(stream, id, false);
  AppendSwitch(stream, Id::CalcPrecision, true);
  for (const Id id : {Id::RefreshAll, Id::BookBool}) AppendSwitch(stream, id, false);
  AppendFormatting(stream);
  AppendSwitch(stream, Id::UsesElfs, false);
  const std::vector<std::size_t> places = AppendSheetList(stream, workbook, shown);
  AppendRecord(stream, Id::Country, CountryGermany, CountryGermany);
  strings.AppendTo(stream);
  AppendRecord(stream, Id::Eof);
  for (std::size_t i = 0; i < places.size(); ++i) {
    PutLittle(stream, places[i], static_cast<std::uint32_t>(stream.size() + starts[i]));
  }
  return stream + sheets;
}

}  // namespace

Result<std::string> FormatWorkbook(const Workbook& workbook) {
  if (Status checked = CheckNames(workbook); !checked) return Fail(checked.error());
  if (Status checked = CheckBounds(workbook); !checked) return Fail(checked.error());
  Result<std::string> file = MakeCompoundFile(MakeStream(workbook));
  if (file && file->size() > MaxFileSize) {
    return Fail(table_error::SheetFull, "Die Arbeitsmappe ist zu groß");
  }
  return file;
}

Status WriteWorkbook(platform::FileSystem& fileSystem, std::string_view path, const Workbook& workbook) {
  const Result<std::string> bytes = FormatWorkbook(workbook);
  if (!bytes) return Fail(bytes.error());
  return fileSystem.ReplaceFile(path, *bytes);
}

}  // namespace velmora::tables
