// The content index of a mail archive, built from what lies on the disk.
#include "base/code_page.h"
#include "mailarchive/export_fixture.h"
#include "mailarchive/format/marker.h"

namespace velmora::mailarchive {
namespace {

class ContentIndexTest : public ExportTest {
 protected:
  void Mark(std::string_view relative, MailArcKind kind, const MarkerTexts& texts) {
    if (!relative.empty()) (void)files.CreateFolder(Target(relative));  // may exist
    ASSERT_TRUE(WriteArchiveMarker(files, relative.empty() ? dir.Path("target") : Target(relative), kind,
                                   texts, true));
  }
  void AddEntry(const std::string& page, const std::string& subject,
                const std::string& date = "29.02.2024 13:14:15",
                const std::string& address = "hans@example.com") {
    ASSERT_TRUE(files.WriteFile(Target(page), "page"));
    ASSERT_TRUE(files.WriteFile(
        Target(page.substr(0, page.find(".htm")) + ".add"),
        ToCodePage("Sortaddr=" + address + "\r\nSubject=" + subject + "\r\nDate=" + date + "\r\n")));
  }
  void Index(std::string_view relative = "", bool recursive = true, bool sortedUp = true) {
    BuildContentIndex(index, relative.empty() ? dir.Path("target") : Target(relative), recursive, true,
                      sortedUp);
  }
  // The page names linked in a table, in their order.
  Strings Links(std::string_view file) {
    Strings links;
    const std::string text = ReadTarget(file);
    constexpr std::string_view Start = "<a href=\"";
    for (auto at = text.find("</TR>"); (at = text.find(Start, at)) != std::string::npos;) {
      at += Start.size();
      std::string link = text.substr(at, text.find('"', at) - at);
      if (!link.starts_with("mailto:")) links.push_back(std::move(link));
    }
    return links;
  }

  IndexContext index{run, designs, true, dir.Path("program")};
};

TEST_F(ContentIndexTest, SubArchiveHasThreePagesInThreeOrders) {
  Mark("", MailArcKind::Sub, {});
  AddEntry("b.htm", "Zuletzt", "01.01.2024 00:00:00", "c@x");
  AddEntry("Fax_a.htm", "Anfang", "01.01.2025 00:00:00", "B@x");
  AddEntry("c_inf.htm", "Mitte", "01.01.2023 00:00:00", "a@x");
  Index();
  EXPECT_EQ(Links("index.html"), (Strings{"c_inf.htm", "b.htm", "Fax_a.htm"}));
  EXPECT_EQ(Links("index2.html"), (Strings{"b.htm", "c_inf.htm", "Fax_a.htm"}));  // file names, not subjects
  EXPECT_EQ(Links("index3.html"), (Strings{"c_inf.htm", "Fax_a.htm", "b.htm"}));
  EXPECT_TRUE(ReadTarget("index2.html").starts_with("Subject.htm["));
  EXPECT_TRUE(ReadTarget("index3.html").starts_with("Address.htm["));
}

TEST_F(ContentIndexTest, DateOrderMayFallTheOthersNever) {
  Mark("", MailArcKind::Sub, {});
  AddEntry("a.htm", "1", "01.01.2023 00:00:00");
  AddEntry("b.htm", "2", "01.01.2024 00:00:00");
  Index("", true, false);
  EXPECT_EQ(Links("index.html"), (Strings{"b.htm", "a.htm"}));
  EXPECT_EQ(Links("index2.html"), (Strings{"a.htm", "b.htm"}));
}

TEST_F(ContentIndexTest, PageOfASubArchiveIsWrittenByteForByte) {
  Mark("", MailArcKind::Sub,
       {.DisplayName = "Eingang",
        .FullPath = "/Archive/Eingang",
        .DirName = "",
        .Comment = "a & b",
        .CopyRight = "©"});
  Mark("Alt #1", MailArcKind::Sub,
       {.DisplayName = "Älteres", .FullPath = "", .DirName = "", .Comment = "", .CopyRight = ""});
  AddEntry("Alt #1\\x.htm", "x");
  AddEntry("A & 50%.htm", "R&D \\ <ü>", "29.02.2024 13:14:15", "ohne Klammeraffe");
  Index();
  // The widths add up to 105%, and the tag ALIGN is none that a browser knows: indexes have always been so.
  const std::string box =
      "<TABLE BORDER='0' style='border-collapse: collapse' WIDTH='100%' bgcolor='#99CCFF'><TR><TD>\r\n"
      "<FONT face='Arial' color='#000000' size='3'><B>";
  const std::string cell = "<TD ALIGN='left'> <FONT face='Arial' color='#000000' size='2'>";
  EXPECT_EQ(
      ReadTarget("index.html"),
      "Date.htm[Inhalt von target][/Archive/Eingang][31.12.2026 23:59:00][&copy;][a&nbsp;&amp;&nbsp;b]<" +
          box + "<a href=\"../index.html\">..</a><br></B></FONT></TD></TR></TABLE>\r\n" + box +
          "<a href=\"Alt %231/index.html\">&Auml;lteres</a><br></B></FONT></TD></TR></TABLE>\r\n<BR>\r\n"
          "<ALIGN='left'><FONT face='Arial' color='#000000' size='3'><B> </B></FONT>\r\n"
          "<TABLE BORDER='0' style='border-collapse: collapse' WIDTH='100%' bgcolor='#99CCFF'>\r\n"
          "<colgroup>\r\n\t<col width='15%'>\r\n\t<col width='20%'>\r\n\t<col "
          "width='70%'>\r\n</colgroup>\r\n<TBODY>\r\n"
          "<TR><TD ALIGN='left'> <FONT face='Arial' color='#000000' size='3'><B>Datum</B></FONT></TD>\r\n"
          "<TD ALIGN='left'> <FONT face='Arial' color='#000000' size='3'><B>Von / An</B></FONT></TD>\r\n"
          "<TD ALIGN='left'> <FONT face='Arial' color='#000000' "
          "size='3'><B>Betreff</B></FONT></TD>\r\n</TR>\r\n"
          "<TR>" +
          cell + "29.02.2024 13:14:15</FONT></TD>\r\n" + cell + "ohne Klammeraffe</FONT></TD>\r\n" + cell +
          "<a href=\"A &amp; 50%25.htm\">R&amp;D&nbsp;/&nbsp;&lt;&uuml;&gt;</a><br></FONT></TD>\r\n</TR>\r\n"
          "</TBODY></TABLE>\r\n>tail[%VELMORA_IDXLINKS%]");
}

TEST_F(ContentIndexTest, RootWithOnlySubArchivesHasOnePageOfTheTreeForm) {
  Mark("", MailArcKind::Root, {});
  Mark("a", MailArcKind::Sub,
       {.DisplayName = "A", .FullPath = "", .DirName = "", .Comment = "", .CopyRight = ""});
  AddEntry("a\\x.htm", "x");
  Index();
  const std::string page = ReadTarget("index.html");
  EXPECT_TRUE(page.starts_with("Tree.htm[Inhalt von target][target]"));  // no full path: the name
  EXPECT_EQ(page.find("../index.html"), std::string::npos);              // a root has no way up
  EXPECT_NE(page.find("<a href=\"a/index.html\">A</a>"), std::string::npos);
  EXPECT_FALSE(HasTarget("index2.html"));
  EXPECT_FALSE(HasTarget("index3.html"));
  EXPECT_TRUE(HasTarget("a\\index3.html"));
}

TEST_F(ContentIndexTest, RootWithMessagesHasAllThreePages) {
  Mark("", MailArcKind::Root, {});
  AddEntry("x.htm", "x");
  Index();
  EXPECT_TRUE(ReadTarget("index.html").starts_with("Date.htm["));
  EXPECT_TRUE(HasTarget("index2.html"));
  EXPECT_TRUE(HasTarget("index3.html"));
}

TEST_F(ContentIndexTest, EmptiedDirectoryLosesItsIndexesAndItsMarker) {
  Mark("", MailArcKind::Sub, {});
  for (const char* name : {"index.html", "INDEX2.html", "index3.html"})
    ASSERT_TRUE(files.WriteFile(Target(name), "alt"));
  Index();
  EXPECT_EQ(files.List(dir.Path("target"), "*", platform::ListWhat::All)->size(), 0U);
}

TEST_F(ContentIndexTest, DirectoryThatCannotBeReadKeepsItsIndexAndItsMarker) {
  Mark("", MailArcKind::Sub, {});
  AddEntry("a.htm", "x");
  Index();
  const Strings before = Names();
  for (const char* mask : {"*.htm", "*.*"}) {
    faulty.FailingMask = mask;
    Index("", false);
    EXPECT_EQ(Names(), before);
    EXPECT_TRUE(HasTarget("VelmoraSubArc.vla"));
    EXPECT_EQ(Links("index.html"), Strings{"a.htm"});
  }
  EXPECT_EQ(run.counters.Errors, 2);
}

TEST_F(ContentIndexTest, ArchiveWithoutADisplayNameIsLinkedByItsDirectory) {
  Mark("", MailArcKind::Root, {});
  Mark("OLD", MailArcKind::Sub, {});
  AddEntry("OLD\\x.htm", "x");
  Index();
  EXPECT_NE(ReadTarget("index.html").find("<a href=\"OLD/index.html\">OLD</a>"), std::string::npos);
}

TEST_F(ContentIndexTest, ParentDoesNotLinkToAChildThatWasEmptied) {
  Mark("", MailArcKind::Root, {});
  Mark("leer", MailArcKind::Sub, {});
  Mark("voll", MailArcKind::Sub,
       {.DisplayName = "Voll", .FullPath = "", .DirName = "", .Comment = "", .CopyRight = ""});
  AddEntry("voll\\x.htm", "x");
  Index();
  const std::string page = ReadTarget("index.html");
  EXPECT_EQ(page.find("leer/index.html"), std::string::npos);
  EXPECT_NE(page.find("voll/index.html"), std::string::npos);
  EXPECT_FALSE(HasTarget("leer\\VelmoraSubArc.vla"));
}

TEST_F(ContentIndexTest, OnlyRootAndSubArchivesAreIndexed) {
  AddEntry("x.htm", "x");
  Index();
  EXPECT_FALSE(HasTarget("index.html"));
  Mark("", MailArcKind::Data, {});
  Index();
  EXPECT_FALSE(HasTarget("index.html"));
}

TEST_F(ContentIndexTest, SubArchiveBelowAnUnmarkedFolderIsNotReached) {
  Mark("", MailArcKind::Root, {});
  AddEntry("x.htm", "x");
  ASSERT_TRUE(files.CreateFolder(Target("lose")));
  Mark("lose\\a", MailArcKind::Sub, {});
  AddEntry("lose\\a\\y.htm", "y");
  Index();
  EXPECT_FALSE(HasTarget("lose\\a\\index.html"));
}

TEST_F(ContentIndexTest, WithoutRecursionOnlyTheDirectoryItself) {
  Mark("", MailArcKind::Sub, {});
  AddEntry("x.htm", "x");
  Mark("a", MailArcKind::Sub, {});
  AddEntry("a\\y.htm", "y");
  Index("", false);
  EXPECT_TRUE(HasTarget("index.html"));
  EXPECT_FALSE(HasTarget("a\\index.html"));
}

TEST_F(ContentIndexTest, PagesWithoutADescriptorStayOut) {
  Mark("", MailArcKind::Sub, {});
  AddEntry("x.htm", "x");
  ASSERT_TRUE(files.WriteFile(Target("body.htm"), "ein Textkörper"));
  Index();
  EXPECT_EQ(Links("index.html"), Strings{"x.htm"});
}

TEST_F(ContentIndexTest, EmptySubjectShowsTheFileNameWithoutItsEnding) {
  Mark("", MailArcKind::Sub, {});
  AddEntry("Ohne Betreff_inf.htm", "");
  AddEntry("y.htm", "");
  Index();
  const std::string page = ReadTarget("index.html");
  EXPECT_NE(page.find(">Ohne&nbsp;Betreff</a>"), std::string::npos);
  EXPECT_NE(page.find(">y</a>"), std::string::npos);
}

TEST_F(ContentIndexTest, AddressWithAnAtIsALink) {
  Mark("", MailArcKind::Sub, {});
  AddEntry("x.htm", "x", "29.02.2024 13:14:15", "hans@example.com");
  Index();
  EXPECT_NE(ReadTarget("index.html").find("<a href=\"mailto:hans@example.com\">hans@example.com</a>"),
            std::string::npos);
}

TEST_F(ContentIndexTest, UnreadableDateIsEmptyAndSortsFirst) {
  Mark("", MailArcKind::Sub, {});
  AddEntry("a.htm", "a", "01.01.1980 00:00:00");
  AddEntry("b.htm", "b", "gestern");
  Index();
  EXPECT_EQ(Links("index.html"), (Strings{"b.htm", "a.htm"}));
  EXPECT_NE(ReadTarget("index.html").find("size='2'> </FONT>"), std::string::npos);  // a blank keeps the cell
}

TEST_F(ContentIndexTest, EntriesOfOneDateKeepTheOrderOfTheirFiles) {
  Mark("", MailArcKind::Sub, {});
  for (const char* name : {"c.htm", "a.htm", "b.htm"}) AddEntry(name, "x");
  Index("", true, false);
  EXPECT_EQ(Links("index.html"), (Strings{"a.htm", "b.htm", "c.htm"}));
}

TEST_F(ContentIndexTest, MissingFormMakesAnEmptyPage) {
  Mark("", MailArcKind::Sub, {});
  AddEntry("x.htm", "x");
  ASSERT_TRUE(files.DeleteFile(dir.Path("designs\\Subject.htm"), false));
  Index();
  EXPECT_EQ(ReadTarget("index2.html"), "");
  EXPECT_NE(ReadTarget("index.html"), "");
  EXPECT_EQ(Log(), "");
}

TEST_F(ContentIndexTest, FormWithoutThePlaceOfTheListStandsAheadOfIt) {
  Mark("", MailArcKind::Sub, {});
  AddEntry("x.htm", "x");
  WriteForm("Date.htm", "Kopf");
  Index();
  EXPECT_TRUE(ReadTarget("index.html").starts_with("Kopf<TABLE"));
  EXPECT_TRUE(ReadTarget("index.html").ends_with("</TBODY></TABLE>\r\n"));
}

TEST_F(ContentIndexTest, AutorunIsWrittenBesideAnIndex) {
  ASSERT_TRUE(files.WriteFile(dir.Path("program\\shellexec.exe"), "MZ"));
  Mark("", MailArcKind::Sub, {});
  AddEntry("x.htm", "x");
  Index();
  EXPECT_EQ(ReadTarget("autorun.inf"),
            "[autorun]\r\nopen=shellexec.exe index.html\r\nicon=shellexec.exe\r\n\r\n;Velmora Mail-Archiv\r\n"
            ";Created 31.12.2026 23:59:00\r\n");
  EXPECT_EQ(ReadTarget("shellexec.exe"), "MZ");
  index.CreateAutorunInf = false;
  Index();
  EXPECT_FALSE(HasTarget("autorun.inf"));
  EXPECT_FALSE(HasTarget("shellexec.exe"));
}

TEST_F(ContentIndexTest, AutorunStaysWithoutItsLauncher) {
  Mark("", MailArcKind::Root, {});
  AddEntry("x.htm", "x");
  Index();
  EXPECT_TRUE(HasTarget("autorun.inf"));
  EXPECT_FALSE(HasTarget("shellexec.exe"));
  EXPECT_EQ(Log(), "");
}

TEST_F(ContentIndexTest, NoIndexNoAutorun) {
  Index();
  EXPECT_FALSE(HasTarget("autorun.inf"));
}

TEST_F(ContentIndexTest, HostileDescriptorsAndMarkersBringNoHeadTags) {
  Mark("", MailArcKind::Sub, {});
  Mark("a", MailArcKind::Sub,
       {.DisplayName = "<meta http-equiv=refresh>",
        .FullPath = "",
        .DirName = "",
        .Comment = "",
        .CopyRight = ""});
  AddEntry("a\\y.htm", "y");
  AddEntry("x.htm", "<link rel=preload>", "29.02.2024 13:14:15", "\"><base href=//evil/>@x");
  Index();
  const std::string page = ReadTarget("index.html");
  EXPECT_EQ(page.find("<meta"), std::string::npos);
  EXPECT_EQ(page.find("<link"), std::string::npos);
  EXPECT_EQ(page.find("<base"), std::string::npos);
}

TEST_F(ContentIndexTest, ProgressShowsDirectoriesAndSubjects) {
  Mark("", MailArcKind::Sub, {});
  AddEntry("x.htm", "Betreff");
  Index();
  EXPECT_EQ(run.counters.Directories, 1);
  EXPECT_EQ(frontEnd.ArchiveTexts, Strings{dir.Path("target")});
  EXPECT_EQ(frontEnd.ItemTexts, (Strings{"Betreff", "Betreff", "Betreff"}));
}

TEST_F(ContentIndexTest, CancelEndsTheRunBetweenTwoDirectories) {
  Mark("", MailArcKind::Root, {});
  for (const char* const sub : {"a", "b", "c"}) {
    Mark(sub, MailArcKind::Sub, {});
    AddEntry(std::string(sub) + "\\x.htm", sub);
  }
  frontEnd.CancelAtPump = 3;  // while the pages of the first one are written
  Index();
  EXPECT_TRUE(HasTarget("a\\index.html"));
  for (const char* const file : {"b\\index.html", "c\\index.html", "index.html"})
    EXPECT_FALSE(HasTarget(file));
  EXPECT_EQ(run.counters.Directories, 1);
  EXPECT_NE(Log().find("Abbruch durch Benutzer"), std::string::npos);
}

TEST_F(ContentIndexTest, CancelLeavesASingleDirectoryWhole) {
  Mark("", MailArcKind::Sub, {});
  AddEntry("x.htm", "x");
  frontEnd.CancelAtPump = 1;
  Index("", false);
  EXPECT_TRUE(HasTarget("index.html"));
  EXPECT_TRUE(HasTarget("index3.html"));
}

}  // namespace
}  // namespace velmora::mailarchive
