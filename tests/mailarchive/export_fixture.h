// A store in memory, a design set of bare forms and a target directory for the tests of the export.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/text.h"
#include "mailarchive/content_index.h"
#include "mailarchive/export_run.h"
#include "mailarchive/message_export.h"
#include "platform/host_file_system.h"
#include "run/run.h"
#include "support/fake_store.h"
#include "support/forwarding_file_system.h"
#include "support/scripted_front_end.h"
#include "support/temp_dir.h"

namespace velmora::mailarchive {

class FixedClock final : public platform::Clock {
 public:
  DateTime Now() override { return *DateTime::FromCivil({2026, 12, 31, 23, 59, 0}); }
  std::int64_t SteadyMilliseconds() override { return 0; }
};

// Refuses to make files whose path holds a given part, and to list by a given mask.
class FaultyFileSystem final : public test::ForwardingFileSystem {
 public:
  explicit FaultyFileSystem(platform::FileSystem& target) : ForwardingFileSystem(target) {}

  std::string FailingPart;  // "" for none
  int FailingNumber = platform::file_error::DiskFull;
  std::string FailingMask;  // "" for none
  // The step at which the process ends, from 1; 0 for none. A file that is written takes two, and is half
  // there between them.
  int LastStep = 0;
  static constexpr int Died = 42;

  Result<std::vector<platform::FileEntry>> List(std::string_view folder, std::string_view mask,
                                                platform::ListWhat what) override {
    if (!FailingMask.empty() && mask == FailingMask) return Failure();
    return ForwardingFileSystem::List(folder, mask, what);
  }
  Status WriteFile(std::string_view path, std::string_view bytes,
                   const platform::WriteOptions& options) override {
    if (Fails(path)) return Failure();
    Step();
    // A system call writes less than a page wholly or not at all.
    constexpr std::size_t Page = 4096;
    const std::string_view half = bytes.substr(0, bytes.size() < Page ? 0 : Page);
    if (LastStep == 1) (void)ForwardingFileSystem::WriteFile(path, half, options);
    Step();
    return ForwardingFileSystem::WriteFile(path, bytes, options);
  }
  Status CopyFile(std::string_view source, std::string_view target,
                  const platform::WriteOptions& options) override {
    if (Fails(target)) return Failure();
    Step();
    if (LastStep == 1) (void)ForwardingFileSystem::WriteFile(target, "", options);
    Step();
    return ForwardingFileSystem::CopyFile(source, target, options);
  }
  Status AppendFile(std::string_view path, std::string_view bytes) override {
    Step();
    return ForwardingFileSystem::AppendFile(path, bytes);
  }
  Status DeleteFile(std::string_view path, bool force) override {
    Step();
    return ForwardingFileSystem::DeleteFile(path, force);
  }
  Status CreateFolder(std::string_view path, bool ownerOnly) override {
    if (Fails(path)) return Failure();
    return ForwardingFileSystem::CreateFolder(path, ownerOnly);
  }

 private:
  void Step() {
    if (LastStep > 0 && --LastStep == 0) _exit(Died);
  }
  bool Fails(std::string_view path) const {
    return !FailingPart.empty() && path.find(FailingPart) != std::string_view::npos;
  }
  tl::unexpected<Error> Failure() const {
    return Fail(FailingNumber, platform::FileErrorText(FailingNumber));
  }
};

class ExportTest : public testing::Test {
 protected:
  ExportTest() {
    for (const char* folder : {"log", "temp", "program", "target", "designs"}) {
      EXPECT_TRUE(files.CreateFolder(dir.Path(folder)));
    }
    WriteForm("Mail.htm",
              "T[%VELMORA_TITLE%]S[%VELMORA_SUBJECT%]F[%VELMORA_FROM%]TO[%VELMORA_TO%]D[%VELMORA_TIME%]"
              "A[%VELMORA_ARCDATE%]R[%VELMORA_COPYRIGHT%]K[%VELMORA_COMMENT%]C[%VELMORA_CONTENT%]"
              "M[%VELMORA_MSGCOMMENT%]E[%VELMORA_EML%]L[%VELMORA_ATTLINKS%]V[%VELMORA_VERSION%]");
    WriteForm("Fax.htm",
              "T[%VELMORA_TITLE%]S[%VELMORA_SUBJECT%]F[%VELMORA_FROM%]TO[%VELMORA_TO%]D[%VELMORA_TIME%]"
              "X[%VELMORA_FAX%]M[%VELMORA_MSGCOMMENT%]");
    WriteForm("Voice.htm",
              "T[%VELMORA_TITLE%]S[%VELMORA_SUBJECT%]F[%VELMORA_FROM%]TO[%VELMORA_TO%]D[%VELMORA_TIME%]"
              "X[%VELMORA_VOICE%]M[%VELMORA_MSGCOMMENT%]");
    for (const char* name : {"Tree.htm", "Date.htm", "Subject.htm", "Address.htm"}) {
      WriteForm(name, std::string(name) +
                          "[%VELMORA_TITLE%][%VELMORA_IDXFOLDER%]"
                          "[%VELMORA_IDXARCDATE%][%VELMORA_COPYRIGHT%][%VELMORA_COMMENT%]<%VELMORA_IDXLINKS%>"
                          "tail[%VELMORA_IDXLINKS%]");
    }
    WriteForm(
        "Bare.ini",
        "[TreeIndex]\r\nform=Tree.htm\r\n[MessageIndexByDate]\r\nform=Date.htm\r\n"
        "[MessageIndexBySubject]\r\nform=Subject.htm\r\n[MessageIndexByAddress]\r\nform=Address.htm\r\n"
        "[Messages]\r\nform=Mail.htm\r\npictures=\r\n[Fax]\r\nform=Fax.htm\r\n[Voice]\r\nform=Voice.htm\r\n"
        "[ExcelAddrSheet]\r\nform=Adressen.xls\r\n");
    designs.LoadDesignSet();
    session.Account = store.MakeAccount();
    session.Trustees = store::trustee::Administrator | store::trustee::DeleteArchives;
    options.MakeIndex = false;
    archive = &store.AddArchive(nullptr, "Archive", R"(\\SERVER\DAVID\ARCHIVE)");
    inbox = &store.AddArchive(archive, "Eingang", R"(\\SERVER\DAVID\ARCHIVE\IN)");
  }

  void WriteForm(std::string_view name, std::string_view text) {
    EXPECT_TRUE(files.WriteFile(dir.Path("designs\\" + std::string(name)), text));
  }

  // The whole run on messages or archives of the root archive.
  void Run(std::vector<ExportSelection::Object> objects) {
    ExportContext context = Context();
    RunExport(context, {store.Open(archive->FullPath), std::move(objects)}, dir.Path("target"));
  }
  // A run on one archive as its own selection.
  void RunArchive(const test::FakeArchiveData& source, bool isLink = false) {
    Run({{ExportSelection::Object::Kind::Archive, 0, source.FullPath, isLink}});
  }
  // A run on single messages of the root archive.
  void RunMails(const std::vector<store::EntryKey>& keys) {
    std::vector<ExportSelection::Object> objects;
    for (const store::EntryKey key : keys)
      objects.push_back({ExportSelection::Object::Kind::Message, key, "", false});
    Run(std::move(objects));
  }
  // A fax or voice mail of the root archive with a content file of its own.
  test::FakeMail& AddContentEntry(int type, const std::string& subject, const std::string& content) {
    test::FakeMail& entry = store.AddEntry(*archive, type, subject);
    entry.ContentPath = dir.Path("temp\\" + std::to_string(entry.Key) + ".001");
    EXPECT_TRUE(files.WriteFile(entry.ContentPath, content));
    return entry;
  }
  // What the status line shows last.
  std::string StatusLine() const { return frontEnd.StatusTexts.empty() ? "" : frontEnd.StatusTexts.back(); }

  // One mail of the root archive, exported into the target directory itself.
  void RunMail(const test::FakeMail& mail) { RunMails({mail.Key}); }

  ExportContext Context() {
    return {run, session, designs, options, dir.Path("temp") + "\\", dir.Path("program")};
  }

  std::string Target(std::string_view relative) const { return dir.Path("target\\" + std::string(relative)); }
  std::string ReadTarget(std::string_view relative) {
    const auto bytes = files.ReadFile(Target(relative));
    return bytes ? *bytes : "no file " + std::string(relative);
  }
  bool HasTarget(std::string_view relative) {
    return files.FileExists(Target(relative)) || files.FolderExists(Target(relative));
  }
  // The names in a directory of the target, without the markers.
  std::vector<std::string> Names(std::string_view relative = "") {
    std::vector<std::string> names;
    const auto entries = files.List(StripEnd(Target(relative)), "*", platform::ListWhat::All);
    if (!entries) return {"no folder"};
    for (const auto& entry : *entries) {
      if (!entry.Name.ends_with(".vla")) names.push_back(entry.Name);
    }
    return names;
  }
  std::string Log() {
    const auto bytes = files.ReadFile(run.ErrorLogPath());
    if (!bytes) return "";
    const auto firstEnd = bytes->find("\r\n");
    return bytes->substr(firstEnd + 2);  // without the line that says when the log began
  }
  // What stands between a letter and the closing bracket in a page of the bare form.
  std::string Part(std::string_view page, std::string_view letter) {
    const std::string text = ReadTarget(page);
    const auto start = text.find(std::string(letter) + "[");
    if (start == std::string::npos) return "no part in " + text;
    const auto begin = start + letter.size() + 1;
    return text.substr(begin, text.find(']', begin) - begin);
  }
  // The value of a key of a descriptor; "none" without the key.
  std::string Value(std::string_view descriptor, std::string_view key) {
    const std::string text = "\r\n" + ReadTarget(descriptor);
    const auto start = text.find("\r\n" + std::string(key) + "=");
    if (start == std::string::npos) return "none";
    const auto begin = start + key.size() + 3;
    return text.substr(begin, text.find("\r\n", begin) - begin);
  }

  test::TempDir dir;
  std::unique_ptr<platform::FileSystem> host = platform::MakeHostFileSystem({{"Z:", "/"}});
  FaultyFileSystem faulty{*host};
  platform::FileSystem& files = faulty;
  FixedClock clock;
  test::ScriptedFrontEnd frontEnd;
  run::Run run{files, clock, frontEnd.Set(), dir.Path("log")};
  test::FakeStore store{files};
  store::Session session;
  DesignSet designs{files, dir.Path("designs"), "Bare"};
  ExportOptions options;
  test::FakeArchiveData* archive = nullptr;  // the root: single messages come from here
  test::FakeArchiveData* inbox = nullptr;    // below it

 private:
  static std::string StripEnd(std::string path) {
    if (path.ends_with('\\')) path.pop_back();
    return path;
  }
};

using Strings = std::vector<std::string>;

}  // namespace velmora::mailarchive
