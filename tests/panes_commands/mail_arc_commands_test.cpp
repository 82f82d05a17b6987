#include "mailarchive/format/marker.h"
#include "panes/dialogs/mail_arc_marker_dialog.h"
#include "panes_commands/commands_fixture.h"

namespace velmora::panes {
namespace {

using mailarchive::MailArcKind;

class MailArcCommandsTest : public CommandsTest {
 protected:
  void Mark(MailArcKind kind) {
    ASSERT_TRUE(mailarchive::WriteArchiveMarker(*files, directory.Path("target"), kind,
                                                {"T", "/T", "", "", ""}, true));
    ASSERT_TRUE(panes->Files().Refresh());
  }
  // A mail archive of the marked messages in the directory on the right.
  void Export() {
    const auto request = CopyMoveDialog(*Run(Action::Copy, At("Rechnungen")).Export).Ok(front.Set().prompts);
    (void)RunCopyMove(*commands, *request);
    front.Boxes.clear();
    front.ProgressTitles.clear();
  }
};

TEST_F(MailArcCommandsTest, TheTreeNeedsARoot) {
  for (const MailArcKind kind : {MailArcKind::None, MailArcKind::Sub, MailArcKind::Data}) {
    Mark(kind);
    EXPECT_FALSE(Run(Action::IndexTree).FilesChanged);
    EXPECT_EQ(LastBox(),
              "Inhaltsverzeichnis anlegen: Ein Inhaltsverzeichnisbaum kann nur in einem Mail-Rootarchiv "
              "angelegt werden");
  }
  EXPECT_FALSE(Exists("index.html"));
}

TEST_F(MailArcCommandsTest, TheDirectoryNeedsASubArchive) {
  Mark(MailArcKind::Root);
  EXPECT_FALSE(Run(Action::IndexCurrent).FilesChanged);
  EXPECT_EQ(LastBox(),
            "Inhaltsverzeichnis anlegen: Ein Archiv-Inhaltsverzeichnis kann nur in einem Mail-Subarchiv "
            "angelegt werden");
}

TEST_F(MailArcCommandsTest, ANoMakesNoIndex) {
  Export();
  std::filesystem::remove(directory.HostPath("target/index.html"));
  front.Answers = {run::Answer::No};
  EXPECT_FALSE(Run(Action::IndexTree).FilesChanged);
  EXPECT_EQ(LastBox(), "Inhaltsverzeichnisbaum: Inhaltsverzeichnis für den gesamten Mailarchivbaum \r\n" +
                           directory.Path("target") + "\\\r\nerstellen ? ");
  EXPECT_FALSE(Exists("index.html"));
}

TEST_F(MailArcCommandsTest, AYesIndexesTheWholeTree) {
  Export();
  std::filesystem::remove(directory.HostPath("target/index.html"));
  std::filesystem::remove(directory.HostPath("target/Rechnungen/index.html"));
  front.Answers = {run::Answer::Yes};
  const Outcome outcome = Run(Action::IndexTree);
  EXPECT_TRUE(outcome.FilesChanged && outcome.ErrorLogChanged);
  EXPECT_TRUE(Exists("index.html"));
  EXPECT_TRUE(Exists("Rechnungen/index.html"));
  EXPECT_EQ(front.ProgressTitles.back(), "Inhaltsverzeichnis für Mailarchivbaum");
  EXPECT_EQ(front.ArchiveTexts[front.ArchiveTexts.size() - 4], "Mailarchivinhalt zusammenfassen");
  EXPECT_EQ(front.ArchiveTexts[front.ArchiveTexts.size() - 3], "Reportprofil wird generiert");
  EXPECT_EQ(context().run.counters.Directories, 2);
  EXPECT_GE(FindByDisplayName(panes->Files(), "index.html"), 0);
}

TEST_F(MailArcCommandsTest, AYesIndexesTheCurrentDirectoryAlone) {
  Export();
  ASSERT_TRUE(panes->Files().ShowDirectory(directory.Path("target\\Rechnungen")));
  std::filesystem::remove(directory.HostPath("target/index.html"));
  std::filesystem::remove(directory.HostPath("target/Rechnungen/index.html"));
  front.Answers = {run::Answer::Yes};
  (void)Run(Action::IndexCurrent);
  EXPECT_EQ(LastBox(),
            "Inhaltsverzeichnis aktuelles Verzeichnis: Inhaltsverzeichnis für aktuelles Archiv \r\n" +
                directory.Path("target\\Rechnungen") + "\\\r\nerstellen ? ");
  EXPECT_EQ(front.ProgressTitles.back(), "Inhaltsverzeichnis für aktuelles Verzeichnis");
  EXPECT_TRUE(Exists("Rechnungen/index.html"));
  EXPECT_FALSE(Exists("index.html"));
}

TEST_F(MailArcCommandsTest, TheIndexOpensAsADocument) {
  (void)Run(Action::ShowIndex);
  EXPECT_EQ(front.Boxes.back().Title, "Inhaltsverzeichnis anzeigen");
  EXPECT_TRUE(front.Documents.empty());
  Export();
  (void)Run(Action::ShowIndex);
  EXPECT_EQ(front.Documents.back(), directory.Path("target\\index.html"));
}

TEST_F(MailArcCommandsTest, DescriptorsAreShownOrTheirAbsenceIsTold) {
  (void)Run(Action::ShowArchiveDescriptor);
  EXPECT_EQ(front.Boxes.back().Text, "Das Verzeichnis ist kein Mailarchiv oder die Descriptor-Datei fehlt.");
  Export();
  (void)Run(Action::ShowArchiveDescriptor);
  EXPECT_EQ(front.ViewedTexts.back().Title.find("Descriptor Mailarchiv "), 0u);
  ASSERT_TRUE(panes->Files().ShowDirectory(directory.Path("target\\Rechnungen")));
  ActivateFiles();
  (void)Run(Action::ShowEntryDescriptor, At("Angebot.htm"));
  EXPECT_EQ(front.ViewedTexts.back().Title, "Descriptor Mailarchiv-Eintrag: Angebot.htm");
  (void)Run(Action::ShowEntryDescriptor, At("index.html"));
  EXPECT_EQ(front.Boxes.back().Text, "Es ist keine Descriptor-Datei vorhanden.");
}

TEST_F(MailArcCommandsTest, HelperFilesAreToggledInAMailArchive) {
  EXPECT_FALSE(Run(Action::ToggleHelperFiles).FilesChanged);
  Export();
  ASSERT_TRUE(panes->Files().ShowDirectory(directory.Path("target\\Rechnungen")));
  EXPECT_EQ(FindByDisplayName(panes->Files(), "angebot.add"), -1);
  EXPECT_TRUE(Run(Action::ToggleHelperFiles).FilesChanged);
  EXPECT_GE(FindByDisplayName(panes->Files(), "angebot.add"), 0);
}

TEST_F(MailArcCommandsTest, TheMarkerDialogListsTheFilesAnew) {
  EXPECT_EQ(Run(Action::SetMarker).Dialog, DialogKind::SetMarker);
  MailArcMarkerDialog dialog(*files, context().options, formTexts, panes->Files().CurrentPath());
  dialog.SetKind(MailArcKind::Sub);
  ASSERT_TRUE(dialog.Ok(front.Set().prompts));
  EXPECT_FALSE(panes->Files().IsMailArc());
  EXPECT_TRUE(RunMarkerSet(*commands).FilesChanged);
  EXPECT_TRUE(panes->Files().IsMailArc());
}

}  // namespace
}  // namespace velmora::panes
