// Records of archive.dir: sound ones, foreign ones and hostile bytes.
#include <gtest/gtest.h>

#include <random>
#include <string>

#include "store/archive_record.h"
#include "store/embedded/record_properties.h"
#include "store/errors.h"

namespace velmora::store {
namespace {

using namespace std::string_literals;

DirRecord WithArea(std::string_view area) {
  DirRecord record;
  record.SetTextArea(area);
  return record;
}

TEST(Record, HoldsPathThenNameEachClosedByANul) {
  const auto record = DirRecord::Make(R"(\\S\DAVID\ARCHIVE\POST)", "Büro");
  ASSERT_TRUE(record);
  EXPECT_EQ(record->Bytes().size(), 430u);
  EXPECT_TRUE(
      record->TextArea().starts_with("\x03\\\\S\\DAVID\\ARCHIVE\\POST\0\x04"
                                     "B\xFCro\0"s));
  EXPECT_EQ(record->Path(), R"(\\S\DAVID\ARCHIVE\POST)");
  EXPECT_EQ(record->Name(), "Büro");
  EXPECT_EQ(record->Head(), std::string(113, '\0'));
  EXPECT_EQ(record->Tail(), std::string(44, '\0'));
}

TEST(Record, IsReadFromItsBytesUnchanged) {
  std::string bytes;
  for (std::size_t i = 0; i < DirRecord::Size; ++i) bytes += static_cast<char>(i * 7);
  const auto record = DirRecord::FromBytes(bytes);
  ASSERT_TRUE(record);
  EXPECT_EQ(record->Bytes(), bytes);
}

TEST(Record, NeedsExactlyItsLength) {
  EXPECT_FALSE(DirRecord::FromBytes(""));
  EXPECT_FALSE(DirRecord::FromBytes(std::string(429, 'x')));
  EXPECT_FALSE(DirRecord::FromBytes(std::string(431, 'x')));
}

TEST(Record, OfZerosHasNoTexts) {
  EXPECT_FALSE(DirRecord().Path());
  EXPECT_FALSE(DirRecord().Name());
}

TEST(Record, TextWithoutItsNulInTheAreaIsNone) {
  DirRecord record = WithArea("\x03" + std::string(DirRecord::TextSize - 1, 'x'));
  EXPECT_FALSE(record.Path());
  record.SetTail(std::string(10, '\0'));
  EXPECT_FALSE(record.Path()) << "a NUL of the tail must not close it";
}

TEST(Record, TagsOutsideTheAreaAreNone) {
  DirRecord record;
  record.SetHead("\x03head\0\x04name\0"s);
  record.SetTail("\x03tail\0\x04name\0"s);
  EXPECT_FALSE(record.Path());
  EXPECT_FALSE(record.Name());
}

TEST(Record, TagInTheLastByteOfTheAreaIsNone) {
  std::string area(DirRecord::TextSize, 'x');
  area.back() = '\x03';
  EXPECT_FALSE(WithArea(area).Path());
}

// The scan for a tag does not skip the texts of other items: whoever writes such files counts on the first
// byte.
TEST(Record, FirstByteOfATagsValueCountsEvenInAnotherItemsText) {
  EXPECT_EQ(WithArea("\xC8"
                     "a\x03"
                     "b\0\x03path\0"s)
                .Path(),
            "b");
}

TEST(Record, EmptyTextsAreTexts) {
  const DirRecord record = WithArea("\x03\0\x04\0"s);
  EXPECT_EQ(record.Path(), "");
  EXPECT_EQ(record.Name(), "");
}

TEST(Record, CutsTheNameToTheAreaAndNeverThePath) {
  const std::string path = R"(\\S\D\)" + std::string(200, 'P');
  const auto record = DirRecord::Make(path, std::string(300, 'n'));
  ASSERT_TRUE(record);
  EXPECT_EQ(record->Path(), path);
  EXPECT_EQ(record->Name(), std::string(DirRecord::TextSize - path.size() - 4, 'n'));
  EXPECT_EQ(record->TextArea().back(), '\0');
}

TEST(Record, RefusesPathsThatDoNotFit) {
  const std::string longest(268, 'p');  // 273 less its tag and NUL, and a name of one character with its own
  ASSERT_TRUE(DirRecord::Make(longest, "name"));
  EXPECT_EQ(DirRecord::Make(longest, "name")->Name(), "n");
  const auto tooLong = DirRecord::Make(longest + "p", "n");
  ASSERT_FALSE(tooLong);
  EXPECT_EQ(tooLong.error().Number, store_error::BadName);
}

TEST(Record, RefusesPathsThatItCannotSpell) {
  for (const std::string& path : {""s, R"(\\S\D\Я)"s,
                                  "\\\\S\\D\\a\x03"
                                  "b"s,
                                  "\\\\S\\D\\a\0b"s, "\\\\S\\D\\\xC2\x81"s}) {
    const auto record = DirRecord::Make(path, "n");
    ASSERT_FALSE(record) << path;
    EXPECT_EQ(record.error().Number, store_error::BadName);
  }
}

TEST(Record, CleansNames) {
  EXPECT_EQ(CleanArchiveName("a/b\\c"), "a-b-c");
  EXPECT_EQ(CleanArchiveName("a\x03"
                             "b\r\n\x7F"),
            "a-b---");
  EXPECT_EQ(CleanArchiveName("x\xC2\x85y"), "x-y") << "control characters beyond ASCII too";
  EXPECT_EQ(CleanArchiveName("Привет 5 €"), "______ 5 €");
  EXPECT_EQ(CleanArchiveName(""), "");
}

TEST(Record, NewNameKeepsAllElse) {
  DirRecord record = WithArea("\x03path\0\x04old\0\xC8+further\0"s);
  record.SetHead(std::string(113, 'h'));
  record.SetTail(std::string(44, 't'));
  for (const std::string name : {"longer name", "x"}) {
    ASSERT_TRUE(record.SetName(name));
    EXPECT_EQ(record.TextArea(), WithArea("\x03path\0\x04"s + name + "\0\xC8+further\0"s).TextArea());
  }
  EXPECT_EQ(record.Head(), std::string(113, 'h'));
  EXPECT_EQ(record.Tail(), std::string(44, 't'));
}

TEST(Record, NewNameIsCutSoThatItemsBehindItStay) {
  DirRecord record = WithArea("\x03path\0\x04old\0\xC8+further\0"s);
  ASSERT_TRUE(record.SetName(std::string(400, 'n')));
  EXPECT_EQ(record.Name(), std::string(DirRecord::TextSize - 6 - 2 - 10, 'n'));
  EXPECT_TRUE(record.TextArea().ends_with("n\0\xC8+further\0"s));
}

TEST(Record, WithoutANameGetsOneBehindItsItems) {
  DirRecord record = WithArea("\x03path\0"s);
  ASSERT_TRUE(record.SetName("name"));
  EXPECT_EQ(record.TextArea(), WithArea("\x03path\0\x04name\0"s).TextArea());
}

TEST(Record, FullAreaTakesNoName) {
  DirRecord record = WithArea(std::string(DirRecord::TextSize, 'x'));
  const DirRecord before = record;
  EXPECT_FALSE(record.SetName("n"));
  EXPECT_EQ(record, before);
}

TEST(Record, NumbersStartAtOneAndATornRecordIsNone) {
  const std::string content = std::string(430, 'a') + std::string(430, 'b') + "torn";
  EXPECT_EQ(CountRecords(content), 2u);
  EXPECT_FALSE(RecordAt(content, 0));
  EXPECT_EQ(RecordAt(content, 1)->Bytes()[0], 'a');
  EXPECT_EQ(RecordAt(content, 2)->Bytes()[0], 'b');
  EXPECT_FALSE(RecordAt(content, 3));
}

// Few different bytes make tags and NULs frequent.
TEST(Record, HostileBytesGiveTextsOfTheAreaOrNone) {
  std::mt19937 random(20260101);
  const std::string alphabet =
      "\0\x03\x04\xC8"
      "ab\\\xFF"s;
  for (std::size_t round = 0; round < 20'000; ++round) {
    std::string bytes(DirRecord::Size, '\0');
    for (char& byte : bytes) byte = alphabet[random() % (round % 2 == 0 ? alphabet.size() : 3) + round % 2];
    DirRecord record = *DirRecord::FromBytes(bytes);
    if (const auto path = record.Path()) {
      EXPECT_LE(path->size(), 3 * DirRecord::TextSize);
    }
    (void)embedded::ReadHead(record);  // any head is taken
    if (record.SetName("neu")) {
      ASSERT_TRUE(record.Name());
      EXPECT_TRUE("neu"s.starts_with(*record.Name())) << "cut at most";
      EXPECT_FALSE(record.Name()->empty());
    }
    EXPECT_EQ(record.Head(), std::string_view(bytes).substr(0, DirRecord::HeadSize));
    EXPECT_EQ(record.Tail(), std::string_view(bytes).substr(DirRecord::HeadSize + DirRecord::TextSize));
  }
}

namespace head {

using embedded::HeadContent;
using embedded::ReadHead;
using embedded::WriteHead;

TEST(RecordHead, HoldsEveryProperty) {
  HeadContent content;
  content.Properties.Kind = 106;
  content.Properties.Hidden = true;
  content.Properties.AdminOnly = true;
  content.Properties.DisplayType = -7;
  content.Properties.Owner = 0x12345678;
  content.Properties.OptionFlags = 0xFFFFFFFFu;
  DirRecord record = *DirRecord::Make("path", "name");
  WriteHead(record, content);
  EXPECT_EQ(ReadHead(record), content);
  content.Properties.Packed = true;
  content.Properties.Hidden = false;
  content.IsLink = true;
  WriteHead(record, content);
  EXPECT_EQ(ReadHead(record), content);
  EXPECT_EQ(record.Path(), "path");
  EXPECT_EQ(record.Tail(), std::string(DirRecord::TailSize, '\0'));
}

TEST(RecordHead, OfSomebodyElseHoldsNoProperties) {
  DirRecord record;
  record.SetHead(std::string(DirRecord::HeadSize, '\xFF'));
  EXPECT_EQ(ReadHead(record), HeadContent());
}

TEST(RecordHead, KeepsBytesThatItDoesNotKnow) {
  DirRecord record;
  WriteHead(record, {});
  std::string bytes(record.Head());
  bytes[100] = 'k';
  record.SetHead(bytes);
  WriteHead(record, {{.Kind = 4}, true});
  EXPECT_EQ(record.Head()[100], 'k');
}

}  // namespace head
}  // namespace
}  // namespace velmora::store
