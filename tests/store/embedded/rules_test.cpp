#include "store_fixture.h"

namespace velmora::store::embedded {
namespace {

class RulesTest : public StoreFixture {
 protected:
  static DvRuleData FullRule() {
    DvRuleData data;
    data.Name = "Angebote";
    data.Enabled = false;
    data.ValidFrom = *DateTime::FromCivil({2026, 1, 1, 8, 0, 0});
    data.ValidUntil = *DateTime::FromCivil({2026, 12, 31, 18, 30, 15});
    data.RouteAlways = true;
    data.RouteAsCopy = false;
    data.RouteOnlySubject = true;
    data.Forward = true;
    data.ForwardAs = 3;
    data.ForwardTo = "chef@example.org";
    data.AutoReply = true;
    data.NewMessage = true;
    data.Miscellaneous = true;
    data.DeleteMessage = true;
    data.ExcludeAttachments = true;
    data.OnlySubject = true;
    data.ReplacedSender = "büro@example.org";
    data.IncludeBefore = "Zeile 1\r\nZeile 2";
    data.IncludeAfter = "'; DROP TABLE rules; --";
    data.UsedCount = 42;
    data.LastUsed = *DateTime::FromCivil({2026, 5, 5, 5, 5, 5});
    data.Symbol = 7;
    data.ColorMark = 2;
    data.Destinations = {"/Archive/Gemeinsam/A", "/Archive/Gemeinsam/B"};
    data.Conditions = {{tag::Subject, 0, "Angebot", 0}, {tag::SenderAddress, 3, "x@y.z", 1}};
    return data;
  }
  static void AddRule(DvArchive& archive, const DvRuleData& data) {
    auto rule = archive.Rules().Add(data.Name);
    ASSERT_TRUE(rule);
    (*rule)->Data() = data;
    const auto updated = (*rule)->Update();
    ASSERT_TRUE(updated) << updated.error().Text;
  }

  std::shared_ptr<DvArchive> common_ = Archive("Gemeinsam");
};

TEST_F(RulesTest, AnArchiveWithoutTheFileHasNone) {
  EXPECT_EQ(*common_->Rules().Count(), 0);
  EXPECT_EQ(ErrorOf(common_->Rules().Item(0)), store_error::NotFound);
  EXPECT_EQ(ErrorOf(common_->Rules().Item(-1)), store_error::NotFound);
}

TEST_F(RulesTest, EveryPropertyIsKept) {
  AddRule(*common_, FullRule());
  const auto rule = Archive("Gemeinsam")->Rules().Item(0);
  ASSERT_TRUE(rule) << rule.error().Text;
  EXPECT_EQ((*rule)->Data(), FullRule());
}

TEST_F(RulesTest, DefaultsAreThoseOfANewRule) {
  DvRuleData data;
  data.Name = "Leer";
  AddRule(*common_, data);
  EXPECT_EQ((*common_->Rules().Item(0))->Data(), data);
}

TEST_F(RulesTest, AnAddedRuleStandsFromItsUpdateOn) {
  auto rule = common_->Rules().Add("Neu");
  ASSERT_TRUE(rule);
  EXPECT_EQ(*common_->Rules().Count(), 0);
  EXPECT_EQ(ErrorOf((*rule)->Delete()), store_error::NotFound);
  ASSERT_TRUE((*rule)->Update());
  ASSERT_TRUE((*rule)->Update()) << "a second Update changes the same rule";
  EXPECT_EQ(*common_->Rules().Count(), 1);
}

TEST_F(RulesTest, NamesAreCutAtThirtyCharacters) {
  const std::string name = "Ä23456789012345678901234567890xyz";
  DvRuleData data;
  data.Name = name;
  AddRule(*common_, data);
  EXPECT_EQ((*common_->Rules().Item(0))->Data().Name, "Ä23456789012345678901234567890");
  EXPECT_EQ((*common_->Rules().Add(name))->Data().Name, "Ä23456789012345678901234567890");
  const auto rule = common_->Rules().Item(0);
  (*rule)->Data().Name = name + "2";
  ASSERT_TRUE((*rule)->Update());
  EXPECT_EQ((*rule)->Data().Name, "Ä23456789012345678901234567890") << "what stands is shown at once";
}

TEST_F(RulesTest, OrderIsThatOfAddingAndDeletionLeavesTheOthers) {
  for (const auto* name : {"A", "B", "C"}) {
    DvRuleData data;
    data.Name = name;
    AddRule(*common_, data);
  }
  const auto middle = common_->Rules().Item(1);
  ASSERT_TRUE(middle);
  ASSERT_TRUE((*middle)->Delete());
  EXPECT_EQ(ErrorOf((*middle)->Delete()), store_error::NotFound);
  EXPECT_EQ(ErrorOf((*middle)->Update()), store_error::NotFound) << "a deleted rule does not come back";
  EXPECT_EQ(*common_->Rules().Count(), 2);
  EXPECT_EQ((*common_->Rules().Item(0))->Data().Name, "A");
  EXPECT_EQ((*common_->Rules().Item(1))->Data().Name, "C");
}

TEST_F(RulesTest, ACopyOfTheFileShowsItsRules) {
  AddRule(*common_, FullRule());
  const auto other = Create(*common_, "Kopie");
  ASSERT_TRUE(fileSystem_->CopyFile(common_->ID() + "\\archive.urt", other->ID() + "\\archive.urt"));
  ASSERT_EQ(*other->Rules().Count(), 1);
  EXPECT_EQ((*other->Rules().Item(0))->Data(), FullRule());
}

TEST_F(RulesTest, AnEmptyFileHoldsNoRulesAndTakesThem) {
  ASSERT_TRUE(fileSystem_->WriteFile(common_->ID() + "\\archive.urt", ""));
  EXPECT_EQ(*common_->Rules().Count(), 0);
  EXPECT_EQ(ErrorOf(common_->Rules().Item(0)), store_error::NotFound);
  AddRule(*common_, {});
  EXPECT_EQ(*common_->Rules().Count(), 1);
}

TEST_F(RulesTest, ForeignBytesAreReportedAndNeverChanged) {
  const std::vector<std::string> contents{std::string(5000, 'x'), std::string("SQLite format 3\0garbage", 23),
                                          std::string(4096, '\0')};
  for (const auto& bytes : contents) {
    const std::string path = common_->ID() + "\\archive.urt";
    ASSERT_TRUE(fileSystem_->WriteFile(path, bytes));
    EXPECT_NE(ErrorOf(common_->Rules().Count()), 0);
    EXPECT_NE(ErrorOf(common_->Rules().Item(0)), 0);
    auto rule = common_->Rules().Add("x");
    ASSERT_TRUE(rule);
    EXPECT_NE(ErrorOf((*rule)->Update()), 0);
    EXPECT_EQ(*fileSystem_->ReadFile(path), bytes);
  }
}

}  // namespace
}  // namespace velmora::store::embedded
