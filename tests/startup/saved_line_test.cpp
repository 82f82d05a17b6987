#include "startup/saved_line.h"

#include "program_fixture.h"
#include "startup/command_line.h"

namespace velmora::startup {
namespace {

class SavedLineTest : public ProgramTest {
 protected:
  std::string SavedLine() const { return directory.ReadHostFile("state/VelmoraLine.txt"); }
  bool IsSaved() const { return std::filesystem::exists(directory.HostPath("state/VelmoraLine.txt")); }
  int StoredMode() {
    return settings::ToNumber(Settings().GetUserSetting("GlobalSettings", "SaveCmdLineInFile", 0))
        .value_or(-1);
  }
};

TEST_F(SavedLineTest, OnceSavesTheNextLineAndOffersItLater) {
  EXPECT_EQ(RunMain("-w1"), exit_status::Done);
  ASSERT_EQ(front.Boxes.size(), 1U);
  EXPECT_EQ(front.Boxes[0].Title, "Hinweis");
  EXPECT_EQ(front.Boxes[0].Text, "Beim nächsten Programmstart wird die Kommandozeile in " +
                                     directory.Path("state\\VelmoraLine.txt") + " einmalig gespeichert.");
  EXPECT_EQ(StoredMode(), 1);
  EXPECT_EQ(windows.MainWindows, 0);

  StartSession("-c /Archive");
  EXPECT_EQ(SavedLine(), "-c /Archive\r\n");
  EXPECT_EQ(StoredMode(), 0);
  EXPECT_EQ(context().process.StartArchiveArg, "/Archive");

  front.Boxes.clear();
  front.Answers = {run::Answer::Yes};
  StartSession("");
  ASSERT_EQ(front.Boxes.size(), 1U);
  EXPECT_EQ(front.Boxes[0].Title, "Kommandozeile");
  EXPECT_EQ(front.Boxes[0].Text,
            "Es existiert eine gespeicherte Kommandozeile (" + directory.Path("state\\VelmoraLine.txt") +
                "):\r\nKommandozeile= -c /Archive\r\nSoll diese beim Start verwendet werden?");
  EXPECT_EQ(context().process.StartMode, start_mode::Archive);
  EXPECT_EQ(SavedLine(), "-c /Archive\r\n");
}

TEST_F(SavedLineTest, AlwaysRewritesTheFileAtEachStartWithALine) {
  RunMain("-w2");
  EXPECT_EQ(front.Boxes[0].Text, "Die Kommandozeile wird bei jedem Programmstart in " +
                                     directory.Path("state\\VelmoraLine.txt") +
                                     " gespeichert.\r\nDie Deaktivierung ist mit \"-w0\" möglich.");
  StartSession("-c /Archive");
  StartSession("-r");
  EXPECT_EQ(SavedLine(), "-r\r\n");
  StartSession("");
  EXPECT_EQ(SavedLine(), "-r\r\n");
  EXPECT_EQ(StoredMode(), 2);
}

TEST_F(SavedLineTest, OffStopsTheSaving) {
  RunMain("-w2");
  RunMain("-w0");
  EXPECT_EQ(front.Boxes.back().Text, "Das Speichern der Kommandozeile ist deaktiviert.");
  StartSession("-r");
  EXPECT_FALSE(IsSaved());
}

TEST_F(SavedLineTest, StatusTellsTheMode) {
  RunMain("-w?");
  EXPECT_EQ(front.Boxes.back().Title, "Status");
  EXPECT_EQ(front.Boxes.back().Text, "Das Speichern der Kommandozeile ist deaktiviert.");
  RunMain("-w1");
  RunMain("-w?");
  EXPECT_EQ(front.Boxes.back().Text,
            "Das einmalige Speichern der Kommandozeile beim nächsten Programmstart ist aktiviert.");
  RunMain("-w2");
  RunMain("-w?");
  EXPECT_EQ(front.Boxes.back().Text, "Das Speichern der Kommandozeile bei jedem Start ist aktiviert.");
}

TEST_F(SavedLineTest, AnEndBeforeTheSettingsWereLoadedSavesNoneOfThem) {
  RunMain("-w1");
  EXPECT_EQ(Settings().Read(settings::Scope::User).count("Options"), 0U);
}

TEST_F(SavedLineTest, TheModeOutlivesTheWipeOfAnotherVersion) {
  ASSERT_TRUE(Settings().SetUserSetting("Information", "MajorVersion", 99));
  ASSERT_TRUE(Settings().SetUserSetting("Options", "SizeCheck", 5));
  RunMain("-w2");
  StartSession("-r");
  EXPECT_EQ(StoredMode(), 2);
  EXPECT_EQ(context().options.SizeCheck, 0);
}

TEST_F(SavedLineTest, IgnoringNeitherUsesNorAsksAndDropsTheRest) {
  StartSession("");
  directory.WriteHostFile("state/VelmoraLine.txt", "-c /Archive\r\n");
  StartSession("-wi -r");
  EXPECT_TRUE(front.Boxes.empty());
  EXPECT_EQ(context().process.StartMode, start_mode::None);
  EXPECT_FALSE(context().process.IgnoreLastArchives);
}

TEST_F(SavedLineTest, UsingTakesTheSavedLineWithoutTheQuestion) {
  StartSession("");
  directory.WriteHostFile("state/VelmoraLine.txt", "-c /Archive\r\nsecond line\r\n");
  StartSession("-wa");
  EXPECT_TRUE(front.Boxes.empty());
  EXPECT_EQ(context().process.StartArchiveArg, "/Archive");
}

TEST_F(SavedLineTest, ANoLeavesAnEmptyLine) {
  StartSession("");
  directory.WriteHostFile("state/VelmoraLine.txt", "-c /Archive\r\n");
  front.Answers = {run::Answer::No};
  StartSession("");
  EXPECT_EQ(front.Boxes.size(), 1U);
  EXPECT_EQ(context().process.StartMode, start_mode::None);
}

TEST_F(SavedLineTest, TheQuestionsDefaultIsNo) {
  StartSession("");
  directory.WriteHostFile("state/VelmoraLine.txt", "-c /Archive\r\n");
  StartSession("");  // nobody answers
  EXPECT_EQ(context().process.StartMode, start_mode::None);
}

}  // namespace
}  // namespace velmora::startup
