// The vocabulary of BIFF8, the record stream of a workbook: the records that are read or written, and the
// layouts that both sides share. Section numbers are those of [MS-XLS].
#pragma once

#include <cstddef>
#include <cstdint>

namespace velmora::tables::biff {

// Identifiers of records (2.3.2).
enum class Id : std::uint16_t {
  Formula = 0x0006,
  Eof = 0x000A,
  CalcCount = 0x000C,
  CalcMode = 0x000D,
  CalcPrecision = 0x000E,
  CalcRefMode = 0x000F,
  CalcDelta = 0x0010,
  CalcIter = 0x0011,
  Protect = 0x0012,
  Password = 0x0013,
  Header = 0x0014,
  Footer = 0x0015,
  WinProtect = 0x0019,
  Selection = 0x001D,
  Date1904 = 0x0022,
  PrintRowCol = 0x002A,
  PrintGrid = 0x002B,
  FilePass = 0x002F,
  Font = 0x0031,
  Continue = 0x003C,
  Window1 = 0x003D,
  Backup = 0x0040,
  Pane = 0x0041,
  CodePage = 0x0042,
  DefColWidth = 0x0055,
  WriteAccess = 0x005C,
  CalcSaveRecalc = 0x005F,
  ColInfo = 0x007D,
  Guts = 0x0080,
  WsBool = 0x0081,
  GridSet = 0x0082,
  HCenter = 0x0083,
  VCenter = 0x0084,
  BoundSheet = 0x0085,
  Country = 0x008C,
  HideObj = 0x008D,
  BuiltInFnGroupCount = 0x009C,
  Setup = 0x00A1,
  MulRk = 0x00BD,
  Mms = 0x00C1,
  RString = 0x00D6,
  BookBool = 0x00DA,
  Xf = 0x00E0,
  InterfaceHdr = 0x00E1,
  InterfaceEnd = 0x00E2,
  Sst = 0x00FC,
  LabelSst = 0x00FD,
  ExtSst = 0x00FF,
  RRTabId = 0x013D,
  UsesElfs = 0x0160,
  Dsf = 0x0161,
  Prot4Rev = 0x01AF,
  RefreshAll = 0x01B7,
  Prot4RevPass = 0x01BC,
  Dimensions = 0x0200,
  Number = 0x0203,
  Label = 0x0204,
  BoolErr = 0x0205,
  String = 0x0207,
  Row = 0x0208,
  DefaultRowHeight = 0x0225,
  Window2 = 0x023E,
  Rk = 0x027E,
  Style = 0x0293,
  Format = 0x041E,
  Bof = 0x0809,
};

inline constexpr std::size_t RecordHeaderSize = 4;  // identifier and length
inline constexpr std::size_t MaxRecordData = 8224;  // what does not fit goes on in CONTINUE records (2.1.4)

// BOF (2.4.21).
inline constexpr std::uint16_t VersionBiff8 = 0x0600, VersionBiff5 = 0x0500;
inline constexpr std::uint16_t SubstreamGlobals = 0x0005, SubstreamSheet = 0x0010;
inline constexpr std::uint16_t BuildOfExcel97 = 0x0DBB, YearOfExcel97 = 0x07CC;
inline constexpr std::uint32_t BofFlags = 0x00000001, LowestVersion = 0x00000006;  // written on Windows

// BoundSheet8 (2.4.28).
inline constexpr std::uint8_t SheetTypeWorksheet = 0;
inline constexpr std::uint8_t SheetVisible = 0, SheetHidden = 1;

inline constexpr std::uint16_t CodePageUtf16 = 1200;  // 2.4.52 CodePage

// Flags of XLUnicodeString and XLUnicodeRichExtendedString (2.5.294, 2.5.293).
inline constexpr std::uint8_t HighByte = 0x01, ExtString = 0x04, RichString = 0x08;

// Window2 (2.4.346).
inline constexpr std::uint16_t WindowGrid = 0x0002, WindowHeadings = 0x0004, WindowFrozen = 0x0008,
                               WindowZeros = 0x0010, WindowDefaultColor = 0x0020, WindowGuts = 0x0080,
                               WindowFrozenNoSplit = 0x0100, WindowSelected = 0x0200, WindowActive = 0x0400;

}  // namespace velmora::tables::biff
