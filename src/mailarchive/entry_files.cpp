#include "mailarchive/entry_files.h"

#include <algorithm>

#include "mailarchive/format/descriptor.h"

namespace velmora::mailarchive {

namespace {

// How often a free name may be snatched away by another process before the file counts as failed.
constexpr int MaxNameAttempts = 100;

std::string NumberedName(std::string_view fileName, int number) {
  const std::size_t point = std::min(fileName.find('.'), fileName.size());
  return std::string(fileName.substr(0, point)) + std::to_string(number) +
         std::string(fileName.substr(point));
}

}  // namespace

EntryFiles::EntryFiles(const ExportContext& context, ExportPlace& place) : context_(context), place_(place) {}

platform::WriteOptions EntryFiles::DatedOptions(platform::Create mode) const {
  platform::WriteOptions options;
  options.Mode = mode;
  if (!date_.IsNull()) options.Time = date_;
  return options;
}

std::string EntryFiles::FreeName(std::string_view folder, std::string_view fileName) {
  if (!context_.options.NumbersNames()) return std::string(fileName);
  return Files().UniqueFileName(place_.Directory() + std::string(folder), fileName);
}

std::string EntryFiles::FreePageName(std::string_view pageFile) {
  std::string name = FreeName("", pageFile);
  if (!context_.options.NumbersNames()) return name;
  for (int number = 1; Files().FileExists(place_.Directory() + DescriptorName(name)); ++number) {
    name = FreeName("", NumberedName(pageFile, number));
  }
  return name;
}

std::optional<std::string> EntryFiles::Write(std::optional<Component> component, std::string_view fileName,
                                             const Writer& writer) {
  const bool numbering = context_.options.NumbersNames();
  const platform::Create mode = numbering ? platform::Create::Exclusive : platform::Create::Overwrite;
  std::string prefix = component ? place_.FolderPrefix(*component) : "";
  std::string name(fileName);
  bool folderMadeAnew = false;
  Status written;
  for (int attempt = 0; attempt < MaxNameAttempts; ++attempt) {
    written = WriteNoted(prefix + name, mode, writer);
    if (written) return prefix + name;
    if (numbering && written.error().Number == platform::file_error::AlreadyExists) {
      name = FreeName(prefix, name);
    } else if (component && !folderMadeAnew && written.error().Number == platform::file_error::PathNotFound) {
      // Somebody removed the folder that an earlier message had made.
      place_.ForgetFolder(*component);
      prefix = place_.FolderPrefix(*component);
      folderMadeAnew = true;
    } else {
      break;
    }
  }
  LogFailure(prefix + name, written.error());
  return std::nullopt;
}

std::optional<std::string> EntryFiles::WriteText(std::optional<Component> component,
                                                 std::string_view fileName, std::string_view text,
                                                 Unmappable unmappable) {
  const std::string bytes = ToCodePage(text, unmappable);
  return Write(component, fileName, [&](const std::string& path, platform::Create mode) {
    return Files().WriteFile(path, bytes, DatedOptions(mode));
  });
}

void EntryFiles::WriteDescriptor(const std::string& fileName, std::string_view bytes) {
  const auto mode =
      context_.options.NumbersNames() ? platform::Create::Exclusive : platform::Create::Overwrite;
  const Status written = WriteNoted(fileName, mode, [&](const std::string& path, platform::Create creation) {
    platform::WriteOptions undated;
    undated.Mode = creation;
    return Files().WriteFile(path, bytes, undated);
  });
  if (!written) LogFailure(fileName, written.error());
}

Status EntryFiles::WriteNoted(const std::string& relativePath, platform::Create mode, const Writer& writer) {
  constexpr int taken = platform::file_error::AlreadyExists;
  const std::string path = place_.Directory() + relativePath;
  if (notes_ == nullptr) {
    place_.Disown(relativePath);
    return writer(path, mode);
  }
  // What stands there is not this entry's, and must not be noted as such even for a moment.
  if (Files().FileExists(path)) return Fail(taken, platform::FileErrorText(taken));
  notes_->NoteFile(relativePath);
  Status written = writer(path, mode);
  if (!written && written.error().Number == taken) notes_->Withdraw(relativePath);
  return written;
}

void EntryFiles::LogFailure(std::string_view relativePath, const Error& error) {
  complete_ = false;
  context_.run.LogError(place_.Directory() + std::string(relativePath), error);
}

}  // namespace velmora::mailarchive
