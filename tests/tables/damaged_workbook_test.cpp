// Files that are no workbooks, or no longer.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <random>

#include "platform/host_file_system.h"
#include "support/temp_dir.h"
#include "workbook_helpers.h"

namespace velmora::tables {
namespace {

using biff::Id;
using std::uint16_t, std::uint32_t, std::uint64_t, std::uint8_t;

Workbook Sample() {
  std::vector<Row> rows = {{Text("Name"), Text("Zahl"), Text("Datum €")}};
  for (int i = 0; i < 60; ++i) {
    rows.push_back({Text("Größe " + std::to_string(i)), 1.5 * i, At(2026, 1, 1 + i % 28), i % 2 == 0,
                    Text(std::string(static_cast<std::size_t>(i) * 7, 'x') + "🙂")});
  }
  return Workbook{{Sheet{"Adressen", rows, 1}, Sheet{"Zweites", {{1.0, Text("b")}}}}};
}

int ErrorOfFile(std::string_view file) {
  const Result<Workbook> workbook = ParseWorkbook(file);
  return workbook ? 0 : workbook.error().Number;
}

TEST(DamagedWorkbook, FilesOfAnotherKindAreNoWorkbooks) {
  std::mt19937 random(1);
  std::string noise(100'000, '\0');
  for (char& byte : noise) byte = static_cast<char>(random());
  const std::string signature = "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1";
  for (const std::string& file :
       {std::string(), std::string("x"), std::string("\"Name\";\"Zahl\"\r\n"), std::string("PK\x03\x04"),
        signature, signature + std::string(1000, '\0'), signature + std::string(1000, '\xFF'),
        signature + noise, noise, *MakeCompoundFile(""), *MakeCompoundFile("x"), *MakeCompoundFile(noise)}) {
    EXPECT_EQ(ErrorOfFile(file), table_error::NotAWorkbook) << file.size();
  }
}

TEST(DamagedWorkbook, ATruncatedFileIsNeverTakenForAShorterWorkbook) {
  const std::string file = Bytes(Sample());
  const Workbook whole = Parsed(file);
  for (std::size_t size = 0; size < file.size(); size += size < 600 ? 1 : 37) {
    const Result<Workbook> read = ParseWorkbook(std::string_view(file).substr(0, size));
    if (!read) {
      ASSERT_EQ(read.error().Number, table_error::NotAWorkbook) << size;
      continue;
    }
    // Only what the container has behind the stream may be missing.
    ASSERT_EQ(read->Sheets.size(), whole.Sheets.size()) << size;
    for (std::size_t i = 0; i < whole.Sheets.size(); ++i)
      ASSERT_EQ(read->Sheets[i].Rows, whole.Sheets[i].Rows) << size;
  }
}

TEST(DamagedWorkbook, ATruncatedRecordStreamIsDamaged) {
  const std::string stream = *ReadCompoundStream(Bytes(Sample()), "Workbook", "");
  for (std::size_t size = 0; size < stream.size(); size += 11) {
    ASSERT_EQ(ErrorOfFile(*MakeCompoundFile(std::string_view(stream).substr(0, size))),
              table_error::NotAWorkbook)
        << size;
  }
}

TEST(DamagedWorkbook, AnEncryptedWorkbookIsSaidToBe) {
  StreamBuilder stream;
  stream.Start(biff::SubstreamGlobals).Add(Id::FilePass, uint16_t{1}).Entry("Blatt").End().ThenSheet().End();
  const Result<Workbook> read = ParseWorkbook(stream.File());
  ASSERT_FALSE(read);
  EXPECT_EQ(read.error(), (Error{table_error::NotAWorkbook, "Die Arbeitsmappe ist verschlüsselt"}));
}

// Each empty text costs a file three bytes, and memory ten times as much.
TEST(DamagedWorkbook, MoreTextsThanASheetHasCellsAreTooMany) {
  constexpr std::size_t textsOfRecord = 2500, textSize = 3;
  const std::string texts(textsOfRecord * textSize, '\0');
  StreamBuilder stream;
  stream.Start(biff::SubstreamGlobals).Add(Id::Sst, uint32_t{0}, uint32_t{0xFFFFFFFF});
  for (std::size_t count = 0; count <= MaxCells; count += textsOfRecord) {
    stream.Add(Id::Continue, std::string_view(texts));
  }
  stream.End();
  const Result<Workbook> read = ParseWorkbook(stream.File());
  ASSERT_FALSE(read);
  EXPECT_EQ(read.error().Text, "Die Arbeitsmappe ist zu groß");
}

// One sheet with the records that `add` appends.
template <typename Add>
int ErrorOfSheet(Add add) {
  StreamBuilder stream;
  stream.Start(biff::SubstreamGlobals).Entry("Blatt").End().ThenSheet();
  add(stream);
  return ErrorOfFile(stream.End().File());
}

TEST(DamagedWorkbook, RecordsThatCannotBeAreDamaged) {
  EXPECT_EQ(ErrorOfSheet([](StreamBuilder&) {}), 0);
  for (const Id id :
       {Id::Number, Id::Rk, Id::MulRk, Id::BoolErr, Id::Formula, Id::Label, Id::RString, Id::LabelSst}) {
    for (const std::size_t size : {0U, 1U, 5U, 6U, 7U}) {
      const std::string data(size, '\0');
      EXPECT_EQ(ErrorOfSheet([&](StreamBuilder& stream) { stream.Add(id, std::string_view(data)); }),
                table_error::NotAWorkbook)
          << static_cast<int>(id) << " " << size;
    }
  }
  EXPECT_EQ(ErrorOfSheet([](StreamBuilder& stream) {
              stream.Add(Id::LabelSst, uint16_t{0}, uint16_t{0}, uint16_t{0}, uint32_t{0});
            }),
            table_error::NotAWorkbook);
  EXPECT_EQ(ErrorOfSheet([](StreamBuilder& stream) {
              stream.Add(Id::Number, uint16_t{0}, uint16_t{256}, uint16_t{0}, 1.0);
            }),
            table_error::NotAWorkbook);
  EXPECT_EQ(ErrorOfSheet([](StreamBuilder& stream) {
              stream.Add(Id::MulRk, uint16_t{0}, uint16_t{255}, uint64_t{0}, uint32_t{0}, uint16_t{0});
            }),
            table_error::NotAWorkbook);
  EXPECT_EQ(ErrorOfSheet([](StreamBuilder& stream) {
              stream.Add(Id::Label, uint16_t{0}, uint16_t{0}, uint16_t{0}, uint16_t{9}, uint8_t{0},
                         std::string_view("x"));
            }),
            table_error::NotAWorkbook);
}

TEST(DamagedWorkbook, ACountOfTextsIsNotBelieved) {
  StreamBuilder stream;
  stream.Start(biff::SubstreamGlobals)
      .Add(Id::Sst, ~uint32_t{0}, ~uint32_t{0}, uint16_t{1}, uint8_t{0}, uint8_t{'x'});
  EXPECT_EQ(ErrorOfFile(stream.Entry("Blatt").End().ThenSheet().End().File()), table_error::NotAWorkbook);
}

// A kilobyte of records that would take gigabytes of memory, or hours.
TEST(DamagedWorkbook, LittleInputCannotAskForMuchMemory) {
  // Many sheets, each with one cell in its last row.
  StreamBuilder tall;
  tall.Start(biff::SubstreamGlobals);
  for (int i = 0; i < 500; ++i) tall.Entry(std::to_string(i));
  tall.End();
  for (int i = 0; i < 500; ++i) {
    tall.ThenSheet().Add(Id::Number, uint16_t{65535}, uint16_t{0}, uint16_t{0}, 1.0).End();
  }
  EXPECT_EQ(ParseWorkbook(tall.File()).error().Text, "Die Arbeitsmappe ist zu groß");
  // One sheet with a cell in the last column of every row.
  const int wide = ErrorOfSheet([](StreamBuilder& stream) {
    for (unsigned row = 0; row < MaxRows; ++row) {
      stream.Add(Id::Number, static_cast<uint16_t>(row), uint16_t{255}, uint16_t{0}, 1.0);
    }
  });
  EXPECT_EQ(wide, table_error::NotAWorkbook);
  // A long text that many cells share.
  StreamBuilder shared;
  shared.Start(biff::SubstreamGlobals)
      .Add(Id::Sst, uint32_t{1}, uint32_t{1}, uint16_t{8000}, uint8_t{0},
           std::string_view(std::string(8000, 'x')));
  shared.Entry("Blatt").End().ThenSheet();
  for (unsigned row = 0; row < MaxRows; ++row) {
    shared.Add(Id::LabelSst, static_cast<uint16_t>(row), uint16_t{0}, uint16_t{0}, uint32_t{0});
  }
  EXPECT_EQ(ErrorOfFile(shared.End().File()), table_error::NotAWorkbook);
}

TEST(DamagedWorkbook, SheetsCannotShareTheirRecords) {
  const auto addSheet = [](StreamBuilder& stream) {
    stream.ThenSheet();
    for (unsigned row = 0; row < 100; ++row) {
      stream.Add(Id::Number, static_cast<uint16_t>(row), uint16_t{0}, uint16_t{0}, 1.0);
    }
    stream.End();
  };
  StreamBuilder stream;
  stream.Start(biff::SubstreamGlobals).Entry("A").Entry("B").End();
  const std::size_t start = stream.Stream().size();
  addSheet(stream);
  StreamBuilder sound = stream;
  addSheet(sound);
  EXPECT_EQ(ErrorOfFile(sound.File()), 0);
  stream.Point(1, start);
  EXPECT_EQ(ErrorOfFile(stream.File()), table_error::NotAWorkbook);
}

// Every chain of the container led back into itself, and a directory whose entries point at each other.
TEST(DamagedWorkbook, ChainsThatRunInCirclesEnd) {
  const std::string file = Bytes(Sample());
  for (std::size_t sector = 0; sector < 128; ++sector) {
    std::string circle = file;
    for (std::size_t at = 512; at + 4 <= circle.size(); at += 4) {
      if (ReadLittle<uint32_t>(circle, at) == sector + 1)
        PutLittle(circle, at, static_cast<uint32_t>(sector));
    }
    EXPECT_TRUE(ErrorOfFile(circle) == 0 || ErrorOfFile(circle) == table_error::NotAWorkbook) << sector;
  }
}

// Damages a file in ways that hit lengths, counts and references; the same for the same number.
std::string Damage(std::string file, unsigned number) {
  std::mt19937 random(number);
  const auto below = [&random](std::size_t bound) { return static_cast<std::size_t>(random()) % bound; };
  constexpr uint32_t extremes[] = {0, 1, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFE, 0xFFFFFFFF};
  for (std::size_t i = 0, count = 1 + below(8); i < count; ++i) {
    const std::size_t at = below(file.size() - 4);
    if (below(3) == 0) {
      PutLittle(file, at, extremes[below(std::size(extremes))]);
    } else {
      file[at] = static_cast<char>(random());
    }
  }
  if (below(8) == 0) file.resize(below(file.size()));
  return file;
}

// In a process of its own with a time limit, so that a crash or a hang is a failure of this test alone.
TEST(DamagedWorkbook, DamageNeverCrashesOrHangs) {
  constexpr unsigned seconds = 100, count = 600;
  const auto run = [] {
    alarm(seconds);
    const std::string file = Bytes(Sample());
    const std::string stream = *ReadCompoundStream(file, "Workbook", "");
    unsigned refused = 0;
    for (unsigned number = 0; number < count; ++number) {
      const Result<Workbook> outer = ParseWorkbook(Damage(file, number));
      const Result<Workbook> inner = ParseWorkbook(*MakeCompoundFile(Damage(stream, number)));
      for (const auto* read : {&outer, &inner}) {
        if (!*read && read->error().Number != table_error::NotAWorkbook) std::exit(1);
        // What was read can be written, or its names cannot.
        if (*read) (void)FormatWorkbook(**read);
        refused += *read ? 0 : 1;
      }
    }
    std::exit(refused > count / 4 ? 0 : 2);
  };
  EXPECT_EXIT(run(), testing::ExitedWithCode(0), "");
}

TEST(DamagedWorkbook, AFileThatIsTooBigIsNotRead) {
  const test::TempDir directory;
  directory.WriteHostFile("riese.xls", "x");
  ASSERT_EQ(truncate(directory.HostPath("riese.xls").c_str(), static_cast<off_t>(MaxFileSize + 1)), 0);
  const auto files = platform::MakeHostFileSystem({});
  const Result<Workbook> read = ReadWorkbook(*files, directory.Path("riese.xls"));
  ASSERT_FALSE(read);
  EXPECT_EQ(read.error(), (Error{table_error::NotAWorkbook, "Die Arbeitsmappe ist zu groß"}));
}

TEST(DamagedWorkbook, AFolderIsNoWorkbook) {
  const test::TempDir directory;
  const auto files = platform::MakeHostFileSystem({});
  EXPECT_FALSE(ReadWorkbook(*files, directory.Path()));
}

}  // namespace
}  // namespace velmora::tables
