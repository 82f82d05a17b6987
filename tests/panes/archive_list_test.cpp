// What a pane lists of an archive, in which order, and what it leaves out.
#include "panes/archive_list.h"

#include <gtest/gtest.h>

#include "pane_fixture.h"
#include "store/filter.h"
#include "store/icon_keys.h"
#include "store/vocabulary.h"

namespace velmora::panes {
namespace {

namespace tag = store::tag;
namespace item_flag = store::item_flag;
using List = std::vector<std::string>;

class ArchiveListTest : public PanesTest {
 protected:
  List ShowInbox() {
    EXPECT_TRUE(Left().ShowArchive(inbox.ID));
    return Texts(Left());
  }
  const MessageRow& OnlyMessage() {
    EXPECT_TRUE(Left().ShowArchive(inbox.ID));
    return *Left().Message(Left().RowCount() - 1);
  }
};

// --- Archives. ---

TEST_F(ArchiveListTest, TheRootOfTheSessionHasNoWayUp) {
  ASSERT_TRUE(Left().Refresh());
  EXPECT_EQ(Texts(Left()), (List{"Ausgang", "Eingang"}));
  EXPECT_EQ(Keys(Left()), (List{"T2AI0", "T2AI1"}));
  EXPECT_EQ(Left().List().ArchiveRows, 2);
}

TEST_F(ArchiveListTest, BelowTheRootTheWayUpStandsAtTheTop) {
  auto& sub = fake.AddArchive(&inbox, "2024", R"(\\SERVER\DAVID\ARCHIVE\IN\A)");
  EXPECT_EQ(ShowInbox(), (List{"[..]", "2024"}));
  EXPECT_EQ(Keys(Left()), (List{"T1I0", "T2AI1"}));
  EXPECT_EQ(Left().Tag(1), sub.ID);
  EXPECT_EQ(Left().List().ArchiveRows, 2) << "the way up is counted with the archives";
}

TEST_F(ArchiveListTest, TheRootIsKnownWhateverTheCaseOrTheEndOfItsPath) {
  fake.AddArchive(nullptr, "Wurzel", R"(server\david:archive\)");
  session.DefaultArchive = fake.Open("/Wurzel");
  ASSERT_TRUE(Left().ShowArchive(root.ID));
  EXPECT_EQ(Left().EntryType(0), entry_type::ArchiveEntry);
}

TEST_F(ArchiveListTest, ArchivesAreSortedByNameInTheListsDirectionWhateverTheMode) {
  fake.AddArchive(&root, "bauer", R"(\\SERVER\DAVID\ARCHIVE\B)");
  options.LZEBSortingMode = sort_mode::Date;
  ASSERT_TRUE(Left().Refresh());
  EXPECT_EQ(Texts(Left()), (List{"Ausgang", "bauer", "Eingang"})) << "without regard to case";
  options.LZEBSortingDirection = false;
  ASSERT_TRUE(Left().Refresh());
  EXPECT_EQ(Texts(Left()), (List{"Eingang", "bauer", "Ausgang"}));
}

TEST_F(ArchiveListTest, TheUnsortedIndexStaysWithItsRow) {
  ASSERT_TRUE(Left().Refresh());
  EXPECT_EQ(Left().Name(0), "Ausgang");
  EXPECT_EQ(Left().UnsortedIndex(0), 1u);
  EXPECT_EQ(DescriptorOf(Left().Row(0)), "I1");
  EXPECT_EQ(Left().Key(0), "T2AI0");
}

TEST_F(ArchiveListTest, AShortCutIsMarkedInItsKey) {
  fake.AddLink(root, inbox);
  ASSERT_TRUE(Left().Refresh());
  EXPECT_EQ(Keys(Left()), (List{"T2AI0", "T2AI1", "T2SI2"}));
  EXPECT_EQ(Left().Icon(2).Key, "ALink");
}

TEST_F(ArchiveListTest, HiddenArchivesAndLinksThatLeadBackAreMarked) {
  outbox.IsHidden = true;
  fake.AddLink(inbox, root);
  ASSERT_TRUE(Left().Refresh());
  EXPECT_TRUE(Left().Archive(0)->IsHidden);
  EXPECT_FALSE(Left().Archive(1)->IsHidden);
  EXPECT_EQ(Left().Text(0, 0), "Ausgang") << "there is no mark in the name";
  ShowInbox();
  EXPECT_TRUE(Left().Archive(1)->IsCircular);
  fake.AddLink(outbox, inbox);
  ASSERT_TRUE(Left().ShowArchive(outbox.ID));
  EXPECT_FALSE(Left().Archive(1)->IsCircular) << "a link to a neighbour";
  options.DisplayCircularReferences = options.DisplayHiddenChar = false;
  ShowInbox();
  EXPECT_FALSE(Left().Archive(1)->IsCircular);
  ASSERT_TRUE(Left().GoToRoot());
  EXPECT_FALSE(Left().Archive(0)->IsHidden);
}

TEST_F(ArchiveListTest, TheListSaysHowARowIsMarked) {
  outbox.IsHidden = true;
  fake.AddLink(inbox, root);
  ASSERT_TRUE(Left().Refresh());
  EXPECT_EQ(Left().MarksOf(0), (RowMarks{.IsHidden = true, .IsCircular = false}));
  EXPECT_EQ(Left().MarksOf(1), RowMarks());
  EXPECT_EQ(Left().MarksOf(7), RowMarks());
  ASSERT_TRUE(Left().ShowArchive(inbox.ID));
  EXPECT_EQ(Left().MarksOf(1), (RowMarks{.IsHidden = false, .IsCircular = true}));
  EXPECT_EQ(MarksText(Left().MarksOf(1)), "zirkulare Referenz");
  EXPECT_EQ(MarksText({.IsHidden = true, .IsCircular = false}), "versteckt");
  EXPECT_EQ(MarksText({.IsHidden = true, .IsCircular = true}), "versteckt, zirkulare Referenz");
  EXPECT_EQ(MarksText({}), "");
}

TEST(ArchiveVisibility, WithTheOptionEveryArchiveIsListed) {
  EXPECT_TRUE(IsArchiveVisible(R"(\\S\D\B)", R"(\\S\D\A)", true));
}

TEST(ArchiveVisibility, WithoutItThoseBelowAndThoseOnTheWayDown) {
  const std::string current = R"(\\S\D\ARCHIVE\USER\A)";
  EXPECT_TRUE(IsArchiveVisible(R"(\\s\d\archive\user\a\in)", current, false));
  EXPECT_TRUE(IsArchiveVisible(R"(S\D:ARCHIVE\USER)", current, false)) << "whatever its form";
  EXPECT_TRUE(IsArchiveVisible(current + "\\", current, false));
  EXPECT_FALSE(IsArchiveVisible(R"(\\S\D\ARCHIVE\USER\B)", current, false));
  EXPECT_FALSE(IsArchiveVisible(R"(\\S\D\ARCHIVE\USER\AB)", current, false))
      << "a directory, not a beginning of a name";
}

// --- Messages. ---

TEST_F(ArchiveListTest, ArchivesKeepTheTopWhateverTheDirection) {
  fake.AddArchive(&inbox, "Zebra", R"(\\SERVER\DAVID\ARCHIVE\IN\Z)");
  AddMail(inbox, "Anton");
  AddMail(inbox, "Berta");
  EXPECT_EQ(ShowInbox(), (List{"[..]", "Zebra", "Anton", "Berta"}));
  Left().ClickHeader(0);
  EXPECT_EQ(Texts(Left()), (List{"[..]", "Zebra", "Berta", "Anton"}));
  EXPECT_EQ(Left().Key(2), "T3I2");
}

TEST_F(ArchiveListTest, ASubjectlessMessageShowsTheSenderWithNeitherTheThirdField) {
  auto& mail = fake.AddMail(inbox, "");
  mail.Fields[tag::RecipientAddress] = std::string("+49 40 1");
  EXPECT_EQ(OnlyMessage().Subject, "+49 40 1");
  mail.Fields[tag::SenderAddress] = std::string("carl@example.net");
  EXPECT_EQ(OnlyMessage().Subject, "carl@example.net");
  mail.Fields[tag::Subject] = std::string("Angebot");
  EXPECT_EQ(OnlyMessage().Subject, "Angebot");
  EXPECT_EQ(OnlyMessage().From, "carl@example.net");
}

TEST_F(ArchiveListTest, TheRecipientIsTheFirstOfTheListThenATextThenTheAddress) {
  auto& mail = AddMail(inbox, "x");
  mail.Fields[tag::RecipientAddress] = std::string("+49 40 1");
  EXPECT_EQ(OnlyMessage().To, "+49 40 1");
  mail.Fields[tag::RecipientText] = std::string("Verteiler");
  EXPECT_EQ(OnlyMessage().To, "Verteiler");
  mail.Fields[tag::Recipients] = List{"anna@example.org", "bert@example.org"};
  EXPECT_EQ(OnlyMessage().To, "anna@example.org");
}

TEST_F(ArchiveListTest, AttachmentsAreJoinedInTheOrderOfTheMessage) {
  auto& mail = AddMail(inbox, "x");
  mail.Attachments = {{"z.pdf", ""}, {"a.doc", ""}};
  EXPECT_EQ(OnlyMessage().Attachments, "z.pdf;a.doc");
  EXPECT_EQ(OnlyMessage().AttachmentCount, 2);
  mail.Attachments.clear();
  EXPECT_EQ(OnlyMessage().Attachments, "");
}

TEST_F(ArchiveListTest, ALinkShowsItsDestination) {
  auto& link = fake.AddEntry(inbox, store::item_type::Link, "Handbuch");
  link.Link = R"(Z:\handbuch.pdf)";
  EXPECT_EQ(OnlyMessage().Attachments, R"(Z:\handbuch.pdf)");
  EXPECT_EQ(OnlyMessage().AttachmentCount, 0);
}

TEST_F(ArchiveListTest, TheDescriptorHoldsTheDisplayType) {
  auto& mail = AddMail(inbox, "x");
  mail.Fields[tag::DisplayVariant] = std::int64_t{0x44};
  EXPECT_EQ(OnlyMessage().DisplayType, 0x42C);
  EXPECT_EQ(OnlyMessage().ItemType, store::item_type::EMail);
  EXPECT_EQ(DescriptorOf(Left().Row(1)), "T1068I1");
}

TEST_F(ArchiveListTest, WhatAUserHasHiddenIsNotListedUnlessTheSystemHidesItToo) {
  AddMail(inbox, "sichtbar");
  auto& hidden = AddMail(inbox, "ausgeblendet");
  hidden.Fields[tag::Flags] = std::int64_t{item_flag::UserInhibited};
  options.DvInhibitItems = false;
  EXPECT_EQ(ShowInbox(), (List{"[..]", "sichtbar"}));
  EXPECT_EQ(Left().List().MessageRows, 1);
  hidden.Fields[tag::Flags] = std::int64_t{item_flag::UserInhibited | item_flag::Inhibited};
  EXPECT_EQ(ShowInbox(), (List{"[..]", "ausgeblendet", "sichtbar"}));
  hidden.Fields[tag::Flags] = std::int64_t{item_flag::UserInhibited};
  options.DvInhibitItems = true;
  EXPECT_EQ(ShowInbox(), (List{"[..]", "ausgeblendet", "sichtbar"}));
}

TEST_F(ArchiveListTest, ColumnsShowDateSenderAttachmentsAndRecipient) {
  auto& mail = AddMail(inbox, "Angebot");
  mail.Fields[tag::StatusTime] = *DateTime::FromCivil({2026, 11, 2, 9, 5, 7});
  mail.Fields[tag::SenderAddress] = std::string("carl@example.net");
  mail.Fields[tag::RecipientText] = std::string("anna@example.org");
  mail.Attachments = {{"a.pdf", ""}};
  ShowInbox();
  List columns;
  for (std::size_t i = 0; i < 5; ++i) columns.push_back(Left().Text(1, i));
  EXPECT_EQ(columns,
            (List{"Angebot", "02.11.2026 09:05:07", "carl@example.net", "a.pdf", "anna@example.org"}));
  EXPECT_EQ(Left().Text(0, 1), "") << "the way up has no columns";
}

// --- Sorting. ---

TEST_F(ArchiveListTest, EveryColumnSorts) {
  const auto add = [&](const char* subject, int day, const char* from, const char* to, const char* file) {
    auto& mail = AddMail(inbox, subject);
    mail.Fields[tag::StatusTime] = *DateTime::FromCivil({2026, 1, day, 0, 0, 0});
    mail.Fields[tag::SenderAddress] = std::string(from);
    mail.Fields[tag::RecipientText] = std::string(to);
    mail.Attachments = {{file, ""}};
  };
  add("A", 3, "y@x", "f@x", "2.txt");
  add("b", 1, "Z@x", "E@x", "3.txt");
  add("C", 2, "x@x", "g@x", "1.txt");
  ShowInbox();
  const List expected[] = {
      {"A", "b", "C"}, {"b", "C", "A"}, {"C", "A", "b"}, {"C", "A", "b"}, {"b", "A", "C"}};
  Left().ClickHeader(1);  // so that the next click is a new column
  for (std::size_t column = 0; column < 5; ++column) {
    Left().ClickHeader(column == 1 ? 0 : 1);
    Left().ClickHeader(column);
    auto texts = Texts(Left());
    EXPECT_EQ(List(texts.begin() + 1, texts.end()), expected[column]) << column;
    EXPECT_EQ(Left().Marker(column), SortMarker::ArrowUp);
  }
}

TEST_F(ArchiveListTest, AMissingDateSortsFirst) {
  AddMail(inbox, "mit").Fields[tag::StatusTime] = *DateTime::FromCivil({1980, 1, 1, 0, 0, 0});
  AddMail(inbox, "ohne");
  options.LZEBSortingMode = sort_mode::Date;
  EXPECT_EQ(ShowInbox(), (List{"[..]", "ohne", "mit"}));
  EXPECT_EQ(Left().Text(1, 1), "") << "no date is shown as none";
}

TEST_F(ArchiveListTest, EqualKeysKeepTheirOrderBothWays) {
  // The rows need not stand in any order when their dates are equal; here they stay as they were, so that a
  // list sorted by sender and then by date stands by sender within a date.
  for (const auto* subject : {"c", "a", "b"}) {
    AddMail(inbox, subject).Fields[tag::StatusTime] = *DateTime::FromCivil({2026, 1, 1, 0, 0, 0});
  }
  options.LZEBSortingMode = sort_mode::Date;
  EXPECT_EQ(ShowInbox(), (List{"[..]", "c", "a", "b"}));
  Left().ClickHeader(1);
  EXPECT_EQ(Texts(Left()), (List{"[..]", "c", "a", "b"}));
}

// --- Rules. ---

TEST_F(ArchiveListTest, RulesAreListedWithTheirFirstConditionAndDestination) {
  store::DvRuleData rule;
  rule.Name = "Faxe";
  rule.Forward = true;
  rule.Destinations = {"/ZEB/Eingang", "/ZEB/Ausgang"};
  rule.Conditions = {{store::tag::ConditionObject, 0, "1", 0}, {store::tag::ConditionObject, 0, "2", 0}};
  inbox.Rules = {rule};
  rule = {};
  rule.Name = "Alles";
  rule.Enabled = false;
  rule.RouteAlways = true;
  inbox.Rules.push_back(rule);
  AddMail(inbox, "keine Regel");
  options.LZEBViewModeRouting = 1;
  EXPECT_EQ(ShowInbox(), (List{"[..]", "Alles", "Faxe"}));
  EXPECT_EQ(Keys(Left()), (List{"T1I0", "T4I1", "T4I2"}));
  EXPECT_EQ(Left().List().MessageRows, 2);
  EXPECT_EQ(Left().Text(2, 1), "") << "an icon stands there";
  EXPECT_EQ(Left().Text(2, 2), "Fax");
  EXPECT_EQ(Left().Text(2, 3), "/ZEB/Eingang");
  EXPECT_EQ(Left().Text(1, 2), "");
  EXPECT_EQ(Left().Text(1, 3), "");
  EXPECT_EQ(Left().ColumnIcon(2, 1), "IRoutEn");
  EXPECT_EQ(Left().ColumnIcon(1, 1), "IRoutDi");
  EXPECT_EQ(Left().ColumnIcon(1, 2), "");
  EXPECT_EQ(Left().Tag(2), "R0");
  EXPECT_EQ(Left().StatusText(0), "2 Items");
}

TEST_F(ArchiveListTest, RulesSortByTheirColumns) {
  const auto add = [&](const char* name, const char* value, const char* target, bool enabled) {
    store::DvRuleData rule;
    rule.Name = name;
    rule.Enabled = enabled;
    rule.Destinations = {target};
    rule.Conditions = {{store::tag::ConditionObject, 0, value, 0}};
    inbox.Rules.push_back(rule);
  };
  add("A", "2", "/z", true);
  add("b", "1", "/X", false);
  add("C", "3", "/y", true);
  options.LZEBViewModeRouting = 1;
  const List expected[] = {{"A", "b", "C"}, {"b", "A", "C"}, {"A", "b", "C"}, {"b", "C", "A"}};
  const int modes[] = {sort_mode::Name, sort_mode::Enabled, sort_mode::Condition, sort_mode::Destination};
  for (std::size_t column = 0; column < 4; ++column) {
    options.LZEBRoutingSortingMode = modes[column];
    auto texts = ShowInbox();
    EXPECT_EQ(List(texts.begin() + 1, texts.end()), expected[column]) << column;
    EXPECT_EQ(Left().Marker(column), SortMarker::ArrowUp);
  }
  options.LZEBRoutingSortingMode = sort_mode::Date;  // one of the messages' modes
  EXPECT_EQ(ShowInbox(), (List{"[..]", "A", "b", "C"}));
}

TEST_F(ArchiveListTest, NoHidingInRuleView) {
  inbox.Rules.resize(3);
  AddMails(inbox, 3);
  options.SizeCheck = 2;
  options.LZEBViewModeRouting = 1;
  EXPECT_EQ(ShowInbox().size(), 4u);
  EXPECT_FALSE(Left().HidingStruck());
}

TEST(RoutingModes, TheLastThatIsSetWins) {
  store::DvRuleData rule;
  EXPECT_EQ(RoutingMode(rule), 0);
  rule.Forward = true;
  EXPECT_EQ(RoutingMode(rule), 1);
  rule.AutoReply = true;
  EXPECT_EQ(RoutingMode(rule), 2);
  rule.NewMessage = true;
  EXPECT_EQ(RoutingMode(rule), 3);
  rule.Miscellaneous = true;
  EXPECT_EQ(RoutingMode(rule), 4);
  rule.RouteAlways = true;
  EXPECT_EQ(RoutingMode(rule), 6);
  rule.Forward = rule.AutoReply = rule.NewMessage = rule.Miscellaneous = false;
  EXPECT_EQ(RoutingMode(rule), 6);
}

TEST(RoutingModes, ConditionsOfItemTypesAreShownAsTheirNames) {
  EXPECT_EQ(ConditionText("1"), "Fax");
  EXPECT_EQ(ConditionText("2"), "EMail");
  EXPECT_EQ(ConditionText("3"), "TMail");
  EXPECT_EQ(ConditionText("7"), "SMS");
  EXPECT_EQ(ConditionText("4"), "VoiceMail");
  for (const auto* other : {"5", "", "12", "Angebot"}) EXPECT_EQ(ConditionText(other), other);
}

}  // namespace
}  // namespace velmora::panes
