#include "settings/store.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/host_file_system.h"
#include "support/temp_dir.h"

namespace velmora::settings {
namespace {

class StoreTest : public ::testing::Test {
 protected:
  void WriteUserFile(std::string_view bytes) {
    ASSERT_TRUE(files_->CreateFolder(directory_.Path("user")).has_value());
    directory_.WriteHostFile("user/settings.toml", bytes);
  }
  std::string UserFile() const { return directory_.ReadHostFile("user/settings.toml"); }

  test::TempDir directory_;
  std::unique_ptr<platform::FileSystem> files_ = platform::MakeHostFileSystem({});
  Store store_{*files_, directory_.Path("user"), directory_.Path("machine")};
};

TEST_F(StoreTest, ReturnsTheDefaultWhileNothingIsStored) {
  EXPECT_EQ(store_.GetUserSetting("Options", "CSVSeparator", std::string(";")), Value(std::string(";")));
  EXPECT_FALSE(files_->FolderExists(directory_.Path("user")));
}

TEST_F(StoreTest, KeepsTextsAndNumbersByTheirType) {
  ASSERT_TRUE(store_.SetUserSetting("Options", "SizeCheck", 42));
  ASSERT_TRUE(store_.SetUserSetting("Options", "MaxItemCount", std::string("50")));
  EXPECT_EQ(store_.GetUserSetting("Options", "SizeCheck", 0), Value(42));
  EXPECT_EQ(store_.GetUserSetting("Options", "MaxItemCount", 0), Value(std::string("50")));
}

TEST_F(StoreTest, KeysThatCannotBeWrittenDoNotCostTheFile) {
  WriteUserFile("\"it's\\\"odd\" = 1\n[Options]\nSizeCheck = 7\n\"a'b\" = 2\n");
  ASSERT_TRUE(store_.SetUserSetting("Options", "CSVSeparator", std::string(",")));
  EXPECT_EQ(store_.GetUserSetting("Options", "SizeCheck", 0), Value(7));
  EXPECT_EQ(store_.GetUserSetting("Options", "CSVSeparator", 0), Value(std::string(",")));
}

TEST_F(StoreTest, KeepsAnyTextWhole) {
  const std::string text = "  Zeile 1\r\n\tZeile 2 \"\"\" ''' = # [x] \\n \x01 Größe Привет  ";
  ASSERT_TRUE(store_.SetUserSetting("ServerSettings_Se rv.er\"#", "LZEBTabItem(0)", text));
  EXPECT_EQ(store_.GetUserSetting("ServerSettings_Se rv.er\"#", "LZEBTabItem(0)", 0), Value(text));
}

TEST_F(StoreTest, KeepsATextFullOfDots) {
  const std::string dots(5000, '.');
  ASSERT_TRUE(store_.SetUserSetting("Options", "ArchiveFormComment", dots));
  ASSERT_TRUE(store_.SetUserSetting("Options", "ArchiveFormCopyRight", std::string("'''")));
  EXPECT_EQ(store_.GetUserSetting("Options", "ArchiveFormComment", 0), Value(dots));
}

TEST_F(StoreTest, UserAndMachineAreApart) {
  ASSERT_TRUE(store_.SetMachineSetting("Options", "ForceStandardRights", std::string("1")));
  EXPECT_EQ(store_.GetMachineSetting("Options", "ForceStandardRights", 0), Value(std::string("1")));
  EXPECT_EQ(store_.GetUserSetting("Options", "ForceStandardRights", 0), Value(0));
}

TEST_F(StoreTest, TheUsersFileIsForItsOwnerOnlyTheMachinesForAll) {
  ASSERT_TRUE(store_.SetUserSetting("Options", "A", 1));
  ASSERT_TRUE(store_.SetMachineSetting("Options", "A", 1));
  struct stat user = {}, machine = {};
  ASSERT_EQ(stat(directory_.HostPath("user/settings.toml").c_str(), &user), 0);
  ASSERT_EQ(stat(directory_.HostPath("machine/settings.toml").c_str(), &machine), 0);
  EXPECT_EQ(user.st_mode & 0777, 0600U);
  EXPECT_NE(machine.st_mode & S_IROTH, 0U);
}

TEST_F(StoreTest, DeletingRemovesOneValueAndAMissingOneIsNoError) {
  ASSERT_TRUE(store_.SetUserSetting("Options", "A", 1));
  ASSERT_TRUE(store_.SetUserSetting("Options", "B", 2));
  EXPECT_TRUE(store_.DeleteUserSetting("Options", "A"));
  EXPECT_TRUE(store_.DeleteUserSetting("Options", "A"));
  EXPECT_TRUE(store_.DeleteUserSetting("Nowhere", "A"));
  EXPECT_EQ(store_.GetUserSetting("Options", "A", 9), Value(9));
  EXPECT_EQ(store_.GetUserSetting("Options", "B", 9), Value(2));
}

TEST_F(StoreTest, AKeyIsMadeOnceAndFound) {
  EXPECT_FALSE(store_.KeyExists(Scope::User, "Information"));
  ASSERT_TRUE(store_.CreateKey(Scope::User, "Information"));
  EXPECT_TRUE(store_.KeyExists(Scope::User, "Information"));
  ASSERT_TRUE(store_.SetValue(Scope::User, "Information", "MajorVersion", 1));
  ASSERT_TRUE(store_.CreateKey(Scope::User, "Information"));
  EXPECT_EQ(store_.GetValue(Scope::User, "Information", "MajorVersion"), Value(1));
}

TEST_F(StoreTest, AHandEditedFileIsRead) {
  WriteUserFile("# von Hand\n[Options]\nSizeCheck = 7\nCSVSeparator = ','\n");
  EXPECT_EQ(store_.GetUserSetting("Options", "SizeCheck", 0), Value(7));
  EXPECT_EQ(store_.GetUserSetting("Options", "CSVSeparator", 0), Value(std::string(",")));
}

TEST_F(StoreTest, ValuesOfOtherTypesAreTheDefaultAndStayInTheFile) {
  WriteUserFile("Options = { A = 1.5, B = 3000000000, C = [1, 2], D = true, E = 5 }\nloose = 1\n");
  for (const std::string_view name : {"A", "B", "C", "D"}) {
    EXPECT_EQ(store_.GetUserSetting("Options", name, 9), Value(9)) << name;
  }
  EXPECT_EQ(store_.GetUserSetting("Options", "E", 9), Value(5));
  ASSERT_TRUE(store_.SetUserSetting("Options", "E", 6));
  EXPECT_NE(UserFile().find("3000000000"), std::string::npos);
  EXPECT_NE(UserFile().find("loose = 1"), std::string::npos);
}

TEST_F(StoreTest, ADamagedFileReadsAsEmptyAndIsKeptAsideBeforeItIsWrittenAnew) {
  const std::string damaged = "[Options\nSizeCheck = = 7\n";
  WriteUserFile(damaged);
  EXPECT_TRUE(store_.IsDamaged(Scope::User));
  EXPECT_EQ(store_.GetUserSetting("Options", "SizeCheck", 3), Value(3));
  EXPECT_EQ(UserFile(), damaged);  // reading changes nothing

  ASSERT_TRUE(store_.SetUserSetting("Options", "SizeCheck", 4));
  EXPECT_EQ(directory_.ReadHostFile("user/settings.toml.damaged"), damaged);
  EXPECT_FALSE(store_.IsDamaged(Scope::User));
  EXPECT_EQ(store_.GetUserSetting("Options", "SizeCheck", 3), Value(4));
}

TEST_F(StoreTest, EndlessNestingIsDamageAndNoCrash) {
  std::string chain = "x = 1\n";
  for (int i = 0; i < 300'000; ++i) {
    chain += "a.";
  }
  for (const std::string& bytes :
       {chain + "b = 1\n", "[" + chain + "b]\n", "y = \"\"\"\n'''\"\"\"\n" + chain + "b = 1\n",
        "y = [" + std::string(500'000, '[') + "\n"}) {
    EXPECT_FALSE(ParseSettings(bytes).has_value());
  }
}

// The library writes such keys without quotes.
TEST(SettingsTextTest, AKeyThatNobodyCouldReadAgainIsGivenUpAlone) {
  const std::string key = "\"a'''b'c\" = 1";
  for (const std::string& foreign : {"[A]\n" + key + "\nGut = 2\n", "[[A]]\n" + key + "\nGut = 2\n",
                                     "[A]\nx = [[{" + key + "}]]\nGut = 2\n"}) {
    const std::string before = foreign + "[Options]\nSizeCheck = 7\n";
    ASSERT_TRUE(ParseSettings(before).has_value()) << before;
    const std::string after = ChangeSettings(before, {{"Options", "E", Value(5)}});
    const std::optional<Values> values = ParseSettings(after);
    ASSERT_TRUE(values.has_value()) << after;
    ASSERT_NE(FindValue(*values, "Options", "SizeCheck"), nullptr);
    EXPECT_EQ(*FindValue(*values, "Options", "SizeCheck"), Value(7));
    EXPECT_NE(after.find("Gut = 2"), std::string::npos) << after;
  }
}

TEST_F(StoreTest, BytesThatAreNoTextAreDamage) {
  EXPECT_FALSE(ParseSettings("A = \"\xFF\"\n").has_value());
  EXPECT_FALSE(ParseSettings(std::string(std::size_t{2} << 20, '#')).has_value());
}

TEST_F(StoreTest, AnUnreadableFileIsNeverReplaced) {
  ASSERT_TRUE(files_->CreateFolder(directory_.Path("user")));
  ASSERT_TRUE(files_->CreateFolder(directory_.Path("user\\settings.toml")));
  EXPECT_FALSE(store_.SetUserSetting("Options", "A", 1));
  EXPECT_TRUE(files_->FolderExists(directory_.Path("user\\settings.toml")));
}

TEST_F(StoreTest, WhatIsStoredAlreadyIsNotWrittenAgain) {
  WriteUserFile("# Kommentar\n[Options]\nSizeCheck = 7\n");
  ASSERT_TRUE(store_.SetUserSetting("Options", "SizeCheck", 7));
  EXPECT_NE(UserFile().find("# Kommentar"), std::string::npos);
}

// Each process adds names of its own, one locked merge each; with a read and a write that can interleave some
// would be lost.
TEST_F(StoreTest, ProcessesThatSaveAtOnceLoseNothing) {
  constexpr int ProcessCount = 4;
  constexpr int ValueCount = 25;
  std::vector<pid_t> children;
  for (int process = 0; process < ProcessCount; ++process) {
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
      const auto files = platform::MakeHostFileSystem({});
      Store store(*files, directory_.Path("user"), directory_.Path("machine"));
      bool done = true;
      for (int i = 0; i < ValueCount; ++i) {
        const std::string name = std::to_string(process) + "_" + std::to_string(i);
        done = store.SetUserSetting("Options", name, i).has_value() && done;
      }
      _exit(done ? 0 : 1);
    }
    children.push_back(child);
  }
  for (const pid_t child : children) {
    int status = -1;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
  }
  EXPECT_EQ(store_.Read(Scope::User)["Options"].size(), std::size_t{ProcessCount * ValueCount});
}

TEST(Values, SwitchesAreOnForOneAsTextAndAsNumber) {
  EXPECT_TRUE(ToSwitch(std::string("1")));
  EXPECT_TRUE(ToSwitch(1));
  EXPECT_FALSE(ToSwitch(std::string("0")));
  EXPECT_FALSE(ToSwitch(2));
  EXPECT_FALSE(ToSwitch(std::string("true")));
}

TEST(Values, NumbersMayBeWrittenAsText) {
  EXPECT_EQ(ToNumber(std::string("0")), 0);
  EXPECT_EQ(ToNumber(std::string("-195")), -195);
  EXPECT_EQ(ToNumber(std::string("3000000000")), std::nullopt);
  EXPECT_EQ(ToNumber(std::string("x")), std::nullopt);
}

}  // namespace
}  // namespace velmora::settings
