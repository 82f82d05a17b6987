#include "settings/path_mappings.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace velmora::settings {
namespace {

using platform::PathMapping;

Values Mapped(const SectionValues& rows) {
  Values values;
  values["PathMappings"] = rows;
  return values;
}

TEST(PathMappings, TheUserGoesBeforeTheMachine) {
  const std::vector<PathMapping> rows = LoadPathMappings(
      Mapped({{"M:", std::string("/mail")}}),
      Mapped({{"m:", std::string("/other")}, {"\\\\ZEB1\\DAVID", std::string("/srv/david")}}));
  ASSERT_EQ(rows.size(), 2U);
  EXPECT_EQ(rows[0], (PathMapping{"M:", "/mail"}));
  EXPECT_EQ(rows[1], (PathMapping{"\\\\ZEB1\\DAVID", "/srv/david"}));
}

TEST(PathMappings, RowsThatMapNothingAreLeftOut) {
  EXPECT_TRUE(LoadPathMappings({}, {}).empty());
  const Values bad = Mapped({{"MM:", std::string("/a")},
                             {"1:", std::string("/a")},
                             {"\\\\SERVER", std::string("/a")},
                             {"\\\\SERVER\\", std::string("/a")},
                             {"\\\\SERVER\\A\\B", std::string("/a")},
                             {"N:", std::string("relative")},
                             {"O:", 7}});
  EXPECT_TRUE(LoadPathMappings(bad, {}).empty());
}

}  // namespace
}  // namespace velmora::settings
