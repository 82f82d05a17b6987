#include "panes/commands/open_path.h"

#include "base/paths.h"
#include "panes_commands/commands_fixture.h"

namespace velmora::panes {
namespace {

class OpenPathTest : public CommandsTest {
 protected:
  std::string FileOf(std::string_view subject) {
    const auto archive = Archive("Rechnungen");
    Enter("Rechnungen");
    const auto* const row = panes->Left().Message(RowNamed(subject));
    const auto item = archive->GetEntry(row->RecNo);
    const std::string location = store::FieldText(*(*item)->Fields().Get(store::tag::Location));
    EXPECT_TRUE(panes->Left().GoToRoot());
    return std::string(FileNameOf(location)) + ".001";
  }
};

TEST_F(OpenPathTest, ADirectoryOfTheStoreStandsOnTheLeftAndOnTheRight) {
  const std::string id = Archive("Rechnungen")->ID();
  const Outcome outcome = OpenPathInPane(*commands, AddBackslash(id), false);
  EXPECT_TRUE(outcome.LeftChanged && outcome.FilesChanged);
  EXPECT_TRUE(EqualsFold(panes->Left().CurrentArchive()->ID(), id));
  EXPECT_TRUE(IsSameOrBelow(panes->Files().CurrentPath(), id));
}

TEST_F(OpenPathTest, AFileIsTheEntryThatItBelongsTo) {
  const std::string file = FileOf("Bestellung");
  const Outcome outcome = OpenPathInPane(*commands, JoinPath(Archive("Rechnungen")->ID(), file), true);
  ASSERT_TRUE(outcome.CurrentRow.has_value()) << LastBox();
  EXPECT_EQ(panes->Left().Name(*outcome.CurrentRow), "Bestellung");
  EXPECT_EQ(panes->ActiveView(), PaneView::LZEBView);
}

TEST_F(OpenPathTest, WithoutTheItemOnlyThePlaceIsShown) {
  const std::string file = FileOf("Bestellung");
  const Outcome outcome = OpenPathInPane(*commands, JoinPath(Archive("Rechnungen")->ID(), file), false);
  EXPECT_TRUE(outcome.LeftChanged);
  EXPECT_FALSE(outcome.CurrentRow.has_value());
}

TEST_F(OpenPathTest, AFileWithoutAnEntryIsTold) {
  EXPECT_TRUE(
      OpenPathInPane(*commands, JoinPath(Archive("Rechnungen")->ID(), "fremd.001"), true).LeftChanged);
  EXPECT_EQ(
      LastBox(),
      "Unbekannte Datei: Die Datei fremd.001 hat keinen ZEB-Eintrag oder der ausgewählte ZEB-Eintrag ist "
      "ein Eintrag ohne zugehörigen Dateiverweis.");
}

TEST_F(OpenPathTest, ADirectoryThatIsNoArchiveIsTold) {
  const Outcome outcome = OpenPathInPane(*commands, directory.Path("target") + "\\", true);
  EXPECT_FALSE(outcome.LeftChanged);
  EXPECT_EQ(LastBox(), "Unbekanntes Verzeichnis: Das Verzeichnis \r\n" + directory.Path("target") +
                           "\r\n ist kein ZEB-Archiv.");
}

TEST_F(OpenPathTest, AnArchiveWithoutAccessIsTold) {
  const std::string id = Archive("Rechnungen")->ID();
  login = "otto";
  StartSession();
  Reopen();
  EXPECT_FALSE(OpenPathInPane(*commands, AddBackslash(id), false).LeftChanged);
  EXPECT_EQ(LastBox(),
            "Keine Zugriffsrechte: Auf das Verzeichnis \r\n" + id + "\r\n bestehen keine Zugriffsrechte.");
}

}  // namespace
}  // namespace velmora::panes
