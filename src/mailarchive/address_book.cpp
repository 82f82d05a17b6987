#include "mailarchive/address_book.h"

#include <fmt/format.h>

#include <utility>

#include "addresses/address_target.h"

namespace velmora::mailarchive {

AddressBook::AddressBook(const ExportContext& context, store::DvArchive& archive,
                         const std::string& directory)
    : context_(context),
      archive_(archive),
      path_(directory + context.options.AddressBookName +
            std::string(addresses::PlaceOf(context.options.AddressFormat).Extension)) {}

void AddressBook::Add(const addresses::AddressRecord& address, store::EntryKey key) {
  addresses::AddressFile* const file = File();
  if (file == nullptr) {
    ++lost_;
    return;
  }
  const std::string lossesBefore = file->Losses();
  if (const Status added = file->Add(address); !added) return LogFailure(added.error());
  // What the format could not hold is still in the store only.
  if (file->Losses() == lossesBefore) whole_.push_back(key);
}

addresses::AddressFile* AddressBook::File() {
  if (file_) return file_->get();
  addresses::AddressFileOptions options = context_.options.AddressFiles;
  options.WorkbookTemplate = context_.designs.FormPath(Form::ExcelAddressSheet);
  auto opened = addresses::OpenAddressFile(context_.run.fileSystem(), context_.options.AddressFormat, path_,
                                           false, options);
  file_.emplace();
  if (!opened) {
    LogFailure(opened.error());
    return nullptr;
  }
  if (!opened->Note) context_.run.LogError(options.WorkbookTemplate, opened->Note.error());
  *file_ = std::move(opened->File);
  return file_->get();
}

void AddressBook::Finish() {
  if (lost_ > 0) {
    context_.run.LogError(path_, platform::file_error::DeviceError,
                          fmt::format("{} Adresse(n) wurden nicht gespeichert", lost_), run::Severity::Error);
    lost_ = 0;
  }
  WarnOfLosses(addresses::CodePageLosses(std::exchange(lossyCards_, 0)));
  if (!file_ || !*file_) return;
  addresses::AddressFile& file = **file_;
  if (const Status written = file.Flush(); written) {
    DeleteMoved();
  } else {
    LogFailure({written.error().Number,
                fmt::format("{}: {} Adresse(n) fehlen", written.error().Text, file.Unwritten())});
  }
  WarnOfLosses(file.Losses());
  file_.reset();
  whole_.clear();
}

void AddressBook::WarnOfLosses(const std::string& losses) {
  if (losses.empty()) return;
  context_.run.LogError(path_, 0, losses + (IsMove() ? "; sie bleiben im Archiv" : ""),
                        run::Severity::Warning);
}

bool AddressBook::IsMove() const { return context_.options.Mode == CopyMode::Move; }

void AddressBook::DeleteMoved() {
  if (!IsMove() || context_.run.CancelRequested()) return;
  for (const store::EntryKey key : whole_) {
    const auto entry = archive_.GetEntry(key);
    if (entry) (void)(*entry)->Delete();  // an entry that stays is there twice, which loses nothing
  }
}

void AddressBook::LogFailure(const Error& error) { context_.run.LogError(path_, error); }

}  // namespace velmora::mailarchive
