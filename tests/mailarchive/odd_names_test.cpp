// Subjects, attachments and archives with names that a careless export would stumble over.
#include "base/code_page.h"
#include "mailarchive/export_fixture.h"
#include "mailarchive/format/file_names.h"

namespace velmora::mailarchive {
namespace {

class OddNamesTest : public ExportTest {
 protected:
  OddNamesTest() { options.SaveAttachments = true; }

  // Saves attachments of these names; the names of the files.
  Strings SaveAttachments(const Strings& names) {
    test::FakeMail& mail = store.AddMail(*archive, "x");
    for (const std::string& name : names) mail.Attachments.push_back({name, "Inhalt von " + name});
    RunMail(mail);
    EXPECT_EQ(run.counters.Errors, 0);
    return Names(options.OnlyAttachments ? "" : "Attachments");
  }
};

TEST_F(OddNamesTest, SubjectOfTenThousandCharactersStandsWholeInPageAndDescriptor) {
  std::string subject;
  for (int i = 0; i < 10'000; ++i) subject += i % 2 == 0 ? "ü" : "x";
  options.MakeIndex = true;
  store.AddMail(*inbox, subject);
  RunArchive(*inbox);
  const std::string base = EntryBaseName(subject);
  EXPECT_EQ(Names("Eingang"),
            (Strings{"index.html", "index2.html", "index3.html", base + ".add", base + ".htm"}));
  EXPECT_EQ(CountCharacters(base), 59U);
  EXPECT_EQ(FromCodePage(Part("Eingang\\" + base + ".htm", "S")), subject);
  EXPECT_EQ(FromCodePage(Value("Eingang\\" + base + ".add", "Subject")), subject);
  EXPECT_NE(ReadTarget("Eingang\\index.html").find("&uuml;x&uuml;x"), std::string::npos);
}

TEST_F(OddNamesTest, SubjectOfControlCharactersIsANameOfBlanks) {
  test::FakeMail& mail = store.AddMail(*archive, "\x01\x02\x1F");
  RunMail(mail);
  EXPECT_EQ(Names(), (Strings{"   .add", "   .htm"}));
  EXPECT_EQ(Value("   .add", "Subject"), "   ");
}

TEST_F(OddNamesTest, SubjectsBeyondTheCodePageAreToldApartByNumbers) {
  options.MakeIndex = true;
  for (const char* subject : {"Привет", "Πείτε!", "😀😀😀😀😀😀"}) store.AddMail(*inbox, subject);
  RunArchive(*inbox);
  EXPECT_EQ(Names("Eingang"), (Strings{"_____!.add", "_____!.htm", "______.add", "______.htm", "______1.add",
                                       "______1.htm", "index.html", "index2.html", "index3.html"}));
  const std::string index = ReadTarget("Eingang\\index.html");
  EXPECT_NE(index.find("<a href=\"______.htm\">&#1055;&#1088;&#1080;&#1074;&#1077;&#1090;</a>"),
            std::string::npos);
  EXPECT_NE(index.find("<a href=\"______1.htm\">&#128512;"), std::string::npos);
}

// A disc or a share of Windows may refuse such names, but archives written before have them too.
TEST_F(OddNamesTest, DeviceNamesAndTrailingBlanksStay) {
  RunMails({store.AddMail(*archive, "CON").Key, store.AddMail(*archive, "nul").Key,
            store.AddMail(*archive, "Frage ?").Key, store.AddMail(*archive, "...").Key});
  EXPECT_EQ(Names(), (Strings{"___.add", "___.htm", "CON.add", "CON.htm", "Frage  .add", "Frage  .htm",
                              "nul.add", "nul.htm"}));
}

TEST_F(OddNamesTest, AttachmentsAreNoDevicesAndEndInNothingThatWindowsDrops) {
  const Strings names = {"CON", "nul.txt", "Aux .txt", "COM1.pdf", "x.", "y. ", "z.txt. ."};
  const Strings made = {"Aux 1.txt", "COM11.pdf", "CON1", "nul1.txt", "x_", "y__", "z_txt___"};
  EXPECT_EQ(SaveAttachments(names), made);
}

TEST_F(OddNamesTest, TwoThousandMailsOfOneSubjectLookForNamesNoMoreThanOnceEach) {
  struct Counting final : test::ForwardingFileSystem {
    using ForwardingFileSystem::ForwardingFileSystem;
    bool FileExists(std::string_view path) override {
      ++Probes;
      return ForwardingFileSystem::FileExists(path);
    }
    std::string UniqueFileName(std::string_view folder, std::string_view fileName) override {
      ++Probes;
      return ForwardingFileSystem::UniqueFileName(folder, fileName);
    }
    int Probes = 0;
  } counting(files);
  constexpr int Mails = 2000;
  run::Run counted{counting, clock, frontEnd.Set(), dir.Path("log")};
  for (int i = 0; i < Mails; ++i) {
    test::FakeMail& mail = store.AddMail(*inbox, "Status");
    mail.Html = i % 2 == 0 ? "<html>" : "";
    mail.Attachments = {{"image001.png", "P"}};
  }
  ExportContext context{counted, session, designs, options, dir.Path("temp") + "\\", dir.Path("program")};
  ExportArchiveTree(context, inbox->FullPath, dir.Path("target"), false, nullptr);
  EXPECT_EQ(counted.counters.Mails, Mails);
  EXPECT_EQ(counted.counters.Attachments, Mails);
  EXPECT_TRUE(HasTarget("Eingang\\Status999_inf.htm"));
  EXPECT_TRUE(HasTarget("Eingang\\Status999.htm"));
  EXPECT_TRUE(HasTarget("Eingang\\Attachments\\image0011999.png"));
  EXPECT_LT(counting.Probes, 10 * Mails);
}

TEST_F(OddNamesTest, AttachmentsCannotLeaveTheirFolder) {
  EXPECT_EQ(SaveAttachments({"..\\..\\a.txt", "../b.txt", "C:\\c.txt", "d.txt:strom", "/etc/e.conf"}),
            (Strings{"-etc-e.conf", "__-__-a.txt", "__-b.txt", "C--c.txt", "d.txt-strom"}));
  EXPECT_EQ(Names(), (Strings{"Attachments", "x.add", "x.htm"}));
}

TEST_F(OddNamesTest, AttachmentsSavedAloneCannotLeaveTheDirectory) {
  options.OnlyAttachments = true;
  EXPECT_EQ(SaveAttachments({"..\\..\\a.txt", "../b.txt", "C:\\c.txt", "d.txt:strom", ".."}),
            (Strings{"__", "__-__-a.txt", "__-b.txt", "C--c.txt", "d.txt-strom"}));
}

TEST_F(OddNamesTest, AttachmentCannotDisguiseItsExtension) {
  const Strings disguised = {"Rechnung\u202Efdp.exe", "\u2066Foto\u2069.scr"};
  EXPECT_EQ(SaveAttachments(disguised), (Strings{"_Foto_.scr", "Rechnung_fdp.exe"}));
  options.OnlyAttachments = true;
  SaveAttachments(disguised);
  EXPECT_TRUE(HasTarget("Rechnung_fdp.exe"));
  EXPECT_TRUE(HasTarget("_Foto_.scr"));
}

TEST_F(OddNamesTest, AttachmentNamesTooLongForAFileKeepTheirExtension) {
  const std::string longName(300, 'a');
  EXPECT_EQ(SaveAttachments({longName + ".pdf", longName + ".pdf", longName, "x." + longName}),
            (Strings{std::string(196, 'a') + ".pdf", std::string(196, 'a') + "1.pdf",
                     std::string(196, 'a') + "11.pdf", "x." + std::string(198, 'a')}));
  options.OnlyAttachments = true;
  SaveAttachments({longName + "\u20AC.pdf"});
  EXPECT_TRUE(HasTarget(std::string(196, 'a') + ".pdf"));
}

TEST_F(OddNamesTest, AttachmentsWithoutANameOrInAnotherCaseGetNamesOfTheirOwn) {
  EXPECT_EQ(SaveAttachments({"", "Plan.PDF", "plan.pdf", "PLAN.pdf"}),
            (Strings{"Anhang", "Plan.PDF", "plan1.pdf", "PLAN2.pdf"}));
}

TEST_F(OddNamesTest, AttachmentBesideThePagesIsNoDescriptor) {
  options.OnlyAttachments = true;
  EXPECT_EQ(SaveAttachments({"Gehalt.htm", "Gehalt.add", "GEHALT.ADD"}),
            (Strings{"Gehalt.add_", "Gehalt.htm", "GEHALT1.ADD_"}));
}

TEST_F(OddNamesTest, ArchiveNamedLikeAComponentFolderHasADirectoryOfItsOwn) {
  options.MakeIndex = true;
  inbox->Mails.clear();
  store.AddMail(*inbox, "x").Attachments = {{"a.txt", "A"}};
  test::FakeArchiveData& sub = store.AddArchive(inbox, "attachments", R"(\\SERVER\DAVID\ARCHIVE\IN\ATT)");
  store.AddMail(sub, "y");
  for (int exports = 0; exports < 2; ++exports) RunArchive(*inbox);
  EXPECT_EQ(Names("Eingang\\Attachments"), (Strings{"a.txt", "a1.txt"}));
  EXPECT_EQ(Names("Eingang\\attachments1"),
            (Strings{"index.html", "index2.html", "index3.html", "y.add", "y.htm", "y1.add", "y1.htm"}));
  EXPECT_NE(ReadTarget("Eingang\\index.html").find("<a href=\"attachments1/index.html\">attachments</a>"),
            std::string::npos);
}

TEST_F(OddNamesTest, WithoutComponentFoldersTheirNamesAreFree) {
  options.SeparateAttachmentsFolder = false;
  store.AddMail(store.AddArchive(inbox, "Eml", R"(\\SERVER\DAVID\ARCHIVE\IN\EML)"), "y");
  RunArchive(*inbox);
  EXPECT_TRUE(HasTarget("Eingang\\Eml\\y.htm"));
}

// Equal names of archives share a directory: their entries are numbered, none is lost.
TEST_F(OddNamesTest, ArchivesWhoseNamesBecomeOneShareADirectory) {
  for (const char* name : {"A/B", "A-B", "a-b"}) {
    test::FakeArchiveData& sub =
        store.AddArchive(inbox, name, std::string(R"(\\SERVER\DAVID\ARCHIVE\IN\)") + "D" + name[0] + name[1]);
    store.AddMail(sub, "x").Text = name;
  }
  RunArchive(*inbox);
  EXPECT_EQ(Names("Eingang"), Strings{"A-B"});
  EXPECT_EQ(Names("Eingang\\A-B"), (Strings{"x.add", "x.htm", "x1.add", "x1.htm", "x2.add", "x2.htm"}));
}

TEST_F(OddNamesTest, TreeDeeperThanAPathCanBeLosesNothingOnAMove) {
  options.Mode = CopyMode::Move;
  options.DeleteArchives = true;
  constexpr int Levels = 60;
  test::FakeArchiveData* parent = inbox;
  for (int level = 0; level < Levels; ++level) {
    parent = &store.AddArchive(parent, std::string(100, 'a'), parent->ID + "\\" + std::to_string(level));
    store.AddMail(*parent, "m");
  }
  RunArchive(*inbox);
  EXPECT_GT(run.counters.Mails, 0);
  EXPECT_GT(run.counters.Errors, 0);
  EXPECT_EQ(run.counters.Mails + run.counters.Errors, Levels);
  const auto mailsDeleted = std::ranges::count_if(
      store.Deletions, [](const std::string& deletion) { return deletion.starts_with("mail "); });
  EXPECT_EQ(mailsDeleted, run.counters.Mails);
  EXPECT_EQ(parent->Mails.size(), 1U) << "the deepest one could not be written";
}

}  // namespace
}  // namespace velmora::mailarchive
