// `velmoractl tree` on stores whose lists are damaged by hand.
#include <filesystem>

#include "platform/host_file_system.h"
#include "store/archive_files.h"
#include "store/archive_records.h"
#include "store_commands_fixture.h"

namespace velmora::cli {
namespace {

class TreeCommandsTest : public StoreCommandsFixture {
 protected:
  static constexpr std::string_view Common = R"(\\BUERO\DAVID\ARCHIVE\COMMON)";

  TreeCommandsTest() {
    Init();
    files_ = platform::MakeHostFileSystem({{R"(\\BUERO\DAVID)", Store()}});
  }
  Outcome Tree(std::vector<std::string> arguments) {
    std::vector<std::string> command{
        "/usr/bin/env", "-i",  "TZ=UTC", "HOME=" + directory_.HostPath(), "VELMORA_STORE=" + Store(),
        VELMORACTL,     "tree"};
    command.insert(command.end(), arguments.begin(), arguments.end());
    const auto result = platform::RunProcess(command, "");
    EXPECT_TRUE(result) << result.error().Text;
    return result ? Outcome{result->ExitStatus, result->Output} : Outcome{-1, ""};
  }
  void AddRecord(std::string_view path, std::string_view name) {
    ASSERT_TRUE(store::AppendArchiveRecord(*files_, Common, store::DirRecord::Make(path, name).value()));
  }
  std::string List() { return store::ReadArchiveList(*files_, Common).value(); }
  static bool Holds(const Outcome& outcome, std::string_view text) {
    return outcome.Output.find(text) != std::string::npos;
  }

  std::unique_ptr<platform::FileSystem> files_;
};

TEST_F(TreeCommandsTest, ASoundTreeGivesNothingToTell) {
  const auto check = Tree({"check"});
  EXPECT_EQ(check.Status, 0) << check.Output;
  EXPECT_TRUE(Holds(check, "0 doppelte, 0 zirkulare, 0 verwaiste")) << check.Output;
  EXPECT_EQ(Tree({"repair", "--yes"}).Status, 0);
}

TEST_F(TreeCommandsTest, CheckTellsAndChangesNothing) {
  AddRecord(std::string(Common) + "\\NEWS", "Noch einmal");
  AddRecord(Common, "Kreis");
  AddRecord(std::string(Common) + "\\WEG", "Weg");
  const std::string before = List();
  const auto check = Tree({"check"});
  EXPECT_EQ(check.Status, 1);
  EXPECT_TRUE(Holds(check, "Der Eintrag \"Noch einmal\"")) << check.Output;
  EXPECT_TRUE(Holds(check, "Der Eintrag \"Kreis\" führt zurück auf")) << check.Output;
  EXPECT_TRUE(Holds(check, "Der Eintrag \"Weg\" nennt das fehlende Verzeichnis")) << check.Output;
  EXPECT_TRUE(Holds(check, "1 doppelte, 1 zirkulare, 1 verwaiste")) << check.Output;
  EXPECT_EQ(List(), before);
}

TEST_F(TreeCommandsTest, RepairNeedsAPersonOrYes) {
  AddRecord(Common, "Kreis");
  const std::string before = List();
  EXPECT_EQ(Tree({"repair"}).Status, 2);
  EXPECT_EQ(List(), before);
}

TEST_F(TreeCommandsTest, RepairKeepsTheListAsABackupAndLeavesDanglingEntriesUnlessAsked) {
  AddRecord(std::string(Common) + "\\NEWS", "Noch einmal");
  AddRecord(Common, "Kreis");
  AddRecord(std::string(Common) + "\\WEG", "Weg");
  const std::string before = List();
  const auto repair = Tree({"repair", "--yes"});
  EXPECT_EQ(repair.Status, 1) << "one finding is left\n" << repair.Output;
  EXPECT_TRUE(Holds(repair, "Entfernt: 1 doppelte, 1 zirkulare, 0 verwaiste Einträge")) << repair.Output;
  EXPECT_EQ(List().size() + 2 * store::DirRecord::Size, before.size());
  EXPECT_EQ(files_->ReadFile(std::string(Common) + "\\archivedir.bak").value(), before);
  const auto whole = Tree({"repair", "--yes", "--dangling"});
  EXPECT_EQ(whole.Status, 0) << whole.Output;
  EXPECT_TRUE(Holds(whole, "0 zirkulare, 1 verwaiste Einträge;")) << whole.Output;
  EXPECT_EQ(Tree({"check"}).Status, 0);
}

TEST_F(TreeCommandsTest, OnePartOfTheTreeCanBeChecked) {
  AddRecord(Common, "Kreis");
  EXPECT_EQ(Tree({"check", "--archive", "/Archive/System"}).Status, 0);
  EXPECT_EQ(Tree({"check", "--archive", "/Archive/Gemeinsam"}).Status, 1);
  EXPECT_EQ(Tree({"check", "--archive", "/Archive/Nichts"}).Status, 1);
  EXPECT_EQ(Tree({"verify"}).Status, 2);
}

}  // namespace
}  // namespace velmora::cli
