#include "html/report_writer.h"

#include <algorithm>

#include "base/line_ends.h"
#include "html/converters.h"

namespace velmora::html {
namespace {

constexpr std::string_view HeadingSize = "4";
// The numbers of columns whose tables name their widths; a table of five never did.
constexpr std::array<std::size_t, 6> CountsWithWidths = {1, 2, 3, 4, 6, 7};

std::string_view OrBlank(std::string_view text) { return text.empty() ? " " : text; }

std::string Anchor(std::string_view attribute, std::string_view value) {
  return std::string("<A ").append(attribute).append("='").append(TextToHtml(value, false)).append("'>");
}

}  // namespace

std::string AnchorName(std::string_view name) { return Anchor("name", name); }
std::string AnchorHref(std::string_view target) { return Anchor("href", target); }
std::string AnchorEnd() { return "</A>"; }

void ReportWriter::InitReportStyle() {
  ReportStyle defaults;
  for (const std::size_t kept : {std::size_t{3}, std::size_t{6}})
    defaults.ColumnWidths[kept] = std::move(Style.ColumnWidths[kept]);
  Style = std::move(defaults);
}

void ReportWriter::SetColors(std::string_view background, std::string_view text) {
  Style.BgColor = background;
  Style.FgColor = text;
}

void ReportWriter::SetColumnWidths3(std::string_view first, std::string_view second, std::string_view third) {
  Style.ColumnWidths[3] = {std::string(first), std::string(second), std::string(third)};
}

void ReportWriter::WriteTitle(std::string_view text) {
  Add({"<TITLE>"});
  AddConverted(text);
  Add({"</TITLE>"});
  EndLine();
}

void ReportWriter::WriteHeadingBar(std::string_view text) {
  Add({"<TABLE BORDER='", Style.Border, "' bgcolor='", Style.BgColor,
       "' style='border-collapse: collapse' WIDTH='", Style.TableWidth, "'>", CrLf, "<TR><TD>"});
  AddFont(HeadingSize);
  Add({"<B>"});
  AddConverted(text);
  Add({"</B></FONT></TD></TR></TABLE>"});
  EndLine();
}

void ReportWriter::WriteTextBox(std::string_view text) { WriteBox("", text, ""); }
void ReportWriter::WriteBoldBox(std::string_view text) { WriteBox("<B>", text, "</B>"); }

void ReportWriter::WriteRule() {
  WriteLine({"<HR WIDTH='", Style.TableWidth, "' HEIGHT='5' align='", Style.Align, "'>"});
}

void ReportWriter::WriteBreaks(int count) {
  for (int i = 0; i < count; ++i) Add({"<BR>"});
  EndLine();
}

// The value boxes have no opening <TR>. Browsers supply it, and pages written before have none either.
void ReportWriter::WriteValueBox1(std::string_view text) {
  AddTable();
  Add({CrLf});
  AddValueCell(Style.TableWidth, text);
  Add({"</TR></TABLE>"});
  EndLine();
}

void ReportWriter::WriteValueBox2(std::string_view label, std::string_view value) {
  AddTable();
  Add({CrLf});
  AddValueCell(ColumnWidth(2, 0), label);
  Add({CrLf});
  AddValueCell(ColumnWidth(2, 1), value);
  Add({"</TR></TABLE>"});
  EndLine();
}

// "<ALIGN=..." is no tag, and browsers pass over it; it has always stood at the head of a table.
void ReportWriter::OpenReportTable(std::string_view caption, std::size_t columns) {
  Add({"<ALIGN='", Style.Align, "'>"});
  AddFont(Style.FontSize);
  Add({"<B>", caption, "</B></FONT>", CrLf});
  AddTable();
  Add({CrLf});
  if (std::find(CountsWithWidths.begin(), CountsWithWidths.end(), columns) != CountsWithWidths.end()) {
    Add({"<colgroup>", CrLf});
    for (std::size_t i = 0; i < columns; ++i) Add({"\t<col width='", ColumnWidth(columns, i), "'>", CrLf});
    Add({"</colgroup>", CrLf});
  }
  Add({"<TBODY>"});
  EndLine();
}

void ReportWriter::CloseReportTable() { WriteLine({"</TBODY></TABLE>"}); }

void ReportWriter::WriteRow1(std::string_view a) { WriteRow({{a, Style.Align}}); }

void ReportWriter::WriteRow2(std::string_view a, std::string_view b) {
  WriteRow({{a, Style.Align}, {b, Style.Align}});
}

void ReportWriter::WriteRow3(std::string_view a, std::string_view b, std::string_view c) {
  WriteRow({{a, Style.Align}, {b, Style.Align}, {c, Style.Align}});
}

void ReportWriter::WriteRow4(std::string_view a, std::string_view b, std::string_view c, std::string_view d,
                             std::string_view alignA, std::string_view alignB, std::string_view alignC,
                             std::string_view alignD) {
  WriteRow({{a, alignA}, {b, alignB}, {c, alignC}, {d, alignD}});
}

void ReportWriter::WriteRow5(std::string_view a, std::string_view b, std::string_view c, std::string_view d,
                             std::string_view e, std::string_view alignA, std::string_view alignB,
                             std::string_view alignC, std::string_view alignD, std::string_view alignE) {
  WriteRow({{a, alignA}, {b, alignB}, {c, alignC}, {d, alignD}, {e, alignE}});
}

void ReportWriter::WriteRow6(std::string_view a, std::string_view b, std::string_view c, std::string_view d,
                             std::string_view e, std::string_view f) {
  const std::string_view align = Style.Align;
  WriteRow({{a, align}, {b, align}, {c, align}, {d, align}, {e, align}, {f, align}});
}

void ReportWriter::WriteRow7(std::string_view a, std::string_view b, std::string_view c, std::string_view d,
                             std::string_view e, std::string_view f, std::string_view g) {
  const std::string_view align = Style.Align;
  WriteRow({{a, align}, {b, align}, {c, align}, {d, align}, {e, align}, {f, align}, {g, align}});
}

void ReportWriter::OpenContents() {
  AddFont(Style.FontSize);
  Add({"<B>Inhalt</B></FONT>", CrLf, "<UL type='square'>"});
  EndLine();
}

void ReportWriter::CloseContents() { WriteLine({"</UL>"}); }

void ReportWriter::WriteContentsItem(std::string_view text) {
  Add({"<LI> "});
  AddFont(Style.FontSize);
  AddConverted(OrBlank(text));
  Add({"</FONT></LI>"});
  EndLine();
}

void ReportWriter::WriteLine(std::initializer_list<std::string_view> pieces) {
  Add(pieces);
  EndLine();
}

void ReportWriter::Add(std::initializer_list<std::string_view> pieces) {
  for (const std::string_view piece : pieces) pending_ += piece;
}

void ReportWriter::AddConverted(std::string_view text) { AppendUmlautsToHtml(pending_, text); }

void ReportWriter::AddFont(std::string_view size) {
  Add({"<FONT face='", Style.FontFace, "' color='", Style.FgColor, "' size='", size, "'>"});
}

void ReportWriter::AddTable() {
  Add({"<TABLE BORDER='", Style.Border, "' style='border-collapse: collapse' WIDTH='", Style.TableWidth,
       "' bgcolor='", Style.BgColor, "'>"});
}

void ReportWriter::AddValueCell(std::string_view width, std::string_view text) {
  Add({"<TD WIDTH='", width, "'> "});
  AddFont(Style.FontSize);
  AddConverted(OrBlank(text));
  Add({"</FONT></TD>"});
}

void ReportWriter::EndLine() {
  pending_ += CrLf;
  // A write that fails is skipped: a report with a gap is worth more than none.
  if (stream_ != nullptr) (void)stream_->Write(pending_);
  pending_.clear();
}

void ReportWriter::WriteBox(std::string_view opening, std::string_view text, std::string_view closing) {
  AddTable();
  Add({"<TR><TD>", CrLf});
  AddFont(Style.FontSize);
  Add({opening});
  AddConverted(text);
  Add({closing, "</FONT></TD></TR></TABLE>"});
  EndLine();
}

void ReportWriter::WriteRow(std::initializer_list<Cell> cells) {
  Add({"<TR>"});
  for (const Cell& cell : cells) {
    Add({"<TD ALIGN='", cell.Align, "'> "});
    AddFont(Style.FontSize);
    AddConverted(OrBlank(cell.Text));
    Add({"</FONT></TD>", CrLf});
  }
  Add({"</TR>"});
  EndLine();
}

std::string_view ReportWriter::ColumnWidth(std::size_t columns, std::size_t index) const {
  const std::vector<std::string>& widths = Style.ColumnWidths[columns];
  return index < widths.size() ? std::string_view(widths[index]) : std::string_view{};
}

}  // namespace velmora::html
