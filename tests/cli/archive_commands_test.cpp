// `velmoractl copy`, `move`, `delete` and `rules`: links that are named, questions, rules that are named.
#include <algorithm>

#include "platform/host_file_system.h"
#include "store/embedded/archive_tree.h"
#include "store/embedded/rule_file.h"
#include "store/embedded/store_layout.h"
#include "store_commands_fixture.h"

namespace velmora::cli {
namespace {

namespace embedded = store::embedded;

class ArchiveCommandsTest : public StoreCommandsFixture {
 protected:
  // /Archive/Gemeinsam/Inhalt with two mails, Ziel with one, and in Gemeinsam the link "Verweis" to Inhalt.
  ArchiveCommandsTest() {
    Init();
    const std::string mail = WriteFile("a.eml", "Subject: Eins\r\n\r\nText\r\n");
    EXPECT_EQ(Run({"deliver", "--archive", "Gemeinsam/Inhalt", mail, mail}, Store()).Status, 0);
    EXPECT_EQ(Run({"deliver", "--archive", "Gemeinsam/Ziel", mail}, Store()).Status, 0);
    embedded::ArchiveTree tree(*files_, layout_.ArchiveRoot());
    EXPECT_TRUE(tree.AddLink(Directory("Gemeinsam"), "Verweis", Directory("Gemeinsam/Inhalt")));
  }
  Outcome Ctl(std::vector<std::string> arguments) {
    std::vector<std::string> command{
        "/usr/bin/env", "-i", "TZ=UTC", "HOME=" + directory_.HostPath(), "VELMORA_STORE=" + Store(),
        VELMORACTL};
    command.insert(command.end(), arguments.begin(), arguments.end());
    const auto result = platform::RunProcess(command, "");
    EXPECT_TRUE(result) << result.error().Text;
    return result ? Outcome{result->ExitStatus, result->Output} : Outcome{-1, ""};
  }
  // The physical directory of an archive, "" for none.
  std::string Directory(const std::string& path) {
    embedded::ArchiveTree tree(*files_, layout_.ArchiveRoot());
    std::string directory = layout_.ArchiveRoot();
    for (std::size_t start = 0; start <= path.size();) {
      const std::size_t end = std::min(path.find('/', start), path.size());
      const auto children = tree.Children(directory);
      directory.clear();
      for (const auto& child : *children)
        if (directory.empty() && child.Name == path.substr(start, end - start)) directory = child.Directory;
      if (directory.empty()) return "";
      start = end + 1;
    }
    return directory;
  }
  // The names in an archive's list, links with ">" in front.
  std::vector<std::string> Names(const std::string& path) {
    embedded::ArchiveTree tree(*files_, layout_.ArchiveRoot());
    std::vector<std::string> names;
    const auto children = tree.Children(Directory(path));
    for (const auto& child : *children) names.push_back((child.IsLink ? ">" : "") + child.Name);
    return names;
  }
  std::string Messages(const std::string& path) { return Json(path, "len(e)"); }
  bool IsListed(const std::string& path, const std::string& name) {
    const auto names = Names(path);
    return std::find(names.begin(), names.end(), name) != names.end();
  }
  void PutRule(const std::string& path, const std::string& name) {
    store::DvRuleData rule;
    rule.Name = name;
    rule.Forward = true;
    ASSERT_TRUE(embedded::RuleFile(*files_, Directory(path)).Write(0, rule));
  }
  int RuleCount(const std::string& path) {
    return embedded::RuleFile(*files_, Directory(path)).Count().value_or(-1);
  }

  embedded::StoreLayout layout_{"BUERO"};
  std::unique_ptr<platform::FileSystem> files_ =
      platform::MakeHostFileSystem({{R"(\\BUERO\DAVID)", Store()}});
};

TEST_F(ArchiveCommandsTest, ALinkThatIsNamedIsCopiedAsALink) {
  ASSERT_EQ(Ctl({"copy", "/Archive/Gemeinsam/Verweis", "/Archive/Gemeinsam/Ziel"}).Status, 0);
  EXPECT_EQ(Names("Gemeinsam/Ziel"), std::vector<std::string>{">Verweis"});
}

TEST_F(ArchiveCommandsTest, WhatALinkLeadsToIsCopiedWhenLinksAreFollowed) {
  ASSERT_EQ(Ctl({"copy", "--follow-links", "/Archive/Gemeinsam/Verweis", "/Archive/Gemeinsam/Ziel"}).Status,
            0);
  EXPECT_EQ(Names("Gemeinsam/Ziel"), std::vector<std::string>{"Verweis"});
  EXPECT_EQ(Messages("Gemeinsam/Ziel/Verweis"), "2");
}

TEST_F(ArchiveCommandsTest, OfALinkThatIsDeletedTheArchiveStays) {
  ASSERT_EQ(Ctl({"delete", "--yes", "--delete-archives", "/Archive/Gemeinsam/Verweis"}).Status, 0);
  EXPECT_FALSE(IsListed("Gemeinsam", ">Verweis"));
  EXPECT_TRUE(IsListed("Gemeinsam", "Inhalt"));
  EXPECT_EQ(Messages("Gemeinsam/Inhalt"), "2");
}

TEST_F(ArchiveCommandsTest, MessagesThatGoIntoALinkGoWhereItLeads) {
  ASSERT_EQ(Ctl({"copy", "--messages", "/Archive/Gemeinsam/Ziel", "/Archive/Gemeinsam/Verweis"}).Status, 0);
  EXPECT_EQ(Messages("Gemeinsam/Inhalt"), "3");
}

TEST_F(ArchiveCommandsTest, TheMessagesBehindALinkAreMeantOnlyWhenLinksAreFollowed) {
  for (const std::vector<std::string>& which : {std::vector<std::string>{"--messages"}, {"--key", "1"}}) {
    std::vector<std::string> arguments{"delete", "--yes", "/Archive/Gemeinsam/Verweis"};
    arguments.insert(arguments.end(), which.begin(), which.end());
    const auto refused = Ctl(arguments);
    EXPECT_EQ(refused.Status, 1);
    EXPECT_NE(refused.Output.find("Das ist eine Verknüpfung"), std::string::npos) << refused.Output;
  }
  EXPECT_EQ(Messages("Gemeinsam/Inhalt"), "2");
  EXPECT_EQ(Ctl({"delete", "--yes", "--follow-links", "--key", "1", "/Archive/Gemeinsam/Verweis"}).Status, 0);
  EXPECT_EQ(Messages("Gemeinsam/Inhalt"), "1");
  EXPECT_TRUE(IsListed("Gemeinsam", ">Verweis"));
}

TEST_F(ArchiveCommandsTest, LinksAndArchivesGoTogether) {
  ASSERT_EQ(
      Ctl({"copy", "/Archive/Gemeinsam/Verweis", "/Archive/Gemeinsam/Inhalt", "/Archive/Gemeinsam/Ziel"})
          .Status,
      0);
  EXPECT_EQ(Names("Gemeinsam/Ziel"), (std::vector<std::string>{">Verweis", "Inhalt"}));
}

TEST_F(ArchiveCommandsTest, WithoutATerminalNothingIsDeletedUnlessYesIsSaid) {
  const auto refused = Ctl({"delete", "--delete-archives", "/Archive/Gemeinsam/Inhalt"});
  EXPECT_EQ(refused.Status, 2);
  EXPECT_NE(refused.Output.find("--yes angeben"), std::string::npos) << refused.Output;
  EXPECT_EQ(Messages("Gemeinsam/Inhalt"), "2");
  EXPECT_EQ(Ctl({"delete", "--yes", "--delete-archives", "/Archive/Gemeinsam/Inhalt"}).Status, 0);
  EXPECT_EQ(Directory("Gemeinsam/Inhalt"), "");
}

TEST_F(ArchiveCommandsTest, AWrongKeyIsNamed) {
  const auto wrong = Ctl({"copy", "--key", "x", "Gemeinsam/Inhalt", "Gemeinsam/Ziel"});
  EXPECT_EQ(wrong.Status, 2);
  EXPECT_NE(wrong.Output.find("Ungültiger Wert: --key"), std::string::npos) << wrong.Output;
}

TEST_F(ArchiveCommandsTest, ARuleIsNamedByItsNameOrItsNumber) {
  for (const char* name : {"Erste", "3", "Dritte"}) PutRule("Gemeinsam/Inhalt", name);
  ASSERT_EQ(Ctl({"rules", "delete", "--yes", "--rule", "3", "Gemeinsam/Inhalt"}).Status, 0);
  EXPECT_EQ(Ctl({"rules", "list", "Gemeinsam/Inhalt"}).Output, "   1  Erste\n   2  Dritte\n")
      << "a name comes before a number";
  ASSERT_EQ(Ctl({"rules", "delete", "--yes", "--rule", "2", "Gemeinsam/Inhalt"}).Status, 0);
  EXPECT_EQ(Ctl({"rules", "list", "Gemeinsam/Inhalt"}).Output, "   1  Erste\n");
  EXPECT_EQ(Ctl({"rules", "delete", "--yes", "--rule", "2", "Gemeinsam/Inhalt"}).Status, 1);
  EXPECT_EQ(
      Ctl({"rules", "delete", "--yes", "--rule", "Erste", "--rule", "Vierte", "Gemeinsam/Inhalt"}).Status, 1);
  EXPECT_EQ(RuleCount("Gemeinsam/Inhalt"), 1) << "one that is not there stops the command";
}

}  // namespace
}  // namespace velmora::cli
