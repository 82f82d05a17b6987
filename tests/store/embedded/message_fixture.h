// A message store over a temporary directory, with two archives of a server "ZEB".
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>

#include "platform/clock.h"
#include "platform/host_file_system.h"
#include "store/embedded/message_store.h"
#include "store/filter.h"
#include "support/temp_dir.h"

namespace velmora::store::embedded {

// A clock that a test sets.
class TestClock : public platform::Clock {
 public:
  DateTime Now() override { return now; }
  std::int64_t SteadyMilliseconds() override { return milliseconds; }

  DateTime now = *DateTime::FromCivil({2026, 3, 1, 12, 0, 0});
  std::int64_t milliseconds = 0;
};

class MessageFixture : public testing::Test {
 protected:
  MessageFixture() {
    std::filesystem::create_directories(directory.HostPath("archive/in"));
    std::filesystem::create_directories(directory.HostPath("archive/out"));
    files = MakeFileSystem();
    Reopen();
  }

  std::unique_ptr<platform::FileSystem> MakeFileSystem() const {
    return platform::MakeHostFileSystem({{"\\\\ZEB\\DAVID", directory.HostPath()}});
  }
  void Reopen() {
    store.reset();
    store = std::make_unique<MessageStore>(*files, clock);
  }
  EntryKey Deliver(std::string_view message, const std::string& archive = In) {
    const auto key = store->Deliver(archive, message, {});
    EXPECT_TRUE(key.has_value()) << key.error().Text;
    return key.value_or(0);
  }
  FieldValue Field(EntryKey key, FieldTag tag, const std::string& archive = In) {
    const auto item = store->GetEntry(archive, key);
    if (!item) return {};
    const auto value = (*item)->Fields().Get(tag);
    EXPECT_TRUE(value.has_value());
    return value.value_or(FieldValue{});
  }
  int Count(const std::string& archive = In) { return store->Count(archive).value_or(-1); }

  inline static const std::string In = "\\\\ZEB\\DAVID\\archive\\in";
  inline static const std::string Out = "\\\\ZEB\\DAVID\\archive\\out";

  test::TempDir directory;
  TestClock clock;
  std::unique_ptr<platform::FileSystem> files;
  std::unique_ptr<MessageStore> store;
};

}  // namespace velmora::store::embedded
