#include "addresses/text_address_file.h"

#include <fmt/format.h>

#include <utility>

#include "base/code_page.h"
#include "base/line_ends.h"

namespace velmora::addresses {
namespace {

// What gathers in memory before it goes to the disk.
constexpr std::size_t BufferSize = std::size_t{1} << 20;

class TextAddressFile final : public AddressFile {
 public:
  // `replaces`: the first flush replaces what stands there.
  TextAddressFile(platform::FileSystem& fileSystem, const TextFormat& format, std::string_view path,
                  std::string_view separator, std::string start, bool replaces)
      : fileSystem_(fileSystem),
        format_(format),
        path_(path),
        separator_(separator),
        buffer_(std::move(start)),
        replaces_(replaces) {}

  Status Add(const AddressRecord& address) override {
    // What is to be replaced stays until the new content is whole, so that one waits for Flush.
    if (buffer_.size() >= BufferSize && !replaces_) {
      if (Status written = Flush(); !written) return written;
    }
    const std::string line = format_.Line(address, separator_);
    if (!FitsCodePage(line)) ++altered_;
    buffer_ += ToCodePage(line);
    buffer_ += CrLf;
    ++unwritten_;
    return {};
  }

  Status Flush() override {
    // A run that ended before its first address replaces nothing.
    if (buffer_.empty() || (replaces_ && unwritten_ == 0)) return {};
    Status written =
        replaces_ ? fileSystem_.ReplaceFile(path_, buffer_) : fileSystem_.AppendFile(path_, buffer_);
    if (!written) return written;
    replaces_ = false;
    buffer_.clear();
    unwritten_ = 0;
    return {};
  }

  std::int64_t Unwritten() const override { return unwritten_; }
  std::string Losses() const override { return CodePageLosses(altered_); }

 private:
  platform::FileSystem& fileSystem_;
  TextFormat format_;
  std::string path_, separator_;
  std::string buffer_;  // in the code page, whole lines
  bool replaces_;
  std::int64_t unwritten_ = 0, altered_ = 0;
};

// Whether the last line of a file lacks its end, so that whatever is appended would become part of it.
Result<bool> EndsWithinALine(platform::FileSystem& fileSystem, std::string_view path, std::int64_t size) {
  const auto reader = fileSystem.OpenReader(path);
  if (!reader) return Fail(reader.error());
  if (Status placed = (*reader)->Seek(size - 1); !placed) return Fail(placed.error());
  const auto last = (*reader)->Read(1);
  if (!last) return Fail(last.error());
  return *last != "\n";
}

// What has to stand before the first record.
Result<std::string> StartOfRecords(platform::FileSystem& fileSystem, std::string_view path,
                                   const platform::FileEntry& existing, bool overwrite,
                                   const std::string& header) {
  if (existing.IsFolder || existing.ReadOnly) {
    return Fail(platform::file_error::AccessDenied,
                platform::FileErrorText(platform::file_error::AccessDenied));
  }
  // A reader takes the first line for the header whatever it says: in an empty file it would lose an address.
  if (overwrite || existing.Size == 0) return header;
  const auto endsWithin = EndsWithinALine(fileSystem, path, existing.Size);
  if (!endsWithin) return Fail(endsWithin.error());
  return std::string(*endsWithin ? CrLf : "");
}

}  // namespace

Result<std::unique_ptr<AddressFile>> OpenTextAddressFile(platform::FileSystem& fileSystem,
                                                         const TextFormat& format, std::string_view path,
                                                         bool overwrite, std::string_view separator) {
  const std::string header = ToCodePage(format.Header(separator)) + std::string(CrLf);
  const auto existing = fileSystem.GetEntry(path);
  if (existing) {
    auto start = StartOfRecords(fileSystem, path, *existing, overwrite, header);
    if (!start) return Fail(start.error());
    return std::make_unique<TextAddressFile>(fileSystem, format, path, separator, std::move(*start),
                                             overwrite);
  }
  if (existing.error().Number != platform::file_error::FileNotFound) return Fail(existing.error());
  // Whether the file can be made shows before the addresses are read.
  if (Status made = fileSystem.WriteFile(path, header, {.Mode = platform::Create::Exclusive}); !made) {
    return Fail(made.error());
  }
  return std::make_unique<TextAddressFile>(fileSystem, format, path, separator, "", false);
}

std::string CodePageLosses(std::int64_t addresses) {
  if (addresses == 0) return "";
  return fmt::format("{} Adresse(n) mit Zeichen, die es in Textdateien nicht gibt: dort steht \"?\"",
                     addresses);
}

}  // namespace velmora::addresses
