// The dialogs of operations inside the store, over a store in memory: "Eingang" and "Ausgang".
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "operations/rule_copy.h"
#include "platform/host_file_system.h"
#include "settings/options.h"
#include "store/selection.h"
#include "support/fake_store.h"
#include "support/scripted_front_end.h"
#include "support/temp_dir.h"

namespace velmora::panes {

class DialogsTest : public testing::Test {
 protected:
  using Object = store::Selection::Object;
  static constexpr auto Message = Object::Kind::Message, Archive = Object::Kind::Archive;

  DialogsTest() {
    selection.CurrentArchive = fake.Open(inbox.ID);
    selection.Objects = {{Message, 7, "", false}};
    rules = {fake.Open(inbox.ID), {{0, "Angebote"}, {3, "Rechnungen"}}};
  }
  run::Prompts& prompts() { return set.prompts; }

  test::TempDir directory;
  std::unique_ptr<platform::FileSystem> files = platform::MakeHostFileSystem({{"Z:", "/"}});
  test::FakeStore fake{*files};
  test::FakeArchiveData& root = fake.AddArchive(nullptr, "ZEB", R"(\\S\DAVID\ARCHIVE)");
  test::FakeArchiveData& inbox = fake.AddArchive(&root, "Eingang", R"(\\S\DAVID\ARCHIVE\IN)");
  test::FakeArchiveData& outbox = fake.AddArchive(&root, "Ausgang", R"(\\S\DAVID\ARCHIVE\OUT)");
  std::unique_ptr<store::DvAccount> account = fake.MakeAccount();
  store::Selection selection;
  operations::RuleSelection rules;
  settings::Options options;
  bool mayDelete = true;
  test::ScriptedFrontEnd front;
  run::FrontEnd set = front.Set();
};

}  // namespace velmora::panes
