// A built-in store whose archive.dir files are damaged by hand: the archives "A", "A/Innen" and "B" below the
// common archive.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/paths.h"
#include "platform/clock.h"
#include "platform/host_file_system.h"
#include "run/run.h"
#include "store/archive_files.h"
#include "store/archive_records.h"
#include "store/embedded/archive_tree.h"
#include "store/embedded/embedded_store.h"
#include "store/embedded/store_layout.h"
#include "support/scripted_front_end.h"
#include "support/temp_dir.h"
#include "support/test_store.h"

namespace velmora::maintenance {

class DamagedTreeTest : public testing::Test {
 protected:
  using ArchivePointer = std::shared_ptr<store::DvArchive>;
  using Texts = std::vector<std::string>;

  DamagedTreeTest() : location_{"BUERO", directory_.HostPath("store")} {
    velmora::test::CopyTestStore(velmora::test::BueroStore, location_.HostDirectory);
    files_ = platform::MakeHostFileSystem({store::embedded::MappingOf(location_)});
    api_ = store::embedded::OpenEmbeddedApi(*files_, platform::SystemClock(), {location_}, "anna");
    account_ = api_->Logon("").value();
    run_ = std::make_unique<run::Run>(*files_, platform::SystemClock(), frontEnd_.Set(),
                                      files_->FromHostPath(directory_.HostPath()));
    common_ = Archive("/Archive/Gemeinsam");
    a_ = common_->CreateSubArchive("A").value();
    inner_ = a_->CreateSubArchive("Innen").value();
    b_ = common_->CreateSubArchive("B").value();
  }

  ArchivePointer Archive(std::string_view path) {
    auto archive = account_->GetArchive(path);
    if (!archive) throw std::runtime_error(std::string(path) + ": " + archive.error().Text);
    return *archive;
  }
  // A record as no sound tree has it.
  void AddRecord(const ArchivePointer& list, std::string_view path, std::string_view name) {
    ASSERT_TRUE(store::AppendArchiveRecord(*files_, list->ID(), store::DirRecord::Make(path, name).value()));
  }
  void AddLink(const ArchivePointer& list, std::string_view name, const ArchivePointer& target) {
    store::embedded::ArchiveTree tree(*files_, store::embedded::StoreLayout("BUERO").ArchiveRoot());
    ASSERT_TRUE(tree.AddLink(list->ID(), name, target->ID()));
  }
  static Texts Names(const ArchivePointer& archive) {
    Texts names;
    const auto subArchives = archive->SubArchives().value();
    for (const auto& sub : subArchives)
      names.push_back((sub->IsShortCut() ? ">" : "") + sub->DisplayName().value());
    return names;
  }
  std::string HostPath(const ArchivePointer& archive) { return files_->HostPath(archive->ID()).value(); }
  std::string Log() {
    const auto content = files_->ReadFile(run_->ErrorLogPath());
    return content ? *content : "";
  }

  velmora::test::TempDir directory_;
  store::embedded::StoreLocation location_;
  std::unique_ptr<platform::FileSystem> files_;
  std::shared_ptr<store::DvISEAPI> api_;
  std::unique_ptr<store::DvAccount> account_;
  velmora::test::ScriptedFrontEnd frontEnd_;
  std::unique_ptr<run::Run> run_;
  ArchivePointer common_, a_, inner_, b_;
};

}  // namespace velmora::maintenance
