#include "mailarchive/format/descriptor.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <limits>

#include "base/numbers.h"
#include "base/paths.h"
#include "base/text.h"
#include "mailarchive/format/file_names.h"
#include "mailarchive/format/text_file.h"

namespace velmora::mailarchive {
namespace {

// The key of the component that makes the entry's kind, by EntryKind.
constexpr std::string_view BodyKeys[] = {"HTML", "FAX", "VOICE"};

void AppendLine(std::string& bytes, std::string_view key, std::string_view value) {
  bytes += key;
  bytes += '=';
  bytes += EncodeValue(value);
  bytes += "\r\n";
}

std::string TextValue(std::string_view bytes) { return BlankControlCharacters(DecodeValue(bytes)); }

std::string PathValue(std::string_view bytes) {
  auto path = DecodeValue(bytes);
  if (!LeadsToOneFile(path)) path.clear();
  return path;
}

int FlagsValue(std::string_view bytes) {
  const auto flags = ParseInteger(bytes).value_or(0);
  return flags < 0 || flags > std::numeric_limits<int>::max() ? 0 : static_cast<int>(flags);
}

template <typename Fields, typename Visitor>
Fields ParseDescriptor(std::string_view bytes, Visitor take) {
  Fields fields;
  while (const auto line = TakeLine(bytes)) {
    if (const auto pair = SplitKeyValue(*line)) take(fields, pair->Key, pair->Value);
  }
  return fields;
}

Result<std::string> ReadDescriptor(platform::FileSystem& fileSystem, std::string_view directory,
                                   std::string_view pageFile) {
  return ReadTextFile(fileSystem, JoinPath(directory, DescriptorName(pageFile)));
}

}  // namespace

std::string FormatDescriptor(const EntryDescriptor& descriptor) {
  std::string bytes;
  AppendLine(bytes, "Sortaddr", descriptor.Sortaddr);
  AppendLine(bytes, "Subject", descriptor.Subject);
  AppendLine(bytes, "Date", FormatDateTime(descriptor.Date));
  AppendLine(bytes, "From", descriptor.From);
  AppendLine(bytes, "To", descriptor.To);
  AppendLine(bytes, "Flags", fmt::to_string(descriptor.Flags));
  AppendLine(bytes, "MailArcEntry", descriptor.MailArcEntry);
  AppendLine(bytes, "MailArcAdd", descriptor.MailArcAdd);
  AppendLine(bytes, BodyKeys[static_cast<std::size_t>(descriptor.Kind)], descriptor.Body);
  if (descriptor.Kind == EntryKind::Mail) {
    AppendLine(bytes, "EML", descriptor.Eml);
    AppendLine(bytes, "SMTP", descriptor.Smtp);
  }
  // A voice mail's comment file is known to its page alone; readers of the format expect no key for it.
  if (descriptor.Kind != EntryKind::Voice) AppendLine(bytes, "COMMENT", descriptor.Comment);
  if (descriptor.HasAttachments) {
    std::string list;
    for (const auto& path : descriptor.Attachments) {
      fmt::format_to(std::back_inserter(list), "{}\"{}\"", list.empty() ? "" : ",", path);
    }
    AppendLine(bytes, "Attachments", list);
  }
  return bytes;
}

bool LeadsToOneFile(std::string_view path) {
  return IsSafeRelativePath(path) && path.find_first_of("*?") == std::string_view::npos;
}

std::string DescriptorName(std::string_view pageFile) {
  constexpr std::string_view Extension = ".htm";
  const auto cut = std::ranges::search(pageFile, Extension, {}, ToLowerAscii);
  return std::string(pageFile.begin(), cut.begin()) + std::string(DescriptorExtension);
}

IndexFields ParseIndexFields(std::string_view descriptorBytes) {
  return ParseDescriptor<IndexFields>(descriptorBytes,
                                      [](IndexFields& fields, std::string_view key, std::string_view value) {
                                        if (key == "Subject") fields.Subject = TextValue(value);
                                        if (key == "Sortaddr") fields.Sortaddr = TextValue(value);
                                        if (key == "Date")
                                          fields.Date = ParseDateTime(value).value_or(DateTime());
                                        if (key == "From") fields.From = TextValue(value);
                                        if (key == "To") fields.To = TextValue(value);
                                        if (key == "Flags") fields.Flags = FlagsValue(value);
                                        if (key == "COMMENT") fields.Comment = PathValue(value);
                                      });
}

EntryFields ParseEntryFields(std::string_view descriptorBytes) {
  return ParseDescriptor<EntryFields>(descriptorBytes,
                                      [](EntryFields& fields, std::string_view key, std::string_view value) {
                                        if (std::ranges::find(BodyKeys, key) != std::end(BodyKeys))
                                          fields.Body = PathValue(value);
                                        if (key == "EML") fields.Eml = PathValue(value);
                                        if (key == "SMTP") fields.Smtp = PathValue(value);
                                        if (key == "Attachments") fields.Attachments = DecodeValue(value);
                                        if (key == "Flags") fields.Flags = FlagsValue(value);
                                        if (key == "MailArcEntry") fields.MailArcEntry = PathValue(value);
                                        if (key == "MailArcAdd") fields.MailArcAdd = PathValue(value);
                                        if (key == "COMMENT") fields.Comment = PathValue(value);
                                      });
}

std::optional<IndexFields> ReadIndexFields(platform::FileSystem& fileSystem, std::string_view directory,
                                           std::string_view pageFile) {
  const auto bytes = ReadDescriptor(fileSystem, directory, pageFile);
  if (!bytes) return std::nullopt;
  return ParseIndexFields(*bytes);
}

std::optional<EntryFields> ReadEntryFields(platform::FileSystem& fileSystem, std::string_view directory,
                                           std::string_view pageFile) {
  const auto bytes = ReadDescriptor(fileSystem, directory, pageFile);
  if (!bytes) return std::nullopt;
  return ParseEntryFields(*bytes);
}

std::vector<std::string> SplitAttachments(std::string_view value) {
  std::vector<std::string> paths;
  for (const auto& piece : Split(value, "\",\"")) {
    auto path = ReplaceAll(piece, "\"", "");
    if (LeadsToOneFile(path)) paths.push_back(std::move(path));
  }
  return paths;
}

}  // namespace velmora::mailarchive
