#include "mailarchive/entry_operations.h"

#include "base/code_page.h"
#include "mailarchive/format/descriptor.h"
#include "mailarchive/format/folder_fixture.h"
#include "mailarchive/format/marker.h"
#include "support/forwarding_file_system.h"
#include "support/scripted_front_end.h"

namespace velmora::mailarchive {
namespace {

class EntryOperationsTest : public FolderTest {
 protected:
  // A plain mail or, with `suffix` "_inf", an HTML mail called "x", with all components in their folders.
  void WriteMail(std::string_view suffix = "_inf") {
    const auto page = "x" + std::string(suffix);
    EntryDescriptor mail;
    mail.Subject = "Attachments\\x.pdf";  // looks like a path, is none
    mail.MailArcEntry = page + ".htm";
    mail.MailArcAdd = page + ".add";
    if (!suffix.empty()) mail.Body = R"(HTMLMails\x.htm)";
    mail.Eml = R"(Eml\x.eml)";
    mail.Smtp = R"(Eml\x.smtp)";
    mail.Comment = R"(Comments\x.txt)";
    mail.HasAttachments = true;
    mail.Attachments = {R"(Attachments\x.htm)", R"(Attachments\x.pdf)"};
    mail.Flags = entry_flag::Internal;
    Write(page + ".add", FormatDescriptor(mail));
    Write(page + ".htm",
          "<h1>x.htm Eml/x.eml</h1>\r\n"
          "<a  target=\"_blank\" href=\"HTMLMails/x.htm\">[x]</a><br>\r\n"
          "<a  target=\"_blank\" href=\"Eml/x.eml\">Original Mail</a><br>\r\n"
          "<a href=\"Comments/x.txt\">Kommentar</a><br>\r\n"
          "<a  target=\"_blank\" href=\"Attachments/x.htm\">x.htm</a><br>\r\n");
    if (!suffix.empty()) WriteComponent("HTMLMails", "x.htm");
    WriteComponent("Eml", "x.eml");
    WriteComponent("Eml", "x.smtp");
    WriteComponent("Comments", "x.txt");
    WriteComponent("Attachments", "x.htm");
    WriteComponent("Attachments", "x.pdf");
  }
  void WriteComponent(const std::string& folder, const std::string& name) {
    Write(folder + "/" + name, folder + " " + name);
    Write(folder + "/VelmoraDataArc.vla", ";Velmora Mail Dataarchive\r\n\r\n");
  }
  bool Delete(std::string_view page) { return DeleteMailArcEntry(*Files, Folder.Path(), page); }
  bool Rename(std::string_view page, std::string_view name) {
    return RenameMailArcEntry(*Files, Folder.Path(), page, name);
  }
  // Everything in the directory, to compare before and after.
  std::map<std::string, std::string> Content() const { return Folder.HostTree(); }
};

// --- Deleting. ---

TEST_F(EntryOperationsTest, DeletesAnEntryWithAllThatIsItsOwn) {
  WriteMail();
  Write("other.htm", "stays");
  EXPECT_TRUE(Delete("x_inf.htm"));
  EXPECT_EQ(Content(), (std::map<std::string, std::string>{{"other.htm", "stays"}}));
}

TEST_F(EntryOperationsTest, ADeletionWithoutADescriptorTouchesNothing) {
  Write("x.htm", "page");
  Write("Attachments/VelmoraDataArc.vla", "marker");
  const auto before = Content();
  EXPECT_FALSE(Delete("x.htm"));
  EXPECT_EQ(Content(), before);
}

TEST_F(EntryOperationsTest, MissingComponentsDoNotHinderADeletion) {
  WriteMail();
  std::filesystem::remove(Folder.HostPath("Eml/x.eml"));
  std::filesystem::remove(Folder.HostPath("Attachments/x.pdf"));
  EXPECT_TRUE(Delete("x_inf.htm"));
  EXPECT_FALSE(Exists("x_inf.htm"));
  EXPECT_FALSE(Exists("x_inf.add"));
}

TEST_F(EntryOperationsTest, PageAndDescriptorStayWhenAComponentCannotBeDeleted) {
  struct Stubborn : test::ForwardingFileSystem {
    using ForwardingFileSystem::ForwardingFileSystem;
    Status DeleteFile(std::string_view path, bool force) override {
      if (path.ends_with("x.pdf")) return Fail(platform::file_error::AccessDenied, "Zugriff verweigert");
      return ForwardingFileSystem::DeleteFile(path, force);
    }
  } stubborn(*Files);
  WriteMail();
  EXPECT_FALSE(DeleteMailArcEntry(stubborn, Folder.Path(), "x_inf.htm"));
  EXPECT_TRUE(Exists("x_inf.htm"));
  EXPECT_TRUE(Exists("x_inf.add"));
  EXPECT_TRUE(Exists("Attachments/x.pdf"));
  EXPECT_FALSE(Exists("Eml/x.eml")) << "what can go is gone, the next try finds the rest";
  EXPECT_TRUE(Delete("x_inf.htm"));
  EXPECT_FALSE(Exists("x_inf.htm"));
}

TEST_F(EntryOperationsTest, MissingComponentFoldersDoNotHinderADeletion) {
  WriteMail();
  std::filesystem::remove_all(Folder.HostPath("Eml"));
  EXPECT_TRUE(Delete("x_inf.htm"));
  EXPECT_FALSE(Exists("x_inf.add"));
}

TEST_F(EntryOperationsTest, DeletesReadOnlyComponents) {
  WriteMail();
  ASSERT_TRUE(Files->SetReadOnly(Folder.Path("Eml\\x.eml"), true));
  EXPECT_TRUE(Delete("x_inf.htm"));
  EXPECT_FALSE(Exists("Eml"));
}

TEST_F(EntryOperationsTest, RemovesComponentFoldersThatAreEmptyOrHoldAMarkerOnly) {
  Write("x.add", "Subject=x\r\n");
  Write("x.htm", "");
  std::filesystem::create_directories(Folder.HostPath("VCards"));
  Write("Comments/VelmoraDataArc.vla", "marker");
  Write("Eml/VelmoraDataArc.vla", "marker");
  Write("Eml/y.eml", "mail");
  Write("FaxImages/y.tif", "a single file that is no marker");
  std::filesystem::create_directories(Folder.HostPath("VoiceMails/sub"));
  std::filesystem::create_directories(Folder.HostPath("Other"));
  EXPECT_TRUE(Delete("x.htm"));
  EXPECT_EQ(Content(),
            (std::map<std::string, std::string>{{"Eml", "<DIR>"},
                                                {"Eml/VelmoraDataArc.vla", "marker"},
                                                {"Eml/y.eml", "mail"},
                                                {"FaxImages", "<DIR>"},
                                                {"FaxImages/y.tif", "a single file that is no marker"},
                                                {"VoiceMails", "<DIR>"},
                                                {"VoiceMails/sub", "<DIR>"},
                                                {"Other", "<DIR>"}}));
}

TEST_F(EntryOperationsTest, ADescriptorCannotDeleteOutsideItsDirectoryOrByWildcard) {
  Write("archive/x.htm", "");
  Write("archive/x.add",
        "HTML=..\\a.txt\r\nEML=*.eml\r\nCOMMENT=\\a.txt\r\nAttachments=\"..\\a.txt\",\"?.eml\"\r\n");
  Write("archive/a.eml", "stays");
  Write("a.txt", "stays");
  EXPECT_TRUE(DeleteMailArcEntry(*Files, Folder.Path("archive"), "x.htm"));
  EXPECT_EQ(Content(), (std::map<std::string, std::string>{
                           {"a.txt", "stays"}, {"archive", "<DIR>"}, {"archive/a.eml", "stays"}}));
}

// --- Renaming. ---

TEST_F(EntryOperationsTest, RenamesAPlainMail) {
  WriteMail("");
  EXPECT_TRUE(Rename("x.htm", "neu.htm"));

  EXPECT_FALSE(Exists("x.htm"));
  EXPECT_FALSE(Exists("x.add"));
  EXPECT_EQ(Read("Eml/neu.eml"), "Eml x.eml");
  EXPECT_EQ(Read("Eml/neu.smtp"), "Eml x.smtp");
  EXPECT_EQ(Read("Comments/neu.txt"), "Comments x.txt");
  EXPECT_EQ(Read("neu.add"),
            "Sortaddr=\r\n"
            "Subject=Attachments\\x.pdf\r\n"
            "Date=30.12.1899 00:00:00\r\n"
            "From=\r\n"
            "To=\r\n"
            "Flags=2\r\n"
            "MailArcEntry=neu.htm\r\n"
            "MailArcAdd=neu.add\r\n"
            "HTML=\r\n"
            "EML=Eml\\neu.eml\r\n"
            "SMTP=Eml\\neu.smtp\r\n"
            "COMMENT=Comments\\neu.txt\r\n"
            "Attachments=\"Attachments\\x.htm\",\"Attachments\\x.pdf\"\r\n");
  EXPECT_EQ(Read("neu.htm"),
            "<h1>x.htm Eml/x.eml</h1>\r\n"
            "<a  target=\"_blank\" href=\"HTMLMails/x.htm\">[x]</a><br>\r\n"
            "<a  target=\"_blank\" href=\"Eml/neu.eml\">Original Mail</a><br>\r\n"
            "<a href=\"Comments/neu.txt\">Kommentar</a><br>\r\n"
            "<a  target=\"_blank\" href=\"Attachments/x.htm\">x.htm</a><br>\r\n");
}

// The comment of an HTML mail is moved to the page's base while its link takes the base of the components.
// Readers of archives know the file by its descriptor, and pages renamed by earlier versions look the same.
TEST_F(EntryOperationsTest, RenamesAnHtmlMailWithItsDeliberateMismatch) {
  WriteMail();
  EXPECT_TRUE(Rename("x_inf.htm", "neu_inf.htm"));

  EXPECT_EQ(Read("HTMLMails/neu.htm"), "HTMLMails x.htm");
  EXPECT_TRUE(Exists("Eml/neu.eml"));
  EXPECT_TRUE(Exists("Eml/neu.smtp"));
  EXPECT_TRUE(Exists("Comments/neu_inf.txt"));
  EXPECT_FALSE(Exists("Comments/neu.txt"));
  const auto fields = ReadEntryFields(*Files, Folder.Path(), "neu_inf.htm");
  ASSERT_TRUE(fields);
  EXPECT_EQ(fields->Body, R"(HTMLMails\neu.htm)");
  EXPECT_EQ(fields->Comment, R"(Comments\neu_inf.txt)");
  EXPECT_EQ(fields->MailArcEntry, "neu_inf.htm");
  EXPECT_EQ(fields->MailArcAdd, "neu_inf.add");
  const auto page = Read("neu_inf.htm");
  EXPECT_NE(page.find("href=\"HTMLMails/neu.htm\""), std::string::npos);
  EXPECT_NE(page.find("href=\"Comments/neu.txt\""), std::string::npos);
  EXPECT_NE(page.find("href=\"Attachments/x.htm\""), std::string::npos) << "attachments keep their names";
}

TEST_F(EntryOperationsTest, AnHtmlMailRenamedWithoutItsSuffixUsesOneBase) {
  WriteMail();
  EXPECT_TRUE(Rename("x_inf.htm", "neu.htm"));
  EXPECT_TRUE(Exists("neu.htm"));
  EXPECT_TRUE(Exists("neu.add"));
  EXPECT_TRUE(Exists("HTMLMails/neu.htm"));
  EXPECT_TRUE(Exists("Comments/neu.txt"));
}

TEST_F(EntryOperationsTest, RenamesAFax) {
  Write(
      "Fax_x.add",
      "Subject=x\r\nFlags=4\r\nMailArcEntry=Fax_x.htm\r\nMailArcAdd=Fax_x.add\r\nFAX=FaxImages\\Fax_x.tif\r\n"
      "COMMENT=Comments\\Fax_y.txt\r\n");
  Write("Fax_x.htm", "href=\"FaxImages/Fax_x.tif\" href=\"Comments/Fax_y.txt\"");
  Write("FaxImages/Fax_x.tif", "image");
  Write("Comments/Fax_y.txt", "comment");
  EXPECT_TRUE(Rename("Fax_x.htm", "z.htm"));
  EXPECT_EQ(Content(),
            (std::map<std::string, std::string>{
                {"Comments", "<DIR>"},
                {"Comments/z.txt", "comment"},
                {"FaxImages", "<DIR>"},
                {"FaxImages/z.tif", "image"},
                {"z.add",
                 "Subject=x\r\nFlags=4\r\nMailArcEntry=z.htm\r\nMailArcAdd=z.add\r\nFAX=FaxImages\\z.tif\r\n"
                 "COMMENT=Comments\\z.txt\r\n"},
                {"z.htm", "href=\"FaxImages/z.tif\" href=\"Comments/z.txt\""}}));
}

TEST_F(EntryOperationsTest, RenamesWithoutComponentFolders) {
  Write("x_inf.add",
        "Flags=2\r\nMailArcEntry=x_inf.htm\r\nMailArcAdd=x_inf.add\r\nHTML=x.htm\r\nEML=x.eml\r\n");
  Write("x_inf.htm", "href=\"/x.htm\" href=\"x.eml\" href=\"xx.eml\"");
  Write("x.htm", "body");
  Write("x.eml", "mail");
  EXPECT_TRUE(Rename("x_inf.htm", "y_inf.htm"));
  EXPECT_EQ(Content(),
            (std::map<std::string, std::string>{
                {"y_inf.add",
                 "Flags=2\r\nMailArcEntry=y_inf.htm\r\nMailArcAdd=y_inf.add\r\nHTML=y.htm\r\nEML=y.eml\r\n"},
                {"y_inf.htm", "href=\"/y.htm\" href=\"y.eml\" href=\"xx.eml\""},
                {"y.htm", "body"},
                {"y.eml", "mail"}}));
}

TEST_F(EntryOperationsTest, RedirectsLinksWithEscapesAndTheUnescapedOnesOfOlderPages) {
  Write("R&D 5%.add",
        "Flags=2\r\nMailArcEntry=R&D 5%.htm\r\nMailArcAdd=R&D 5%.add\r\nEML=Eml\\R&D 5%.eml\r\n");
  Write("R&D 5%.htm", "href=\"Eml/R&amp;D 5%25.eml\" href=\"Eml/R&D 5%.eml\"");
  Write("Eml/R&D 5%.eml", "mail");
  EXPECT_TRUE(Rename("R&D 5%.htm", "A & 1%.htm"));
  EXPECT_EQ(Read("A & 1%.htm"), "href=\"Eml/A &amp; 1%25.eml\" href=\"Eml/A &amp; 1%25.eml\"");
  EXPECT_EQ(Read("Eml/A & 1%.eml"), "mail");
}

TEST_F(EntryOperationsTest, ANameBeyondTheCodePageIsReadBack) {
  WriteMail("");
  EXPECT_TRUE(Rename("x.htm", "Отчёт.htm"));
  EXPECT_EQ(ReadEntryFields(*Files, Folder.Path(), "Отчёт.htm")->Eml, R"(Eml\Отчёт.eml)");
  EXPECT_TRUE(Exists("Eml/Отчёт.eml"));
}

TEST_F(EntryOperationsTest, TheExtensionOfTheNewNameIsNotUsed) {
  WriteMail("");
  EXPECT_TRUE(Rename("x.htm", "a.b.txt"));
  EXPECT_TRUE(Exists("a.b.htm"));
  EXPECT_TRUE(Exists("a.b.add"));
  EXPECT_TRUE(Rename("a.b.htm", "c"));
  EXPECT_TRUE(Exists("c.htm"));
}

TEST_F(EntryOperationsTest, ChangesTheCaseOfAName) {
  WriteMail("");
  EXPECT_TRUE(Rename("x.htm", "X.htm"));
  EXPECT_TRUE(Exists("X.htm"));
  EXPECT_TRUE(Exists("Eml/X.eml"));
  EXPECT_FALSE(Exists("x.htm"));
}

TEST_F(EntryOperationsTest, TheOwnNameChangesNothing) {
  WriteMail();
  const auto before = Content();
  EXPECT_TRUE(Rename("x_inf.htm", "x_inf.htm"));
  auto expected = before;
  // The mismatch of the comment comes with every renaming.
  expected["Comments/x_inf.txt"] = expected.extract("Comments/x.txt").mapped();
  expected["x_inf.add"].replace(expected["x_inf.add"].find("Comments\\x.txt"), 14, "Comments\\x_inf.txt");
  EXPECT_EQ(Content(), expected);
}

TEST_F(EntryOperationsTest, KeepsTheTimesOfPageAndDescriptor) {
  WriteMail("");
  const auto time = *DateTime::FromCivil({2001, 2, 3, 4, 5, 6});
  ASSERT_TRUE(Files->SetTimes(Folder.Path("x.htm"), time));
  ASSERT_TRUE(Files->SetTimes(Folder.Path("x.add"), time));
  EXPECT_TRUE(Rename("x.htm", "neu.htm"));
  EXPECT_EQ(Files->GetEntry(Folder.Path("neu.htm"))->Modified, time);
  EXPECT_EQ(Files->GetEntry(Folder.Path("neu.add"))->Modified, time);
}

TEST_F(EntryOperationsTest, ANameThatIsTakenAnywhereTouchesNothing) {
  for (const auto* taken :
       {"neu_inf.htm", "neu_inf.add", "HTMLMails/neu.htm", "Eml/NEU.eml", "Comments/neu_inf.txt"}) {
    WriteMail();
    Write(taken, "in the way");
    const auto before = Content();
    EXPECT_FALSE(Rename("x_inf.htm", "neu_inf.htm")) << taken;
    EXPECT_EQ(Content(), before) << taken;
    std::filesystem::remove(Folder.HostPath(taken));
  }
}

TEST_F(EntryOperationsTest, BodyAndPageMustNotMeet) {
  Write("x_inf.add", "Flags=2\r\nHTML=x.htm\r\n");
  Write("x_inf.htm", "page");
  Write("x.htm", "body");
  const auto before = Content();
  EXPECT_FALSE(Rename("x_inf.htm", "y.htm"));
  EXPECT_EQ(Content(), before);
}

TEST_F(EntryOperationsTest, TextsThatAreNoFileNameTouchNothing) {
  WriteMail();
  const auto before = Content();
  for (const auto* name :
       {"", ".htm", "..\\y.htm", "a/b.htm", "a:b.htm", "*.htm", "y.htm.htm", "a\nb.htm", "..."}) {
    EXPECT_FALSE(Rename("x_inf.htm", name)) << name;
    EXPECT_EQ(Content(), before) << name;
  }
}

TEST_F(EntryOperationsTest, ARenamingWithoutADescriptorOrPageTouchesNothing) {
  Write("x.htm", "page");
  EXPECT_FALSE(Rename("x.htm", "y.htm"));
  Write("z.add", "Subject=z\r\n");
  EXPECT_FALSE(Rename("z.htm", "y.htm"));
  EXPECT_EQ(Content(), (std::map<std::string, std::string>{{"x.htm", "page"}, {"z.add", "Subject=z\r\n"}}));
}

TEST_F(EntryOperationsTest, ADescriptorTooLongToBeReadIsNotRewritten) {
  Write("x.htm", "page");
  Write("x.add", "Subject=x\r\n");
  std::filesystem::resize_file(Folder.HostPath("x.add"), 100 * 1024 * 1024);
  EXPECT_FALSE(Rename("x.htm", "y.htm"));
  EXPECT_TRUE(Exists("x.htm"));
}

TEST_F(EntryOperationsTest, AComponentThatIsGoneIsLeftOut) {
  WriteMail();
  std::filesystem::remove(Folder.HostPath("Eml/x.eml"));
  EXPECT_TRUE(Rename("x_inf.htm", "neu_inf.htm"));
  EXPECT_TRUE(Exists("Eml/neu.smtp"));
  EXPECT_EQ(ReadEntryFields(*Files, Folder.Path(), "neu_inf.htm")->Eml, R"(Eml\x.eml)");
}

TEST_F(EntryOperationsTest, AFailureOnTheWayTakesEverythingBack) {
  struct Faulty : test::ForwardingFileSystem {
    using ForwardingFileSystem::ForwardingFileSystem;
    bool Fails() { return --Left == 0; }
    Status MoveFile(std::string_view source, std::string_view target) override {
      if (Fails()) return Fail(platform::file_error::AccessDenied, "Zugriff verweigert");
      return ForwardingFileSystem::MoveFile(source, target);
    }
    Status ReplaceFile(std::string_view path, std::string_view bytes,
                       const platform::WriteOptions& options) override {
      if (Fails()) return Fail(platform::file_error::DiskFull, "Datenträger voll");
      return ForwardingFileSystem::ReplaceFile(path, bytes, options);
    }
    int Left = 0;
  } faulty(*Files);
  WriteMail();
  const auto before = Content();
  int steps = 0;
  for (faulty.Left = ++steps; !RenameMailArcEntry(faulty, Folder.Path(), "x_inf.htm", "neu_inf.htm");
       faulty.Left = ++steps) {
    EXPECT_EQ(Content(), before) << "step " << steps;
    ASSERT_LT(steps, 20);
  }
  EXPECT_EQ(steps, 9) << "six files to move, two to rewrite";
}

TEST_F(EntryOperationsTest, APathOfADescriptorCannotMoveFilesOutside) {
  Write("a.txt", "stays");
  Write("archive/x.htm", "");
  Write("archive/x.add", "EML=..\\a.txt\r\n");
  EXPECT_TRUE(RenameMailArcEntry(*Files, Folder.Path("archive"), "x.htm", "y.htm"));
  EXPECT_EQ(Read("a.txt"), "stays");
  EXPECT_EQ(Read("archive/y.add"), "EML=..\\a.txt\r\n");
}

// --- Showing. ---

class ShowTest : public EntryOperationsTest {
 protected:
  test::ScriptedFrontEnd Front;
  run::FrontEnd Set = Front.Set();
};

TEST_F(ShowTest, ShowsTheMarkerOfADirectory) {
  Write("VelmoraDataArc.vla", ";Velmora Mail Dataarchive \xE4\r\n\r\n");
  ShowArcDescriptor(Set, *Files, Folder.Path());
  ASSERT_EQ(Front.ViewedTexts.size(), 1u);
  EXPECT_EQ(Front.ViewedTexts[0].Title, "Descriptor Mailarchiv " + Folder.Path());
  EXPECT_EQ(Front.ViewedTexts[0].Text, ";Velmora Mail Dataarchive ä\r\n\r\n");
  EXPECT_TRUE(Front.Boxes.empty());
}

TEST_F(ShowTest, TellsWhenADirectoryHasNoMarker) {
  ShowArcDescriptor(Set, *Files, Folder.Path());
  EXPECT_EQ(Front.Boxes,
            (std::vector<test::ScriptedFrontEnd::Box>{
                {"Fehler", "Das Verzeichnis ist kein Mailarchiv oder die Descriptor-Datei fehlt."}}));
  EXPECT_TRUE(Front.ViewedTexts.empty());
}

TEST_F(ShowTest, ShowsTheDescriptorOfAPage) {
  Write("x_inf.add", "Subject=x\r\n");
  ShowEntryDescriptor(Set, *Files, Folder.Path(), "x_inf.htm");
  ASSERT_EQ(Front.ViewedTexts.size(), 1u);
  EXPECT_EQ(Front.ViewedTexts[0].Title, "Descriptor Mailarchiv-Eintrag: x_inf.htm");
  EXPECT_EQ(Front.ViewedTexts[0].Text, "Subject=x\r\n");
}

TEST_F(ShowTest, TellsWhenAPageHasNoDescriptor) {
  ShowEntryDescriptor(Set, *Files, Folder.Path(), "x.htm");
  EXPECT_EQ(
      Front.Boxes,
      (std::vector<test::ScriptedFrontEnd::Box>{{"Fehler", "Es ist keine Descriptor-Datei vorhanden."}}));
}

TEST_F(ShowTest, TellsWhichFileCannotBeOpened) {
  struct Locked : test::ForwardingFileSystem {
    using ForwardingFileSystem::ForwardingFileSystem;
    Result<std::unique_ptr<platform::FileReader>> OpenReader(std::string_view) override {
      return Fail(platform::file_error::AccessDenied, "Zugriff verweigert");
    }
  } locked(*Files);
  Write("x.add", "Subject=x\r\n");
  ShowEntryDescriptor(Set, locked, Folder.Path(), "x.htm");
  EXPECT_EQ(Front.Boxes, (std::vector<test::ScriptedFrontEnd::Box>{
                             {"Fehler", "Fehler beim Öffnen der Descriptor-Datei " + Folder.Path("x.add")}}));
}

}  // namespace
}  // namespace velmora::mailarchive
