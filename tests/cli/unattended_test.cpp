// Unattended runs of both programs as a scheduler starts them: exit status and log.

#include <gtest/gtest.h>

#include <filesystem>

#include "base/code_page.h"
#include "platform/host.h"
#include "support/temp_dir.h"

namespace velmora::cli {
namespace {

class UnattendedTest : public testing::Test {
 protected:
  struct Outcome {
    int Status;
    std::string Output;
    std::string Log;  // without its heading
  };

  Outcome Run(const std::vector<std::string>& programAndArguments) {
    std::vector<std::string> command{"/usr/bin/env",
                                     "-i",
                                     "TZ=UTC",
                                     "HOME=" + directory_.HostPath(),
                                     "VELMORA_STORE=" + directory_.HostPath("store"),
                                     "VELMORA_STATE_DIR=" + directory_.HostPath("state"),
                                     "VELMORA_TEMP_DIR=" + directory_.HostPath("temp")};
    command.insert(command.end(), programAndArguments.begin(), programAndArguments.end());
    const auto result = platform::RunProcess(command, "");
    EXPECT_TRUE(result) << result.error().Text;
    return result ? Outcome{result->ExitStatus, result->Output, Log()} : Outcome{-1, "", ""};
  }
  // `velmora -b:` with a control file of these lines.
  Outcome RunFile(const std::string& lines) {
    directory_.WriteHostFile("job.txt", lines);
    return Run({VELMORA, "-b:" + directory_.HostPath("job.txt")});
  }
  Outcome RunCtl(const std::vector<std::string>& arguments) {
    std::vector<std::string> command{VELMORACTL};
    command.insert(command.end(), arguments.begin(), arguments.end());
    return Run(command);
  }

  // A store with one mail in /Archive/Gemeinsam/Technik.
  void Init() {
    directory_.WriteHostFile("a.eml", "From: max@example.org\r\nSubject: Angebot\r\n\r\nText\r\n");
    ASSERT_EQ(RunCtl({"store", "init", directory_.HostPath("store"), "--server", "BUERO"}).Status, 0);
    ASSERT_EQ(
        RunCtl({"store", "deliver", "--archive", "Gemeinsam/Technik", directory_.HostPath("a.eml")}).Status,
        0);
    std::filesystem::create_directories(directory_.HostPath("target"));
  }
  std::string Target() const { return "dstdirectory=" + directory_.HostPath("target") + "\n"; }

  std::string Log() const {
    const std::string path = directory_.HostPath("state/VelmoraError.log");
    if (!std::filesystem::exists(path)) return "";
    const std::string text = FromCodePage(directory_.ReadHostFile("state/VelmoraError.log"));
    return text.substr(text.find('\n') + 1);
  }

  velmora::test::TempDir directory_;
};

constexpr const char* Technik = "command=archivecopymove\nsaveeml=y\nsrcarchive=/Archive/Gemeinsam/Technik\n";

TEST_F(UnattendedTest, StatusZeroIsAnEmptyLog) {
  Init();
  const Outcome done = RunFile(Technik + Target());
  EXPECT_EQ(done.Status, 0);
  EXPECT_EQ(done.Output, "");
  EXPECT_EQ(done.Log, "");
  EXPECT_TRUE(std::filesystem::exists(directory_.HostPath("target/Technik/Angebot.htm")));
  EXPECT_TRUE(std::filesystem::is_empty(directory_.HostPath("temp")));
}

TEST_F(UnattendedTest, WhatCannotRunAtAllEndsWithTwoAndOneLineThatNamesIt) {
  Init();
  const std::string missing = directory_.HostPath("nirgends.txt");
  const Outcome noFile = Run({VELMORA, "-b:" + missing});
  EXPECT_EQ(noFile.Status, 2);
  EXPECT_EQ(noFile.Log, " Fehler: 53 - Steuerdatei: Datei nicht gefunden -> " + missing + "\r\n");

  struct Case {
    std::string Lines, Reason;
  };
  const std::string nowhere = directory_.HostPath("nowhere");
  const std::vector<Case> cases = {
      {"", "Die Steuerdatei enthält kein Kommando"},
      {"; command=copydavidlogs\r\n", "Die Steuerdatei enthält kein Kommando"},
      {"command=archivkopie\n", "Unbekanntes Kommando in der Steuerdatei: archivkopie"},
      {"command=archivestatistics\n", "Das Kommando archivestatistics steht in dieser Version nicht"},
      {"command=archivecopymove\n" + Target(), "Die Steuerdatei nennt kein Quellarchiv"},
      {"command=archivecopymove\nsrcarchive=/Archive/Nirgends\n" + Target(),
       "Das Archiv /Archive/Nirgends ist nicht vorhanden"},
      {Technik + ("dstdirectory=" + nowhere), "Das Zielverzeichnis existiert nicht"},
      {std::string(Technik) + "deletedst=y\n", "Zum Leeren muss das Zielverzeichnis angegeben sein"},
      {Technik + ("deletedst=y\ndstdirectory=" + directory_.HostPath("store/archive")), "Archivbestand"},
      {"command=copydavidlogs\ndstarchive=/Archive/Gemeinsam\n", "kein Protokoll (logtype)"},
      {"command=copydavidlogs\nlogtype=rxlog\n", "Die Steuerdatei nennt kein Zielarchiv"},
  };
  for (const Case& item : cases) {
    const Outcome outcome = RunFile(item.Lines);
    EXPECT_EQ(outcome.Status, 2) << item.Lines;
    EXPECT_NE(outcome.Log.find(item.Reason), std::string::npos) << item.Lines << outcome.Log;
    EXPECT_EQ(outcome.Log.find("\r\n"), outcome.Log.size() - 2) << item.Lines << outcome.Log;
    EXPECT_EQ(outcome.Output, "");
  }
}

TEST_F(UnattendedTest, OneMissingArchiveOfTwoIsDoneWithErrors) {
  Init();
  const Outcome outcome = RunFile(Technik + ("srcarchive=/Archive/Nirgends\n" + Target()));
  EXPECT_EQ(outcome.Status, 1);
  EXPECT_NE(outcome.Log.find("/Archive/Nirgends"), std::string::npos);
  EXPECT_TRUE(std::filesystem::exists(directory_.HostPath("target/Technik/Angebot.htm")));
}

TEST_F(UnattendedTest, KeysOnTheCommandLineRunToo) {
  Init();
  const Outcome done = RunCtl({"run", "command=archivecopymove", "srcarchive=/Archive/Gemeinsam/Technik",
                               "dstdirectory=" + directory_.HostPath("target"), "saveeml=y"});
  EXPECT_EQ(done.Status, 0);
  EXPECT_NE(done.Output.find("Copy /Archive/Gemeinsam/Technik\n1 Mail(s)\n"), std::string::npos)
      << done.Output;
  const Outcome failed = RunCtl({"run", "command=archivecopymove", "srcarchive=/Archive/Gemeinsam/Technik",
                                 "dstdirectory=" + directory_.HostPath("nowhere")});
  EXPECT_EQ(failed.Status, 2);
  EXPECT_EQ(failed.Output, "velmoractl: Es sind Fehler aufgetreten, siehe " +
                               directory_.HostPath("state/VelmoraError.log") + "\n");
}

TEST_F(UnattendedTest, WithoutAStoreNobodySignsOn) {
  const Outcome batch = RunFile(Technik + Target());
  EXPECT_EQ(batch.Status, 2);
  EXPECT_NE(batch.Log.find("Die Anmeldung am DvISE ist fehlgeschlagen!"), std::string::npos) << batch.Log;
  EXPECT_NE(batch.Log.find(directory_.HostPath("store")), std::string::npos) << batch.Log;
  const Outcome ctl = RunCtl({"run", directory_.HostPath("job.txt")});
  EXPECT_EQ(ctl.Status, 3);
  EXPECT_NE(ctl.Output.find("VelmoraError.log"), std::string::npos) << ctl.Output;
}

TEST_F(UnattendedTest, WrongUsageNamesWhatIsWrong) {
  struct Case {
    std::vector<std::string> Arguments;
    std::string Text;
  };
  const std::vector<Case> cases = {
      {{}, "velmoractl: Es fehlt eine Angabe: BEFEHL\n"},
      {{"foo"}, "velmoractl: Unbekannte Angabe: foo\n"},
      {{"store", "foo"}, "velmoractl: Unbekannte Angabe: foo\n"},
      {{"run", "--xyz", "a=b"}, "velmoractl: Unbekannte Angabe: --xyz\n"},
      {{"store", "list", "--json", "mehr"}, "velmoractl: Unbekannte Angabe: mehr\n"},
      {{"store", "init", "x"}, "velmoractl: Es fehlt eine Angabe: --server\n"},
      {{"store", "deliver", "--archive", "X"}, "velmoractl: Es fehlt eine Angabe: QUELLE\n"},
      {{"store", "list", "--store"}, "velmoractl: Falsche Anzahl von Werten: --store\n"},
      {{"store", "deliver", "--archive", "", "a.eml"}, "velmoractl: Der Pfad des Zielarchivs ist leer\n"},
      {{"run", "a", "b"}, "velmoractl: Erwartet wird eine Steuerdatei"},
      {{"run", ""}, "velmoractl: Erwartet wird eine Steuerdatei"},
  };
  for (const Case& item : cases) {
    const Outcome outcome = RunCtl(item.Arguments);
    EXPECT_EQ(outcome.Status, 2) << item.Text;
    EXPECT_TRUE(outcome.Output.starts_with(item.Text)) << item.Text << outcome.Output;
  }
}

TEST_F(UnattendedTest, HelpIsGerman) {
  for (const std::vector<std::string>& arguments : std::vector<std::vector<std::string>>{
           {"--help"}, {"run", "--help"}, {"store", "--help"}, {"store", "init", "--help"}}) {
    const Outcome help = RunCtl(arguments);
    EXPECT_EQ(help.Status, 0);
    for (const std::string word : {"Options:", "Subcommands", "TEXT", "Usage", "REQUIRED"}) {
      EXPECT_EQ(help.Output.find(word), std::string::npos) << word << help.Output;
    }
  }
}

}  // namespace
}  // namespace velmora::cli
