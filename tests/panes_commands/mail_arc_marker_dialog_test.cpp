#include "panes/dialogs/mail_arc_marker_dialog.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "platform/host_file_system.h"
#include "support/scripted_front_end.h"
#include "support/temp_dir.h"

namespace velmora::panes {
namespace {

using mailarchive::MailArcKind;

class MailArcMarkerDialogTest : public testing::Test {
 protected:
  MailArcMarkerDialogTest() { std::filesystem::create_directory(directory.HostPath("Archiv")); }

  std::string Path() const { return directory.Path("Archiv") + "\\"; }
  void WriteMarker(MailArcKind kind, const mailarchive::MarkerTexts& marker) {
    ASSERT_TRUE(mailarchive::WriteArchiveMarker(*files, Path(), kind, marker, true));
  }
  MailArcMarkerDialog Dialog() { return {*files, options, texts, Path()}; }
  run::Prompts& prompts() { return set.prompts; }

  test::TempDir directory;
  std::unique_ptr<platform::FileSystem> files = platform::MakeHostFileSystem({{"Z:", "/"}});
  settings::Options options;
  FormUserTexts texts;
  test::ScriptedFrontEnd front;
  run::FrontEnd set = front.Set();
};

TEST_F(MailArcMarkerDialogTest, ShowsWhatTheMarkerSaysWithEntitiesDecoded) {
  WriteMarker(MailArcKind::Sub, {"Eingang", "/Archive/In", "IN", "größer <b>\r\nzwei", "© wir"});
  const MailArcMarkerDialog dialog = Dialog();
  EXPECT_EQ(dialog.Kind(), MailArcKind::Sub);
  EXPECT_EQ(dialog.Texts().DisplayName, "Eingang");
  EXPECT_EQ(dialog.Texts().FullPath, "/Archive/In");
  EXPECT_EQ(dialog.Texts().DirName, "IN");
  EXPECT_EQ(dialog.Texts().Comment, "größer <b>\r\nzwei");
  EXPECT_EQ(dialog.Texts().CopyRight, "© wir");
}

TEST_F(MailArcMarkerDialogTest, WithoutAMarkerTheDirectoryGivesTheNames) {
  const MailArcMarkerDialog dialog = Dialog();
  EXPECT_EQ(dialog.Kind(), MailArcKind::None);
  EXPECT_EQ(dialog.Texts().DisplayName, "Archiv");
  EXPECT_EQ(dialog.Texts().FullPath, "Archiv");
  EXPECT_EQ(dialog.Texts().DirName, "Archiv");
}

TEST_F(MailArcMarkerDialogTest, AMarkerForAddressesLightsNoOption) {
  WriteMarker(MailArcKind::Address, {"A", "B", "C", "", ""});
  const MailArcMarkerDialog dialog = Dialog();
  for (const MarkerChoice& choice : MarkerChoices) EXPECT_NE(choice.Kind, dialog.Kind());
}

TEST_F(MailArcMarkerDialogTest, OkWritesTheMarkerAndTheTextsOfTheRuns) {
  MailArcMarkerDialog dialog = Dialog();
  dialog.SetKind(MailArcKind::Root);
  dialog.SetArcFormDispName("Anzeige");
  dialog.SetArcFormComment("K");
  dialog.SetArcFormCopyRight("C");
  EXPECT_TRUE(dialog.Ok(prompts()));
  EXPECT_TRUE(front.Boxes.empty());  // there was no kind to change
  EXPECT_EQ(mailarchive::GetMailArcKind(*files, Path()), MailArcKind::Root);
  EXPECT_EQ(mailarchive::ReadArcDescriptor(*files, Path())->ArchiveDisplayName, "Anzeige");
  EXPECT_EQ(texts.Comment, "K");
  EXPECT_EQ(texts.CopyRight, "C");
}

TEST_F(MailArcMarkerDialogTest, AChangeOfTheKindIsAskedAndOnlyYesGoesOn) {
  WriteMarker(MailArcKind::Sub, {"A", "B", "C", "", ""});
  for (const run::Answer answer : {run::Answer::No, run::Answer::Cancel}) {
    MailArcMarkerDialog dialog = Dialog();
    dialog.SetKind(MailArcKind::None);
    front.Answers = {answer};
    EXPECT_FALSE(dialog.Ok(prompts()));
    EXPECT_EQ(front.Boxes.back(),
              (test::ScriptedFrontEnd::Box{"Typwechsel", "Typ des Mail-Archivs wirklich verändern?", true}));
    EXPECT_EQ(mailarchive::GetMailArcKind(*files, Path()), MailArcKind::Sub);
  }
  MailArcMarkerDialog dialog = Dialog();
  dialog.SetKind(MailArcKind::None);
  front.Answers = {run::Answer::Yes};
  EXPECT_TRUE(dialog.Ok(prompts()));
  EXPECT_EQ(mailarchive::GetMailArcKind(*files, Path()), MailArcKind::None);
}

TEST_F(MailArcMarkerDialogTest, TheSameKindIsWrittenWithoutAQuestion) {
  WriteMarker(MailArcKind::Sub, {"A", "B", "C", "", ""});
  MailArcMarkerDialog dialog = Dialog();
  dialog.SetArcFormFullPath("neu");
  EXPECT_TRUE(dialog.Ok(prompts()));
  EXPECT_TRUE(front.Boxes.empty());
  EXPECT_EQ(mailarchive::ReadArcDescriptor(*files, Path())->ArchiveFullPath, "neu");
}

TEST_F(MailArcMarkerDialogTest, CopyUsrInfoTakesTheStoredTexts) {
  options.ArchiveFormComment = "gespeichert";
  options.ArchiveFormCopyRight = "(c)";
  MailArcMarkerDialog dialog = Dialog();
  dialog.CopyUsrInfo();
  EXPECT_EQ(dialog.Texts().Comment, "gespeichert");
  EXPECT_EQ(dialog.Texts().CopyRight, "(c)");
}

}  // namespace
}  // namespace velmora::panes
