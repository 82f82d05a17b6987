#include "store/embedded/store_check.h"

#include <algorithm>
#include <filesystem>

#include "base/text.h"
#include "store_fixture.h"

namespace velmora::store::embedded {
namespace {

class StoreCheckTest : public StoreFixture {
 protected:
  std::vector<StoreFinding> Check() {
    EXPECT_TRUE(anna_->Commit());
    anna_.reset();
    std::vector<StoreFinding> findings;
    CheckStore(*fileSystem_, platform::SystemClock(), location_,
               [&](const StoreFinding& finding) { findings.push_back(finding); });
    return findings;
  }
  static bool Mentions(const std::vector<StoreFinding>& findings, std::string_view subject) {
    return std::ranges::any_of(findings,
                               [&](const auto& finding) { return ContainsFold(finding.Subject, subject); });
  }
};

TEST_F(StoreCheckTest, ASoundStoreHasNoFindings) {
  ASSERT_TRUE(DeliverMessage(*anna_, *Archive("Gemeinsam"), PlainMessage, {}));
  const auto findings = Check();
  EXPECT_TRUE(findings.empty()) << findings.front().Subject << ": " << findings.front().Text;
}

TEST_F(StoreCheckTest, FindsDamagedDatabases) {
  for (const auto* file :
       {"archive\\common\\archive.dat", "archive\\common\\archive.urt", "code\\david.log"}) {
    ASSERT_TRUE(fileSystem_->WriteFile(layout_.Root() + "\\" + file, std::string(2000, 'x')));
  }
  const auto findings = Check();
  EXPECT_TRUE(Mentions(findings, "ARCHIVE\\common"));
  EXPECT_TRUE(Mentions(findings, "archive.urt"));
  EXPECT_TRUE(Mentions(findings, "david.log"));
}

TEST_F(StoreCheckTest, FindsDanglingRecordsAndLostContentFiles) {
  const auto archive = Create(*Archive("Gemeinsam"), "Weg{WEG}");
  const auto key = DeliverMessage(*anna_, *Archive("Gemeinsam"), PlainMessage, {});
  ASSERT_TRUE(key);
  ASSERT_TRUE(anna_->Commit());
  ASSERT_TRUE(fileSystem_->DeleteFolder(archive->ID(), true));
  ASSERT_TRUE(fileSystem_->DeleteFile(layout_.ArchiveRoot() + "\\common\\*.001", true));
  const auto findings = Check();
  EXPECT_TRUE(std::ranges::any_of(
      findings, [](const auto& finding) { return ContainsFold(finding.Subject + finding.Text, "WEG"); }));
  EXPECT_TRUE(Mentions(findings, "Eintrag"));
}

TEST_F(StoreCheckTest, FindsAUserWithoutArchive) {
  ArchiveTree tree(*fileSystem_, layout_.ArchiveRoot());
  const auto record = tree.FindByDirectory(layout_.UserRoot(bert_.Id));
  ASSERT_TRUE(record);
  ASSERT_TRUE(tree.RemoveRecord(*record));
  EXPECT_TRUE(
      std::ranges::any_of(Check(), [](const auto& finding) { return ContainsFold(finding.Text, "Bert"); }));
}

TEST_F(StoreCheckTest, ChangesNothing) {
  ASSERT_TRUE(DeliverMessage(*anna_, *Archive("Gemeinsam"), PlainMessage, {}));
  ASSERT_TRUE(anna_->Commit());
  anna_.reset();
  const auto snapshot = [&] {
    std::vector<std::pair<std::string, std::filesystem::file_time_type>> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(location_.HostDirectory)) {
      files.emplace_back(entry.path().string(), entry.last_write_time());
    }
    std::ranges::sort(files);
    return files;
  };
  const auto before = snapshot();
  CheckStore(*fileSystem_, platform::SystemClock(), location_, [](const StoreFinding&) {});
  EXPECT_EQ(snapshot(), before);
}

}  // namespace
}  // namespace velmora::store::embedded
