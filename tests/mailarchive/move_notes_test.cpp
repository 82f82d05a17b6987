// Moves that are killed and run again: nothing stands in the mail archive twice or half, and nothing that is
// gone from the store is touched.
#include <sys/wait.h>

#include <algorithm>
#include <filesystem>
#include <functional>

#include "mailarchive/export_fixture.h"
#include "mailarchive/move_notes.h"
#include "store/vocabulary.h"

namespace velmora::mailarchive {
namespace {

class MoveNotesTest : public ExportTest {
 protected:
  MoveNotesTest() {
    options.Mode = CopyMode::Move;
    options.SaveAttachments = options.SaveOriginals = options.SaveComments = true;
  }

  store::EntryKey AddMail(const std::string& subject, bool isHtml) {
    test::FakeMail& mail = store.AddMail(*archive, subject);
    mail.Source = "Quelle von " + subject;
    mail.Text = std::string(10'000, 'T');
    mail.Fields[store::tag::Comment] = std::string("Kommentar");
    if (isHtml) mail.Html = "Html";
    if (isHtml) mail.Fields[store::tag::HtmlRendition] = std::string(10'000, 'H');
    mail.Attachments = {{"a.txt", "A"}, {"b.txt", "B"}};
    return mail.Key;
  }
  // Runs in a process of its own, so that the entries stay in this one's store; its exit status.
  int InChild(const std::function<void()>& work) {
    const pid_t child = fork();
    if (child == 0) {
      work();
      _exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }
  void EmptyTarget() {
    std::filesystem::remove_all(dir.HostPath("target"));
    std::filesystem::create_directory(dir.HostPath("target"));
  }
  void WriteNotes(const std::string& text) { EXPECT_TRUE(files.WriteFile(Target("VelmoraMove.tmp"), text)); }
  void WriteEntry(const std::string& base, const std::string& subject) {
    EXPECT_TRUE(files.WriteFile(Target(base + ".htm"), "page"));
    EXPECT_TRUE(files.WriteFile(Target(base + ".add"), "Sortaddr=\r\nSubject=" + subject + "\r\n"));
  }
};

TEST_F(MoveNotesTest, AMoveKilledAnywhereAndRunAgainLeavesWhatAnUndisturbedOneDoes) {
  const std::vector<store::EntryKey> keys = {AddMail("x", false), AddMail("x", true), AddMail("y", false)};
  const auto move = [&] { RunMails(keys); };
  ASSERT_EQ(InChild(move), 0);
  const auto wanted = dir.HostTree("target");
  ASSERT_GT(wanted.size(), 15u);
  for (int step = 1;; ++step) {
    EmptyTarget();
    const auto die = [&] {
      faulty.LastStep = step;
      move();
    };
    const int ended = InChild(die);
    // The run after it may be killed as well. Where one has removed its notes, the entries are gone.
    const auto isOpen = [&] { return HasTarget("VelmoraMove.tmp") || !HasTarget("y.add"); };
    if (isOpen()) (void)InChild(die);
    if (isOpen()) {
      ASSERT_EQ(InChild(move), 0);
    }
    ASSERT_EQ(dir.HostTree("target"), wanted) << "killed before step " << step;
    if (ended == 0) {
      EXPECT_GT(step, 60) << "nothing was killed";
      return;
    }
    ASSERT_EQ(ended, FaultyFileSystem::Died);
  }
}

TEST_F(MoveNotesTest, NotesAreGoneOnceTheMoveIsCommitted) {
  RunMails({AddMail("x", false)});
  EXPECT_TRUE(HasTarget("x.htm"));
  EXPECT_FALSE(HasTarget("VelmoraMove.tmp"));
}

TEST_F(MoveNotesTest, OnlyNotesOfEntriesThatWereNotMetOutliveACommit) {
  WriteNotes("*1 a\nx.htm\nx.add\n*2 a\ny.htm\n");
  MoveNotes notes(files, Target(""), "a");
  notes.Settle();
  EXPECT_TRUE(HasTarget("VelmoraMove.tmp")) << "nothing was begun";
  notes.BeginEntry(1, {});
  notes.NoteFile("x.htm");
  notes.Settle();
  EXPECT_EQ(ReadTarget("VelmoraMove.tmp"), "*2 a\ny.htm\n");
  notes.BeginEntry(2, {});
  notes.Settle();
  EXPECT_FALSE(HasTarget("VelmoraMove.tmp"));
}

TEST_F(MoveNotesTest, ALongMoveIsCommittedInBetween) {
  options.SaveAttachments = options.SaveOriginals = options.SaveComments = false;
  std::vector<store::EntryKey> keys;
  for (int i = 0; i < 1001; ++i) keys.push_back(AddMail("x", false));
  RunMails(keys);
  EXPECT_EQ(std::ranges::count(store.Events, "commit"), 2);
}

TEST_F(MoveNotesTest, ACopyNotesAndTakesBackNothing) {
  options.Mode = CopyMode::Copy;
  WriteNotes("*1 " + ToLower(archive->ID) + "\nx.htm\nx.add\n");
  WriteEntry("x", "x");
  RunMails({AddMail("x", false)});
  EXPECT_EQ(ReadTarget("x.htm"), "page");
  EXPECT_TRUE(HasTarget("x1.htm"));
  EXPECT_TRUE(HasTarget("VelmoraMove.tmp"));
}

// A copy may take a name that a killed move had noted before it could make the file.
TEST_F(MoveNotesTest, WhatACopyHasWrittenSinceIsNotTakenBack) {
  const store::EntryKey key = AddMail("x", false), copied = AddMail("x", false);
  WriteNotes("*" + std::to_string(key) + " " + ToLower(archive->ID) +
             "\nComments\\x.txt\nEml\\x.eml\nx.htm\n");
  options.Mode = CopyMode::Copy;
  RunMails({copied});
  options.Mode = CopyMode::Move;
  RunMails({key});
  EXPECT_EQ(ReadTarget("Eml\\x.eml"), "Quelle von x");
  EXPECT_TRUE(HasTarget("x.htm"));
  EXPECT_TRUE(HasTarget("x.add"));
  EXPECT_TRUE(HasTarget("x1.htm"));
  EXPECT_TRUE(HasTarget("Comments\\x.txt"));
  EXPECT_TRUE(HasTarget("Comments\\x1.txt"));
}

// Keys begin anew in an archive that was made anew: what its predecessor's entries left is all there is of
// them.
TEST_F(MoveNotesTest, WhatADescriptorTellsOfAnotherEntryStays) {
  const store::EntryKey key = AddMail("x", false);
  WriteNotes("*" + std::to_string(key) + " " + ToLower(archive->ID) + "\nx.htm\nx.add\n");
  WriteEntry("x", "another");
  RunMails({key});
  EXPECT_EQ(ReadTarget("x.htm"), "page");
  EXPECT_TRUE(HasTarget("x1.htm"));
}

TEST_F(MoveNotesTest, NotesOfAnotherArchiveStayOut) {
  const store::EntryKey key = AddMail("x", false);
  WriteNotes("*" + std::to_string(key) + " " + ToLower(inbox->ID) + "\nx.htm\n");
  EXPECT_TRUE(files.WriteFile(Target("x.htm"), "page"));
  RunMails({key});
  EXPECT_EQ(ReadTarget("x.htm"), "page");
}

TEST_F(MoveNotesTest, OnlySingleFilesBelowTheDirectoryAreTakenBack) {
  const store::EntryKey key = AddMail("x", false);
  EXPECT_TRUE(files.WriteFile(Target("kept.htm"), "kept"));
  EXPECT_TRUE(files.WriteFile(Target("foreign.htm"), "kept"));
  EXPECT_TRUE(files.WriteFile(dir.Path("outside.txt"), "kept"));
  WriteNotes("*" + std::to_string(key) + " " + ToLower(archive->ID) +
             "\n*.htm\n..\\outside.txt\nforeign.htm\n?foreign.htm\nkept.htm");
  RunMails({key});
  EXPECT_EQ(ReadTarget("kept.htm"), "kept") << "a torn line is no path";
  EXPECT_EQ(ReadTarget("foreign.htm"), "kept") << "somebody else has made it";
  EXPECT_TRUE(files.FileExists(dir.Path("outside.txt")));
}

// A vCard has no descriptor that could tell whose it is.
TEST_F(MoveNotesTest, AddressesAreNeitherNotedNorTakenBack) {
  options.AddressFormat = addresses::AddressFormat::VCard;
  test::FakeMail& address = store.AddEntry(*archive, store::item_type::Address, "Name");
  EXPECT_TRUE(files.CreateFolder(Target("VCards")));
  EXPECT_TRUE(files.WriteFile(Target("VCards\\.vcf"), "card"));
  WriteNotes("*" + std::to_string(address.Key) + " " + ToLower(archive->ID) + "\nVCards\\.vcf\n");
  RunMails({address.Key});
  EXPECT_EQ(ReadTarget("VCards\\.vcf"), "card");
  EXPECT_EQ(Names("VCards").size(), 2u);
}

}  // namespace
}  // namespace velmora::mailarchive
