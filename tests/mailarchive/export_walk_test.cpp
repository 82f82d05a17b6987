// The export run: the selection, the walk through the tree, links, archives that a move deletes, a cancel.
#include "mailarchive/export_fixture.h"

namespace velmora::mailarchive {
namespace {

class ExportWalkTest : public ExportTest {
 protected:
  ExportWalkTest() : sub(&store.AddArchive(inbox, "Alt", R"(\\SERVER\DAVID\ARCHIVE\IN\OLD)")) {
    store.AddMail(*inbox, "neu");
    store.AddMail(*sub, "alt");
  }
  test::FakeArchiveData* sub;
};

TEST_F(ExportWalkTest, EachArchiveGetsAMarkedDirectory) {
  RunArchive(*inbox);
  EXPECT_EQ(Names(), Strings{"Eingang"});
  EXPECT_EQ(Names("Eingang"), (Strings{"Alt", "neu.add", "neu.htm"}));
  EXPECT_EQ(Names("Eingang\\Alt"), (Strings{"alt.add", "alt.htm"}));
  EXPECT_EQ(ReadTarget("Eingang\\Alt\\VelmoraSubArc.vla"),
            ";Velmora Mail Subarchive\r\nArchiveDisplayName=Alt\r\nArchiveFullPath=/Archive/Eingang/Alt\r\n"
            "ArchiveDirName=OLD\r\nArchiveComment=\r\nArchiveCopyRight=\r\n\r\n");
  EXPECT_EQ(ReadTarget("VelmoraRootArc.vla"),
            ";Velmora Mail Rootarchive\r\nArchiveDisplayName=Archive\r\nArchiveFullPath=/Archive\r\n"
            "ArchiveDirName=ARCHIVE\r\nArchiveComment=\r\nArchiveCopyRight=\r\n\r\n");
  EXPECT_EQ(run.counters.Archives, 2);
  EXPECT_EQ(run.counters.Mails, 2);
}

TEST_F(ExportWalkTest, ArchiveWithoutADisplayNameIsKnownByItsDirectory) {
  sub->DisplayName.clear();
  RunArchive(*inbox);
  EXPECT_TRUE(HasTarget("Eingang\\OLD\\alt.htm"));
  EXPECT_NE(ReadTarget("Eingang\\OLD\\VelmoraSubArc.vla")
                .find("ArchiveDisplayName= \r\nArchiveFullPath=\\\\SERVER\\DAVID\\ARCHIVE\\IN\\OLD\r\n"),
            std::string::npos);
}

TEST_F(ExportWalkTest, DirectoryNamesAreMadeSafeButKeepTheirHash) {
  sub->DisplayName = "C#/..\\x";
  RunArchive(*inbox);
  EXPECT_TRUE(HasTarget("Eingang\\C#-__-x\\alt.htm"));
}

TEST_F(ExportWalkTest, ExistingRootMarkerStays) {
  ASSERT_TRUE(files.WriteFile(Target("VelmoraRootArc.vla"), "alt"));
  RunArchive(*inbox);
  EXPECT_EQ(ReadTarget("VelmoraRootArc.vla"), "alt");
}

TEST_F(ExportWalkTest, OnlyAttachmentsMakeDirectoriesAndMarkersOfSubArchivesOnly) {
  options.OnlyAttachments = options.MakeIndex = true;
  inbox->Mails[0]->Attachments = {{"a.txt", "A"}};
  RunArchive(*inbox);
  EXPECT_EQ(Names(), Strings{"Eingang"});
  EXPECT_EQ(Names("Eingang"), (Strings{"a.txt", "Alt"}));
  EXPECT_EQ(Names("Eingang\\Alt"), Strings{});
  EXPECT_FALSE(HasTarget("VelmoraRootArc.vla"));
  EXPECT_TRUE(HasTarget("Eingang\\Alt\\VelmoraSubArc.vla"));
}

TEST_F(ExportWalkTest, SelectedEntriesOfSubArchivesAreTakenBackwards) {
  store.AddMail(*sub, "alt");
  sub->Mails[0]->Text = "erster";
  sub->Mails[1]->Text = "zweiter";
  store.AddMail(*inbox, "neu");
  inbox->Mails[1]->Text = "zweiter";
  RunArchive(*inbox);
  EXPECT_EQ(Part("Eingang\\neu1.htm", "C"), "zweiter");      // the selected archive forward
  EXPECT_EQ(Part("Eingang\\Alt\\alt.htm", "C"), "zweiter");  // below it backwards
  EXPECT_EQ(Part("Eingang\\Alt\\alt1.htm", "C"), "erster");
}

TEST_F(ExportWalkTest, LinkInTheSelectionIsNotFollowedUnlessAsked) {
  RunArchive(*inbox, true);
  EXPECT_EQ(Names(), Strings{});
  options.LinkedArchives = true;
  RunArchive(*inbox, true);
  EXPECT_EQ(Names(), Strings{"Eingang"});
}

TEST_F(ExportWalkTest, LinksBelowAreFollowedOnlyWhenAskedAndSafe) {
  test::FakeArchiveData& other = store.AddArchive(archive, "Fremd", R"(\\SERVER\DAVID\ARCHIVE\USER\B\IN)");
  store.AddMail(other, "fremd");
  store.AddLink(*sub, other);
  store.AddLink(*sub, *inbox);  // leads back up
  RunArchive(*inbox);
  EXPECT_EQ(Names("Eingang\\Alt"), (Strings{"alt.add", "alt.htm"}));
  options.LinkedArchives = true;
  RunArchive(*inbox);
  EXPECT_TRUE(HasTarget("Eingang\\Alt\\Fremd\\fremd.htm"));
  EXPECT_FALSE(HasTarget("Eingang\\Alt\\Eingang"));
  EXPECT_EQ(Log(), "");  // passed over in silence
}

TEST_F(ExportWalkTest, RecordThatLeadsBackIsNeverEntered) {
  sub->SubArchives.push_back(
      store.Find(inbox->FullPath));  // no link record, so the path alone stops the walk
  RunArchive(*inbox);
  EXPECT_EQ(Names("Eingang\\Alt"), (Strings{"alt.add", "alt.htm"}));
  sub->SubArchives.clear();
}

TEST_F(ExportWalkTest, UnknownArchiveEndsSilently) {
  Run({{ExportSelection::Object::Kind::Archive, 0, "/Archive/Fehlt", false}});
  EXPECT_EQ(Names(), Strings{});
  EXPECT_EQ(Log(), "");
}

TEST_F(ExportWalkTest, ArchiveWhoseEntriesCannotBeReadIsLogged) {
  sub->EntriesFail = true;
  RunArchive(*inbox);
  EXPECT_EQ(Log(),
            " Fehler: 1006 - DvISE-Error Archiv besch\xE4"
            "digt -> /Archive/Eingang/Alt\r\n");
  EXPECT_TRUE(HasTarget("Eingang\\neu.htm"));
}

TEST_F(ExportWalkTest, DirectoryThatCannotBeMadeLetsEveryEntryLogItsFailure) {
  faulty.FailingPart = "\\Eingang";
  RunArchive(*inbox);
  EXPECT_EQ(run.counters.Mails, 0);
  EXPECT_EQ(run.counters.Errors, 2);
}

TEST_F(ExportWalkTest, MoveDeletesALeafAndThenAsksItsParent) {
  options.Mode = CopyMode::Move;
  options.DeleteArchives = true;
  RunArchive(*sub);
  // The leaf by the walk itself; then the archive that was current, which still holds something.
  EXPECT_EQ(store.Deletions, (Strings{"mail 2", "archive /Archive/Eingang/Alt", "refused archive /Archive"}));
}

TEST_F(ExportWalkTest, MoveDeletesATreeFromItsLeavesUp) {
  options.Mode = CopyMode::Move;
  options.DeleteArchives = true;
  RunArchive(*inbox);
  EXPECT_EQ(store.Find("/Archive/Eingang/Alt"), nullptr);
  EXPECT_EQ(store.Deletions[2], "archive /Archive/Eingang/Alt");
}

TEST_F(ExportWalkTest, ArchiveThatStillHoldsAnEntryIsRefused) {
  options.Mode = CopyMode::Move;
  options.DeleteArchives = true;
  sub->Mails[0]->SendStatus = 79;  // not exported
  RunArchive(*inbox);
  EXPECT_NE(store.Find("/Archive/Eingang/Alt"), nullptr);
  EXPECT_EQ(sub->Mails.size(), 1U);
}

TEST_F(ExportWalkTest, ArchivesAreMovedAndDeletedOnlyWithTheRight) {
  options.Mode = CopyMode::Move;
  options.DeleteArchives = true;
  session.Trustees = store::trustee::Administrator;
  RunArchive(*inbox);
  EXPECT_EQ(Names(), Strings{});
  EXPECT_EQ(store.Deletions, Strings{});
}

TEST_F(ExportWalkTest, UnattendedMoveWithoutTheRightIsLogged) {
  options.Mode = CopyMode::Move;
  session.Trustees = store::trustee::Administrator;
  ExportContext context = Context();
  ExportArchiveTree(context, inbox->FullPath, dir.Path("target"), false, nullptr);
  EXPECT_EQ(Names(), Strings{});
  EXPECT_EQ(run.counters.Errors, 1);
}

TEST_F(ExportWalkTest, UnattendedExportWritesIntoADirectoryOfItsOwn) {
  ExportContext context = Context();
  ExportArchiveTree(context, inbox->FullPath, dir.Path("target") + "\\", false, nullptr);
  EXPECT_TRUE(HasTarget("Eingang\\Alt\\alt.htm"));
  EXPECT_FALSE(HasTarget("VelmoraRootArc.vla"));  // its caller's
  EXPECT_EQ(store.Events.back(), "commit");
}

TEST_F(ExportWalkTest, CancelLeavesTheDirectoriesMadeSoFarWithoutAnIndex) {
  options.MakeIndex = true;
  for (int i = 0; i < 10; ++i) store.AddMail(*sub, "m" + std::to_string(i));
  frontEnd.CancelAtPump = 12;
  RunArchive(*inbox);
  EXPECT_TRUE(HasTarget("Eingang\\Alt\\VelmoraSubArc.vla"));
  EXPECT_FALSE(HasTarget("index.html"));
  EXPECT_FALSE(HasTarget("Eingang\\index.html"));
  EXPECT_LT(run.counters.Mails, 12);
  EXPECT_EQ(Log(), " Fehler: -1 - CancelReq -> Abbruch durch Benutzer\r\n");
}

TEST_F(ExportWalkTest, PendingCancelEndsTheRunBeforeAnything) {
  run.RequestCancel();
  RunArchive(*inbox);
  EXPECT_EQ(frontEnd.ProgressTitles, Strings{});
  EXPECT_EQ(Names(), Strings{});
}

TEST_F(ExportWalkTest, RunShowsItsTitleAndItsSummary) {
  RunArchive(*inbox);
  EXPECT_EQ(frontEnd.ProgressTitles, Strings{"Archive/Messages kopieren"});
  EXPECT_EQ(frontEnd.ProgressClosed, 1);
  ASSERT_EQ(frontEnd.Boxes.size(), 1U);
  EXPECT_EQ(frontEnd.Boxes[0].Title, "Beendet");
  EXPECT_EQ(frontEnd.StatusTexts.back(), "");
  options.Mode = CopyMode::Move;
  RunArchive(*inbox);
  EXPECT_EQ(frontEnd.ProgressTitles.back(), "Archive/Messages verschieben");
}

TEST_F(ExportWalkTest, ErrorLogIsClearedOnlyWhenAsked) {
  run.LogError("alt", 1, "Test", run::Severity::Error);
  RunArchive(*inbox);
  EXPECT_TRUE(run.ErrorLogExists());
  options.ClearErrorLog = true;
  RunArchive(*inbox);
  EXPECT_FALSE(run.ErrorLogExists());
}

TEST_F(ExportWalkTest, IndexOfAnExportKeepsTheWindowAliveButCountsNothing) {
  RunArchive(*inbox);
  const int pumpsWithoutIndex = frontEnd.Pumps;
  options.MakeIndex = true;
  RunArchive(*inbox);
  EXPECT_EQ(frontEnd.Pumps - pumpsWithoutIndex,
            pumpsWithoutIndex + 1 + 4 * 3 + 3);  // one poll, four rows in three indexes, three directories
  EXPECT_EQ(run.counters.Messages, 0);
  EXPECT_EQ(run.counters.Directories, 0);
}

TEST_F(ExportWalkTest, StoreIsCommittedBeforeTheIndex) {
  options.MakeIndex = true;
  RunArchive(*inbox);
  EXPECT_EQ(store.Events.back(), "commit");
  EXPECT_TRUE(HasTarget("Eingang\\Alt\\index.html"));
}

}  // namespace
}  // namespace velmora::mailarchive
