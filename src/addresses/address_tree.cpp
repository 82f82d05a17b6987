#include "addresses/address_tree.h"

#include <cstdint>
#include <functional>

#include "addresses/sheet_address_file.h"
#include "addresses/vcard.h"
#include "base/code_page.h"
#include "base/paths.h"
#include "base/text.h"
#include "mailarchive/format/file_names.h"
#include "mailarchive/format/marker.h"
#include "store/errors.h"
#include "store/filter.h"

namespace velmora::addresses {
namespace {

void LogStoreFailure(run::Run& run, std::string_view path, const Error& error) {
  run.LogError(path, error.Number, "DvISE-Error " + error.Text, run::Severity::Error);
}

void ShowFailure(run::Run& run) {
  if (!run.BatchMode) {
    run.frontEnd().prompts.Message("Fehler", "Fehler beim Adressenexport", run::Icon::Stop);
  }
}

bool IsVisible(store::DvItem& item, bool inhibitItems) {
  const auto flags = item.Fields().Get(store::tag::Flags);
  const auto bits = static_cast<std::uint32_t>(flags ? store::FieldNumber(*flags) : 0);
  return store::PassesInhibition(bits, inhibitItems);
}

// The name of a card's file, before a number makes it unique. An address without a subject is known by its
// name.
std::string CardName(const AddressRecord& address) {
  const std::string base = mailarchive::EntryBaseName(address.Subject);
  const bool isEmpty = Trim(base).empty();
  return (isEmpty ? mailarchive::EntryBaseName(address.Fields[field::DisplayName]) : base) + ".vcf";
}

}  // namespace

void AddressTree::Export(store::DvArchive& archive) {
  Folder target{options_.Target.Directory, nullptr, nullptr, true};
  Folder folder = ExportArchiveAddresses(archive, target);
  if (!options_.WithSubArchives) return;
  store::WalkPath path;
  ExportSubArchives(archive, folder, path);
}

void AddressTree::ExportSubArchives(store::DvArchive& archive, Folder& folder, store::WalkPath& path) {
  if (run_.CheckCancel()) return;
  const auto subArchives = archive.SubArchives();
  if (!subArchives) return ReportStoreFailure(run_, archive.FullPath(), subArchives.error());
  if (!path.Enter(archive.ID())) {
    return ReportStoreFailure(run_, archive.FullPath(),
                              {store::store_error::Damaged, "Der Archivbaum ist zu tief verschachtelt"});
  }
  for (const std::shared_ptr<store::DvArchive>& sub : *subArchives) {
    if (run_.CheckCancel()) break;
    if (sub->IsShortCut() || path.Contains(sub->ID())) continue;
    Folder subFolder = ExportArchiveAddresses(*sub, folder);
    ExportSubArchives(*sub, subFolder, path);
  }
  path.Leave();
}

AddressTree::Folder AddressTree::ExportArchiveAddresses(store::DvArchive& archive, Folder& target) {
  run_.frontEnd().progress.SetArchiveText(archive.FullPath());
  Folder folder = options_.WithSubArchives ? FolderOf(archive, target) : target;
  const std::vector<store::EntryKey> keys = CollectKeys(archive);
  if (keys.empty() || run_.CancelRequested()) return folder;
  if (Status made = Make(folder); !made) {
    ReportFailure(run_, folder.Path, made.error());
    return folder;
  }
  if (options_.Format == AddressFormat::VCard) {
    WriteCards(archive, keys, folder);
  } else {
    WriteBook(archive, keys, folder);
  }
  ++run_.counters.Archives;
  return folder;
}

AddressTree::Folder AddressTree::FolderOf(store::DvArchive& archive, Folder& target) {
  platform::FileSystem& files = run_.fileSystem();
  const std::string name =
      mailarchive::ArchiveDirectoryName(archive.DisplayName().value_or(""), archive.ID());
  std::string path = target.Path + name;
  // A second archive of the same name must not replace the first one's addresses.
  const auto isTaken = [&] {
    return used_.contains(FoldCase(path)) || files.FileExists(path) ||
           (!options_.Overwrite && files.FolderExists(path));
  };
  for (int number = 1; isTaken(); ++number) path = target.Path + name + std::to_string(number);
  return {AddBackslash(path), &target, &archive, false};
}

Status AddressTree::Make(Folder& folder) {
  if (folder.IsMade) return {};
  if (Status parent = Make(*folder.Parent); !parent) return parent;
  platform::FileSystem& files = run_.fileSystem();
  const std::string path = StripBackslash(folder.Path);
  if (!files.FolderExists(path)) {
    if (Status created = files.CreateFolder(path); !created) return created;
  }
  folder.IsMade = true;
  used_.insert(FoldCase(path));

  using mailarchive::MailArcKind;
  mailarchive::MarkerTexts texts;
  texts.DisplayName = folder.Archive->DisplayName().value_or("");
  texts.FullPath = texts.DisplayName.empty() ? folder.Archive->ID() : folder.Archive->FullPath();
  texts.DirName = NormalizePath(folder.Archive->ID());
  texts.Comment = options_.Comment;
  texts.CopyRight = options_.CopyRight;
  // A folder used again may have been another archive's; what belongs to a mail archive keeps its marker.
  const bool isAddressArchive = mailarchive::GetMailArcKind(files, path) == MailArcKind::Address;
  const Status marked =
      mailarchive::WriteArchiveMarker(files, path, MailArcKind::Address, texts, isAddressArchive);
  // The addresses do not depend on it, but the import finds their archive by it.
  if (!marked) run_.LogError(path, marked.error());
  return {};
}

std::vector<store::EntryKey> AddressTree::CollectKeys(store::DvArchive& archive) {
  const auto entries = archive.GetEntries(store::filter_preset::OnlyAddress, store::EntryOrder::BySubject);
  if (!entries) {
    ReportStoreFailure(run_, archive.FullPath(), entries.error());
    return {};
  }
  std::vector<store::EntryKey> keys;
  const int count = (*entries)->Count();
  for (int index = 0; index < count && !run_.CheckCancel(); ++index) {
    const store::EntryKey key = (*entries)->Key(index);
    const auto view = archive.ItemView(key);
    const bool isAddress = view && (*view)->AsAddress() != nullptr;
    if (isAddress && IsVisible((*view)->Item(), options_.InhibitItems)) keys.push_back(key);
  }
  return keys;
}

template <typename Write>
void AddressTree::ForEachAddress(store::DvArchive& archive, const std::vector<store::EntryKey>& keys,
                                 Write write) {
  run::Progress& progress = run_.frontEnd().progress;
  const auto total = static_cast<std::int64_t>(keys.size());
  for (std::int64_t done = 0; done < total && !run_.CheckCancel(); ++done) {
    progress.SetBar(done, total);
    const auto record = Read(archive, keys[static_cast<std::size_t>(done)]);
    if (!record) {
      LogStoreFailure(run_, archive.FullPath(), record.error());
      continue;
    }
    progress.SetItemText(record->Subject);
    if (!write(*record)) break;
  }
  if (!run_.CancelRequested()) progress.SetBar(total, total);
}

void AddressTree::WriteBook(store::DvArchive& archive, const std::vector<store::EntryKey>& keys,
                            const Folder& folder) {
  const std::string path = folder.Path + options_.Target.FileName;
  const auto opened =
      OpenAddressFile(run_.fileSystem(), options_.Format, path, options_.Overwrite, options_.Files);
  if (!opened) return ReportFailure(run_, path, opened.error());
  if (!opened->Note) run_.LogError(options_.Files.WorkbookTemplate, opened->Note.error());

  AddressFile& file = *opened->File;
  Status added;
  ForEachAddress(archive, keys, [&](const AddressRecord& record) {
    added = file.Add(record);
    run_.counters.Addresses += added ? 1 : 0;
    return added.has_value();
  });
  if (!added) {
    const bool isSheet = options_.Format == AddressFormat::Excel;
    ReportFailure(run_, isSheet ? path + ":" + std::string(AddressSheet) : path, added.error());
  }
  const Status flushed = file.Flush();
  if (!flushed) {
    run_.counters.Addresses -= file.Unwritten();
    if (added) ReportFailure(run_, path, flushed.error());  // else the disk has been told of
  }
  WarnOfLosses(path, file.Losses());
}

void AddressTree::WriteCards(store::DvArchive& archive, const std::vector<store::EntryKey>& keys,
                             const Folder& folder) {
  platform::FileSystem& files = run_.fileSystem();
  const DateTime now = run_.clock().Now();
  std::int64_t altered = 0;
  ForEachAddress(archive, keys, [&](const AddressRecord& record) {
    const std::string path = folder.Path + files.UniqueFileName(folder.Path, CardName(record));
    const std::string card = FormatVCard(record, now);
    const Status written = files.WriteFile(path, ToCodePage(card), {.Mode = platform::Create::Exclusive});
    if (!written) {
      run_.LogError(path, written.error());
      return true;
    }
    altered += FitsCodePage(card) ? 0 : 1;
    ++run_.counters.Addresses;
    return true;
  });
  WarnOfLosses(folder.Path, CodePageLosses(altered));
}

Result<AddressRecord> AddressTree::Read(store::DvArchive& archive, store::EntryKey key) {
  const auto view = archive.ItemView(key);
  if (!view) return Fail(view.error());
  store::DvAddressItem* const address = (*view)->AsAddress();
  if (address == nullptr) return Fail(store::store_error::WrongKind, "Der Eintrag ist keine Adresse mehr");
  return ReadAddressRecord(*address);
}

void AddressTree::WarnOfLosses(std::string_view path, const std::string& losses) {
  if (!losses.empty()) run_.LogError(path, 0, losses, run::Severity::Warning);
}

void ReportFailure(run::Run& run, std::string_view path, const Error& error) {
  run.LogError(path, error);
  ShowFailure(run);
}

void ReportStoreFailure(run::Run& run, std::string_view path, const Error& error) {
  LogStoreFailure(run, path, error);
  ShowFailure(run);
}

}  // namespace velmora::addresses
