// A file into which a run writes one address after the other: delimited text, GroupWise address book or
// workbook. vCards are files of their own, see vcard.h.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "addresses/address_record.h"
#include "base/result.h"
#include "platform/file_system.h"

namespace velmora::addresses {

enum class AddressFormat { Delimited = 1, Excel = 2, GroupWise = 3, VCard = 4 };

// What the settings say of the formats.
struct AddressFileOptions {
  std::string CsvSeparator = ";";
  std::string NabSeparator = ",";
  std::string WorkbookTemplate;  // Windows path; a workbook is made without it when it cannot be copied
};

class AddressFile {
 public:
  virtual ~AddressFile() = default;
  // After a failure this record is not part of the file, and the records before it are as they were.
  virtual Status Add(const AddressRecord& address) = 0;
  // Every record added so far stands in the file when this succeeds. A workbook is written here; after a
  // failure its old content stands. May be called again after further records, and after a failure.
  virtual Status Flush() = 0;

  // Records added that do not stand in the file yet.
  virtual std::int64_t Unwritten() const = 0;
  // What of the records the format could not hold, as a German text for the log; "" when it is all there.
  virtual std::string Losses() const = 0;
};

// Opens the file of one of the three formats: a new one, or an emptied one with `overwrite`, begins with the
// format's header; an existing one is appended to. With `overwrite` the old content goes when the new one is
// written. `note`: a failure that did not keep the file from being opened (the template could not be copied),
// to be logged. Fails with a file error or a table error.
struct OpenedAddressFile {
  std::unique_ptr<AddressFile> File;
  Status Note;
};
Result<OpenedAddressFile> OpenAddressFile(platform::FileSystem& fileSystem, AddressFormat format,
                                          std::string_view path, bool overwrite,
                                          const AddressFileOptions& options);

// The German text for the log on addresses whose characters the code page of text files lacks: they stand
// there as "?". "" for none.
std::string CodePageLosses(std::int64_t addresses);

}  // namespace velmora::addresses
