#include "settings/server_list.h"

#include <gtest/gtest.h>

namespace velmora::settings {
namespace {

Values ListOf(const std::vector<std::string>& servers) {
  Values stored;
  for (std::size_t i = 0; i < servers.size(); ++i) {
    stored["GlobalSettings"]["DvServer" + std::to_string(i)] = servers[i];
  }
  return stored;
}

ServerList After(Values stored, std::string_view server) {
  for (const Change& change : ServerListChanges(stored, server)) {
    stored[change.Section][change.Name] = *change.NewValue;
  }
  return LoadServerList(stored);
}

TEST(ServerList, ANewServerComesFirst) {
  const ServerList list = After(ListOf({"A", "B"}), " zeb1 ");
  EXPECT_EQ(list[0], "ZEB1");
  EXPECT_EQ(list[1], "A");
  EXPECT_EQ(list[2], "B");
  EXPECT_EQ(list[3], "");
}

TEST(ServerList, AKnownServerLeavesTheOrder) {
  const ServerList list = After(ListOf({"A", " b ", "C"}), "B");
  EXPECT_EQ(list[0], "A");
  EXPECT_EQ(list[1], "B");
  EXPECT_EQ(list[2], "C");
}

TEST(ServerList, TheEleventhServerDropsTheOldest) {
  Values stored;
  for (int i = 0; i < 11; ++i) {
    for (const Change& change : ServerListChanges(stored, "S" + std::to_string(i))) {
      stored[change.Section][change.Name] = *change.NewValue;
    }
  }
  const ServerList list = LoadServerList(stored);
  EXPECT_EQ(list.front(), "S10");
  EXPECT_EQ(list.back(), "S1");
}

}  // namespace
}  // namespace velmora::settings
