// Entries of the built-in store's tree, changed on the files: the tree follows at once.
#include "store/archive_entries.h"

#include <algorithm>
#include <filesystem>

#include "base/paths.h"
#include "store/archive_files.h"
#include "store/embedded/record_properties.h"
#include "store_fixture.h"
#include "support/faulty_file_system.h"
#include "support/scripted_front_end.h"

namespace velmora::store::embedded {
namespace {

using Texts = std::vector<std::string>;

class ArchiveEntriesTest : public StoreFixture {
 protected:
  ArchiveEntriesTest()
      : log_(fileSystem_->FromHostPath(directory_.HostPath())),
        run_(*fileSystem_, platform::SystemClock(), frontEnd_.Set(), log_),
        common_(Archive("Gemeinsam")),
        a_(Create(*common_, "A")),
        b_(Create(*common_, "B")) {}

  std::string Log() {
    const auto content = fileSystem_->ReadFile(run_.ErrorLogPath());
    return content ? *content : "";
  }
  Texts Names(DvArchive& archive) {
    Texts names;
    const auto subArchives = archive.SubArchives().value();
    for (const auto& sub : subArchives)
      names.push_back((sub->IsShortCut() ? ">" : "") + sub->DisplayName().value());
    return names;
  }
  EntryPlace Place(const DvArchive& parent, DvArchive& archive) {
    return {parent.ID(), archive.ID(), archive.DisplayName().value()};
  }
  void AddLink(DvArchive& parent, std::string_view name, const DvArchive& target) {
    ArchiveTree tree(*fileSystem_, layout_.ArchiveRoot());
    ASSERT_TRUE(tree.AddLink(parent.ID(), name, target.ID()));
  }
  // The record of an archive once more in some list, as a damaged tree has it.
  void AddRecord(const DvArchive& list, std::string_view path, std::string_view name) {
    ASSERT_TRUE(AppendArchiveRecord(*fileSystem_, list.ID(), DirRecord::Make(path, name).value()));
  }
  bool HasFolder(const DvArchive& archive, std::string_view name) {
    return fileSystem_->FolderExists(NormalizePath(archive.ID()) + "\\" + std::string(name));
  }
  static std::string NormalizePath(std::string_view path) { return velmora::NormalizePath(path); }

  velmora::test::ScriptedFrontEnd frontEnd_;
  std::string log_;
  run::Run run_;
  std::shared_ptr<DvArchive> common_, a_, b_;
};

TEST_F(ArchiveEntriesTest, AMovedArchiveStandsInItsNewParentWithItsProperties) {
  const auto moved = Create(*a_, "Post");
  ASSERT_TRUE(moved->SetHidden(true) && moved->Update());
  const auto inner = Create(*moved, "Innen");
  ASSERT_TRUE(MoveArchiveEntry(run_, *b_, {Place(*a_, *moved)}));
  EXPECT_EQ(Names(*a_), Texts{});
  EXPECT_EQ(Names(*b_), Texts{"Post"});
  const auto found = Archive("/Archive/Gemeinsam/B/Post");
  EXPECT_EQ(found->ID(), moved->ID()) << "the directory stays where it is";
  EXPECT_TRUE(found->Hidden().value());
  EXPECT_EQ(Names(*found), Texts{"Innen"});
  EXPECT_EQ(Archive(found->ID())->FullPath(), "/Archive/Gemeinsam/B/Post");
  EXPECT_FALSE(HasFolder(*b_, "VELMORA"));
  EXPECT_EQ(run_.counters.Archives, 1);
  EXPECT_EQ(Log(), "");
}

TEST_F(ArchiveEntriesTest, AMovedArchiveMayGetANameAndTheStoresOwnHead) {
  const auto moved = Create(*a_, "Post");
  ASSERT_TRUE(moved->SetHidden(true) && moved->Update());
  EntryMove move{Place(*a_, *moved)};
  move.Name = "Neu";
  move.Parts = FixedParts::OfTemporary;
  ASSERT_TRUE(MoveArchiveEntry(run_, *b_, move));
  const auto found = Archive("/Archive/Gemeinsam/B/Neu");
  EXPECT_FALSE(found->Hidden().value());
  const std::string self = fileSystem_->ReadFile(found->ID() + "\\archive.add").value();
  EXPECT_EQ(RecordAt(self, 1)->Name(), "Neu");
}

TEST_F(ArchiveEntriesTest, AShortCutLeavesTheArchiveWhereItIs) {
  const auto target = Create(*a_, "Post");
  EntryMove move{Place(*a_, *target)};
  move.Form = EntryForm::ShortCut;
  move.Name = "Verweis";
  ASSERT_TRUE(MoveArchiveEntry(run_, *b_, move));
  EXPECT_EQ(Names(*a_), Texts{"Post"});
  EXPECT_EQ(Names(*b_), Texts{">Verweis"});
  EXPECT_EQ(b_->SubArchives().value()[0]->ID(), target->ID());
  const std::string self = fileSystem_->ReadFile(target->ID() + "\\archive.add").value();
  EXPECT_EQ(RecordAt(self, 1)->Name(), "Post") << "a short-cut's record is not the archive's own";
}

TEST_F(ArchiveEntriesTest, AnArchiveIsNotMovedIntoItself) {
  const auto inner = Create(*a_, "Innen");
  EXPECT_EQ(ErrorOf(MoveArchiveEntry(run_, *inner, {Place(*common_, *a_)})), store_error::Failed);
  EXPECT_EQ(ErrorOf(MoveArchiveEntry(run_, *a_, {Place(*common_, *a_)})), store_error::Failed);
  // The same where the disk says nothing of it: "B" stands below "A", beside it on the disk.
  ASSERT_TRUE(MoveArchiveEntry(run_, *a_, {Place(*common_, *b_)}));
  const auto below = Archive("/Archive/Gemeinsam/A/B");
  EntryMove move{Place(*common_, *a_)};
  move.FullPath = a_->FullPath();
  EXPECT_EQ(ErrorOf(MoveArchiveEntry(run_, *below, move)), store_error::Failed);
  EXPECT_EQ(Names(*common_).back(), "A");
}

TEST_F(ArchiveEntriesTest, AMoveWithinOneListReordersIt) {
  ASSERT_TRUE(MoveArchiveEntry(run_, *common_, {Place(*common_, *a_)}));
  const Texts names = Names(*common_);
  EXPECT_EQ(Texts(names.end() - 2, names.end()), (Texts{"B", "A"}));
  EXPECT_EQ(std::ranges::count(names, "A"), 1);
}

TEST_F(ArchiveEntriesTest, AMissingRecordIsLoggedAndNothingIsMade) {
  const auto moved = Create(*a_, "Post");
  const std::string id = moved->ID();
  ASSERT_TRUE(moved->Delete());
  EXPECT_EQ(ErrorOf(MoveArchiveEntry(run_, *b_, {{a_->ID(), id, "Post"}})), store_error::NotFound);
  EXPECT_EQ(Names(*b_), Texts{});
  EXPECT_TRUE(Log().ends_with("\r\n Fehler: 0 - Velmora Error -> Record f\xFCr " + id +
                              " in archive.dir nicht gefunden\r\n"))
      << Log();
  EXPECT_EQ(run_.counters.Errors, 1);
  EXPECT_EQ(run_.counters.Archives, 0);
}

TEST_F(ArchiveEntriesTest, TheTemporaryEntryGoesWhereverTheDiskIsFull) {
  const auto moved = Create(*a_, "Post");
  velmora::test::FaultyFileSystem faulty(*fileSystem_);
  auto api = OpenEmbeddedApi(faulty, platform::SystemClock(), {location_}, "anna");
  const auto account = api->Logon("").value();
  const auto from = Archive(*account, "/Archive/Gemeinsam/A"), to = Archive(*account, "/Archive/Gemeinsam/B");
  run::Run run(faulty, platform::SystemClock(), frontEnd_.Set(), log_);
  bool isDone = false;
  int write = 1;
  for (; !isDone && write < 20; ++write) {
    faulty.FailOn(velmora::test::Fault::Write, write, platform::file_error::DiskFull);
    isDone = MoveArchiveEntry(run, *to, {Place(*from, *moved)}).has_value();
    faulty.Heal();
    // Where only the old record could not be taken out, the archive stands twice.
    for (const std::string& name : Names(*b_)) EXPECT_TRUE(name == "Post" || name == ">Post") << name;
    EXPECT_FALSE(HasFolder(*b_, "VELMORA")) << write;
    const auto standing = Names(*a_).size() + Names(*b_).size();
    EXPECT_GE(standing, 1u) << write << ": the archive is lost";
    if (!Names(*b_).empty()) break;
  }
  EXPECT_GT(write, 3) << "no write has failed";
}

TEST_F(ArchiveEntriesTest, ALinkArrivesAsALink) {
  const auto target = Create(*common_, "Ziel");
  AddLink(*a_, "Verweis", *target);
  const auto link = a_->SubArchives().value()[0];
  ASSERT_TRUE(CopyLinkEntry(run_, Place(*a_, *link), *b_));
  EXPECT_EQ(Names(*a_), Texts{">Verweis"});
  EXPECT_EQ(Names(*b_), Texts{">Verweis"});
  const std::string from = ReadArchiveList(*fileSystem_, a_->ID()).value();
  EXPECT_EQ(ReadArchiveList(*fileSystem_, b_->ID()).value(), from) << "with its head, byte for byte";
  EXPECT_FALSE(CopyLinkEntry(run_, {a_->ID(), target->ID(), "Anders"}, *b_));
  EXPECT_NE(Log().find("nicht gefunden"), std::string::npos);
}

TEST_F(ArchiveEntriesTest, LinksToNothingToThemselvesAndToTheirParentAreRemoved) {
  const std::string nowhere = common_->ID() + "\\WEG";
  AddRecord(*a_, nowhere, "Nirgends");
  AddLink(*a_, "Selbst", *a_);
  AddLink(*a_, "Oben", *common_);
  EXPECT_TRUE(RemoveLinkEntry(run_, {a_->ID(), nowhere, "Nirgends"}));
  EXPECT_TRUE(RemoveLinkEntry(run_, {a_->ID(), a_->ID(), "Selbst"}));
  EXPECT_TRUE(RemoveLinkEntry(run_, {a_->ID(), common_->ID(), "Oben"}));
  EXPECT_EQ(Names(*a_), Texts{});
  EXPECT_EQ(Log(), "");
  EXPECT_EQ(Archive(a_->ID())->FullPath(), "/Archive/Gemeinsam/A") << "the targets stand";
}

TEST_F(ArchiveEntriesTest, OfTwoLinksToOneArchiveTheNameDecides) {
  AddLink(*a_, "Eins", *b_);
  AddLink(*a_, "Zwei", *b_);
  EXPECT_TRUE(RemoveLinkEntry(run_, {a_->ID(), b_->ID(), "Zwei"}));
  EXPECT_EQ(Names(*a_), Texts{">Eins"});
}

TEST_F(ArchiveEntriesTest, AnEntryWithoutANameIsKnownByItsDirectorys) {
  const std::string path = common_->ID() + "\\WEG";
  DirRecord record = DirRecord::Make(path, "x").value();
  ASSERT_TRUE(AppendArchiveRecord(*fileSystem_, a_->ID(), RebuildRecord(record, record, "").value()));
  ASSERT_EQ(Names(*a_), Texts{"WEG"});
  EXPECT_TRUE(RemoveArchiveEntry(run_, {a_->ID(), path, "WEG"}));
  EXPECT_EQ(Names(*a_), Texts{});
}

TEST_F(ArchiveEntriesTest, FailuresOfRemovalNameTheEntry) {
  AddLink(*a_, "Verweis", *b_);
  velmora::test::FaultyFileSystem faulty(*fileSystem_);
  run::Run run(faulty, platform::SystemClock(), frontEnd_.Set(), log_);
  faulty.FailOn(velmora::test::Fault::Write, 1, platform::file_error::DiskFull);
  EXPECT_FALSE(RemoveLinkEntry(run, {a_->ID(), b_->ID(), "Verweis"}));
  faulty.FailOn(velmora::test::Fault::Write, 2, platform::file_error::DiskFull);  // the first is the log's
  EXPECT_FALSE(RemoveArchiveEntry(run, {common_->ID(), b_->ID(), "B"}));
  EXPECT_NE(Log().find("Fehler beim L\xF6schen der Verkn\xFCpfung \"Verweis\""), std::string::npos) << Log();
  EXPECT_NE(Log().find("Fehler beim L\xF6schen des Archiveintrages \"B\""), std::string::npos) << Log();
  EXPECT_EQ(Names(*a_), Texts{">Verweis"});
}

TEST_F(ArchiveEntriesTest, ACopyGetsHeadAndTailOfItsSource) {
  ASSERT_TRUE(a_->SetHidden(true) && a_->SetDisplayType(5) && a_->Update());
  ASSERT_TRUE(RepairArchiveDirRecord(run_, Place(*common_, *a_), Place(*common_, *b_)));
  const auto repaired = Archive("/Archive/Gemeinsam/B");
  EXPECT_TRUE(repaired->Hidden().value());
  EXPECT_EQ(repaired->DisplayType().value(), 5);
  EXPECT_EQ(repaired->ID(), b_->ID());
  const auto record = FindEntryRecord(*fileSystem_, Place(*common_, *repaired)).value().Record;
  EXPECT_EQ(fileSystem_->ReadFile(b_->ID() + "\\archive.add").value(), record.Bytes());
}

TEST_F(ArchiveEntriesTest, ASourceReachedOverALinkGivesItsOwnRecord) {
  ASSERT_TRUE(a_->SetHidden(true) && a_->Update());
  ASSERT_TRUE(RepairArchiveDirRecord(run_, {"", a_->ID(), ""}, {common_->ID(), b_->ID(), ""}));
  EXPECT_TRUE(Archive("/Archive/Gemeinsam/B")->Hidden().value());
  EXPECT_EQ(ErrorOf(RepairArchiveDirRecord(run_, {"", common_->ID() + "\\WEG", ""}, Place(*common_, *b_))),
            store_error::NotFound);
}

TEST_F(ArchiveEntriesTest, RecordsOfAnArchiveAreCountedInItsParentsListWithoutShortCuts) {
  AddRecord(*common_, a_->ID(), "A");
  AddLink(*common_, "Verweis", *a_);
  AddRecord(*common_, a_->ID(), "A anders");
  const auto records = FindArchiveRecords(*fileSystem_, *anna_, *a_);
  ASSERT_TRUE(records) << records.error().Text;
  ASSERT_EQ(records->size(), 3u);
  EXPECT_LT((*records)[0].Number, (*records)[1].Number);
  EXPECT_EQ((*records)[2].Record.Name(), "A anders");
  EXPECT_EQ(FindArchiveRecords(*fileSystem_, *anna_, *b_)->size(), 1u);
  EXPECT_EQ(ErrorOf(FindArchiveRecords(*fileSystem_, *anna_, *Archive("/Archive"))), store_error::NotFound);
}

TEST_F(ArchiveEntriesTest, AnInterruptedListIsSeenAndToldAndRecoveredByTheNextChange) {
  Create(*a_, "Post");
  Create(*a_, "Zwei");
  const std::string host = fileSystem_->HostPath(a_->ID()).value();
  const Texts before = Names(*a_);
  std::filesystem::rename(host + "/archive.dir", host + "/archivedir.bak");
  std::filesystem::copy_file(host + "/archive.add", host + "/archive.vlw");
  EXPECT_EQ(Names(*a_), before) << "never silently empty";
  ArchiveTree tree(*fileSystem_, layout_.ArchiveRoot());
  int told = 0;
  for (const auto& finding : tree.Check().Findings) told += finding.Directory == a_->ID() ? 1 : 0;
  EXPECT_EQ(told, 1);
  Create(*a_, "Drei");
  EXPECT_EQ(Names(*a_), (Texts{"Post", "Zwei", "Drei"}));
  EXPECT_FALSE(std::filesystem::exists(host + "/archive.vlw"));
}

}  // namespace
}  // namespace velmora::store::embedded
