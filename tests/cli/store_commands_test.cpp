// The program as a user starts it, in a home directory of its own.

#include <gtest/gtest.h>

#include <filesystem>

#include "base/text.h"
#include "platform/host.h"
#include "store/archive_record.h"
#include "store/embedded/site_database.h"
#include "store/embedded/store_setup.h"
#include "store_commands_fixture.h"

namespace velmora::cli {
namespace {

constexpr const char* Message =
    "From: a@example.net\nTo: b@example.net\nSubject: =?utf-8?Q?Gr=C3=BC=C3=9Fe_=22x=22?=\n"
    "Date: Mon, 2 Nov 2026 10:00:00 +0000\nMIME-Version: 1.0\n"
    "Content-Type: multipart/mixed; boundary=xx\n\n--xx\nContent-Type: text/plain\n\nHallo\n"
    "--xx\nContent-Type: text/plain; name=\"a\\\"b.txt\"\nContent-Disposition: "
    "attachment\n\nInhalt\n--xx--\n";

class StoreCommandsTest : public StoreCommandsFixture {
 protected:
  std::string WriteMessage(const std::string& name) { return WriteFile(name, Message); }
};

TEST_F(StoreCommandsTest, InitDeliverAndListWorkTogether) {
  Init();
  const auto delivered = Run({"deliver", "--archive", "Gemeinsam/Vertrieb/Süd", WriteMessage("a.eml")});
  EXPECT_EQ(delivered.Status, 0);
  EXPECT_EQ(delivered.Output, "1 Nachricht(en) zugestellt, 0 Fehler\n");
  const auto listed = Run({"list", "--archive", "/archive/gemeinsam/vertrieb/süd", "--json"});
  EXPECT_EQ(listed.Status, 0);
  EXPECT_NE(listed.Output.find(
                "\"key\": 1, \"type\": 2, \"subject\": \"Grüße \\\"x\\\"\", \"from\": \"a@example.net\", "
                "\"to\": \"b@example.net\", \"date\": \"2026-11-02T10:00:00\""),
            std::string::npos)
      << listed.Output;
  EXPECT_NE(listed.Output.find("\"attachments\": [{\"name\": "), std::string::npos) << listed.Output;
  const auto tree = Run({"list"});
  EXPECT_NE(tree.Output.find("1  /Archive/Gemeinsam/Vertrieb/Süd\n"), std::string::npos) << tree.Output;
}

TEST_F(StoreCommandsTest, AListThatDoesNotArriveIsAnError) {
  Init();
  ASSERT_EQ(Run({"deliver", "--archive", "Gemeinsam/Viele", WriteMessage("a.eml")}).Status, 0);
  // More than the stream holds back, so that it is lost before the end.
  std::string mails;
  for (int i = 0; i < 100; ++i)
    mails += "From a@b\nFrom: a@b.de\nSubject: " + std::string(900, 'x') + "\n\nText\n\n";
  ASSERT_EQ(Run({"deliver", "--archive", "Gemeinsam/Viele", WriteFile("a.mbox", mails)}).Status, 0);
  for (const std::string arguments :
       {"", "--json", "--archive Gemeinsam/Viele", "--archive Gemeinsam/Viele --json"}) {
    const auto listed = RunShell("velmoractl store list " + arguments + " 2>&1 > /dev/full");
    EXPECT_EQ(listed.Status, 1) << arguments;
    EXPECT_EQ(listed.Output, "velmoractl: Die Liste konnte nicht vollständig ausgegeben werden\n")
        << arguments;
  }
}

TEST_F(StoreCommandsTest, AReaderThatGoesAwayEndsNoWork) {
  Init();
  const std::string mail = WriteMessage("a.eml");
  const auto delivered =
      RunShell("{ sleep 0.3; velmoractl store deliver --archive Gemeinsam/Ziel '" + mail + "'; echo $? > '" +
               directory_.HostPath("status") + "'; } | true; cat '" + directory_.HostPath("status") + "'");
  EXPECT_EQ(delivered.Output, "0\n");
  EXPECT_NE(Run({"list"}).Output.find("1  /Archive/Gemeinsam/Ziel\n"), std::string::npos);
}

TEST_F(StoreCommandsTest, AListOfACircularTreeEnds) {
  Init();
  ASSERT_EQ(Run({"deliver", "--archive", "Gemeinsam/Kreis", WriteMessage("a.eml")}).Status, 0);
  const auto record = store::DirRecord::Make("\\\\BUERO\\DAVID\\ARCHIVE\\common", "Oben");
  ASSERT_TRUE(record);
  directory_.WriteHostFile("store/archive/common/KREIS/archive.dir", std::string(record->Bytes()));
  const auto tree = Run({"list"});
  EXPECT_EQ(tree.Status, 0);
  const std::string_view row = "/Oben\n";
  const auto first = tree.Output.find(row);
  ASSERT_NE(first, std::string::npos) << tree.Output;
  EXPECT_EQ(tree.Output.find(row, first + 1), std::string::npos) << "shown, but not entered again";
}

TEST_F(StoreCommandsTest, ADamagedLogCostsNoDelivery) {
  Init();
  directory_.WriteHostFile("store/code/david.rec", std::string(5000, 'x'));
  const auto delivered = Run({"deliver", "--archive", "Gemeinsam", WriteMessage("a.eml")});
  EXPECT_EQ(delivered.Status, 0);
  EXPECT_NE(delivered.Output.find("Warnung: Das Protokoll ist nicht zu schreiben"), std::string::npos);
  EXPECT_TRUE(delivered.Output.ends_with("1 Nachricht(en) zugestellt, 0 Fehler\n")) << delivered.Output;
  EXPECT_EQ(directory_.ReadHostFile("store/code/david.rec"), std::string(5000, 'x'));
}

TEST_F(StoreCommandsTest, JsonIsReadByAnotherProgram) {
  Init();
  Run({"deliver", "--archive", "Gemeinsam/X", WriteMessage("a.eml"), WriteMessage("b.eml")});
  const std::string script = directory_.HostPath("list.sh");
  directory_.WriteHostFile("list.sh", "set -e\nHOME='" + directory_.HostPath() +
                                          "' '" VELMORACTL
                                          "' store list \"$@\" --json | python3 -c 'import json, sys; "
                                          "print(len(json.load(sys.stdin)))'\n");
  const auto entries = platform::RunProcess({"/bin/sh", script, "--archive", "Gemeinsam/X"}, "");
  ASSERT_TRUE(entries);
  EXPECT_EQ(entries->Output, "2\n");
  const auto empty = platform::RunProcess({"/bin/sh", script, "--archive", "Gemeinsam/Web"}, "");
  EXPECT_EQ(empty->Output, "0\n");
  const auto tree = platform::RunProcess({"/bin/sh", script}, "");
  EXPECT_GT(std::stoi(tree->Output), 40);
}

TEST_F(StoreCommandsTest, DeliverCountsErrorsAndGoesOn) {
  Init();
  directory_.WriteHostFile("box.mbox", std::string("From a\n") + Message + "\nFrom b\n" + Message);
  const auto delivered = Run({"deliver", "--archive", "Gemeinsam/X", directory_.HostPath("missing.eml"),
                              directory_.HostPath("box.mbox"), WriteMessage("c.eml")});
  EXPECT_EQ(delivered.Status, 1);
  EXPECT_NE(delivered.Output.find("missing.eml: "), std::string::npos) << delivered.Output;
  EXPECT_NE(delivered.Output.find("3 Nachricht(en) zugestellt, 1 Fehler\n"), std::string::npos)
      << delivered.Output;
}

TEST_F(StoreCommandsTest, OptionGoesBeforeEnvironmentAndThatBeforeTheRegisteredServer) {
  const std::string other = directory_.HostPath("other"), third = directory_.HostPath("third");
  ASSERT_EQ(Run({"init", other, "--server", "ZWEI"}).Status, 0);
  ASSERT_EQ(Run({"init", third, "--server", "DREI"}).Status, 0);
  Init();
  Run({"deliver", "--archive", "Gemeinsam/Standard", WriteMessage("a.eml")});
  Run({"deliver", "--archive", "Gemeinsam/Umgebung", WriteMessage("a.eml")}, other);
  Run({"deliver", "--store", third, "--archive", "Gemeinsam/Option", WriteMessage("a.eml")}, other);
  EXPECT_NE(Run({"list"}).Output.find("/Standard"), std::string::npos);
  EXPECT_NE(Run({"list", "--store", other}).Output.find("/Umgebung"), std::string::npos);
  EXPECT_NE(Run({"list"}, third).Output.find("/Option"), std::string::npos);
  EXPECT_EQ(Run({"list"}).Output.find("/Option"), std::string::npos);
}

TEST_F(StoreCommandsTest, AFirstStartMakesAStore) {
  const auto delivered = Run({"deliver", "--archive", "Gemeinsam/X", WriteMessage("a.eml")});
  EXPECT_EQ(delivered.Status, 0) << delivered.Output;
  EXPECT_TRUE(std::filesystem::exists(directory_.HostPath(".local/share/velmora/david/code/site.db")));
}

TEST_F(StoreCommandsTest, ExitStatusTellsWrongUsageFromNoSignOn) {
  EXPECT_EQ(Run({}).Status, 2);
  EXPECT_EQ(Run({"nonsense"}).Status, 2);
  EXPECT_EQ(Run({"deliver", "--archive", "X"}).Status, 2);
  EXPECT_EQ(Run({"init", Store()}).Status, 2);
  EXPECT_EQ(Run({"init", Store(), "--server", "A B"}).Status, 2);
  EXPECT_EQ(Run({"list", "--store", directory_.HostPath("missing")}).Status, 3);
  EXPECT_EQ(Run({"--help"}).Status, 0);
  EXPECT_FALSE(std::filesystem::exists(Store()));
}

TEST_F(StoreCommandsTest, AUserWithoutRightsDoesNotSignOn) {
  auto site = [&] {
    Init();
    return store::embedded::SiteDatabase::Open(store::embedded::SiteDatabasePath(Store()));
  }();
  ASSERT_TRUE(site);
  const std::string path = store::embedded::SiteDatabasePath(Store());
  const auto changed = platform::RunProcess({"/usr/bin/env", "python3", "-c",
                                             "import sqlite3, sys; d = sqlite3.connect(sys.argv[1]); "
                                             "d.execute('UPDATE users SET rights = 0'); d.commit()",
                                             path},
                                            "");
  ASSERT_TRUE(changed && changed->ExitStatus == 0) << changed->Output;
  const auto listed = Run({"list"});
  EXPECT_EQ(listed.Status, 3);
  EXPECT_TRUE(ContainsFold(listed.Output, "keine Rechte")) << listed.Output;
}

TEST_F(StoreCommandsTest, AddUserMakesTheTreeOnce) {
  Init();
  const auto added = Run({"add-user", "Bert Berg", "--login", "bert", "--mail", "bert@example.org"});
  EXPECT_EQ(added.Status, 0) << added.Output;
  EXPECT_EQ(added.Output, "Benutzer Bert Berg eingetragen, Verzeichnis 00000002\n");
  EXPECT_EQ(Run({"add-user", "Zweiter", "--login", "bert"}).Status, 1);
  EXPECT_EQ(Run({"add-user", "", "--login", "x"}).Status, 2);
  EXPECT_EQ(Run({"add-user", "X", "--login", "x", "--admin", "--no-rights"}).Status, 2);
  EXPECT_NE(Run({"list"}).Output.find("/Archive/Benutzer/Bert Berg/Eingang"), std::string::npos);
}

TEST_F(StoreCommandsTest, CheckTellsOfDamageByItsExitStatus) {
  Init();
  Run({"deliver", "--archive", "Gemeinsam/X", WriteMessage("a.eml")});
  const auto sound = Run({"check"});
  EXPECT_EQ(sound.Status, 0) << sound.Output;
  EXPECT_TRUE(sound.Output.ends_with("geprüft, 0 Fehler\n")) << sound.Output;
  directory_.WriteHostFile("store/archive/common/X/archive.dat", "damaged");
  const auto damaged = Run({"check"});
  EXPECT_EQ(damaged.Status, 1) << damaged.Output;
}

TEST_F(StoreCommandsTest, SiteShowsAndChangesValues) {
  Init();
  EXPECT_EQ(Run({"site", "company=Muster = Söhne", "sendmail=/usr/sbin/sendmail"}).Status, 0);
  const auto shown = Run({"site"});
  EXPECT_NE(shown.Output.find("company=Muster = Söhne\n"), std::string::npos) << shown.Output;
  EXPECT_NE(shown.Output.find("sendmail=/usr/sbin/sendmail\n"), std::string::npos) << shown.Output;
  EXPECT_EQ(Run({"site", "server=X"}).Status, 2);
  EXPECT_EQ(Run({"site", "company"}).Status, 2);
}

TEST_F(StoreCommandsTest, RelativePathsAreThoseOfTheWorkingDirectory) {
  Init();
  WriteMessage("here.eml");
  const auto delivered = platform::RunProcess(
      {"/bin/sh", "-c", "cd \"$0\" && HOME=$0 \"$1\" store deliver --archive Gemeinsam/X here.eml",
       directory_.HostPath(), VELMORACTL},
      "");
  ASSERT_TRUE(delivered);
  EXPECT_EQ(delivered->ExitStatus, 0) << delivered->Output;
}

}  // namespace
}  // namespace velmora::cli
