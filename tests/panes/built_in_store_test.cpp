// The panes over the built-in store.
#include <gtest/gtest.h>

#include <algorithm>

#include "base/paths.h"
#include "base/text.h"
#include "panes/two_panes.h"
#include "store/embedded/store_fixture.h"
#include "store/filter.h"
#include "store/link_item.h"
#include "store/vocabulary.h"
#include "support/manual_clock.h"
#include "support/scripted_front_end.h"

namespace velmora::panes {
namespace {

using List = std::vector<std::string>;

class QuietWatcher final : public FillWatcher {
 public:
  bool Breathe() override { return false; }
};

class BuiltInStoreTest : public store::embedded::StoreFixture {
 protected:
  BuiltInStoreTest() {
    session.Account = SignOn("anna");
    session.DefaultArchive = Archive(*session.Account, "/Archive");
    session.LeftArchive = session.RightArchive = session.DefaultArchive;
    panes.SignedOn();
    box = Create(*session.DefaultArchive, "Ablage");
  }

  store::EntryKey Deliver(std::string_view message) {
    const auto path = JoinPath(logs, "mail.eml");
    EXPECT_TRUE(fileSystem_->WriteFile(path, message));
    auto item = session.Account->DVMailItemFromEml(path, *box);
    EXPECT_TRUE(item.has_value());
    EXPECT_TRUE(session.Account->Commit());
    return item ? (*item)->Key() : 0;
  }
  static List Texts(const Pane& pane, std::size_t column = 0) {
    List texts;
    for (std::size_t row = 0; row < pane.RowCount(); ++row) texts.push_back(pane.Text(row, column));
    return texts;
  }
  ArchivePane& ShowBox() {
    EXPECT_TRUE(panes.Left().ShowArchive(box->ID()));
    return panes.Left();
  }

  std::string logs = fileSystem_->FromHostPath(location_.HostDirectory);
  velmora::test::ManualClock clock;
  velmora::test::ScriptedFrontEnd frontEnd;
  run::Run run{*fileSystem_, clock, frontEnd.Set(), logs};
  settings::Options options;
  store::Session session;
  std::string currentPath = logs + "\\";
  QuietWatcher watcher;
  TwoPanes panes{PaneContext{session, options, run, currentPath, watcher}};
  std::shared_ptr<store::DvArchive> box;
};

TEST_F(BuiltInStoreTest, AMailIsListedWithWhatItsFieldsSay) {
  Deliver(
      "From: Carl <carl@example.net>\r\nTo: Anna <anna@example.org>, bert@example.org\r\nSubject: Angebot\r\n"
      "Date: Mon, 2 Nov 2026 10:00:00 +0100\r\nMIME-Version: 1.0\r\n"
      "Content-Type: multipart/mixed; boundary=b\r\n\r\n--b\r\nContent-Type: text/plain\r\n\r\nText\r\n"
      "--b\r\nContent-Disposition: attachment; filename=eins.pdf\r\n\r\nx\r\n"
      "--b\r\nContent-Disposition: attachment; filename=zwei.doc\r\n\r\ny\r\n--b--\r\n");
  auto& pane = ShowBox();
  ASSERT_EQ(Texts(pane), (List{"[..]", "Angebot"}));
  EXPECT_EQ(pane.Text(1, 2), "carl@example.net");
  EXPECT_EQ(pane.Text(1, 3), "eins.pdf;zwei.doc");
  EXPECT_EQ(pane.Text(1, 4), "anna@example.org");
  EXPECT_EQ(pane.Message(1)->DisplayType, store::item_type::EMail);
  EXPECT_EQ(pane.Icon(1).Key, "IMailAtt");
  EXPECT_EQ(pane.PathText(), "/Archive/Ablage");
}

TEST_F(BuiltInStoreTest, TheTagOfARowLeadsToItsEntry) {
  const auto key = Deliver("Subject: x\r\n\r\n");
  auto& pane = ShowBox();
  EXPECT_EQ(pane.Tag(1), "R" + std::to_string(key));
  EXPECT_TRUE(pane.CurrentArchive()->GetEntry(pane.Message(1)->RecNo));
  EXPECT_TRUE(pane.ShowMessage(key));
  EXPECT_EQ(pane.CursorRow(), 1u);
  EXPECT_FALSE(pane.ShowMessage(key + 1));
}

TEST_F(BuiltInStoreTest, ALinkShowsWhereItLeads) {
  auto link = box->CreateItem(store::item_type::Link);
  ASSERT_TRUE(link);
  ASSERT_TRUE((*link)->AsLink()->Set(store::LinkProperty::Name, std::string("Handbuch")));
  ASSERT_TRUE((*link)->AsLink()->Set(store::LinkProperty::Link, std::string(R"(Z:\handbuch.pdf)")));
  ASSERT_TRUE((*link)->Item().Update());
  auto& pane = ShowBox();
  ASSERT_EQ(Texts(pane), (List{"[..]", "Handbuch"}));
  EXPECT_EQ(pane.Text(1, 3), R"(Z:\handbuch.pdf)");
  EXPECT_EQ(pane.Icon(1).Key, "ILink");
}

TEST_F(BuiltInStoreTest, TheFilterWorksInTheStore) {
  Deliver("Subject: Mail\r\n\r\n");
  ASSERT_TRUE(box->CreateEntry(store::item_type::Fax));
  options.DvItemFilter = static_cast<std::int32_t>(store::filter_preset::OnlyEMails);
  EXPECT_EQ(Texts(ShowBox()), (List{"[..]", "Mail"}));
  EXPECT_EQ(ShowBox().StatusText(0), "1 Item");
}

TEST_F(BuiltInStoreTest, ArchivesAndLinksLeadThroughTheTree) {
  auto target = Create(*session.DefaultArchive, "Ziel");
  auto inner = Create(*target, "Innen");
  store::embedded::ArchiveTree tree(*fileSystem_, layout_.ArchiveRoot());
  ASSERT_TRUE(tree.AddLink(box->ID(), "Verweis", target->ID()));
  auto& pane = ShowBox();
  ASSERT_EQ(Texts(pane), (List{"[..]", "Verweis"}));
  EXPECT_EQ(pane.Key(1), "T2SI1");
  EXPECT_EQ(pane.Icon(1).Key, "ALink");
  ASSERT_EQ(pane.Enter(1), EnterResult::Entered);
  EXPECT_EQ(pane.PathText(), "/Archive/Ziel");
  ASSERT_EQ(pane.Enter(1), EnterResult::Entered);
  EXPECT_EQ(pane.PathText(), "/Archive/Ziel/Innen");
  ASSERT_TRUE(pane.GoUp());
  EXPECT_EQ(pane.PathText(), "/Archive/Ziel");
  ASSERT_TRUE(pane.GoUp());
  EXPECT_EQ(pane.PathText(), "/Archive");
  EXPECT_FALSE(pane.GoUp());
  EXPECT_EQ(pane.Name(pane.CursorRow()), "Ziel");
}

TEST_F(BuiltInStoreTest, TheSpecialArchivesHaveTheirIcons) {
  ASSERT_TRUE(panes.Left().Refresh());
  List icons;
  for (std::size_t row = 0; row < panes.Left().RowCount(); ++row) icons.push_back(panes.Left().Icon(row).Key);
  const auto has = [&](std::string_view key) { return std::ranges::find(icons, key) != icons.end(); };
  EXPECT_TRUE(has("AUserRoot"));
  EXPECT_TRUE(has("ACommon"));
}

TEST_F(BuiltInStoreTest, FilePaneAndArchivePaneFindEachOther) {
  ShowBox();
  ASSERT_TRUE(panes.ArcDirSync());
  EXPECT_EQ(currentPath, box->ID() + "\\");
  ASSERT_TRUE(panes.Left().GoToRoot());
  ASSERT_TRUE(panes.DirArcSync());
  EXPECT_EQ(panes.Left().PathText(), "/Archive/Ablage");
}

TEST_F(BuiltInStoreTest, AnArchiveDeletedMeanwhileKeepsItsList) {
  ShowBox();
  ASSERT_TRUE(Archive(box->ID())->Delete());
  EXPECT_FALSE(panes.Left().Refresh());
  EXPECT_EQ(Texts(panes.Left()), List{"[..]"});
  EXPECT_EQ(frontEnd.Boxes.size(), 1u);
}

TEST_F(BuiltInStoreTest, AUserDoesNotEnterTheArchivesOfOthers) {
  session.Account = SignOn("bert");
  session.DefaultArchive = *session.Account->GetSpecialArchive(store::special::OwnRoot);
  panes.SignedOn();
  ASSERT_TRUE(panes.Left().GoToRoot());
  EXPECT_NE(panes.Left().EntryType(0), entry_type::ControlEntry);
  const auto before = Texts(panes.Left());
  EXPECT_FALSE(panes.Left().ShowArchive("/Archive"));
  EXPECT_EQ(Texts(panes.Left()), before);
}

}  // namespace
}  // namespace velmora::panes
