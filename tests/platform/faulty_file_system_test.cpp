// The file system that fails on purpose: it fails what it was told to, and nothing else.

#include "support/faulty_file_system.h"

#include "platform/file_system_fixture.h"

namespace velmora::platform {
namespace {

using test::Fault;

class FaultyFileSystemTest : public FileSystemFixture {
 protected:
  test::FaultyFileSystem faulty_{*files_};
};

TEST_F(FaultyFileSystemTest, OnlyTheChosenCallFails) {
  faulty_.FailOn(Fault::Write, 2, 61);
  EXPECT_EQ(ErrorOf(faulty_.WriteFile(P("a"), "1", {})), 0);
  EXPECT_EQ(ErrorOf(faulty_.WriteFile(P("b"), "1", {})), 61);
  EXPECT_EQ(ErrorOf(faulty_.WriteFile(P("c"), "1", {})), 0);
  EXPECT_EQ(Names("*"), (Strings{"a", "c"}));
  EXPECT_EQ(faulty_.FailuresSoFar(), 1);
}

TEST_F(FaultyFileSystemTest, ShortWritesLeaveHalfOfTheBytes) {
  faulty_.FailOn(Fault::ShortWrite, 1, 61, 2);
  EXPECT_EQ(ErrorOf(faulty_.WriteFile(P("a"), "1234", {})), 61);
  auto writer = faulty_.OpenWriter(P("b"), {});
  ASSERT_TRUE(writer.has_value());
  EXPECT_EQ(ErrorOf((*writer)->Write("5678")), 61);
  EXPECT_EQ(ErrorOf((*writer)->Close()), 0);
  EXPECT_EQ(dir_.ReadHostFile("a"), "12");
  EXPECT_EQ(dir_.ReadHostFile("b"), "56");
}

TEST_F(FaultyFileSystemTest, EveryKindFails) {
  dir_.WriteHostFile("a", "1");
  const DateTime time = DateTime::FromCivil({2020, 1, 2, 3, 4, 5}).value();
  const std::vector<std::pair<Fault, std::function<int()>>> calls = {
      {Fault::Open, [&] { return ErrorOf(faulty_.ReadFile(P("a"))); }},
      {Fault::Open, [&] { return ErrorOf(faulty_.OpenReader(P("a"))); }},
      {Fault::Open, [&] { return ErrorOf(faulty_.OpenWriter(P("n"), {})); }},
      {Fault::Open, [&] { return ErrorOf(faulty_.CopyFile(P("a"), P("n"), {})); }},
      {Fault::Write, [&] { return ErrorOf(faulty_.CopyFile(P("a"), P("n"), {})); }},
      {Fault::Write, [&] { return ErrorOf(faulty_.AppendFile(P("n"), "1")); }},
      {Fault::Rename, [&] { return ErrorOf(faulty_.MoveFile(P("a"), P("n"))); }},
      {Fault::Rename, [&] { return ErrorOf(faulty_.ReplaceFile(P("n"), "1", {})); }},
      {Fault::Delete, [&] { return ErrorOf(faulty_.DeleteFile(P("a"), true)); }},
      {Fault::Delete, [&] { return ErrorOf(faulty_.DeleteFolder(P("a"), true)); }},
      {Fault::List, [&] { return ErrorOf(faulty_.List(dir_.Path(), "*", ListWhat::All)); }},
      {Fault::CreateFolder, [&] { return ErrorOf(faulty_.CreateFolder(P("n"), false)); }},
      {Fault::SetTime, [&] { return ErrorOf(faulty_.SetTimes(P("a"), time)); }},
  };
  for (const auto& [kind, call] : calls) {
    faulty_.FailOn(kind, 1, 57);
    EXPECT_EQ(call(), 57);
    faulty_.Heal();
  }
  EXPECT_EQ(Names("*"), Strings{"a"});
  faulty_.FailOn(Fault::SetTime, 1, 57);
  EXPECT_EQ(ErrorOf(faulty_.WriteFile(P("b"), "1", {.Time = time})), 57);
  EXPECT_EQ(dir_.ReadHostFile("b"), "1");
  EXPECT_NE(files_->GetEntry(P("b"))->Modified, time);
}

}  // namespace
}  // namespace velmora::platform
