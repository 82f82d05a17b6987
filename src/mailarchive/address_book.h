// The addresses that a run writes into one directory of the mail archive: one file for all of them, which is
// complete only when the directory is.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "addresses/address_file.h"
#include "mailarchive/export_run.h"

namespace velmora::mailarchive {

class AddressBook {
 public:
  // `directory`: with "\" at its end.
  AddressBook(const ExportContext& context, store::DvArchive& archive, const std::string& directory);

  // Adds an address to the file, which is opened with the first. On a move the entry is deleted as soon as
  // the file is safe. Failures are logged.
  void Add(const addresses::AddressRecord& address, store::EntryKey key);
  // A vCard of the directory could not hold its address whole, which is told once for all of them.
  void NoteLossyCard() { ++lossyCards_; }
  // Completes the file, however the run ends, then deletes what a move has to delete: all but the addresses
  // that the file's format could not hold whole.
  void Finish();

 private:
  // The open file; nothing, and one log entry for all addresses, when it cannot be opened.
  addresses::AddressFile* File();
  void DeleteMoved();
  void WarnOfLosses(const std::string& losses);
  bool IsMove() const;
  void LogFailure(const Error& error);

  const ExportContext& context_;
  store::DvArchive& archive_;
  std::string path_;
  std::optional<std::unique_ptr<addresses::AddressFile>> file_;  // null: it could not be opened
  std::vector<store::EntryKey> whole_;  // of addresses that the file holds without loss
  std::int64_t lost_ = 0;               // addresses that came after a failure
  std::int64_t lossyCards_ = 0;
};

}  // namespace velmora::mailarchive
