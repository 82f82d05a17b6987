#include "panes/dialogs/copy_move_dialog.h"

#include <gtest/gtest.h>

#include "platform/host_file_system.h"
#include "support/fake_store.h"
#include "support/scripted_front_end.h"
#include "support/temp_dir.h"

namespace velmora::panes {
namespace {

using mailarchive::CopyMode;
using mailarchive::ExportSelection;
using Box = CopyMoveBox;

class CopyMoveDialogTest : public testing::Test {
 protected:
  CopyMoveDialogTest() {
    fake.AddArchive(nullptr, "ZEB", R"(\\S\DAVID\ARCHIVE)");
    selection.CurrentArchive = fake.Open(R"(\\S\DAVID\ARCHIVE)");
    selection.Objects = {{ExportSelection::Object::Kind::Message, 7, "", false}};
  }
  CopyMoveDialog Dialog(CopyMode mode = CopyMode::Copy) {
    return CopyMoveDialog({*files, options, texts, mayDelete, mode, selection, directory.Path() + "\\"});
  }
  mailarchive::ExportOptions OptionsOf(CopyMoveDialog& dialog) { return dialog.Ok(prompts())->Options; }
  run::Prompts& prompts() { return set.prompts; }

  test::TempDir directory;
  std::unique_ptr<platform::FileSystem> files = platform::MakeHostFileSystem({{"Z:", "/"}});
  test::FakeStore fake{*files};
  ExportSelection selection;
  settings::Options options;
  FormUserTexts texts = {"(c)", "Kommentar"};
  bool mayDelete = true;
  test::ScriptedFrontEnd front;
  run::FrontEnd set = front.Set();
};

TEST_F(CopyMoveDialogTest, TextsFollowTheMode) {
  const CopyMoveDialog copy = Dialog(), move = Dialog(CopyMode::Move);
  EXPECT_EQ(copy.Title(), "Kopieren");
  EXPECT_EQ(move.Title(), "Verschieben");
  EXPECT_EQ(copy.CaptionOf(Box::EnWithErr), "Messages mit Fehler kopieren");
  EXPECT_EQ(move.CaptionOf(Box::EnWithErr), "Messages mit Fehler verschieben");
  EXPECT_EQ(copy.CaptionOf(Box::EnSavAtt), "Attachments mit speichern");
}

TEST_F(CopyMoveDialogTest, SourceCountsWhatIsMarked) {
  using Kind = ExportSelection::Object::Kind;
  const std::string path = selection.CurrentArchive->FullPath();
  EXPECT_EQ(Dialog().SourceText(), "1 Message(s) kopieren von\r\n" + path + "\r\n nach");
  selection.Objects = {{Kind::Archive, 0, "a", false},
                       {Kind::Archive, 0, "b", false},
                       {Kind::Archive, 0, "c", true},
                       {Kind::Message, 1, "", false}};
  EXPECT_EQ(Dialog(CopyMode::Move).SourceText(),
            "2 Archiv(e), 1 Link(s), 1 Message(s) verschieben von\r\n" + path + "\r\n nach");
}

TEST_F(CopyMoveDialogTest, WithNothingMarkedItDoesNotOpen) {
  EXPECT_EQ(Dialog().NothingMarked(), "");
  selection.Objects.clear();
  EXPECT_EQ(Dialog().NothingMarked(), "Es sind keine Objekte zum Kopieren markiert");
  EXPECT_EQ(Dialog(CopyMode::Move).NothingMarked(), "Es sind keine Objekte zum Verschieben markiert");
}

TEST_F(CopyMoveDialogTest, DefaultsComeFromTheSettings) {
  CopyMoveDialog dialog = Dialog();
  const mailarchive::ExportOptions chosen = OptionsOf(dialog);
  EXPECT_TRUE(chosen.SaveAttachments && chosen.SaveOriginals && chosen.SaveComments);
  EXPECT_FALSE(chosen.AnyOnly() || chosen.LinkedArchives || chosen.SaveSmtpHeader || chosen.WithErrors);
  EXPECT_TRUE(chosen.MakeIndex && chosen.NoDuplicates && chosen.ClearErrorLog);
  options.MakeIndex = options.NoDuplicateFiles = options.ClearErrorLog = false;
  options.DvItemFilter = 0x301FF;
  options.EMLFolder = "Originale";
  CopyMoveDialog other = Dialog();
  const mailarchive::ExportOptions otherChosen = OptionsOf(other);
  EXPECT_FALSE(otherChosen.MakeIndex || otherChosen.NoDuplicates || otherChosen.ClearErrorLog);
  EXPECT_EQ(otherChosen.ItemFilter, 0x301FFu);
  EXPECT_EQ(otherChosen.EmlFolder, "Originale");
}

TEST_F(CopyMoveDialogTest, TextsOfTheFormsAreThoseOfTheRun) {
  options.ArchiveFormCopyRight = "der Einstellungen";
  CopyMoveDialog dialog = Dialog();
  texts.Comment = "inzwischen geändert";
  const mailarchive::ExportOptions chosen = OptionsOf(dialog);
  EXPECT_EQ(chosen.CopyRight, "(c)");
  EXPECT_EQ(chosen.Comment, "inzwischen geändert");
}

TEST_F(CopyMoveDialogTest, OnlySwitchesNeedTheirPart) {
  CopyMoveDialog dialog = Dialog();
  for (const auto& [part, only] :
       {std::pair{Box::EnSavAtt, Box::EnOnlyAtt}, std::pair{Box::EnSavEml, Box::EnOnlyEml},
        std::pair{Box::EnSavCmt, Box::EnOnlyCmt}}) {
    EXPECT_TRUE(dialog.IsEnabled(only));
    dialog.SetBox(only, true);
    dialog.SetBox(part, false);
    EXPECT_FALSE(dialog.IsEnabled(only));
    EXPECT_FALSE(dialog.IsChecked(only));
    dialog.SetBox(only, true);  // a disabled box cannot be clicked
    EXPECT_FALSE(dialog.IsChecked(only));
  }
}

TEST_F(CopyMoveDialogTest, TheHeaderNeedsTheOriginals) {
  CopyMoveDialog dialog = Dialog();
  EXPECT_TRUE(dialog.IsEnabled(Box::EnSaveSMTP));
  dialog.SetBox(Box::EnSaveSMTP, true);
  EXPECT_TRUE(OptionsOf(dialog).SaveSmtpHeader);
  dialog.SetBox(Box::EnSavEml, false);
  EXPECT_FALSE(dialog.IsEnabled(Box::EnSaveSMTP));
  EXPECT_FALSE(OptionsOf(dialog).SaveSmtpHeader);
}

TEST_F(CopyMoveDialogTest, AnyOnlySwitchTakesTheIndexAway) {
  for (const Box only : {Box::EnOnlyAtt, Box::EnOnlyEml, Box::EnOnlyCmt}) {
    CopyMoveDialog dialog = Dialog();
    EXPECT_TRUE(dialog.IsEnabled(Box::EnMakeIndex));
    dialog.SetBox(only, true);
    EXPECT_FALSE(dialog.IsEnabled(Box::EnMakeIndex));
    EXPECT_FALSE(OptionsOf(dialog).MakeIndex);
  }
}

TEST_F(CopyMoveDialogTest, ArchivesAreDeletedByAMoveWithTheRightOnly) {
  CopyMoveDialog copy = Dialog();
  EXPECT_FALSE(copy.IsEnabled(Box::EnDelArchives));
  EXPECT_FALSE(copy.IsChecked(Box::EnDelArchives));
  CopyMoveDialog move = Dialog(CopyMode::Move);
  EXPECT_TRUE(move.IsEnabled(Box::EnDelArchives));
  EXPECT_TRUE(OptionsOf(move).DeleteArchives);
  EXPECT_EQ(OptionsOf(move).Mode, CopyMode::Move);
  mayDelete = false;
  CopyMoveDialog without = Dialog(CopyMode::Move);
  EXPECT_FALSE(without.IsEnabled(Box::EnDelArchives));
  EXPECT_FALSE(OptionsOf(without).DeleteArchives);
}

TEST_F(CopyMoveDialogTest, TheTargetMustExist) {
  CopyMoveDialog dialog = Dialog();
  for (const std::string& missing : {directory.Path("fehlt"), std::string(), std::string("  ")}) {
    dialog.SetCMDst(missing);
    EXPECT_FALSE(dialog.Ok(prompts()).has_value());
    EXPECT_EQ(front.Boxes.back(),
              (test::ScriptedFrontEnd::Box{
                  "Falsches Zielverzeichnis",
                  "Das ausgewählte Zielverzeichnis existiert nicht oder es bestehen keine Zugriffsrechte."}));
  }
}

TEST_F(CopyMoveDialogTest, OkNormalisesTheTargetAndHandsOnTheSelection) {
  CopyMoveDialog dialog = Dialog();
  EXPECT_EQ(dialog.CMDst(), directory.Path() + "\\");
  dialog.SetCMDst(directory.HostPath());  // as people of this host type it
  const auto request = dialog.Ok(prompts());
  ASSERT_TRUE(request.has_value());
  EXPECT_EQ(request->TargetDirectory, directory.Path() + "\\");
  ASSERT_EQ(request->Selection.Objects.size(), 1u);
  EXPECT_EQ(request->Selection.Objects[0].Key, 7u);
  EXPECT_TRUE(front.Boxes.empty());
}

TEST_F(CopyMoveDialogTest, ThePickerReplacesTheTarget) {
  CopyMoveDialog dialog = Dialog();
  front.Inputs = {std::nullopt, R"(Z:\anders)"};
  dialog.SrcDir(set.choosers);
  EXPECT_EQ(dialog.CMDst(), directory.Path() + "\\");
  dialog.SrcDir(set.choosers);
  EXPECT_EQ(dialog.CMDst(), R"(Z:\anders)");
}

TEST_F(CopyMoveDialogTest, EachBoxStandsAtItsPlaceInTheTable) {
  for (std::size_t index = 0; index < CopyMoveBoxes.size(); ++index) {
    EXPECT_EQ(static_cast<std::size_t>(CopyMoveBoxes[index].Box), index);
    EXPECT_FALSE(CopyMoveBoxes[index].Tip.empty());
  }
}

}  // namespace
}  // namespace velmora::panes
