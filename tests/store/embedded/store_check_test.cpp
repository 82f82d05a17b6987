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

TEST_F(StoreCheckTest, FindsDatabasesOfAnotherKindAndCutOnes) {
  ASSERT_TRUE(DeliverMessage(*anna_, *Archive("Gemeinsam"), PlainMessage, {}));
  ASSERT_TRUE(anna_->Commit());
  const auto& root = layout_.Root();
  ASSERT_TRUE(fileSystem_->CopyFile(root + "\\code\\site.db", root + "\\archive\\common\\archive.urt"));
  ASSERT_TRUE(fileSystem_->CopyFile(root + "\\code\\site.db", root + "\\code\\david.log"));
  const auto database = root + "\\archive\\common\\archive.dat";
  const auto content = fileSystem_->ReadFile(database);
  ASSERT_TRUE(content);
  ASSERT_TRUE(fileSystem_->WriteFile(database, content->substr(0, content->size() - 77)));
  const auto findings = Check();
  ASSERT_EQ(findings.size(), 3U);
  EXPECT_NE(findings[0].Text.find("Der Datei fehlen 77 Bytes"), std::string::npos) << findings[0].Text;
  EXPECT_EQ(findings[1].Text, "In der Datenbank fehlt die Tabelle rules");
  EXPECT_EQ(findings[2].Text, "In der Datenbank fehlt die Tabelle entries");
}

TEST_F(StoreCheckTest, FindsContentFilesThatAreTooShort) {
  const auto key =
      DeliverMessage(*anna_, *Archive("Gemeinsam"),
                     "MIME-Version: 1.0\r\nContent-Type: multipart/mixed; boundary=x\r\n\r\n--x\r\n"
                     "Content-Type: application/pdf; name=a.pdf\r\nContent-Disposition: "
                     "attachment\r\n\r\nInhalt\r\n--x--\r\n",
                     {});
  ASSERT_TRUE(key);
  ASSERT_TRUE(anna_->Commit());
  const auto file = layout_.ArchiveRoot() + "\\common\\00000001.001";
  const auto content = fileSystem_->ReadFile(file);
  ASSERT_TRUE(content);
  ASSERT_TRUE(fileSystem_->WriteFile(file, content->substr(0, 60)));
  const auto findings = Check();
  ASSERT_EQ(findings.size(), 1U);
  EXPECT_EQ(findings[0].Text, "Die Inhaltsdatei ist unvollständig: 00000001.001");
}

TEST_F(StoreCheckTest, AnInterruptedWriteIsANoteAndStaysAsItIs) {
  ASSERT_TRUE(DeliverMessage(*anna_, *Archive("Gemeinsam"), PlainMessage, {}));
  ASSERT_TRUE(anna_->Commit());
  const std::string journal = location_.HostDirectory + "/archive/common/archive.dat-journal";
  directory_.WriteHostFile("store/archive/common/archive.dat-journal", std::string(600, 'j'));
  const auto findings = Check();
  ASSERT_EQ(findings.size(), 1U);
  EXPECT_TRUE(findings[0].IsNote);
  EXPECT_NE(findings[0].Text.find("abgebrochener Schreibvorgang"), std::string::npos) << findings[0].Text;
  EXPECT_TRUE(std::filesystem::exists(journal));
}

TEST_F(StoreCheckTest, ADanglingRecordIsOneFinding) {
  const auto archive = Create(*Archive("Gemeinsam"), "Weg{WEG}");
  ASSERT_TRUE(fileSystem_->DeleteFolder(archive->ID(), true));
  const auto findings = Check();
  ASSERT_EQ(findings.size(), 1U);
  EXPECT_NE(findings[0].Text.find("nennt das fehlende Verzeichnis"), std::string::npos);
}

TEST_F(StoreCheckTest, AListThatCannotBeReadIsOneFinding) {
  Create(*Archive("Gemeinsam"), "Post{POST}");
  const auto list = layout_.ArchiveRoot() + "\\common\\archive.dir";
  ASSERT_TRUE(fileSystem_->DeleteFile(list, true));
  std::filesystem::create_symlink("/dev/null", location_.HostDirectory + "/archive/common/archive.dir");
  const auto findings = Check();
  ASSERT_EQ(findings.size(), 1U) << "what the list would have named is not known";
  EXPECT_NE(findings[0].Text.find("keine Archivliste"), std::string::npos) << findings[0].Text;
}

TEST_F(StoreCheckTest, ACopyOfARecordThatDiffersIsANote) {
  const auto archive = Create(*Archive("Gemeinsam"), "Post{POST}");
  ASSERT_TRUE(fileSystem_->WriteFile(archive->ID() + "\\archive.add", std::string(430, 'x')));
  const auto findings = Check();
  ASSERT_EQ(findings.size(), 1U);
  EXPECT_TRUE(findings[0].IsNote);
  EXPECT_NE(findings[0].Text.find("archive.add"), std::string::npos);
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
