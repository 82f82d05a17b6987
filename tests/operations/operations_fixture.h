// Operations on a whole built-in store: the administrator "anna" is signed on, "/Archive/Quelle" and
// "/Archive/Ziel" are there.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/paths.h"
#include "operations/operation.h"
#include "store/embedded/store_check.h"
#include "store/embedded/store_fixture.h"
#include "store/selection.h"
#include "support/manual_clock.h"
#include "support/scripted_front_end.h"

namespace velmora::operations {

using List = std::vector<std::string>;
using ArchivePointer = std::shared_ptr<store::DvArchive>;

class OperationsFixture : public store::embedded::StoreFixture {
 protected:
  OperationsFixture() {
    SignOnAs("anna");
    root_ = Open("/Archive");
    source_ = Create(*root_, "Quelle");
    target_ = Create(*root_, "Ziel");
  }

  void SignOnAs(const std::string& login) {
    session_.Account = SignOn(login);
    session_.ServerName = "BUERO";
    session_.Trustees = session_.ServerTrustees = session_.Account->User().Trustees();
  }

  ArchivePointer Open(std::string_view path) { return StoreFixture::Archive(*session_.Account, path); }
  bool Exists(std::string_view path) { return session_.Account->GetArchive(path).has_value(); }

  // --- Content. ---
  store::EntryKey Deliver(store::DvArchive& archive, const std::string& subject) {
    const auto path = JoinPath(logs_, "mail.eml");
    EXPECT_TRUE(fileSystem_->WriteFile(path, "Subject: " + subject + "\r\n\r\nText\r\n"));
    auto item = session_.Account->DVMailItemFromEml(path, archive);
    EXPECT_TRUE(item.has_value());
    return item ? (*item)->Key() : 0;
  }
  void AddLink(const store::DvArchive& parent, const std::string& name, const store::DvArchive& target) {
    store::embedded::ArchiveTree tree(*fileSystem_, layout_.ArchiveRoot());
    EXPECT_TRUE(tree.AddLink(parent.ID(), name, target.ID()));
  }
  void WriteFile(const store::DvArchive& archive, std::string_view name, std::string_view content) {
    EXPECT_TRUE(fileSystem_->WriteFile(JoinPath(archive.ID(), name), content));
  }
  std::string ReadFile(const store::DvArchive& archive, std::string_view name) {
    return fileSystem_->ReadFile(JoinPath(archive.ID(), name)).value_or("(none)");
  }

  // --- Looking. ---
  List Subjects(std::string_view path) { return Subjects(*Open(path)); }
  static List Subjects(store::DvArchive& archive) {
    List subjects;
    const auto entries = archive.GetEntries(store::filter_preset::None);
    EXPECT_TRUE(entries.has_value());
    for (int i = 0; entries && i < (*entries)->Count(); ++i) {
      const auto item = (*entries)->Item(i);
      subjects.push_back(item ? TitleOf(**item) : item.error().Text);
    }
    return subjects;
  }
  // The names of the sub-archives, links with ">" in front.
  List Names(std::string_view path) {
    List names;
    const auto subs = Open(path)->SubArchives();
    for (const auto& sub : *subs)
      names.push_back((sub->IsShortCut() ? ">" : "") + sub->DisplayName().value_or("?"));
    return names;
  }
  std::string Log() { return fileSystem_->ReadFile(run_.ErrorLogPath()).value_or(""); }
  // What a check finds beyond notes: nothing in a sound store.
  List Damage() {
    EXPECT_TRUE(session_.Account->Commit());
    List texts;
    store::embedded::CheckStore(*fileSystem_, clock_, location_,
                                [&](const store::embedded::StoreFinding& finding) {
                                  if (!finding.IsNote) texts.push_back(finding.Subject + ": " + finding.Text);
                                });
    return texts;
  }

  // --- Selections. ---
  using Object = store::Selection::Object;
  static Object Mark(const store::DvArchive& archive, const std::string& name = {}) {
    return {Object::Kind::Archive, 0, archive.ID(), archive.IsShortCut(), name};
  }
  static Object Mark(store::EntryKey key) { return {Object::Kind::Message, key, "", false, ""}; }
  Operation Context() { return {run_, session_, scope_, false}; }

  velmora::test::ManualClock clock_;
  velmora::test::ScriptedFrontEnd frontEnd_;
  std::string logs_ = fileSystem_->FromHostPath(location_.HostDirectory);
  run::Run run_{*fileSystem_, clock_, frontEnd_.Set(), logs_};
  store::Session session_;
  EntryScope scope_;
  ArchivePointer root_, source_, target_;
};

}  // namespace velmora::operations
