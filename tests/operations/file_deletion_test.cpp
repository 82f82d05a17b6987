#include "operations/file_deletion.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <filesystem>

#include "base/code_page.h"
#include "base/paths.h"
#include "mailarchive/format/marker.h"
#include "platform/host_file_system.h"
#include "support/faulty_file_system.h"
#include "support/manual_clock.h"
#include "support/scripted_front_end.h"
#include "support/temp_dir.h"

namespace velmora::operations {
namespace {

using mailarchive::MailArcKind;
using List = std::vector<std::string>;
namespace fs = std::filesystem;

class FileDeletionTest : public testing::Test {
 protected:
  FileDeletionTest() {
    fs::create_directories(dir.HostPath("here"));
    fs::create_directories(dir.HostPath("designs"));
    dir.WriteHostFile("designs/StdVelmoraIndexForm.htm", "<%VELMORA_IDXLINKS%>");
    options.EnDelDirs = true;
  }

  void Write(const std::string& relative, std::string_view bytes = "x") {
    fs::create_directories(fs::path(dir.HostPath(relative)).parent_path());
    dir.WriteHostFile(relative, bytes);
  }
  bool Exists(const std::string& relative) const {
    return fs::exists(fs::symlink_status(dir.HostPath(relative)));
  }
  void Mark(MailArcKind kind, const std::string& relative = "here") {
    fs::create_directories(dir.HostPath(relative));
    ASSERT_TRUE(mailarchive::WriteArchiveMarker(files, dir.Path(relative), kind, {"Archiv"}, true));
  }
  // An entry "x" with an HTML body, an original, an attachment and a comment, each in its folder.
  void WriteEntry(const std::string& name) {
    Write("here/" + name + ".add", "Subject=" + name + "\r\nHTML=HTMLMails\\" + name + ".htm\r\nEML=Eml\\" +
                                       name + ".eml\r\nAttachments=\"Attachments\\" + name +
                                       ".pdf\"\r\nCOMMENT=Comments\\" + name + ".txt\r\n");
    Write("here/" + name + ".htm");
    Write("here/HTMLMails/" + name + ".htm");
    Write("here/Eml/" + name + ".eml");
    Write("here/Attachments/" + name + ".pdf");
    Write("here/Comments/" + name + ".txt");
    for (const char* folder : {"HTMLMails", "Eml", "Attachments", "Comments"})
      Mark(MailArcKind::Data, std::string("here/") + folder);
  }
  // Names of files; of folders with "/" at their end.
  void Delete(const List& names) {
    FileSelection selection{dir.Path("here"), {}};
    for (const std::string& name : names) {
      const bool isFolder = name.ends_with('/');
      selection.Items.push_back({name.substr(0, name.size() - (isFolder ? 1 : 0)), isFolder});
    }
    RunDeleteFiles(index, options, selection, davidRoot);
  }
  List Left(const std::string& relative = "here") const {
    List names;
    for (const auto& entry : fs::directory_iterator(dir.HostPath(relative)))
      names.push_back(entry.path().filename().string());
    std::ranges::sort(names);
    return names;
  }
  std::string LogText() {
    const std::string text = FromCodePage(host->ReadFile(run.ErrorLogPath()).value_or(""));
    return text.substr(text.find('\n') + 1);
  }

  test::TempDir dir;
  std::unique_ptr<platform::FileSystem> host = platform::MakeHostFileSystem({{"Z:", "/"}});
  test::FaultyFileSystem files{*host};
  test::ManualClock clock;
  test::ScriptedFrontEnd frontEnd;
  run::Run run{files, clock, frontEnd.Set(), dir.Path()};
  mailarchive::DesignSet designs{files, dir.Path("designs"), "Standard"};
  mailarchive::IndexContext index{run, designs, false, dir.Path()};
  FileDeleteOptions options;
  std::string davidRoot;
};

// --- Files. ---

TEST_F(FileDeletionTest, MarkedFilesGoAndTheOthersStay) {
  for (const char* name : {"a.txt", "b.txt", "c.txt"}) Write(std::string("here/") + name);
  Delete({"a.txt", "c.txt"});
  EXPECT_EQ(Left(), List{"b.txt"});
  EXPECT_EQ(frontEnd.StatusTexts, (List{"Bitte Warten", "Bereit"}));
  EXPECT_EQ(frontEnd.Waits, List{"Dateien werden gelöscht"});
  EXPECT_EQ(frontEnd.WaitsEnded, 1);
  EXPECT_TRUE(frontEnd.Boxes.empty());
  EXPECT_TRUE(frontEnd.ProgressTitles.empty());
}

TEST_F(FileDeletionTest, AReadOnlyFileGoes) {
  Write("here/fest.txt");
  ASSERT_TRUE(files.SetReadOnly(dir.Path("here/fest.txt"), true));
  Delete({"fest.txt"});
  EXPECT_TRUE(Left().empty());
}

TEST_F(FileDeletionTest, AutorunTakesItsProgramWithIt) {
  for (const char* name : {"AutoRun.inf", "shellexec.exe", "andere.exe"}) Write(std::string("here/") + name);
  Delete({"AutoRun.inf"});
  EXPECT_EQ(Left(), List{"andere.exe"});
  EXPECT_EQ(LogText(), "");
}

TEST_F(FileDeletionTest, AutorunWithoutItsProgramIsNoFailure) {
  Write("here/autorun.inf");
  Delete({"autorun.inf"});
  EXPECT_TRUE(Left().empty());
  EXPECT_EQ(run.counters.Errors, 0);
}

TEST_F(FileDeletionTest, ANameNeverLeadsOutOfTheDirectory) {
  Write("fremd.txt");
  Write("here/unten/auch.txt");
  Write("here/bleibt.txt");
  Delete({"..\\fremd.txt", "../fremd.txt", "unten\\auch.txt", "*.txt", "?leibt.txt", "..", ".", ""});
  Delete({"../", "./", "*/", dir.Path("fremd.txt")});
  EXPECT_TRUE(Exists("fremd.txt"));
  EXPECT_TRUE(Exists("here/unten/auch.txt"));
  EXPECT_TRUE(Exists("here/bleibt.txt"));
  EXPECT_EQ(run.counters.Errors, 4);
  ASSERT_FALSE(frontEnd.Boxes.empty());
  EXPECT_EQ(frontEnd.Boxes.back().Text, "mit 4 Fehler(n) (siehe Fehlerprotokoll) gelöscht");
}

TEST_F(FileDeletionTest, ALinkIsRemovedAndWhatItLeadsToStays) {
  Write("fremd/inhalt.txt");
  Write("fremd.txt");
  fs::create_directory_symlink(dir.HostPath("fremd"), dir.HostPath("here/ordner"));
  fs::create_symlink(dir.HostPath("fremd.txt"), dir.HostPath("here/datei.txt"));
  Delete({"ordner/", "datei.txt"});
  EXPECT_TRUE(Left().empty());
  EXPECT_TRUE(Exists("fremd/inhalt.txt"));
  EXPECT_TRUE(Exists("fremd.txt"));
}

TEST_F(FileDeletionTest, ACancelEndsBetweenTwoItems) {
  for (const char* name : {"a.txt", "b.txt", "c.txt"}) Write(std::string("here/") + name);
  frontEnd.CancelAtPump = 2;
  run.ResetCancel();
  Delete({"a.txt", "b.txt", "c.txt"});
  EXPECT_EQ(Left(), (List{"a.txt", "b.txt"}));  // from the last to the first
}

TEST_F(FileDeletionTest, APendingCancelDeletesNothing) {
  Write("here/a.txt");
  run.RequestCancel();
  Delete({"a.txt"});
  EXPECT_EQ(Left(), List{"a.txt"});
}

TEST_F(FileDeletionTest, AFailureIsLoggedAndTheRestGoes) {
  for (const char* name : {"a.txt", "b.txt", "c.txt"}) Write(std::string("here/") + name);
  files.FailOn(test::Fault::Delete, 2, platform::file_error::DeviceError);
  Delete({"a.txt", "b.txt", "c.txt"});
  EXPECT_EQ(Left(), List{"b.txt"});
  EXPECT_NE(LogText().find("57"), std::string::npos);
  EXPECT_NE(LogText().find("b.txt"), std::string::npos);
}

// --- Entries of a mail archive. ---

TEST_F(FileDeletionTest, APageTakesItsEntryAndEmptyFoldersWithIt) {
  Mark(MailArcKind::Sub);
  WriteEntry("eins");
  Delete({"eins.htm"});
  EXPECT_EQ(Left(), List{"VelmoraSubArc.vla"});
}

TEST_F(FileDeletionTest, TheFoldersOfOtherEntriesStay) {
  Mark(MailArcKind::Sub);
  WriteEntry("eins");
  WriteEntry("zwei");
  Delete({"eins.htm"});
  EXPECT_TRUE(Exists("here/zwei.htm"));
  EXPECT_TRUE(Exists("here/zwei.add"));
  EXPECT_EQ(Left("here/Attachments"), (List{"VelmoraDataArc.vla", "zwei.pdf"}));
}

TEST_F(FileDeletionTest, WithHelperFilesShownAPageIsAFile) {
  Mark(MailArcKind::Sub);
  WriteEntry("eins");
  options.HideMailArcHelperFiles = false;
  Delete({"eins.htm"});
  EXPECT_FALSE(Exists("here/eins.htm"));
  EXPECT_TRUE(Exists("here/eins.add"));
  EXPECT_TRUE(Exists("here/Eml/eins.eml"));
}

TEST_F(FileDeletionTest, OutsideOfAMailArchiveAPageIsAFile) {
  WriteEntry("eins");
  Delete({"eins.htm"});
  EXPECT_TRUE(Exists("here/eins.add"));
}

TEST_F(FileDeletionTest, AFileWithoutADescriptorIsAFile) {
  Mark(MailArcKind::Root);
  Write("here/lose.htm");
  Delete({"lose.htm"});
  EXPECT_FALSE(Exists("here/lose.htm"));
}

TEST_F(FileDeletionTest, AnEntryOfWhichAComponentResistsKeepsPageAndDescriptor) {
  Mark(MailArcKind::Sub);
  WriteEntry("eins");
  files.FailOn(test::Fault::Delete, 2, platform::file_error::AccessDenied);
  Delete({"eins.htm"});
  EXPECT_TRUE(Exists("here/eins.htm"));
  EXPECT_TRUE(Exists("here/eins.add"));
  EXPECT_EQ(run.counters.Errors, 1);
}

// Without folders of their own, components are listed beside the pages and may be marked as well.
TEST_F(FileDeletionTest, AComponentThatItsEntryTookWithItIsNoFailure) {
  Mark(MailArcKind::Sub);
  Write("here/a.pdf");
  Write("here/x.htm");
  Write("here/x.add", "Subject=x\r\nAttachments=\"a.pdf\"\r\n");
  Delete({"a.pdf", "x.htm"});
  EXPECT_EQ(Left(), List{"VelmoraSubArc.vla"});
  EXPECT_EQ(run.counters.Errors, 0);
}

// --- The index. ---

TEST_F(FileDeletionTest, TheIndexOfTheDirectoryIsMadeAnew) {
  Mark(MailArcKind::Sub);
  WriteEntry("eins");
  WriteEntry("zwei");
  options.EnMakeIdx = true;
  Delete({"eins.htm"});
  const std::string page = dir.ReadHostFile("here/index.html");
  EXPECT_EQ(page.find("eins.htm"), std::string::npos);
  EXPECT_NE(page.find("zwei.htm"), std::string::npos);
}

TEST_F(FileDeletionTest, WithoutTheOptionTheIndexStays) {
  Mark(MailArcKind::Sub);
  WriteEntry("eins");
  Write("here/index.html", "alt");
  Delete({"eins.htm"});
  EXPECT_EQ(dir.ReadHostFile("here/index.html"), "alt");
}

TEST_F(FileDeletionTest, AnIndexOfARootLeavesThoseOfItsSubDirectories) {
  Mark(MailArcKind::Root);
  Mark(MailArcKind::Sub, "here/unten");
  Write("here/unten/y.htm");
  Write("here/unten/y.add", "Subject=y\r\n");
  Write("here/unten/index.html", "alt");
  WriteEntry("eins");
  options.EnMakeIdx = true;
  Delete({"eins.htm"});
  EXPECT_TRUE(Exists("here/index.html"));
  EXPECT_EQ(dir.ReadHostFile("here/unten/index.html"), "alt");
}

TEST_F(FileDeletionTest, AnIndexIsMadeOnlyInAMailArchive) {
  Write("here/x.htm");
  Write("here/y.htm");
  Write("here/y.add", "Subject=y\r\n");
  options.EnMakeIdx = true;
  Delete({"x.htm"});
  EXPECT_FALSE(Exists("here/index.html"));
}

// --- Folders. ---

TEST_F(FileDeletionTest, AFolderGoesWithAllThatIsInIt) {
  Write("here/ordner/tief/datei.txt");
  Write("here/ordner/fest.txt");
  ASSERT_TRUE(files.SetReadOnly(dir.Path("here/ordner/fest.txt"), true));
  Delete({"ordner/"});
  EXPECT_TRUE(Left().empty());
}

TEST_F(FileDeletionTest, WithoutTheOptionOnlyTheContentGoes) {
  Write("here/ordner/tief/datei.txt");
  Write("here/ordner/fest.txt");
  ASSERT_TRUE(files.SetReadOnly(dir.Path("here/ordner/fest.txt"), true));
  options.EnDelDirs = false;
  Delete({"ordner/"});
  EXPECT_EQ(Left(), List{"ordner"});
  EXPECT_TRUE(Left("here/ordner").empty());
}

TEST_F(FileDeletionTest, TheContentOfALinkIsNobodysToDelete) {
  Write("fremd/inhalt.txt");
  fs::create_directory_symlink(dir.HostPath("fremd"), dir.HostPath("here/ordner"));
  options.EnDelDirs = false;
  Delete({"ordner/"});
  EXPECT_TRUE(Exists("fremd/inhalt.txt"));
  EXPECT_TRUE(Exists("here/ordner"));
  EXPECT_EQ(run.counters.Errors, 1);
}

TEST_F(FileDeletionTest, AFolderThatResistsHasTheAttributesOfItsFilesCleared) {
  Write("fremd/inhalt.txt");
  ASSERT_TRUE(files.SetReadOnly(dir.Path("fremd/inhalt.txt"), true));
  Write("here/ordner/tief/fest.txt");
  Write("here/ordner/versteckt.txt");
  fs::create_directory_symlink(dir.HostPath("fremd"), dir.HostPath("here/ordner/link"));
  fs::create_symlink(dir.HostPath("fremd/inhalt.txt"), dir.HostPath("here/ordner/link.txt"));
  ASSERT_TRUE(files.SetReadOnly(dir.Path("here/ordner/tief/fest.txt"), true));
  ASSERT_TRUE(files.SetHidden(dir.Path("here/ordner/versteckt.txt"), true));
  files.FailOn(test::Fault::Delete, 1, platform::file_error::DeviceError);
  Delete({"ordner/"});
  EXPECT_TRUE(Left().empty());
  EXPECT_EQ(run.counters.Errors, 0);
  EXPECT_TRUE(files.GetEntry(dir.Path("fremd/inhalt.txt"))->ReadOnly);
}

TEST_F(FileDeletionTest, AFolderThatStaysIsLogged) {
  Write("here/ordner/datei.txt");
  files.FailOn(test::Fault::Delete, 1, platform::file_error::DeviceError, 3);
  Delete({"ordner/"});
  EXPECT_TRUE(Exists("here/ordner"));
  EXPECT_EQ(run.counters.Errors, 1);
  EXPECT_NE(LogText().find("57"), std::string::npos);
}

TEST_F(FileDeletionTest, DeniedAccessIsToldInABox) {
  Write("here/ordner/datei.txt");
  files.FailOn(test::Fault::Delete, 1, platform::file_error::AccessDenied);
  DeleteFolderTree(run, dir.Path("here/ordner"), true);
  EXPECT_TRUE(Exists("here/ordner/datei.txt"));
  const std::string folder = dir.Path("here/ordner");
  ASSERT_EQ(frontEnd.Boxes.size(), 1u);
  EXPECT_EQ(frontEnd.Boxes[0].Title, "Fehler beim Löschen");
  EXPECT_EQ(frontEnd.Boxes[0].Text, "Zugriff auf " + folder + " verweigert.");
  EXPECT_EQ(LogText(), " Fehler: 70 - Zugriff verweigert -> " + folder + "\r\n");
}

TEST_F(FileDeletionTest, AFolderThatIsGoneByNowIsNoFailure) {
  Delete({"weg/"});
  EXPECT_EQ(run.counters.Errors, 0);
}

// --- What is never deleted. ---

TEST_F(FileDeletionTest, TheRootOfADriveOrShareIsRefused) {
  for (const char* root : {"Z:", "Z:\\", R"(\\SERVER\DAVID)", R"(\\SERVER\DAVID\)"}) {
    EXPECT_NE(ReasonNotToDelete(files, root, ""), "") << root;
    DeleteFolderTree(run, root, true);
    DeleteFolderTree(run, root, false);
  }
  EXPECT_EQ(run.counters.Errors, 8);
  EXPECT_TRUE(Exists("here"));
}

TEST_F(FileDeletionTest, WhatHoldsTheArchivesIsRefused) {
  Write("here/server/david/archive/archive.dir");
  Write("here/server/anderes/datei.txt");
  davidRoot = dir.Path("here/server/david");
  EXPECT_NE(ReasonNotToDelete(files, dir.Path("here/server"), davidRoot), "");
  EXPECT_NE(ReasonNotToDelete(files, dir.Path("here/server/david"), davidRoot), "");
  EXPECT_EQ(ReasonNotToDelete(files, dir.Path("here/server/anderes"), davidRoot), "");
  EXPECT_EQ(ReasonNotToDelete(files, dir.Path("here/server/david/archive"), davidRoot), "");
  Delete({"server/"});
  EXPECT_TRUE(Exists("here/server/david/archive/archive.dir"));
  EXPECT_TRUE(Exists("here/server/anderes/datei.txt"));
  EXPECT_EQ(run.counters.Errors, 1);
}

TEST_F(FileDeletionTest, TheRootOfADriveIsRefusedByWhateverPath) {
  const auto mapped = platform::MakeHostFileSystem({{"Z:", "/"}, {"M:", dir.HostPath("here/laufwerk")}});
  Write("here/laufwerk/datei.txt");
  EXPECT_NE(ReasonNotToDelete(*mapped, dir.Path("here/laufwerk"), ""), "");
  EXPECT_NE(ReasonNotToDelete(*mapped, dir.Path("here"), ""), "");
  fs::create_directory_symlink(dir.HostPath("here"), dir.HostPath("umweg"));
  EXPECT_NE(ReasonNotToDelete(*mapped, dir.Path("umweg/laufwerk"), ""), "");
  EXPECT_EQ(ReasonNotToDelete(*mapped, dir.Path("umweg"), ""), "");  // the link alone goes
}

}  // namespace
}  // namespace velmora::operations
