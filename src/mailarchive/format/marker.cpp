#include "mailarchive/format/marker.h"

#include <algorithm>
#include <array>
#include <utility>

#include "base/paths.h"
#include "html/converters.h"
#include "mailarchive/format/marker_names.h"
#include "mailarchive/format/text_file.h"

namespace velmora::mailarchive {
namespace {

// Where a directory's texts are looked for. A sub marker wins here, a root marker in the probe of the kind.
constexpr std::array DescriptorOrder = {MarkerNames[1].Name, MarkerNames[0].Name, MarkerNames[3].Name,
                                        MarkerNames[1].Legacy, MarkerNames[0].Legacy};

struct MarkerKey {
  std::string_view Key;
  std::string ArcDescriptor::*Field;
};

// In the order in which they are written.
constexpr MarkerKey MarkerKeys[] = {
    {"ArchiveDisplayName", &ArcDescriptor::ArchiveDisplayName},
    {"ArchiveFullPath", &ArcDescriptor::ArchiveFullPath},
    {"ArchiveDirName", &ArcDescriptor::ArchiveDirName},
    {"ArchiveComment", &ArcDescriptor::ArchiveComment},
    {"ArchiveCopyRight", &ArcDescriptor::ArchiveCopyRight},
};

ArcDescriptor WrittenValues(const MarkerTexts& texts) {
  return {.ArchiveDisplayName = texts.DisplayName.empty() ? " " : texts.DisplayName,
          .ArchiveFullPath = texts.FullPath,
          .ArchiveComment = html::TextToHtml(texts.Comment, true),
          .ArchiveCopyRight = html::TextToHtml(texts.CopyRight, true),
          .ArchiveDirName = std::string(FileNameOf(texts.DirName))};
}

std::string FormatMarker(const MarkerName& marker, const MarkerTexts& texts) {
  std::string bytes(marker.FirstLine);
  bytes += "\r\n";
  if (marker.Kind != MailArcKind::Data) {
    const auto values = WrittenValues(texts);
    for (const auto& [key, field] : MarkerKeys) {
      bytes += key;
      bytes += '=';
      bytes += EncodeValue(values.*field);
      bytes += "\r\n";
    }
  }
  return bytes + "\r\n";
}

ArcDescriptor ParseMarker(std::string_view bytes) {
  ArcDescriptor descriptor;
  while (const auto line = TakeLine(bytes)) {
    const auto pair = SplitKeyValue(*line);
    if (!pair) continue;
    const auto* row = std::ranges::find(MarkerKeys, pair->Key, &MarkerKey::Key);
    if (row != std::end(MarkerKeys)) descriptor.*(row->Field) = DecodeValue(pair->Value);
  }
  return descriptor;
}

// What a process leaves that is killed between making a marker and writing it.
bool IsUnwritten(platform::FileSystem& fileSystem, const std::string& path) {
  const auto entry = fileSystem.GetEntry(path);
  return entry && !entry->IsFolder && entry->Size == 0;
}

// All markers of a directory but one; "" for none to keep.
void RemoveMarkers(platform::FileSystem& fileSystem, std::string_view directory, std::string_view kept) {
  for (const auto& marker : MarkerNames) {
    for (const auto name : {marker.Name, marker.Legacy}) {
      // Most of the names are not there, and a marker that cannot go is what the caller will see anyway.
      if (!name.empty() && name != kept) (void)fileSystem.DeleteFile(JoinPath(directory, name), true);
    }
  }
}

// A whole marker in the place of the one that stands there: a failure leaves the old one.
Status ReplaceMarker(platform::FileSystem& fileSystem, const std::string& path, std::string_view bytes) {
  (void)fileSystem.SetReadOnly(path, false);  // it may be of another kind, and so not be there
  return fileSystem.ReplaceFile(path, bytes);
}

MarkerProbe Found(MailArcKind kind, std::string_view markerFile) {
  return {.Kind = kind,
          .CanHoldContent = kind == MailArcKind::Root || kind == MailArcKind::Sub,
          .MarkerFile = std::string(markerFile)};
}

}  // namespace

MarkerProbe ProbeMailArc(platform::FileSystem& fileSystem, std::string_view directory) {
  const auto holds = [&](std::string_view name) { return fileSystem.FileExists(JoinPath(directory, name)); };
  for (const auto& marker : MarkerNames) {
    if (holds(marker.Name)) return Found(marker.Kind, marker.Name);
  }
  for (const auto& marker : MarkerNames) {
    if (!marker.Legacy.empty() && holds(marker.Legacy)) return Found(marker.Kind, marker.Legacy);
  }
  return {};
}

MailArcKind GetMailArcKind(platform::FileSystem& fileSystem, std::string_view directory) {
  return ProbeMailArc(fileSystem, directory).Kind;
}

Status WriteArchiveMarker(platform::FileSystem& fileSystem, std::string_view directory, MailArcKind kind,
                          const MarkerTexts& texts, bool force) {
  if (kind == MailArcKind::None) ClearArchiveMarkers(fileSystem, directory);
  const auto* marker = std::ranges::find(MarkerNames, kind, &MarkerName::Kind);
  if (marker == std::end(MarkerNames)) return {};
  const auto path = JoinPath(directory, marker->Name);
  const bool isMarked = GetMailArcKind(fileSystem, directory) != MailArcKind::None;
  // A marker that stands survives later runs: it may have been set by hand.
  if (!force && isMarked && !IsUnwritten(fileSystem, path)) return {};
  const auto bytes = FormatMarker(*marker, texts);
  const auto written = isMarked ? ReplaceMarker(fileSystem, path, bytes) : fileSystem.WriteFile(path, bytes);
  if (!written) return written;
  // A medium without attributes still holds a whole marker.
  (void)fileSystem.SetHidden(path, true);
  if (force) RemoveMarkers(fileSystem, directory, marker->Name);
  return {};
}

void ClearArchiveMarkers(platform::FileSystem& fileSystem, std::string_view directory) {
  RemoveMarkers(fileSystem, directory, "");
}

std::optional<ArcDescriptor> ReadArcDescriptor(platform::FileSystem& fileSystem, std::string_view directory) {
  for (const auto name : DescriptorOrder) {
    if (const auto bytes = ReadTextFile(fileSystem, JoinPath(directory, name))) return ParseMarker(*bytes);
  }
  return std::nullopt;
}

}  // namespace velmora::mailarchive
