// The blocks and tables of which all reports and indexes are made, written line by line (CR LF) to a stream
// in the current style. Texts are UTF-8 and may hold HTML: umlauts become entities, "<", ">" and "&" stay. A
// failed write is skipped and the next one goes on; without a stream nothing is written.
#pragma once

#include <array>
#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "html/report_stream.h"

namespace velmora::html {

// The values that every block reads when it writes. Writers change them as they go; they stay.
struct ReportStyle {
  std::string BgColor = "#99CCFF";
  std::string FgColor = "#000000";
  std::string Border = "1";
  std::string FontSize = "4";
  std::string FontFace = "Arial";
  std::string PageWidth = "100%";  // of the title bar
  std::string TextWidth = "100%";  // of the tables of text
  std::string TableWidth = TextWidth;
  std::string RowHeight = "20";  // written nowhere
  std::string Align = "left";
  // The widths of a table's columns, by the number of columns.
  std::array<std::vector<std::string>, 8> ColumnWidths = {
      {{},
       {"100%"},
       {"20%", "80%"},
       {"40%", "20%", "40%"},
       {"20%", "5%", "70%", "5%"},
       {"39%", "19%", "5%", "7%", "7%"},
       {},
       {"15%", "10%", "15%", "15%", "15%", "15%", "15%"}}};
};

// Anchors and links as text. Names and targets pass through TextToHtml: a blank in them becomes "&nbsp;".
std::string AnchorName(std::string_view name);
std::string AnchorHref(std::string_view target);
std::string AnchorEnd();

class ReportWriter {
 public:
  // `stream` outlives the writer or the next SetStream.
  explicit ReportWriter(ReportStream* stream = nullptr) : stream_(stream) {}
  void SetStream(ReportStream* stream) { stream_ = stream; }

  ReportStyle Style;
  // The defaults of all style fields and of the presets for 1, 2, 4, 5 and 7 columns; those for 3 and 6 are
  // their callers' and stay.
  void InitReportStyle();
  void SetColors(std::string_view background, std::string_view text);
  void SetColumnWidths3(std::string_view first = "40%", std::string_view second = "20%",
                        std::string_view third = "40%");

  // --- Blocks. ---
  void WriteTitle(std::string_view text);
  void WriteHeadingBar(std::string_view text);  // always in size 4
  void WriteTextBox(std::string_view text);
  void WriteBoldBox(std::string_view text);
  void WriteRule();
  void WriteBreaks(int count);
  void WriteValueBox1(std::string_view text);
  void WriteValueBox2(std::string_view label, std::string_view value);

  // --- Tables. An empty cell is written as one blank, so that it exists. ---
  void OpenReportTable(std::string_view caption, std::size_t columns);  // five columns get no widths
  void CloseReportTable();
  void WriteRow1(std::string_view a);
  void WriteRow2(std::string_view a, std::string_view b);
  void WriteRow3(std::string_view a, std::string_view b, std::string_view c);
  void WriteRow4(std::string_view a, std::string_view b, std::string_view c, std::string_view d,
                 std::string_view alignA, std::string_view alignB, std::string_view alignC,
                 std::string_view alignD);
  void WriteRow5(std::string_view a, std::string_view b, std::string_view c, std::string_view d,
                 std::string_view e, std::string_view alignA, std::string_view alignB,
                 std::string_view alignC, std::string_view alignD, std::string_view alignE);
  void WriteRow6(std::string_view a, std::string_view b, std::string_view c, std::string_view d,
                 std::string_view e, std::string_view f);
  void WriteRow7(std::string_view a, std::string_view b, std::string_view c, std::string_view d,
                 std::string_view e, std::string_view f, std::string_view g);

  // --- Contents. ---
  void OpenContents();
  void CloseContents();
  void WriteContentsItem(std::string_view text);

  // --- Lines as they are, without any conversion. ---
  void WriteLine(std::initializer_list<std::string_view> pieces);

 private:
  struct Cell {
    std::string_view Text;
    std::string_view Align;
  };

  void Add(std::initializer_list<std::string_view> pieces);
  void AddConverted(std::string_view text);
  void AddFont(std::string_view size);
  void AddTable();
  void AddValueCell(std::string_view width, std::string_view text);
  void EndLine();
  void WriteBox(std::string_view opening, std::string_view text, std::string_view closing);
  void WriteRow(std::initializer_list<Cell> cells);
  std::string_view ColumnWidth(std::size_t columns, std::size_t index) const;

  ReportStream* stream_;
  std::string pending_;  // the lines of one block, on their way to the stream
};

}  // namespace velmora::html
