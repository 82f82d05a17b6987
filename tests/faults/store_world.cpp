#include "store_world.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <stdexcept>
#include <utility>

#include "base/paths.h"
#include "base/text.h"
#include "platform/host_file_system.h"
#include "store/embedded/archive_tree.h"
#include "store/embedded/embedded_store.h"
#include "store/embedded/store_check.h"
#include "store/embedded/store_layout.h"
#include "store/embedded/store_setup.h"
#include "store/filter.h"

namespace velmora::faults {
namespace {

namespace fs = std::filesystem;
using store::DvArchive;
using ArchivePointer = std::shared_ptr<DvArchive>;

constexpr std::string_view LogName = "VelmoraError.log";

std::unique_ptr<platform::FileSystem> MakeHost(const store::embedded::StoreLocation& location) {
  return platform::MakeHostFileSystem({{"Z:", "/"}, MappingOf(location)});
}

template <typename T>
T Must(Result<T> result) {
  if (!result) throw std::runtime_error(result.error().Text);
  return std::move(*result);
}
void Must(const Status& status) {
  if (!status) throw std::runtime_error(status.error().Text);
}

std::unique_ptr<store::DvAccount> Account(platform::FileSystem& files, platform::Clock& clock,
                                          const store::embedded::StoreLocation& location) {
  return Must(store::embedded::OpenEmbeddedApi(files, clock, {location}, "anna")->Logon(""));
}

std::string MailOf(std::string_view subject) {
  // Long enough for a file system to be full in the middle of it.
  return fmt::format(
      "From: Carl <carl@example.net>\r\nTo: anna@example.org\r\nSubject: {0}\r\n"
      "Date: Mon, 2 Nov 2026 10:00:00 +0100\r\nMIME-Version: 1.0\r\n"
      "Content-Type: multipart/mixed; boundary=\"b\"\r\n\r\n--b\r\nContent-Type: "
      "text/plain\r\n\r\n{0}\r\n{1}\r\n"
      "--b\r\nContent-Type: application/pdf; name=\"{0}.pdf\"\r\n"
      "Content-Disposition: attachment; filename=\"{0}.pdf\"\r\nContent-Transfer-Encoding: base64\r\n\r\n"
      "JVBERg==\r\n--b--\r\n",
      subject, std::string(3000, 'x'));
}

void PutRule(DvArchive& archive, const std::string& name) {
  auto rule = Must(archive.Rules().Add(name));
  rule->Data().Forward = true;
  rule->Data().ForwardTo = "chef@example.org";
  Must(rule->Update());
}

// The store that each world copies.
const std::string& Template() {
  static const test::TempDir dir;
  static const std::string path = [] {
    const store::embedded::StoreLocation location{"BUERO", dir.HostPath("store")};
    test::ManualClock clock;
    Must(store::embedded::InitStore(
        {location.HostDirectory, location.ServerName, {0, "Anna", "anna", "anna@example.org", 0}}, clock));
    const auto files = MakeHost(location);
    const auto account = Account(*files, clock, location);
    const auto deliver = [&](DvArchive& archive, std::string_view subject) {
      Must(store::embedded::DeliverMessage(*account, archive, MailOf(subject), {}));
    };
    const ArchivePointer root = Must(account->GetArchive("/Archive"));
    const ArchivePointer source = Must(root->CreateSubArchive("Quelle"));
    Must(root->CreateSubArchive("Ziel"));
    const ArchivePointer shelf = Must(root->CreateSubArchive("Ablage"));
    for (const char* subject : {"eins", "zwei", "drei"}) deliver(*source, subject);
    for (const char* rule : {"R1", "R2", "R3"}) PutRule(*source, rule);
    Must(files->WriteFile(JoinPath(source->ID(), "archive.ini"), "[Archive]\r\nx=1\r\n"));
    const ArchivePointer first = Must(source->CreateSubArchive("Unter1"));
    deliver(*first, "vier");
    deliver(*first, "fuenf");
    deliver(*Must(source->CreateSubArchive("Unter2")), "sechs");
    store::embedded::ArchiveTree tree(*files, store::embedded::StoreLayout("BUERO").ArchiveRoot());
    Must(tree.AddLink(source->ID(), "Verweis", shelf->ID()));
    Must(account->Commit());
    return location.HostDirectory;
  }();
  return path;
}

}  // namespace

std::string MessageText(std::string_view bytes) {
  const auto subject = std::min(bytes.find("Subject: "), bytes.size());
  return fmt::format("{} {} {:x}", bytes.substr(subject, bytes.find('\r', subject) - subject), bytes.size(),
                     std::hash<std::string_view>()(bytes));
}

// A second look at the store, on a file system of its own: caches of the first cannot hide anything.
struct StoreWorld::Look {
  explicit Look(StoreWorld& world)
      : Files(MakeHost(world.location)), Session(Account(*Files, world.clock, world.location)) {}

  void Visit(const ArchivePointer& archive, const std::string& path,
             const std::function<void(DvArchive&, const std::string& path)>& visit) {
    visit(*archive, path);
    const auto subs = archive->SubArchives();
    for (const ArchivePointer& sub : subs.value_or(std::vector<ArchivePointer>())) {
      const std::string below = path + "/" + sub->DisplayName().value_or("?");
      if (sub->IsShortCut()) {
        visit(*sub, below);
      } else {
        Visit(sub, below, visit);
      }
    }
  }
  void VisitBelow(std::string_view path,
                  const std::function<void(DvArchive&, const std::string& path)>& visit) {
    const auto archive = Session->GetArchive(path);
    if (archive) Visit(*archive, "", visit);
  }
  std::string SourceOf(store::DvItem& item) {
    const auto path = Session->DVEmlFromMailItem(item, "Z:\\tmp\\");
    if (!path) return "no source: " + path.error().Text;
    return MessageText(Files->ReadFile(*path).value_or(""));
  }
  std::vector<std::string> Sources(DvArchive& archive) {
    std::vector<std::string> sources;
    // The entry of an archive whose directory is gone has nothing in it.
    if (!Files->FolderExists(archive.ID())) return sources;
    const auto entries = Must(archive.GetEntries(store::filter_preset::None));
    for (int i = 0; i < entries->Count(); ++i) sources.push_back(SourceOf(*Must(entries->Item(i))));
    return sources;
  }

  std::unique_ptr<platform::FileSystem> Files;
  std::unique_ptr<store::DvAccount> Session;
};

StoreWorld::StoreWorld()
    : host((fs::copy(Template(), location.HostDirectory, fs::copy_options::recursive), MakeHost(location))),
      files(*host),
      run(files, clock, frontEnd.Set(), dir.Path()) {
  files.Spare(std::string(LogName));
  SignOn();
}

StoreWorld::~StoreWorld() = default;

void StoreWorld::SignOn() {
  look_.reset();
  session.Account = Account(files, clock, location);
  session.ServerName = "BUERO";
  session.Trustees = session.ServerTrustees = session.Account->User().Trustees();
}

void StoreWorld::SignOff() { session.Account.reset(); }

StoreWorld::Look& StoreWorld::Looking() {
  if (!look_) look_ = std::make_unique<Look>(*this);
  return *look_;
}

ArchivePointer StoreWorld::Open(std::string_view path) { return Must(session.Account->GetArchive(path)); }

Lines StoreWorld::Describe(std::string_view path) {
  Look& look = Looking();
  Lines lines;
  look.VisitBelow(path, [&](DvArchive& archive, const std::string& place) {
    if (archive.IsShortCut()) {
      lines.push_back(place + " > " + archive.ID());
      return;
    }
    lines.push_back(fmt::format("{}/ {} {}", place, archive.DisplayType().value_or(-1),
                                archive.Hidden().value_or(false)));
    for (const std::string& source : look.Sources(archive)) lines.push_back(place + "/ mail " + source);
    for (int i = 0; i < Must(archive.Rules().Count()); ++i)
      lines.push_back(place + "/ rule " + Must(archive.Rules().Item(i))->Data().Name);
    const auto found = look.Files->List(archive.ID(), "*.ini", platform::ListWhat::Files);
    for (const auto& file : found.value_or(std::vector<platform::FileEntry>()))
      lines.push_back(place + "/ file " + file.Name + " " +
                      Must(look.Files->ReadFile(JoinPath(archive.ID(), file.Name))));
  });
  return lines;
}

Messages StoreWorld::MessagesBelow(std::string_view path) {
  Look& look = Looking();
  Messages messages;
  look.VisitBelow(path, [&](DvArchive& archive, const std::string&) {
    if (archive.IsShortCut()) return;
    for (const std::string& source : look.Sources(archive)) ++messages[source];
  });
  return messages;
}

Lines StoreWorld::StoreFiles() const {
  Lines lines;
  for (const auto& [name, bytes] : dir.HostTree("store")) {
    lines.push_back(fmt::format("{} {} {:x}", name, bytes.size(), std::hash<std::string>()(bytes)));
  }
  return lines;
}

Lines StoreWorld::Damage() {
  const auto own = MakeHost(location);
  Lines texts;
  store::embedded::CheckStore(*own, clock, location, [&](const store::embedded::StoreFinding& finding) {
    if (!finding.IsNote) texts.push_back(finding.Subject + ": " + finding.Text);
  });
  return texts;
}

Lines StoreWorld::Log() {
  Lines lines = Split(host->ReadFile(run.ErrorLogPath()).value_or(""), "\r\n");
  if (!lines.empty()) lines.erase(lines.begin());
  if (!lines.empty()) lines.pop_back();
  return lines;
}

}  // namespace velmora::faults
