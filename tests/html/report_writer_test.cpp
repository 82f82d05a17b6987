#include "html/report_writer.h"

#include <gtest/gtest.h>

namespace velmora::html {
namespace {

constexpr std::string_view Font = "<FONT face='Arial' color='#000000' size='4'>";

class ReportWriterTest : public testing::Test {
 protected:
  ReportWriterTest() { writer.InitReportStyle(); }
  std::string Written() { return stream.TakeText(); }
  static std::string WithFont(std::string_view before, std::string_view after) {
    return std::string(before).append(Font).append(after);
  }

  StringReportStream stream;
  ReportWriter writer{&stream};
};

TEST_F(ReportWriterTest, DefaultStyle) {
  writer.Style.BgColor = writer.Style.FgColor = writer.Style.Border = writer.Style.FontSize = "x";
  writer.Style.FontFace = writer.Style.PageWidth = writer.Style.TextWidth = writer.Style.TableWidth = "x";
  writer.Style.RowHeight = writer.Style.Align = "x";
  writer.InitReportStyle();
  EXPECT_EQ(writer.Style.BgColor, "#99CCFF");
  EXPECT_EQ(writer.Style.FgColor, "#000000");
  EXPECT_EQ(writer.Style.Border, "1");
  EXPECT_EQ(writer.Style.FontSize, "4");
  EXPECT_EQ(writer.Style.FontFace, "Arial");
  EXPECT_EQ(writer.Style.PageWidth, "100%");
  EXPECT_EQ(writer.Style.TextWidth, "100%");
  EXPECT_EQ(writer.Style.TableWidth, "100%");
  EXPECT_EQ(writer.Style.RowHeight, "20");
  EXPECT_EQ(writer.Style.Align, "left");
}

TEST_F(ReportWriterTest, InitLeavesThePresetsOfThreeAndSixColumns) {
  for (std::vector<std::string>& widths : writer.Style.ColumnWidths) widths = {"1%"};
  writer.InitReportStyle();
  using Widths = std::vector<std::string>;
  EXPECT_EQ(writer.Style.ColumnWidths[1], (Widths{"100%"}));
  EXPECT_EQ(writer.Style.ColumnWidths[2], (Widths{"20%", "80%"}));
  EXPECT_EQ(writer.Style.ColumnWidths[3], (Widths{"1%"}));
  EXPECT_EQ(writer.Style.ColumnWidths[4], (Widths{"20%", "5%", "70%", "5%"}));
  EXPECT_EQ(writer.Style.ColumnWidths[5], (Widths{"39%", "19%", "5%", "7%", "7%"}));
  EXPECT_EQ(writer.Style.ColumnWidths[6], (Widths{"1%"}));
  EXPECT_EQ(writer.Style.ColumnWidths[7], (Widths{"15%", "10%", "15%", "15%", "15%", "15%", "15%"}));
  writer.SetColumnWidths3();
  EXPECT_EQ(writer.Style.ColumnWidths[3], (Widths{"40%", "20%", "40%"}));
}

TEST_F(ReportWriterTest, Title) {
  writer.WriteTitle("Größe <1>");
  EXPECT_EQ(Written(), "<TITLE>Gr&ouml;&szlig;e <1></TITLE>\r\n");
}

TEST_F(ReportWriterTest, HeadingBarStaysAtSizeFour) {
  // Headings look alike in all reports, whatever size the text before them had.
  writer.Style.FontSize = "1";
  writer.WriteHeadingBar("Übersicht");
  EXPECT_EQ(Written(),
            "<TABLE BORDER='1' bgcolor='#99CCFF' style='border-collapse: collapse' WIDTH='100%'>\r\n"
            "<TR><TD><FONT face='Arial' color='#000000' "
            "size='4'><B>&Uuml;bersicht</B></FONT></TD></TR></TABLE>\r\n");
}

TEST_F(ReportWriterTest, TextBoxAndBoldBox) {
  const std::string table =
      "<TABLE BORDER='1' style='border-collapse: collapse' WIDTH='100%' bgcolor='#99CCFF'><TR><TD>\r\n";
  writer.WriteTextBox("a");
  EXPECT_EQ(Written(), table + WithFont("", "a</FONT></TD></TR></TABLE>\r\n"));
  writer.WriteBoldBox("<a href=\"x\">ä</a>");
  EXPECT_EQ(Written(), table + WithFont("", "<B><a href=\"x\">&auml;</a></B></FONT></TD></TR></TABLE>\r\n"));
}

TEST_F(ReportWriterTest, RuleAndBreaks) {
  writer.WriteRule();
  EXPECT_EQ(Written(), "<HR WIDTH='100%' HEIGHT='5' align='left'>\r\n");
  writer.WriteBreaks(3);
  EXPECT_EQ(Written(), "<BR><BR><BR>\r\n");
  writer.WriteBreaks(0);
  EXPECT_EQ(Written(), "\r\n");
}

TEST_F(ReportWriterTest, ValueBoxesHaveNoOpeningRow) {
  // The pages have always been so; whatever reads them back looks for this text.
  const std::string table =
      "<TABLE BORDER='1' style='border-collapse: collapse' WIDTH='100%' bgcolor='#99CCFF'>\r\n";
  writer.WriteValueBox1("a");
  EXPECT_EQ(Written(), table + WithFont("<TD WIDTH='100%'> ", "a</FONT></TD></TR></TABLE>\r\n"));
  writer.WriteValueBox2("a", "");
  EXPECT_EQ(Written(), table + WithFont("<TD WIDTH='20%'> ", "a</FONT></TD>\r\n") +
                           WithFont("<TD WIDTH='80%'> ", " </FONT></TD></TR></TABLE>\r\n"));
}

TEST_F(ReportWriterTest, TableWithWidths) {
  writer.OpenReportTable("", 2);
  // The tag ALIGN is none that a browser knows; it stands there even without a caption.
  EXPECT_EQ(Written(),
            WithFont("<ALIGN='left'>", "<B></B></FONT>\r\n") +
                "<TABLE BORDER='1' style='border-collapse: collapse' WIDTH='100%' bgcolor='#99CCFF'>\r\n"
                "<colgroup>\r\n\t<col width='20%'>\r\n\t<col width='80%'>\r\n</colgroup>\r\n<TBODY>\r\n");
  writer.CloseReportTable();
  EXPECT_EQ(Written(), "</TBODY></TABLE>\r\n");
}

TEST_F(ReportWriterTest, FiveColumnsAndOddCountsHaveNoWidths) {
  for (const std::size_t columns : {0U, 5U, 8U, 1000U}) {
    writer.OpenReportTable("x", columns);
    EXPECT_EQ(Written().find("colgroup"), std::string::npos) << columns;
  }
  for (const std::size_t columns : {1U, 2U, 3U, 4U, 6U, 7U}) {
    writer.OpenReportTable("x", columns);
    const std::string text = Written();
    std::size_t count = 0;
    for (std::size_t at = text.find("<col "); at != std::string::npos; at = text.find("<col ", at + 1))
      ++count;
    EXPECT_EQ(count, columns);
  }
}

TEST_F(ReportWriterTest, RowsOfCurrentAlignment) {
  writer.Style.Align = "right";
  const auto cell = [](std::string_view text) {
    return WithFont("<TD ALIGN='right'> ", std::string(text) + "</FONT></TD>\r\n");
  };
  writer.WriteRow1("a");
  EXPECT_EQ(Written(), "<TR>" + cell("a") + "</TR>\r\n");
  writer.WriteRow2("a", "b");
  EXPECT_EQ(Written(), "<TR>" + cell("a") + cell("b") + "</TR>\r\n");
  writer.WriteRow3("a", "b", "c");
  EXPECT_EQ(Written(), "<TR>" + cell("a") + cell("b") + cell("c") + "</TR>\r\n");
  writer.WriteRow6("1", "2", "3", "4", "5", "6");
  EXPECT_EQ(Written(),
            "<TR>" + cell("1") + cell("2") + cell("3") + cell("4") + cell("5") + cell("6") + "</TR>\r\n");
  writer.WriteRow7("1", "2", "3", "4", "5", "6", "7");
  EXPECT_EQ(Written(), "<TR>" + cell("1") + cell("2") + cell("3") + cell("4") + cell("5") + cell("6") +
                           cell("7") + "</TR>\r\n");
}

TEST_F(ReportWriterTest, RowsWithAnAlignmentPerCell) {
  const auto cell = [](std::string_view align, std::string_view text) {
    return WithFont("<TD ALIGN='" + std::string(align) + "'> ", std::string(text) + "</FONT></TD>\r\n");
  };
  writer.WriteRow4("a", "b", "c", "d", "left", "center", "right", "x");
  EXPECT_EQ(Written(), "<TR>" + cell("left", "a") + cell("center", "b") + cell("right", "c") +
                           cell("x", "d") + "</TR>\r\n");
  writer.WriteRow5("a", "b", "c", "d", "e", "1", "2", "3", "4", "5");
  EXPECT_EQ(Written(), "<TR>" + cell("1", "a") + cell("2", "b") + cell("3", "c") + cell("4", "d") +
                           cell("5", "e") + "</TR>\r\n");
}

TEST_F(ReportWriterTest, EmptyCellsHoldOneBlankAndHtmlStays) {
  writer.WriteRow1("");
  EXPECT_EQ(Written(), "<TR>" + WithFont("<TD ALIGN='left'> ", " </FONT></TD>\r\n") + "</TR>\r\n");
  writer.WriteRow1("<B>ß & x</B>");
  EXPECT_EQ(Written(),
            "<TR>" + WithFont("<TD ALIGN='left'> ", "<B>&szlig; & x</B></FONT></TD>\r\n") + "</TR>\r\n");
}

TEST_F(ReportWriterTest, Contents) {
  writer.OpenContents();
  writer.WriteContentsItem(AnchorHref("#siteprop") + "Übersicht" + AnchorEnd());
  writer.WriteContentsItem("");
  writer.CloseContents();
  EXPECT_EQ(Written(), WithFont("", "<B>Inhalt</B></FONT>\r\n<UL type='square'>\r\n") +
                           WithFont("<LI> ", "<A href='#siteprop'>&Uuml;bersicht</A></FONT></LI>\r\n") +
                           WithFont("<LI> ", " </FONT></LI>\r\n") + "</UL>\r\n");
}

TEST(AnchorTest, TargetsAreConvertedAndBlanksWithThem) {
  EXPECT_EQ(AnchorName("#docstrt"), "<A name='#docstrt'>");
  EXPECT_EQ(AnchorHref("a b.html"), "<A href='a&nbsp;b.html'>");
  EXPECT_EQ(AnchorHref("<ä>"), "<A href='&lt;&auml;&gt;'>");
  EXPECT_EQ(AnchorEnd(), "</A>");
}

TEST(ReportWriterStreamTest, WithoutAStreamNothingHappens) {
  ReportWriter writer;
  writer.WriteTextBox("a");
  StringReportStream stream;
  writer.SetStream(&stream);
  writer.WriteBreaks(1);
  EXPECT_EQ(stream.Text(), "<BR>\r\n");
}

// Fails every second write.
class FlakyStream final : public ReportStream {
 public:
  Status Write(std::string_view utf8) override {
    if (++writes_ % 2 == 0) return Fail(61, "Datenträger voll");
    Text += utf8;
    return {};
  }
  std::string Text;

 private:
  int writes_ = 0;
};

TEST(ReportWriterStreamTest, AFailedWriteIsSkippedAndTheNextGoesOn) {
  FlakyStream stream;
  ReportWriter writer(&stream);
  for (int i = 0; i < 3; ++i) writer.WriteBreaks(i + 1);
  EXPECT_EQ(stream.Text, "<BR>\r\n<BR><BR><BR>\r\n");
}

// Collects bytes and fails at the end when told so.
class MemoryFile final : public platform::FileWriter {
 public:
  MemoryFile(std::string& bytes, bool fails) : bytes_(bytes), fails_(fails) {}
  Status Write(std::string_view bytes) override {
    if (fails_) return Fail(61, "Datenträger voll");
    bytes_ += bytes;
    return {};
  }
  Status Close() override { return {}; }

 private:
  std::string& bytes_;
  bool fails_;
};

TEST(FileReportStreamTest, WritesTheCodePageWithReferences) {
  std::string bytes;
  FileReportStream stream(std::make_unique<MemoryFile>(bytes, false));
  EXPECT_TRUE(stream.Write("é € П"));
  EXPECT_TRUE(stream.Close());
  EXPECT_EQ(bytes, "\xE9 \x80 &#1055;");
}

TEST(FileReportStreamTest, LongTextsArriveWhole) {
  std::string bytes, expected;
  FileReportStream stream(std::make_unique<MemoryFile>(bytes, false));
  for (int i = 0; i < 20000; ++i) {
    expected += "line " + std::to_string(i) + "\r\n";
    EXPECT_TRUE(stream.Write("line " + std::to_string(i) + "\r\n"));
  }
  EXPECT_FALSE(bytes.empty());
  EXPECT_TRUE(stream.Close());
  EXPECT_EQ(bytes, expected);
}

TEST(FileReportStreamTest, AFullDiskShowsAtTheLatestWhenClosing) {
  std::string bytes;
  FileReportStream stream(std::make_unique<MemoryFile>(bytes, true));
  EXPECT_TRUE(stream.Write("x"));
  const Status closed = stream.Close();
  ASSERT_FALSE(closed);
  EXPECT_EQ(closed.error().Number, 61);
}

}  // namespace
}  // namespace velmora::html
