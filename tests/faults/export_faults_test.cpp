// The export of a mail archive and its content index, each with every one of its file operations failing.
#include <gtest/gtest.h>

#include <filesystem>

#include "base/paths.h"
#include "mailarchive/content_index.h"
#include "mailarchive/export_run.h"
#include "store_world.h"
#include "sweep.h"

namespace velmora::faults {
namespace {

using namespace mailarchive;

constexpr std::string_view Source = "/Archive/Quelle";
constexpr std::string_view Form =
    "<h1>%VELMORA_TITLE%</h1>%VELMORA_CONTENT%|%VELMORA_EML%|%VELMORA_ATTLINKS%";
constexpr std::string_view IndexForm = "<h1>%VELMORA_TITLE%</h1>%VELMORA_IDXLINKS%";

// A store and a directory for the mail archive.
class ExportWorld : public StoreWorld {
 public:
  ExportWorld() {
    for (const char* folder : {"target", "temp", "designs"}) (void)host->CreateFolder(dir.Path(folder));
    Put("designs\\Mail.htm", Form);
    Put("designs\\Index.htm", IndexForm);
    Put("designs\\Bare.ini",
        "[TreeIndex]\r\nform=Index.htm\r\n[MessageIndexByDate]\r\nform=Index.htm\r\n"
        "[MessageIndexBySubject]\r\nform=Index.htm\r\n[MessageIndexByAddress]\r\nform=Index.htm\r\n"
        "[Messages]\r\nform=Mail.htm\r\n");
    designs.LoadDesignSet();
  }

  void Put(std::string_view relative, std::string_view bytes) {
    (void)host->WriteFile(dir.Path(relative), bytes);
  }
  // All files of the target with their bytes, by their relative paths.
  std::map<std::string, std::string> Files() {
    std::map<std::string, std::string> found;
    Collect(dir.Path("target"), "", found);
    return found;
  }
  // How often each message stands in the target as its original.
  Messages Originals() {
    Messages found;
    for (const auto& [path, bytes] : Files()) {
      if (path.ends_with(".eml")) ++found[MessageText(bytes)];
    }
    return found;
  }

  DesignSet designs{files, dir.Path("designs"), "Bare"};

 private:
  void Collect(const std::string& folder, const std::string& relative,
               std::map<std::string, std::string>& found) {
    const auto entries = host->List(folder, "*", platform::ListWhat::All);
    for (const auto& entry : entries.value_or(std::vector<platform::FileEntry>())) {
      const std::string path = JoinPath(folder, entry.Name);
      if (entry.IsFolder) {
        Collect(path, relative + entry.Name + "/", found);
      } else {
        found[relative + entry.Name] = host->ReadFile(path).value_or("not readable");
      }
    }
  }
};

void Export(ExportWorld& world, CopyMode mode, const std::shared_ptr<store::DvArchive>& root,
            const std::string& source) {
  ExportOptions options;
  options.Mode = mode;
  options.DeleteArchives = mode == CopyMode::Move;
  options.SaveAttachments = options.SaveOriginals = true;
  options.CreateAutorunInf = false;
  ExportContext context{world.run,       world.session, world.designs, options, world.dir.Path("temp") + "\\",
                        world.dir.Path()};
  RunExport(context, {root, {{ExportSelection::Object::Kind::Archive, 0, source, false}}},
            world.dir.Path("target"));
}

// A failed entry is logged; markers, pictures and pages of the index are not, nor is a deletion after a move:
// such a run lacks nothing that cannot be made anew.
void ExpectHonest(ExportWorld& world, const Messages& all) {
  EXPECT_EQ(world.Damage(), Lines{});
  EXPECT_EQ(world.Log().size(), static_cast<std::size_t>(world.run.counters.Errors));
  const Messages originals = world.Originals();
  // An archive that cannot be found ends its export without a word: the summary tells of no archive at all.
  if (world.run.counters.Archives == 0) {
    EXPECT_EQ(originals, Messages{});
    EXPECT_EQ(world.run.counters.Mails, 0);
  } else if (world.run.counters.Errors == 0) {
    EXPECT_EQ(originals, all) << "not one error is told of";
    EXPECT_EQ(world.run.counters.Mails, MessageCount);
    EXPECT_EQ(world.run.counters.Attachments, MessageCount);
  }
}

class ExportFaultsTest : public testing::TestWithParam<CopyMode> {};

TEST_P(ExportFaultsTest, EachMessageStandsInTheStoreOrWholeInTheTarget) {
  StoreWorld before;
  before.SignOff();
  const Lines source = before.Describe(Source);
  const Lines untouched = before.StoreFiles();
  const Messages all = before.MessagesBelow(Source);
  ASSERT_EQ(all.size(), static_cast<std::size_t>(MessageCount));
  const bool isMove = GetParam() == CopyMode::Move;
  Sweep([&](const Place& place) {
    ExportWorld world;
    {
      const auto root = world.Open("/Archive");
      const std::string id = world.Open(Source)->ID();
      place.Plan(world.files);
      Export(world, GetParam(), root, id);
    }
    world.SignOff();
    const bool isMet = world.files.FailuresSoFar() > 0;
    world.files.Heal();
    ExpectHonest(world, all);
    const Messages left = world.MessagesBelow(Source);
    const Messages originals = world.Originals();
    for (const auto& [message, count] : all)
      EXPECT_TRUE(left.contains(message) || originals.contains(message)) << message << " is gone";
    if (!isMove) {
      EXPECT_EQ(world.Describe(Source), source);
      EXPECT_EQ(world.StoreFiles(), untouched);
    }
    if (!isMet) {
      EXPECT_EQ(world.Log(), Lines{});
      EXPECT_EQ(left.empty(), isMove);
      return false;
    }
    // Again, without the fault.
    world.SignOn();
    (void)world.host->DeleteFile(world.run.ErrorLogPath(), true);
    if (world.session.Account->GetArchive(Source)) {
      Export(world, GetParam(), world.Open("/Archive"), world.Open(Source)->ID());
    }
    world.SignOff();
    EXPECT_EQ(world.Log(), Lines{}) << "of the second run";
    EXPECT_GE(world.Originals().size(), all.size());
    if (isMove) {
      EXPECT_EQ(world.MessagesBelow(Source), Messages{});
    } else {
      EXPECT_EQ(world.StoreFiles(), untouched);
    }
    EXPECT_EQ(world.Damage(), Lines{});
    return true;
  });
}

INSTANTIATE_TEST_SUITE_P(Modes, ExportFaultsTest, testing::Values(CopyMode::Copy, CopyMode::Move),
                         [](const auto& mode) { return mode.param == CopyMode::Move ? "Move" : "Copy"; });

// The index is made of what stands on the disk: whatever fails, no entry and no marker goes, and the next run
// makes it whole.
TEST(IndexFaultsTest, NothingButTheIndexItselfSuffers) {
  const auto index = [](ExportWorld& world) {
    IndexContext context{world.run, world.designs, false, world.dir.Path()};
    BuildContentIndex(context, world.dir.Path("target"), true, false, true);
  };
  ExportWorld sound;
  Export(sound, CopyMode::Copy, sound.Open("/Archive"), sound.Open(Source)->ID());
  const auto whole = sound.Files();
  ASSERT_TRUE(whole.contains("index.html"));
  Sweep([&](const Place& place) {
    ExportWorld world;
    std::filesystem::copy(sound.dir.HostPath("target"), world.dir.HostPath("target"),
                          std::filesystem::copy_options::recursive);
    EXPECT_EQ(world.Files(), whole);
    place.Plan(world.files);
    index(world);
    const bool isMet = world.files.FailuresSoFar() > 0;
    world.files.Heal();
    auto now = world.Files();
    for (const auto& [path, bytes] : whole) {
      const bool isIndex = path.substr(path.rfind('/') + 1).starts_with("index");
      if (!isIndex) {
        EXPECT_EQ(now[path], bytes) << path;
      }
    }
    index(world);
    EXPECT_EQ(world.Files(), whole) << "after the second run";
    return isMet;
  });
}

// A descriptor or marker that cannot be read at the moment is no reason to take the directory for an emptied
// one, whose marker and index pages go.
TEST(IndexFaultsTest, UnreadableDescriptorsDoNotMakeADirectoryEmpty) {
  ExportWorld world;
  Export(world, CopyMode::Copy, world.Open("/Archive"), world.Open(Source)->ID());
  const auto whole = world.Files();
  world.files.FailOn(Fault::Open, 1, platform::file_error::DeviceError, test::FaultyFileSystem::Always);
  IndexContext context{world.run, world.designs, false, world.dir.Path()};
  BuildContentIndex(context, world.dir.Path("target"), true, false, true);
  world.files.Heal();
  EXPECT_EQ(world.Files(), whole);
  EXPECT_GT(world.run.counters.Errors, 0);
}

}  // namespace
}  // namespace velmora::faults
