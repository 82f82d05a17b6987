// Both panes over a store in memory: the root "ZEB" with the archives "Eingang" and "Ausgang".
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "panes/two_panes.h"
#include "platform/host_file_system.h"
#include "support/fake_store.h"
#include "support/faulty_file_system.h"
#include "support/manual_clock.h"
#include "support/scripted_front_end.h"
#include "support/temp_dir.h"

namespace velmora::panes {

// Counts how often the window could be repainted, and may ask to stop.
class CountingWatcher final : public FillWatcher {
 public:
  bool Breathe() override { return ++Breaths >= StopAt && StopAt > 0; }

  int Breaths = 0;
  int StopAt = 0;  // 0: never
};

class PanesTest : public testing::Test {
 protected:
  PanesTest() {
    session.Account = fake.MakeAccount();
    session.DefaultArchive = session.LeftArchive = session.RightArchive = fake.Open(root.ID);
    panes.SignedOn();
  }

  ArchivePane& Left() { return panes.Left(); }
  ArchivePane& Right() { return panes.Right(); }
  FilePane& Files() { return panes.Files(); }

  // The texts of a column, in the order of the rows.
  static std::vector<std::string> Texts(const Pane& pane, std::size_t column = 0) {
    std::vector<std::string> texts;
    for (std::size_t row = 0; row < pane.RowCount(); ++row) texts.push_back(pane.Text(row, column));
    return texts;
  }
  static std::vector<std::string> Keys(const Pane& pane) {
    std::vector<std::string> keys;
    for (std::size_t row = 0; row < pane.RowCount(); ++row) keys.push_back(pane.Key(row));
    return keys;
  }
  test::FakeMail& AddMail(test::FakeArchiveData& archive, std::string subject) {
    auto& mail = fake.AddMail(archive, subject);
    mail.Fields[store::tag::Subject] = std::move(subject);
    return mail;
  }
  void AddMails(test::FakeArchiveData& archive, int count) {
    for (int i = 0; i < count; ++i) AddMail(archive, "Mail " + std::to_string(i));
  }
  std::string LogText() {
    const auto text = host->ReadFile(run.ErrorLogPath());
    return text ? *text : std::string();
  }

  test::TempDir dir;
  std::unique_ptr<platform::FileSystem> host = platform::MakeHostFileSystem({{"Z:", "/"}});
  test::FaultyFileSystem files{*host};
  test::ManualClock clock;
  test::ScriptedFrontEnd frontEnd;
  run::Run run{files, clock, frontEnd.Set(), dir.Path()};
  settings::Options options;
  store::Session session;
  std::string currentPath = dir.Path() + "\\";
  CountingWatcher watcher;
  test::FakeStore fake{files};
  test::FakeArchiveData& root = fake.AddArchive(nullptr, "ZEB", R"(\\SERVER\DAVID\ARCHIVE)");
  test::FakeArchiveData& inbox = fake.AddArchive(&root, "Eingang", R"(\\SERVER\DAVID\ARCHIVE\IN)");
  test::FakeArchiveData& outbox = fake.AddArchive(&root, "Ausgang", R"(\\SERVER\DAVID\ARCHIVE\OUT)");
  TwoPanes panes{PaneContext{session, options, run, currentPath, watcher}};
};

}  // namespace velmora::panes
