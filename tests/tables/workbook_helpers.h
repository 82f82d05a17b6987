// What tests of workbooks share.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tables/cell_text.h"
#include "tables/compound_file.h"
#include "tables/record_writing.h"
#include "tables/workbook.h"

namespace velmora::tables {

inline DateTime At(int year, int month, int day, int hour = 0, int minute = 0, int second = 0) {
  return *DateTime::FromCivil({year, month, day, hour, minute, second});
}

inline Cell Text(std::string_view text) { return std::string(text); }

inline std::string Bytes(const Workbook& workbook) {
  const Result<std::string> file = FormatWorkbook(workbook);
  EXPECT_TRUE(file) << file.error().Text;
  return file.value_or("");
}

inline Workbook Parsed(std::string_view file) {
  const Result<Workbook> workbook = ParseWorkbook(file);
  EXPECT_TRUE(workbook) << workbook.error().Text;
  return workbook.value_or(Workbook{});
}

// What a workbook becomes on its way through a file.
inline Workbook RoundTrip(const Workbook& workbook) { return Parsed(Bytes(workbook)); }

inline std::vector<Row> RoundTrip(std::vector<Row> rows) {
  Workbook workbook = RoundTrip(Workbook{{Sheet{"Blatt", std::move(rows)}}});
  return workbook.Sheets.empty() ? std::vector<Row>{} : std::move(workbook.Sheets.front().Rows);
}

// A record stream put together by hand, as other programs write them or as no program would.
class StreamBuilder {
 public:
  template <typename... Parts>
  StreamBuilder& Add(biff::Id id, Parts... parts) {
    AppendRecord(stream_, id, parts...);
    return *this;
  }
  StreamBuilder& Start(std::uint16_t substream, std::uint16_t version = biff::VersionBiff8) {
    return Add(biff::Id::Bof, version, substream, std::uint32_t{0}, std::uint64_t{0});
  }
  StreamBuilder& End() { return Add(biff::Id::Eof); }
  // The sheet's entry in the globals; the sheet begins where ThenSheet is called.
  StreamBuilder& Entry(std::string_view name) {
    places_.push_back(stream_.size() + biff::RecordHeaderSize);
    return Add(biff::Id::BoundSheet, std::uint32_t{0}, biff::SheetVisible, biff::SheetTypeWorksheet,
               std::string_view(EncodedText(name).Whole<std::uint8_t>()));
  }
  StreamBuilder& ThenSheet() {
    Point(started_++, stream_.size());
    return Start(biff::SubstreamSheet);
  }
  // Lets the entry name any place of the stream as the start of its sheet.
  void Point(std::size_t entry, std::size_t start) {
    PutLittle(stream_, places_[entry], static_cast<std::uint32_t>(start));
  }
  std::string& Stream() { return stream_; }
  std::string File() const { return *MakeCompoundFile(stream_); }

 private:
  std::string stream_;
  std::vector<std::size_t> places_;
  std::size_t started_ = 0;
};

}  // namespace velmora::tables
