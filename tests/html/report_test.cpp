#include "html/report.h"

#include <gtest/gtest.h>

#include <memory>

#include "base/code_page.h"
#include "base/text.h"
#include "platform/host_file_system.h"
#include "support/scripted_front_end.h"
#include "support/temp_dir.h"

namespace velmora::html {
namespace {

class FixedClock final : public platform::Clock {
 public:
  DateTime Now() override { return DateTime::FromCivil({2026, 12, 31, 23, 59, 0}).value(); }
  std::int64_t SteadyMilliseconds() override { return 0; }
};

class ReportTest : public testing::Test {
 protected:
  ReportTest() {
    environment.ServerDescription = "Büro";
    environment.UserName = "Anna Müller";
    environment.CopyRight = "Velmora 1.0 © Muster";
    environment.MajorVersion = 1;
  }

  // The file as UTF-8.
  std::string FileText(std::string_view name) { return FromCodePage(folder.ReadHostFile(name)); }
  bool Exists(std::string_view name) { return fileSystem->FileExists(folder.Path(name)); }
  bool Holds(std::string_view name, std::string_view text) {
    return FileText(name).find(text) != std::string::npos;
  }
  std::unique_ptr<Report> MakeReport() {
    auto report = std::make_unique<Report>(run, environment);
    report->InitReportStyle();
    return report;
  }
  // What WriteNavigation writes, without what stands before it in the file.
  std::string NavigationOf(Report& report, std::size_t index, std::string_view previous,
                           std::string_view next) {
    StringReportStream stream;
    report.SetStream(&stream);
    report.WriteNavigation(index, previous, next);
    report.SetStream(nullptr);
    return stream.TakeText();
  }

  test::TempDir folder;
  std::unique_ptr<platform::FileSystem> fileSystem = platform::MakeHostFileSystem({});
  FixedClock clock;
  test::ScriptedFrontEnd frontEnd;
  run::Run run{*fileSystem, clock, frontEnd.Set(), folder.Path()};
  ReportEnvironment environment;
};

TEST_F(ReportTest, PageHeadAndFootAreExact) {
  auto report = MakeReport();
  ASSERT_TRUE(report->OpenReportFile(folder.Path("doku.html"), false, ReportKind::SystemDocumentation, true));
  report->CloseReportFile(false);
  EXPECT_EQ(
      FileText("doku.html"),
      "<HTML>\r\n"
      "<HEAD>\r\n"
      "<META http-equiv=\"Content-Language\" content=\"de\">\r\n"
      "<META name=\"GENERATOR\" content=\"Velmora 1.0\">\r\n"
      "<style type='text/css'>\r\n"
      "<!--\r\n"
      "a:link { text-decoration:none; font-weight:normal; color:#333399; }\r\n"
      "a:visited { text-decoration:none; font-weight:normal; color:#2000FF; }\r\n"
      "a:hover { text-decoration:underline; font-weight:bold; }\r\n"
      "a:active { text-decoration:none; font-weight:normal; }\r\n"
      "-->\r\n"
      "</style>\r\n"
      "<TITLE>System Dokumentation B&uuml;ro</TITLE>\r\n"
      "</HEAD>\r\n"
      "<BODY>\r\n"
      "<TABLE BORDER='3' bgcolor='#99CCFF' style='border-collapse: collapse' WIDTH='100%'>\r\n"
      "<TR><TD><FONT face='Arial' color='#000000' size='4'><B><A name='#docstrt'>System Dokumentation "
      "B&uuml;ro</A></B></FONT></TD></TR></TABLE>\r\n"
      "<BR>\r\n"
      "<TABLE BORDER='0' style='border-collapse: collapse' WIDTH='100%' bgcolor='#FFFFFF'><TR><TD>\r\n"
      "<FONT face='Arial' color='#333399' size='2'>Dokumentation vom 31.12.2026<BR>gestartet von Benutzer: "
      "<B>Anna M&uuml;ller</B></FONT></TD></TR></TABLE>\r\n"
      "<BR>\r\n"
      "<ALIGN='right'><FONT face='Arial' color='#333399' size='1'><B></B></FONT>\r\n"
      "<TABLE BORDER='0' style='border-collapse: collapse' WIDTH='100%' bgcolor='#FFFFFF'>\r\n"
      "<colgroup>\r\n"
      "\t<col width='100%'>\r\n"
      "</colgroup>\r\n"
      "<TBODY>\r\n"
      "<TR><TD ALIGN='right'> <FONT face='Arial' color='#333399' size='1'>Velmora 1.0 © "
      "Muster</FONT></TD>\r\n"
      "</TR>\r\n"
      "</TBODY></TABLE>\r\n"
      "\r\n"
      "</BODY></HTML>\r\n");
}

TEST_F(ReportTest, TitlesByKind) {
  auto report = MakeReport();
  ASSERT_TRUE(report->OpenReportFile(folder.Path("a.html"), true, ReportKind::Statistics, true));
  report->CloseReportFile(false);
  EXPECT_TRUE(Holds("a.html", "<TITLE>System Statistik B&uuml;ro</TITLE>"));
  EXPECT_TRUE(Holds("a.html", ">Statistik vom 31.12.2026<BR>"));
  ASSERT_TRUE(report->OpenReportFile(folder.Path("b.html"), true, ReportKind::ItemSheet, true));
  report->CloseReportFile(false);
  EXPECT_TRUE(Holds("b.html", "<TITLE>System-Dokumentation B&uuml;ro</TITLE>"));
  EXPECT_TRUE(Holds("b.html", ">Dokumentation vom 31.12.2026<BR>"));
}

TEST_F(ReportTest, AnAnswerNoLeavesTheFileUntouched) {
  folder.WriteHostFile("doku.html", "what stood before");
  auto report = MakeReport();
  frontEnd.Answers = {run::Answer::No};
  EXPECT_FALSE(report->OpenReportFile(folder.Path("doku.html"), false, ReportKind::Statistics, true));
  report->WriteTextBox("x");
  report->CloseReportFile(false);
  EXPECT_EQ(FileText("doku.html"), "what stood before");
  ASSERT_EQ(frontEnd.Boxes.size(), 1U);
  EXPECT_EQ(frontEnd.Boxes[0].Title, "Dokumentation schreiben");
  EXPECT_EQ(frontEnd.Boxes[0].Text, "Eine Dokumentationsdatei " + folder.Path("doku.html") +
                                        " existiert bereits.\r\nDatei überschreiben ?");
  EXPECT_EQ(run.counters.Errors, 0);
}

TEST_F(ReportTest, NoIsTheDefaultAnswer) {
  folder.WriteHostFile("doku.html", "what stood before");
  EXPECT_FALSE(MakeReport()->OpenReportFile(folder.Path("doku.html"), false, ReportKind::Statistics, true));
  EXPECT_EQ(FileText("doku.html"), "what stood before");
}

TEST_F(ReportTest, AnAnswerYesOverwrites) {
  folder.WriteHostFile("doku.html", "what stood before");
  auto report = MakeReport();
  frontEnd.Answers = {run::Answer::Yes};
  ASSERT_TRUE(report->OpenReportFile(folder.Path("doku.html"), false, ReportKind::Statistics, true));
  report->CloseReportFile(false);
  EXPECT_FALSE(Holds("doku.html", "what stood before"));
}

TEST_F(ReportTest, NoPromptDoesNotAsk) {
  folder.WriteHostFile("doku.html", "what stood before");
  auto report = MakeReport();
  ASSERT_TRUE(report->OpenReportFile(folder.Path("doku.html"), true, ReportKind::Statistics, true));
  report->CloseReportFile(false);
  EXPECT_TRUE(frontEnd.Boxes.empty());
}

TEST_F(ReportTest, AFailedCreationIsLogged) {
  auto report = MakeReport();
  const std::string path = folder.Path("missing\\doku.html");
  EXPECT_FALSE(report->OpenReportFile(path, true, ReportKind::Statistics, true));
  EXPECT_EQ(run.counters.Errors, 1);
  EXPECT_TRUE(Holds("VelmoraError.log", "HTML-File " + path));
  EXPECT_TRUE(Holds("VelmoraError.log", " Fehler: 76 - "));
}

TEST_F(ReportTest, NothingIsWrittenAfterTheClosing) {
  auto report = MakeReport();
  ASSERT_TRUE(report->OpenReportFile(folder.Path("doku.html"), true, ReportKind::Statistics, true));
  report->CloseReportFile(false);
  const std::string closed = FileText("doku.html");
  report->WriteTextBox("late");
  report->CloseReportFile(false);
  EXPECT_EQ(FileText("doku.html"), closed);
}

TEST_F(ReportTest, SingleFileReportsHaveNoContinuation) {
  auto report = MakeReport();
  ASSERT_TRUE(report->OpenReportFile(folder.Path("doku.html"), true, ReportKind::SystemDocumentation, true));
  report->ReportSectionFiles[3] = "#usersht";
  EXPECT_TRUE(report->OpenContinuationFile(3));
  report->WriteTextBox("section");
  report->CloseContinuationFile(3);
  report->CloseReportFile(false);
  EXPECT_TRUE(Holds("doku.html", "section"));
  EXPECT_FALSE(Exists("#usersht"));
}

TEST_F(ReportTest, EachSectionOfAMultiPartReportHasItsFile) {
  environment.MultiPart = true;
  auto report = MakeReport();
  ASSERT_TRUE(report->OpenReportFile(folder.Path("doku.html"), true, ReportKind::SystemDocumentation, true));
  for (std::size_t i = 0; i < ReportSectionCount; ++i)
    report->ReportSectionFiles[i] = ReportSectionFile("doku.html", i);
  report->ReportSectionTitles[4] = "Archiv-Struktur";
  report->ReportNextFiles[4] = "doku_004.html";
  report->CloseReportFile(false);

  ASSERT_TRUE(report->OpenContinuationFile(2));
  report->CloseContinuationFile(2);
  EXPECT_TRUE(Holds("doku_002.html", "<TITLE>System Dokumentation Fortsetzung</TITLE>"));
  EXPECT_TRUE(Holds("doku_002.html", "<A name='#docstrt'>"));
  EXPECT_TRUE(
      Holds("doku_002.html", "size='2'><B><A href=\"doku_004.html\" >[Archiv-Struktur] </A><BR></B></FONT>"));

  ASSERT_TRUE(report->OpenContinuationFile(4));
  report->CloseContinuationFile(4);
  EXPECT_FALSE(Holds("doku_004.html", "[Archiv-Struktur]"));
  EXPECT_EQ(report->ReportFirstFile(), folder.Path("doku.html"));
}

TEST_F(ReportTest, AFurtherPartWithoutATitleIsLinkedByItsName) {
  environment.MultiPart = true;
  auto report = MakeReport();
  ASSERT_TRUE(report->OpenReportFile(folder.Path("doku.html"), true, ReportKind::SystemDocumentation, true));
  report->GrowNextFiles(1000);
  report->ReportNextFiles[12] = "doku_012.html";
  report->CloseContinuationFile(11);
  EXPECT_TRUE(Holds("doku.html", "<A href=\"doku_012.html\" >[doku_012.html] </A>"));
}

TEST_F(ReportTest, MultiPartIsLatchedWhenTheFirstFileOpens) {
  auto report = MakeReport();
  EXPECT_FALSE(report->ReportMultiPart());
  environment.MultiPart = true;
  report = MakeReport();
  ASSERT_TRUE(report->OpenReportFile(folder.Path("doku.html"), true, ReportKind::SystemDocumentation, true));
  EXPECT_TRUE(report->ReportMultiPart());
}

TEST_F(ReportTest, NavigationIsWrittenOnlyWhenOn) {
  auto report = MakeReport();
  report->ReportNextFiles[5] = "five.html";
  EXPECT_EQ(NavigationOf(*report, 1, "a", "b"), "");
  EXPECT_EQ(report->ReportNextFile(), "five.html");
  report->ReportNavigation = true;
  EXPECT_EQ(NavigationOf(*report, 1, "a", "b"),
            "<TABLE BORDER='0' style='border-collapse: collapse' WIDTH='100%' bgcolor='#FFFFFF'><TR><TD>\r\n"
            "<FONT face='Arial' color='#333399' size='3'><A href='#docstrt'>&laquo;</A>&nbsp; &nbsp;<A "
            "href='#a'> &lt; "
            "</A>&nbsp; &nbsp;<A href='#b'> &gt; </A>&nbsp; &nbsp;<A href='five.html'>&raquo;</A></FONT>"
            "</TD></TR></TABLE>\r\n");
  EXPECT_EQ(NavigationOf(*report, 5, "", ""),
            "<TABLE BORDER='0' style='border-collapse: collapse' WIDTH='100%' bgcolor='#FFFFFF'><TR><TD>\r\n"
            "<FONT face='Arial' color='#333399' size='3'><A "
            "href='#docstrt'>&laquo;</A></FONT></TD></TR></TABLE>\r\n");
}

TEST_F(ReportTest, PartsLinkBackToTheFirstFile) {
  environment.MultiPart = true;
  auto report = MakeReport();
  ASSERT_TRUE(report->OpenReportFile(folder.Path("doku.html"), true, ReportKind::SystemDocumentation, true));
  report->ReportNavigation = true;
  EXPECT_NE(
      NavigationOf(*report, 1, "", "").find("<A href='doku.html'>&laquo;&laquo;</A><BR><A href='#docstrt'>"),
      std::string::npos);
  EXPECT_EQ(NavigationOf(*report, 0, "", "").find("&laquo;&laquo;"), std::string::npos);
}

TEST_F(ReportTest, FindNextFileLooksBehindTheIndex) {
  auto report = MakeReport();
  report->ReportNextFiles[3] = "three.html";
  report->ReportNextFiles[7] = "seven.html";
  report->FindNextFile(0);
  EXPECT_EQ(report->ReportNextFile(), "three.html");
  EXPECT_EQ(report->ReportNextIndex(), 3U);
  report->FindNextFile(3);
  EXPECT_EQ(report->ReportNextFile(), "seven.html");
  report->FindNextFile(7);
  EXPECT_EQ(report->ReportNextFile(), "");
  report->FindNextFile(4711);
  EXPECT_EQ(report->ReportNextFile(), "");
}

TEST_F(ReportTest, NextFilesGrowByOneForEach500Archives) {
  auto report = MakeReport();
  EXPECT_EQ(report->ReportNextFiles.size(), 12U);
  report->GrowNextFiles(499);
  EXPECT_EQ(report->ReportNextFiles.size(), 12U);
  report->GrowNextFiles(1500);
  EXPECT_EQ(report->ReportNextFiles.size(), 15U);
  report->GrowNextFiles(500);
  EXPECT_EQ(report->ReportNextFiles.size(), 15U);
}

TEST_F(ReportTest, AFinishedSheetIsShown) {
  auto report = MakeReport();
  const std::string path = folder.Path(TemporarySheetName);
  ASSERT_TRUE(report->OpenReportFile(path, true, ReportKind::ItemSheet, true));
  report->CloseReportFile(false);
  report->ShowReport();
  EXPECT_EQ(frontEnd.Documents, std::vector<std::string>{path});
}

TEST_F(ReportTest, CharactersBeyondTheCodePageBecomeReferences) {
  auto report = MakeReport();
  ASSERT_TRUE(report->OpenReportFile(folder.Path("doku.html"), true, ReportKind::Statistics, true));
  report->WriteTextBox("П é");
  report->CloseReportFile(false);
  EXPECT_NE(folder.ReadHostFile("doku.html").find("&#1055; \xE9"), std::string::npos);
}

TEST(ReportPathTest, PartsLieBesideTheFirstFile) {
  EXPECT_EQ(ReportPartPath("C:\\x\\doku.html", "y.html"), "C:\\x\\y.html");
  EXPECT_EQ(ReportPartPath("doku.html", "y.html"), "y.html");
  EXPECT_EQ(ReportBaseName("C:\\x\\doku.html"), "doku.html");
}

TEST(ReportPathTest, TheNumberGoesBeforeTheLastPoint) {
  EXPECT_EQ(ReportSectionFile("report.a.html", 5), "report.a_005.html");
  EXPECT_EQ(ReportSectionFile("doku.html", 0), "doku.html");
  EXPECT_EQ(ReportSectionFile("doku.html", 10), "doku_010.html");
  EXPECT_EQ(ReportSectionFile("doku", 1), "doku_001");
}

}  // namespace
}  // namespace velmora::html
