// What is a TIFF or a wave file, and how many pages a fax has, whatever its bytes claim.
#include "cli/entry_files.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "platform/host_file_system.h"
#include "store/errors.h"
#include "support/temp_dir.h"

namespace velmora::cli {
namespace {

// A TIFF of directories, each at the offset that the one before it names.
class TiffMaker {
 public:
  explicit TiffMaker(bool isLittleEndian) : isLittleEndian_(isLittleEndian) {
    bytes_ = isLittleEndian ? std::string("II*\0", 4) : std::string("MM\0*", 4);
  }
  TiffMaker& Long(std::uint32_t number) { return Number(number, 4); }
  TiffMaker& Directory(std::uint32_t next, std::uint32_t entries = 1) {
    Number(entries, 2);
    bytes_.append(std::size_t{12} * entries, '\0');
    return Long(next);
  }
  const std::string& Bytes() const { return bytes_; }

 private:
  TiffMaker& Number(std::uint32_t number, int size) {
    for (int i = 0; i < size; ++i) {
      const int shift = 8 * (isLittleEndian_ ? i : size - 1 - i);
      bytes_ += static_cast<char>(number >> shift & 0xFF);
    }
    return *this;
  }
  bool isLittleEndian_;
  std::string bytes_;
};

class EntryFilesTest : public testing::Test {
 protected:
  Result<int> Pages(const std::string& bytes) {
    directory_.WriteHostFile("a.tif", bytes);
    return CountFaxPages(*files_, directory_.Path("a.tif"));
  }
  Status Wave(const std::string& bytes) {
    directory_.WriteHostFile("a.wav", bytes);
    return CheckWaveFile(*files_, directory_.Path("a.wav"));
  }

  test::TempDir directory_;
  std::unique_ptr<platform::FileSystem> files_ = platform::MakeHostFileSystem({});
};

constexpr std::uint32_t First = 8, DirectorySize = 18;

TEST_F(EntryFilesTest, PagesAreCountedInBothByteOrders) {
  for (const bool isLittleEndian : {true, false}) {
    TiffMaker tiff(isLittleEndian);
    tiff.Long(First).Directory(First + DirectorySize).Directory(First + 2 * DirectorySize).Directory(0);
    EXPECT_EQ(Pages(tiff.Bytes()).value_or(-1), 3);
  }
}

TEST_F(EntryFilesTest, CirclesAndOffsetsBeyondTheFileEnd) {
  TiffMaker circle(true);
  circle.Long(First).Directory(First + DirectorySize).Directory(First);
  EXPECT_EQ(Pages(circle.Bytes()).value_or(-1), 2);
  TiffMaker self(true);
  self.Long(First).Directory(First);
  EXPECT_EQ(Pages(self.Bytes()).value_or(-1), 1);
  TiffMaker beyond(true);
  beyond.Long(First).Directory(0xFFFFFFF0);
  EXPECT_EQ(Pages(beyond.Bytes()).value_or(-1), 1);
  TiffMaker cut(true);
  cut.Long(First).Directory(0, 3);
  EXPECT_EQ(Pages(cut.Bytes().substr(0, 20)).value_or(-1), 0) << "the first page is not whole";
}

TEST_F(EntryFilesTest, AnImageWithoutAPageHasNone) {
  EXPECT_EQ(Pages(TiffMaker(true).Bytes()).value_or(-1), 0);
  EXPECT_EQ(Pages(TiffMaker(true).Long(0).Bytes()).value_or(-1), 0);
  EXPECT_EQ(Pages(TiffMaker(false).Long(0xFFFFFFFF).Bytes()).value_or(-1), 0);
}

TEST_F(EntryFilesTest, OtherFilesAreRefused) {
  for (const auto& bytes : {std::string(), std::string("II"), std::string("II*"), std::string("MM*\0", 4),
                            std::string("II+\0\0\0\0\0", 8), std::string("%PDF-1.7")}) {
    EXPECT_EQ(Pages(bytes).error().Text, "Die Datei ist kein TIFF-Bild") << bytes;
  }
  EXPECT_EQ(CountFaxPages(*files_, directory_.Path("fehlt.tif")).error().Number,
            platform::file_error::FileNotFound);
  EXPECT_EQ(CountFaxPages(*files_, directory_.Path()).error().Number, store::store_error::WrongKind);
}

TEST_F(EntryFilesTest, WaveFilesAreKnownByTheirHead) {
  EXPECT_TRUE(Wave(std::string("RIFF\0\0\0\0WAVE", 12)));
  EXPECT_TRUE(Wave(std::string("RIFF\0\0\0\0WAVEfmt ", 16)));
  for (const auto& bytes : {std::string(), std::string("RIFF"), std::string("RIFF\0\0\0\0AVI ", 12),
                            std::string("RIFX\0\0\0\0WAVE", 12), std::string("RIFF\0\0\0\0WAV", 11)}) {
    EXPECT_EQ(Wave(bytes).error().Text, "Die Datei ist keine Wave-Datei") << bytes;
  }
}

}  // namespace
}  // namespace velmora::cli
