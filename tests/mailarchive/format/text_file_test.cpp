#include "mailarchive/format/text_file.h"

#include <filesystem>

#include "mailarchive/format/folder_fixture.h"

namespace velmora::mailarchive {
namespace {

using TextFileTest = FolderTest;

TEST_F(TextFileTest, ReadsAShortFileWhole) {
  Write("a.add", "Subject=x\r\nTo=y");
  EXPECT_EQ(ReadTextFile(*Files, Folder.Path("a.add")).value(), "Subject=x\r\nTo=y");
}

TEST_F(TextFileTest, ReadsAFileOfExactlyTheLimitWhole) {
  const std::string bytes(TextFileLimit, 'x');
  Write("a.add", bytes);
  EXPECT_EQ(ReadTextFile(*Files, Folder.Path("a.add")).value().size(), TextFileLimit);
}

TEST_F(TextFileTest, CutsALongFileAtTheLastLineEndWithinTheLimit) {
  std::string bytes = "Subject=x\r\n";
  bytes.append(TextFileLimit, 'y');
  Write("a.add", bytes);
  EXPECT_EQ(ReadTextFile(*Files, Folder.Path("a.add")).value(), "Subject=x\r\n");
}

TEST_F(TextFileTest, GivesNothingOfAHugeFileWithoutLineEnds) {
  Write("a.add", "");
  std::filesystem::resize_file(Folder.HostPath("a.add"), 100 * 1024 * 1024);
  EXPECT_EQ(ReadTextFile(*Files, Folder.Path("a.add")).value(), "");
}

TEST_F(TextFileTest, FailsForAMissingFile) {
  EXPECT_EQ(ReadTextFile(*Files, Folder.Path("a.add")).error().Number, platform::file_error::FileNotFound);
}

TEST(TakeLine, EndsLinesAtLineFeedsWithOrWithoutCarriageReturn) {
  std::string_view rest = "a\r\nb\n\r\nc";
  EXPECT_EQ(TakeLine(rest), "a");
  EXPECT_EQ(TakeLine(rest), "b");
  EXPECT_EQ(TakeLine(rest), "");
  EXPECT_EQ(TakeLine(rest), "c");
  EXPECT_EQ(TakeLine(rest), std::nullopt);
}

TEST(SplitKeyValue, SplitsAtTheFirstEqualsSignAndTrims) {
  const auto pair = SplitKeyValue(" Subject = a=b ");
  ASSERT_TRUE(pair);
  EXPECT_EQ(pair->Key, "Subject");
  EXPECT_EQ(pair->Value, "a=b");
  EXPECT_FALSE(SplitKeyValue("no value"));
}

TEST(EncodeValue, KeepsCharactersBeyondTheCodePageAsReferences) {
  EXPECT_EQ(EncodeValue("Привет ä"), "&#1055;&#1088;&#1080;&#1074;&#1077;&#1090; \xE4");
  EXPECT_EQ(DecodeValue(EncodeValue("Привет ä €")), "Привет ä €");
}

TEST(EncodeValue, StaysOnOneLine) { EXPECT_EQ(EncodeValue("a\r\nFlags=99\tb"), "a  Flags=99 b"); }

}  // namespace
}  // namespace velmora::mailarchive
