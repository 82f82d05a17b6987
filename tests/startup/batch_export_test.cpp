#include <algorithm>

#include "program_fixture.h"
#include "startup/run_control_file.h"

namespace velmora::startup {
namespace {

class BatchExportTest : public ProgramTest {
 protected:
  BatchExportTest() { StartSession(); }

  BatchOutcome Run(const std::string& lines) {
    return RunControlLines(context(), "command=archivecopymove\n" + lines, "test");
  }
  std::string Target() const { return "dstdirectory=" + directory.Path("target") + "\n"; }
  // The names of all files below the target.
  std::vector<std::string> Files() const {
    std::vector<std::string> names;
    for (const auto& [name, bytes] : directory.HostTree("target")) {
      if (bytes != "<DIR>") names.push_back(name);
    }
    return names;
  }
  bool Has(const std::string& file) const {
    return std::filesystem::exists(directory.HostPath("target/" + file));
  }
};

constexpr const char* OnlyEml = "saveeml=y\nonlyeml=y\n";

// Whether one mail was written as its original only: such a run counts no pages.
bool HasOriginal(const std::string& summary, const std::string& head) {
  return summary.find(head +
                      "\r\n0 Mail(s)\r\n0 Attachment(s)\r\n0 Fax(e)\r\n0 VoiceMail(s)\r\n0 Adresse(n)\r\n"
                      "0 Link(s)\r\n1 EML-File(s)\r\n0 Fehler(n)\r\n") != std::string::npos;
}

TEST_F(BatchExportTest, ExportsEachArchiveIntoItsOwnDirectory) {
  AddMail(*MakeArchive("Eins"), "Hallo");
  AddMail(*MakeArchive("Zwei"), "Welt");
  const BatchOutcome outcome =
      Run("srcarchive=/Archive/Eins\nsrcarchive=\\Archive\\Zwei\\\n" + Target() + OnlyEml);
  EXPECT_EQ(outcome.ExitStatus, exit_status::Done) << Log();
  EXPECT_TRUE(HasOriginal(outcome.Summary, "Copy /Archive/Eins")) << outcome.Summary;
  EXPECT_TRUE(HasOriginal(outcome.Summary, "Copy \\Archive\\Zwei")) << outcome.Summary;
  const std::vector<std::string> written = Files();
  EXPECT_TRUE(std::any_of(written.begin(), written.end(), [](const std::string& name) {
    return name.starts_with("Eins/") && name.ends_with(".eml");
  }));
  EXPECT_TRUE(std::any_of(written.begin(), written.end(), [](const std::string& name) {
    return name.starts_with("Zwei/") && name.ends_with(".eml");
  }));
  EXPECT_FALSE(Has("VelmoraRootArc.vla"));
  EXPECT_TRUE(front.Boxes.empty());
}

TEST_F(BatchExportTest, TheRootIsMarkedWhenAnIndexIsMade) {
  AddMail(*MakeArchive("Eins"), "Hallo");
  const BatchOutcome outcome = Run("srcarchive=/Archive/Eins\nmakeidx=y\n" + Target());
  EXPECT_TRUE(outcome.Summary.starts_with("Copy /Archive/Eins\r\n1 Mail(s)\r\n")) << outcome.Summary;
  EXPECT_EQ(outcome.ExitStatus, exit_status::Done) << Log();
  EXPECT_TRUE(Has("VelmoraRootArc.vla"));
  EXPECT_TRUE(Has("index.html"));
  EXPECT_TRUE(Has("Eins/VelmoraSubArc.vla"));
  EXPECT_TRUE(Has("Eins/index.html"));
}

TEST_F(BatchExportTest, TheIndexOfALaterArchiveJoinsThoseBeforeIt) {
  AddMail(*MakeArchive("Eins"), "Hallo");
  AddMail(*MakeArchive("Zwei"), "Welt");
  EXPECT_EQ(Run("srcarchive=/Archive/Eins\nsrcarchive=/Archive/Zwei\nmakeidx=y\n" + Target()).ExitStatus,
            exit_status::Done)
      << Log();
  EXPECT_TRUE(Has("Eins/index.html"));
  EXPECT_TRUE(Has("Zwei/index.html"));
  const std::string index = directory.ReadHostFile("target/index.html");
  EXPECT_NE(index.find("Eins"), std::string::npos) << index;
  EXPECT_NE(index.find("Zwei"), std::string::npos) << index;
}

TEST_F(BatchExportTest, ALaterArchiveThatIsCalledLikeAFolderOfComponentsIsIndexedToo) {
  AddMail(*MakeArchive("Eins"), "Hallo");
  AddMail(*MakeArchive("Attachments"), "Welt");
  std::filesystem::create_directories(directory.HostPath("target/Attachments"));
  EXPECT_EQ(
      Run("srcarchive=/Archive/Eins\nsrcarchive=/Archive/Attachments\nmakeidx=y\n" + Target()).ExitStatus,
      exit_status::Done)
      << Log();
  EXPECT_TRUE(Has("Attachments1/Welt.htm"));
  EXPECT_TRUE(Has("Attachments1/index.html"));
}

TEST_F(BatchExportTest, WithoutAnIndexTheRootIsNotMarked) {
  MakeArchive("Eins");
  Run("srcarchive=/Archive/Eins\nmakeidx=n\n" + Target());
  EXPECT_FALSE(Has("VelmoraRootArc.vla"));
}

TEST_F(BatchExportTest, AMissingTargetIsTheCurrentPath) {
  AddMail(*MakeArchive("Eins"), "Hallo");
  context().process.CurrentPath = directory.Path("target\\");
  EXPECT_EQ(Run(std::string("srcarchive=/Archive/Eins\n") + OnlyEml).ExitStatus, exit_status::Done);
  EXPECT_TRUE(Has("Eins"));
}

TEST_F(BatchExportTest, AHostPathNamesTheTarget) {
  AddMail(*MakeArchive("Eins"), "Hallo");
  EXPECT_EQ(Run("srcarchive=/Archive/Eins\ndstdirectory=" + directory.HostPath("target") + "/\n" + OnlyEml)
                .ExitStatus,
            exit_status::Done);
  EXPECT_TRUE(Has("Eins"));
}

TEST_F(BatchExportTest, ATargetThatDoesNotExistRunsNothingAndIsLogged) {
  MakeArchive("Eins");
  EXPECT_EQ(Run("srcarchive=/Archive/Eins\ndstdirectory=" + directory.Path("nowhere")).ExitStatus,
            exit_status::NothingRan);
  EXPECT_NE(Log().find("Das Zielverzeichnis existiert nicht oder es bestehen keine Zugriffsrechte: " +
                       directory.Path("nowhere")),
            std::string::npos)
      << Log();
}

TEST_F(BatchExportTest, NoSourceRunsNothingAndIsLogged) {
  EXPECT_EQ(Run(Target()).ExitStatus, exit_status::NothingRan);
  EXPECT_NE(Log().find("kein Quellarchiv"), std::string::npos) << Log();
}

TEST_F(BatchExportTest, AMissingArchiveIsLoggedAndTheNextOneRuns) {
  AddMail(*MakeArchive("Eins"), "Hallo");
  const BatchOutcome outcome =
      Run("srcarchive=/Archive/Nirgends\nsrcarchive=/Archive/Eins\n" + Target() + OnlyEml);
  EXPECT_EQ(outcome.ExitStatus, exit_status::DoneWithErrors);
  EXPECT_TRUE(HasOriginal(outcome.Summary, "Copy /Archive/Eins"));
  EXPECT_TRUE(outcome.Summary.ends_with("0 Fehler(n)\r\n"));  // the archive itself had none
  EXPECT_NE(Log().find("/Archive/Nirgends"), std::string::npos) << Log();
}

TEST_F(BatchExportTest, OnlyMissingArchivesAreNoRun) {
  EXPECT_EQ(Run("srcarchive=/Archive/Nirgends\n" + Target()).ExitStatus, exit_status::NothingRan);
}

TEST_F(BatchExportTest, EmptyingRemovesWhatStoodInTheTarget) {
  AddMail(*MakeArchive("Eins"), "Hallo");
  std::filesystem::create_directories(directory.HostPath("target/old/deep"));
  directory.WriteHostFile("target/old/deep/file.txt", "x");
  EXPECT_EQ(Run("srcarchive=/Archive/Eins\ndeletedst=y\n" + Target() + OnlyEml).ExitStatus,
            exit_status::Done);
  EXPECT_FALSE(Has("old"));
  EXPECT_TRUE(Has("Eins"));
}

TEST_F(BatchExportTest, EmptyingWithoutANamedTargetRunsNothing) {
  MakeArchive("Eins");
  context().process.CurrentPath = directory.Path("target\\");
  directory.WriteHostFile("target/kept.txt", "x");
  EXPECT_EQ(Run("srcarchive=/Archive/Eins\ndeletedst=y\n").ExitStatus, exit_status::NothingRan);
  EXPECT_TRUE(Has("kept.txt"));
  EXPECT_NE(Log().find("wird nicht geleert"), std::string::npos) << Log();
}

TEST_F(BatchExportTest, EmptyingTheDirectoryOfTheControlFileRunsNothing) {
  MakeArchive("Eins");
  directory.WriteHostFile("target/job.txt",
                          "command=archivecopymove\nsrcarchive=/Archive/Eins\ndeletedst=y\n" + Target());
  EXPECT_EQ(RunControlFile(context(), directory.Path("target\\job.txt")).ExitStatus, exit_status::NothingRan);
  EXPECT_TRUE(Has("job.txt"));
}

TEST_F(BatchExportTest, EmptyingTheStoreIsRefused) {
  AddMail(*MakeArchive("Eins"), "Hallo");
  EXPECT_EQ(Run("srcarchive=/Archive/Eins\ndeletedst=y\ndstdirectory=" + directory.Path("store")).ExitStatus,
            exit_status::NothingRan);
  const auto archive = context().session.Account->GetArchive("/Archive/Eins");
  ASSERT_TRUE(archive.has_value());
  EXPECT_EQ((*archive)->MessageCount().value_or(-1), 1);
}

TEST_F(BatchExportTest, AMoveDeletesWhatItExported) {
  AddMail(*MakeArchive("Eins"), "Hallo");
  const BatchOutcome outcome =
      Run("srcarchive=/Archive/Eins\ncopymode=mov\ndelarcs=n\n" + Target() + OnlyEml);
  EXPECT_EQ(outcome.ExitStatus, exit_status::Done) << Log();
  EXPECT_TRUE(HasOriginal(outcome.Summary, "Move /Archive/Eins"));
  const auto archive = context().session.Account->GetArchive("/Archive/Eins");
  ASSERT_TRUE(archive.has_value());
  EXPECT_EQ((*archive)->MessageCount().value_or(-1), 0);
}

TEST_F(BatchExportTest, AMoveKeepsMessagesOfOneSubjectApartWhateverDstnumSays) {
  const auto archive = MakeArchive("Eins");
  AddMail(*archive, "Hallo");
  AddMail(*archive, "Hallo");
  EXPECT_EQ(Run("srcarchive=/Archive/Eins\ncopymode=mov\ndstnum=n\n" + Target() + "saveeml=y\nmakeidx=n\n")
                .ExitStatus,
            exit_status::Done)
      << Log();
  const std::vector<std::string> written = Files();
  EXPECT_EQ(std::count_if(written.begin(), written.end(),
                          [](const std::string& name) { return name.ends_with(".eml"); }),
            2);
}

TEST_F(BatchExportTest, AMoveWithDelarcsDeletesTheEmptiedArchive) {
  AddMail(*MakeArchive("Eins"), "Hallo");
  EXPECT_EQ(Run("srcarchive=/Archive/Eins\ncopymode=mov\ndelarcs=y\n" + Target() + OnlyEml).ExitStatus,
            exit_status::Done)
      << Log();
  EXPECT_FALSE(context().session.Account->GetArchive("/Archive/Eins").has_value());
}

TEST_F(BatchExportTest, AMoveThatWasKilledBeforeItsIndexGetsItWhenItIsRepeated) {
  AddMail(*MakeArchive("Eins"), "Hallo");
  const std::string lines = "srcarchive=/Archive/Eins\ncopymode=mov\ndelarcs=y\nmakeidx=y\n" + Target();
  EXPECT_EQ(Run(lines).ExitStatus, exit_status::Done) << Log();
  const auto whole = directory.HostTree("target");
  for (const std::string folder : {"", "Eins/"}) {
    for (const char* const index : {"index.html", "index2.html", "index3.html"}) {
      std::filesystem::remove(directory.HostPath("target/" + folder + index));
    }
  }
  ASSERT_FALSE(Has("Eins/index.html"));
  EXPECT_EQ(Run(lines).ExitStatus, exit_status::NothingRan) << "the archive is gone, which is told";
  EXPECT_EQ(directory.HostTree("target"), whole);
}

TEST_F(BatchExportTest, AMoveWithoutTheRightRunsNothing) {
  AddMail(*MakeArchive("Eins"), "Hallo");
  context().session.Trustees &= ~store::trustee::DeleteArchives;
  EXPECT_EQ(Run("srcarchive=/Archive/Eins\ncopymode=mov\n" + Target() + OnlyEml).ExitStatus,
            exit_status::NothingRan);
  const auto archive = context().session.Account->GetArchive("/Archive/Eins");
  EXPECT_EQ((*archive)->MessageCount().value_or(-1), 1);
  EXPECT_FALSE(Has("Eins"));
}

TEST_F(BatchExportTest, ACancelEndsTheRunBeforeTheNextArchive) {
  AddMail(*MakeArchive("Eins"), "Hallo");
  AddMail(*MakeArchive("Zwei"), "Welt");
  front.CancelAtPump = 1;
  const BatchOutcome outcome =
      Run("srcarchive=/Archive/Eins\nsrcarchive=/Archive/Zwei\nmakeidx=y\n" + Target());
  EXPECT_EQ(outcome.ExitStatus, exit_status::DoneWithErrors);
  EXPECT_FALSE(Has("Zwei"));
  EXPECT_FALSE(Has("index.html"));
  EXPECT_NE(Log().find("Abbruch durch Benutzer"), std::string::npos);
}

TEST_F(BatchExportTest, TheLogIsClearedOncePerRun) {
  directory.WriteHostFile("c.txt",
                          "command=archivecopymove\nsrcarchive=/Archive/Nirgends\n"
                          "srcarchive=/Archive/Niemals\ndstdirectory=" +
                              directory.Path("target") + "\n");
  directory.WriteHostFile("state/VelmoraError.log", "old\r\n");
  RunMain("-b:" + directory.Path("c.txt"));
  EXPECT_EQ(Log().find("old"), std::string::npos);
  EXPECT_NE(Log().find("Nirgends"), std::string::npos);
  EXPECT_NE(Log().find("Niemals"), std::string::npos);
}

TEST_F(BatchExportTest, ATargetThatTakesNoFilesRunsNothing) {
  AddMail(*MakeArchive("Eins"), "Hallo");
  directory.WriteHostFile("target/kept.txt", "x");
  std::filesystem::permissions(directory.HostPath("target"), std::filesystem::perms(0555));
  EXPECT_EQ(Run("srcarchive=/Archive/Eins\ncopymode=mov\ndeletedst=y\n" + Target() + OnlyEml).ExitStatus,
            exit_status::NothingRan);
  std::filesystem::permissions(directory.HostPath("target"), std::filesystem::perms(0755));
  EXPECT_NE(Log().find("Fehler: 70 - RunControlFile -> In das Zielverzeichnis kann nicht geschrieben werden"),
            std::string::npos)
      << Log();
  EXPECT_TRUE(Has("kept.txt"));
}

TEST_F(BatchExportTest, ASoundTargetKeepsNoTraceOfTheTrial) {
  MakeArchive("Eins");
  Run("srcarchive=/Archive/Eins\nmakeidx=n\n" + Target());
  EXPECT_TRUE(Files().empty() || Files() == std::vector<std::string>{"Eins/VelmoraSubArc.vla"});
}

TEST_F(BatchExportTest, StatisticsDoNotPretendToHaveRun) {
  const BatchOutcome outcome = RunControlLines(
      context(),
      "command=archivestatistics\nstatsarchive=/Archive\nstatdstfile=" + directory.Path("target\\s.htm") +
          "\nsendmail=y\nmailto=anna@example.org\n",
      "nightly.txt");
  EXPECT_EQ(outcome.ExitStatus, exit_status::NothingRan);
  EXPECT_NE(Log().find("Das Kommando archivestatistics steht in dieser Version nicht zur Verf"),
            std::string::npos);
  EXPECT_NE(Log().find("nightly.txt"), std::string::npos);
  EXPECT_FALSE(Has("s.htm"));
  const auto outgoing = context().session.Account->GetSpecialArchive(store::special::Outgoing);
  EXPECT_EQ((*outgoing)->MessageCount().value_or(-1), 0);
}

TEST_F(BatchExportTest, AFileWithoutACommandRunsNothing) {
  EXPECT_EQ(RunControlLines(context(), "; nothing\n", "test").ExitStatus, exit_status::NothingRan);
  EXPECT_NE(Log().find("kein Kommando"), std::string::npos);
}

}  // namespace
}  // namespace velmora::startup
