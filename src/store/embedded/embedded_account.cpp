#include "store/embedded/embedded_account.h"

#include <fmt/core.h>

#include <array>
#include <utility>

#include "base/paths.h"
#include "platform/make_folders.h"
#include "store/embedded/embedded_archive.h"
#include "store/embedded/outgoing.h"
#include "store/errors.h"
#include "store/vocabulary.h"

namespace velmora::store::embedded {
namespace {

constexpr int ProductDavid = 3;
constexpr int BackendLinux = 2;
// A larger file is no mail; it would stand in memory as a whole.
constexpr std::int64_t MaxMailFile = std::int64_t{1} << 30;

struct SiteField {
  std::string DvSite::*Field;
  std::string_view Name;
};
constexpr std::array<SiteField, 6> SiteFields{{
    {&DvSite::Company, site_value::Company},
    {&DvSite::SiteID, site_value::SiteID},
    {&DvSite::SiteEnvironment, site_value::SiteEnvironment},
    {&DvSite::SiteIDChg, site_value::SiteIDChg},
    {&DvSite::SiteReg, site_value::SiteReg},
    {&DvSite::Account, site_value::Account},
}};

Result<std::string> ReadMailFile(platform::FileSystem& fileSystem, std::string_view path) {
  const auto entry = fileSystem.GetEntry(path);
  if (!entry) return Fail(entry.error());
  if (entry->Size > MaxMailFile) return Fail(store_error::Failed, fmt::format("{} ist zu groß", path));
  return fileSystem.ReadFile(path);
}

}  // namespace

Result<std::unique_ptr<DvAddressItem>> EmbeddedUser::VCard() {
  const auto values = session_->Site.Card(record_.Id);
  if (!values) return Fail(values.error());
  return session_->Messages.MakeAddress(*values);
}

EmbeddedAccount::EmbeddedAccount(std::shared_ptr<StoreSession> session)
    : session_(std::move(session)),
      user_(session_, session_->User),
      resources_(session_->FileSystem, session_->Layout, session_->Site) {
  // The session owns the message store, and with it the handler.
  session_->Messages.SetSubmitHandler(
      [&target = *session_](DvMailItem& mail, EntryKey key) { return SubmitMail(target, mail, key); });
}

EmbeddedAccount::~EmbeddedAccount() { Logoff(); }

Result<std::vector<std::unique_ptr<DvUser>>> EmbeddedAccount::Users() {
  auto records = session_->Site.Users();
  if (!records) return Fail(records.error());
  std::vector<std::unique_ptr<DvUser>> users;
  for (auto& record : *records) users.push_back(std::make_unique<EmbeddedUser>(session_, std::move(record)));
  return users;
}

int EmbeddedAccount::Product() { return ProductDavid; }
int EmbeddedAccount::BackendType() { return BackendLinux; }

Result<DvSite> EmbeddedAccount::Site() {
  DvSite site;
  for (const auto& [field, name] : SiteFields) {
    auto value = session_->Site.Value(name);
    if (!value) return Fail(value.error());
    site.*field = std::move(*value);
  }
  return site;
}

Result<std::shared_ptr<DvArchive>> EmbeddedAccount::GetArchive(std::string_view path) {
  auto record = FindArchive(*session_, path);
  if (!record) return Fail(record.error());
  return Open(std::move(*record));
}

Result<std::shared_ptr<DvArchive>> EmbeddedAccount::GetSpecialArchive(int kind) {
  const auto directory = session_->Layout.SpecialDirectory(kind, session_->User.Id);
  if (!directory)
    return Fail(store_error::NotFound, fmt::format("Kein besonderes Archiv der Nummer {}", kind));
  auto record =
      kind == special::ArchiveRoot ? session_->Tree.Root() : session_->Tree.FindByDirectory(*directory);
  if (!record) return Fail(record.error());
  return Open(std::move(*record));
}

Result<std::shared_ptr<DvArchive>> EmbeddedAccount::Open(ArchiveRecord record) {
  const auto rights = session_->Access.RightsOn(record);
  auto archive = std::make_shared<EmbeddedArchive>(session_, std::move(record), rights);
  if (rights != 0) return archive;
  return Fail(store_error::NoAccess,
              fmt::format("Keine Zugriffsrechte auf das Archiv {}", archive->FullPath()));
}

Result<std::string> EmbeddedAccount::DVEmlFromMailItem(DvItem& item, std::string_view temporaryDirectory) {
  const auto location = item.Fields().Get(tag::Location);
  if (!location) return Fail(location.error());
  const std::string directory = StripBackslash(DirectoryOf(FieldText(*location)));
  const std::string source = session_->Messages.SourcePath(directory, item.Key());
  if (!source.empty()) return source;

  if (item.Type() != item_type::EMail) return Fail(store_error::WrongKind, "Der Eintrag ist keine Mail");
  const auto message = session_->Messages.ComposeSource(directory, item.Key());
  if (!message) return Fail(message.error());
  auto& fileSystem = session_->FileSystem;
  if (const auto made = platform::MakeFolders(fileSystem, temporaryDirectory, true); !made) {
    return Fail(made.error());
  }
  std::string path = JoinPath(temporaryDirectory, "velmora.eml");
  platform::WriteOptions options;
  options.OwnerOnly = true;
  if (const auto written = fileSystem.WriteFile(path, *message, options); !written)
    return Fail(written.error());
  return path;
}

Result<std::unique_ptr<DvItem>> EmbeddedAccount::DVMailItemFromEml(std::string_view path, DvArchive& target) {
  const auto message = ReadMailFile(session_->FileSystem, path);
  if (!message) return Fail(message.error());
  DeliverOptions options;
  options.Mailbox = path;
  const auto key = Store(target, *message, options);
  if (!key) return Fail(key.error());
  return session_->Messages.GetEntry(target.ID(), *key);
}

Result<EntryKey> EmbeddedAccount::Deliver(DvArchive& target, std::string_view message,
                                          const DeliverOptions& options) {
  const auto key = Store(target, message, options);
  if (!key) return key;
  LogDelivery(*session_, target.ID(), *key, options.Mailbox);
  if (session_->Logs.IsDue()) {
    if (const auto committed = Commit(); !committed) return Fail(committed.error());
  }
  return key;
}

Result<EntryKey> EmbeddedAccount::Store(DvArchive& target, std::string_view message,
                                        const DeliverOptions& options) {
  const auto rights = target.AccessRights();
  if (!rights) return Fail(rights.error());
  if (*rights == 0) {
    return Fail(store_error::NoAccess,
                fmt::format("Keine Zugriffsrechte auf das Archiv {}", target.FullPath()));
  }
  return session_->Messages.Deliver(target.ID(), message, options);
}

void EmbeddedAccount::SetPatience(Patience patience) {
  session_->Tree.SetPatience(patience);
  session_->Messages.SetPatience(patience);
}

Status EmbeddedAccount::Commit() {
  const auto committed = session_->Messages.Commit();
  session_->Logs.Write();
  return committed;
}

void EmbeddedAccount::Logoff() {
  // What cannot be written now cannot be written later either; every caller that must know commits itself.
  (void)Commit();
}

}  // namespace velmora::store::embedded
