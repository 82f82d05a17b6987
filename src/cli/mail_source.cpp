#include "cli/mail_source.h"

#include <fmt/core.h>

#include <array>
#include <utility>
#include <vector>

#include "base/paths.h"
#include "cli/mbox_source.h"
#include "platform/host_names.h"
#include "store/errors.h"

namespace velmora::cli {
namespace {

constexpr std::string_view MboxBegin = "From ";

// What a user recognises: the file as the host names it.
std::string DisplayPath(platform::FileSystem& fileSystem, std::string_view path) {
  return fileSystem.HostPath(path).value_or(std::string(path));
}

using NextMessage = tl::expected<std::optional<SourceMessage>, SourceError>;

NextMessage ReadMessage(platform::FileSystem& fileSystem, const std::string& path, std::size_t maxBytes) {
  const auto failed = [&](Error cause) {
    return tl::unexpected(SourceError{DisplayPath(fileSystem, path), std::move(cause)});
  };
  const auto entry = fileSystem.GetEntry(path);
  if (!entry) return failed(entry.error());
  if (static_cast<std::uint64_t>(entry->Size) > maxBytes) {
    return failed({store::store_error::Failed, "Die Nachricht ist zu groß"});
  }
  auto bytes = fileSystem.ReadFile(path);
  if (!bytes) return failed(bytes.error());
  SourceMessage message;
  message.Bytes = std::move(*bytes);
  message.Origin = DisplayPath(fileSystem, path);
  return std::optional(std::move(message));
}

// Files that are one message each.
class FileSource final : public MailSource {
 public:
  struct File {
    std::string Path;
    bool Viewed = false;
  };

  FileSource(platform::FileSystem& fileSystem, std::vector<File> files, std::size_t maxBytes)
      : fileSystem_(fileSystem), files_(std::move(files)), maxBytes_(maxBytes) {}

  NextMessage Next() override {
    if (next_ == files_.size()) return std::optional<SourceMessage>();
    const auto& file = files_[next_++];
    auto message = ReadMessage(fileSystem_, file.Path, maxBytes_);
    if (message) (*message)->Viewed = file.Viewed;
    return message;
  }
  std::int64_t Total() const override { return static_cast<std::int64_t>(files_.size()); }
  std::int64_t Done() const override { return static_cast<std::int64_t>(next_); }

 private:
  platform::FileSystem& fileSystem_;
  std::vector<File> files_;
  std::size_t maxBytes_;
  std::size_t next_ = 0;
};

// The flag S (seen) behind ":2,"; some systems write ";" or "!" for the colon. A name of ours has no colon:
// the host's own tells.
bool IsSeen(std::string_view windowsName) {
  const std::string fileName = platform::ToHostName(windowsName).value_or(std::string());
  const auto info = fileName.rfind("2,");
  return info != std::string::npos && info > 0 &&
         std::string_view(":;!").find(fileName[info - 1]) != std::string_view::npos &&
         fileName.find('S', info) != std::string::npos;
}

Result<std::unique_ptr<MailSource>> OpenMaildir(platform::FileSystem& fileSystem, std::string_view path,
                                                std::size_t maxBytes) {
  static constexpr std::array<std::string_view, 2> Folders{"cur", "new"};
  std::vector<FileSource::File> files;
  bool isMaildir = false;
  for (const auto folder : Folders) {
    const std::string directory = JoinPath(path, folder);
    if (!fileSystem.FolderExists(directory)) continue;
    isMaildir = true;
    const auto entries = fileSystem.List(directory, "*", platform::ListWhat::Files);
    if (!entries) return Fail(entries.error());
    for (const auto& entry : *entries) {
      if (entry.Name.starts_with('.')) continue;  // no message by the format's own rule
      files.push_back({JoinPath(directory, entry.Name), folder == "cur" && IsSeen(entry.Name)});
    }
  }
  if (!isMaildir) return Fail(store::store_error::WrongKind, "Das Verzeichnis ist kein Maildir");
  return std::make_unique<FileSource>(fileSystem, std::move(files), maxBytes);
}

}  // namespace

Result<std::unique_ptr<MailSource>> OpenMailSource(platform::FileSystem& fileSystem, std::string_view path,
                                                   std::size_t maxMessageBytes) {
  const auto entry = fileSystem.GetEntry(path);
  if (!entry) return Fail(entry.error());
  if (entry->IsFolder) return OpenMaildir(fileSystem, path, maxMessageBytes);
  auto reader = fileSystem.OpenReader(path);
  if (!reader) return Fail(reader.error());
  const auto begin = (*reader)->Read(MboxBegin.size());
  if (!begin) return Fail(begin.error());
  if (*begin != MboxBegin) {
    std::vector<FileSource::File> files{{std::string(path), false}};
    return std::make_unique<FileSource>(fileSystem, std::move(files), maxMessageBytes);
  }
  if (const auto back = (*reader)->Seek(0); !back) return Fail(back.error());
  return std::make_unique<MboxSource>(std::move(*reader), DisplayPath(fileSystem, path), entry->Size,
                                      maxMessageBytes);
}

}  // namespace velmora::cli
