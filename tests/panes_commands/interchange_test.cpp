#include "panes/commands/interchange.h"

#include "base/paths.h"
#include "panes_commands/commands_fixture.h"

namespace velmora::panes {
namespace {

class InterchangeTest : public CommandsTest {
 protected:
  void HandOver(const std::string& line) {
    directory.WriteHostFile("line", line + "\r\n");
    ASSERT_TRUE(files->CopyFile(directory.Path("line"), HandOverPath()));
  }
  std::string HandOverPath() { return JoinPath(context().process.TempDir, "VelmoraDisplayParms.zeb"); }
  std::string PathOfMessage(std::string_view subject) {
    Enter("Rechnungen");
    const auto* const row = panes->Left().Message(RowNamed(subject));
    const auto item = Archive("Rechnungen")->GetEntry(row->RecNo);
    const std::string location = store::FieldText(*(*item)->Fields().Get(store::tag::Location));
    EXPECT_TRUE(panes->Left().GoToRoot());
    return JoinPath(Archive("Rechnungen")->ID(), FileNameOf(location)) + ".001";
  }
};

TEST_F(InterchangeTest, WithoutALineNothingHappens) {
  const Outcome outcome = TickInterchange(*commands);
  EXPECT_FALSE(outcome.LeftChanged || outcome.FilesChanged || outcome.ExitStatus);
}

TEST_F(InterchangeTest, StandsStillWhileBusy) {
  HandOver("-c " + Archive("Rechnungen")->FullPath());
  busy.SetBusy();
  EXPECT_FALSE(TickInterchange(*commands).LeftChanged);
  EXPECT_TRUE(files->FileExists(HandOverPath()));
  busy.ClearBusy();
  EXPECT_TRUE(TickInterchange(*commands).LeftChanged);
  EXPECT_FALSE(files->FileExists(HandOverPath()));
  EXPECT_FALSE(busy.IsBusy());
}

TEST_F(InterchangeTest, AnArchiveStandsInBothPanes) {
  HandOver("-c " + Archive("Rechnungen")->FullPath());
  const Outcome outcome = TickInterchange(*commands);
  EXPECT_TRUE(outcome.LeftChanged);
  EXPECT_EQ(panes->Left().List().MessageRows, 2);
  EXPECT_EQ(panes->Right().CurrentArchive()->FullPath(), Archive("Rechnungen")->FullPath());
  // Its path in the tree is no directory: the file view stays where it is.
  EXPECT_EQ(panes->Files().CurrentPath(), directory.Path("target") + "\\");
  EXPECT_TRUE(front.Boxes.empty());
}

TEST_F(InterchangeTest, AnArchiveNamedByItsDirectoryStandsOnTheRightToo) {
  const std::string id = Archive("Rechnungen")->ID();
  HandOver("-c " + id);
  (void)TickInterchange(*commands);
  EXPECT_EQ(panes->Left().List().MessageRows, 2);
  EXPECT_TRUE(EqualsFold(panes->Files().CurrentPath(), id + "\\"));
}

TEST_F(InterchangeTest, ABadArgumentLandsOnTheDefaultArchive) {
  Enter("Rechnungen");
  HandOver("-c /Archive/Fehlt");
  (void)TickInterchange(*commands);
  EXPECT_EQ(panes->Left().CurrentArchive()->ID(), context().session.DefaultArchive->ID());
}

TEST_F(InterchangeTest, AMessageIsSelectedAndShownIfTheSettingsSaySo) {
  const std::string path = PathOfMessage("Bestellung");
  HandOver("-e " + path);
  Outcome outcome = TickInterchange(*commands);
  ASSERT_TRUE(outcome.CurrentRow.has_value()) << LastBox();
  EXPECT_EQ(panes->Left().Name(*outcome.CurrentRow), "Bestellung");
  EXPECT_FALSE(outcome.Message.has_value());

  context().options.TICDisplayFile = true;
  HandOver("-e " + path);
  outcome = TickInterchange(*commands);
  ASSERT_TRUE(outcome.Message.has_value());
  EXPECT_EQ(outcome.Message->Key, panes->Left().Message(*outcome.CurrentRow)->RecNo);
  EXPECT_EQ(outcome.Message->Archive->FullPath(), Archive("Rechnungen")->FullPath());
}

TEST_F(InterchangeTest, APathComesUpOnTheRight) {
  panes->SetViewMode(view_mode::Archive);
  HandOver(directory.Path("docs") + "\\");
  std::filesystem::create_directories(directory.HostPath("docs"));
  const Outcome outcome = TickInterchange(*commands);
  EXPECT_TRUE(outcome.LayoutChanged && outcome.FilesChanged);
  EXPECT_TRUE(panes->ShowsFiles());
  EXPECT_EQ(panes->Files().CurrentPath(), directory.Path("docs") + "\\");
}

TEST_F(InterchangeTest, AnOptionThatEndsTheProcessEndsThisOne) {
  HandOver("-?");
  const Outcome outcome = TickInterchange(*commands);
  EXPECT_TRUE(outcome.ExitStatus.has_value());
  EXPECT_FALSE(outcome.LeftChanged);
}

TEST_F(InterchangeTest, AStartWithAMessageShowsFilesAndSelectsIt) {
  const std::string path = PathOfMessage("Angebot");
  panes->SetViewMode(view_mode::Archive);
  context().process.StartMode = startup::start_mode::Archive;
  context().process.StartArgKind = startup::start_arg::Message;
  context().process.StartArchiveArg = path;
  const Outcome outcome = ShowStartMessage(*commands);
  EXPECT_TRUE(panes->ShowsFiles());
  ASSERT_TRUE(outcome.CurrentRow.has_value()) << LastBox();
  EXPECT_EQ(panes->Left().Name(*outcome.CurrentRow), "Angebot");
  EXPECT_EQ(context().process.StartMode, startup::start_mode::None);
}

TEST_F(InterchangeTest, AnyOtherStartShowsNoMessage) {
  const Outcome outcome = ShowStartMessage(*commands);
  EXPECT_FALSE(outcome.CurrentRow || outcome.LeftChanged);
}

}  // namespace
}  // namespace velmora::panes
