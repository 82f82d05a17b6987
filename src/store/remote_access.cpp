#include "store/remote_access.h"

#include <algorithm>

#include "base/code_page.h"
#include "base/paths.h"
#include "base/text.h"
#include "store/archive_ini.h"

namespace velmora::store {
namespace {

struct ValueText {
  AccessDecoder Decoder;
  std::string_view Value, Text;
};
constexpr auto ValueTexts = std::to_array<ValueText>({
    {AccessDecoder::Speech, "WAVE", "Wave"},
    {AccessDecoder::Speech, "T2S", "Synthetisch"},
    {AccessDecoder::OnOff, "1", "ein"},
    {AccessDecoder::OnOff, "0", "aus"},
    {AccessDecoder::TrueIsYes, "true", "Ja"},
    {AccessDecoder::OneIsYes, "1", "Ja"},
    {AccessDecoder::Reminder, "", "<keine>"},
    {AccessDecoder::Calendar, "1", "Tag"},
    {AccessDecoder::Calendar, "2", "Woche"},
    {AccessDecoder::Calendar, "3", "Monat"},
    {AccessDecoder::Calendar, "4", "Arbeitswoche"},
    {AccessDecoder::Editor, "HTML", "HTML"},
});

// What every value without a text of its own is shown as.
constexpr auto OtherTexts = std::to_array<ValueText>({
    {AccessDecoder::TrueIsYes, "", "Nein"},
    {AccessDecoder::OneIsYes, "", "Nein"},
    {AccessDecoder::Calendar, "", "Tag"},
    {AccessDecoder::Editor, "", "Nur Text"},
});

}  // namespace

RemoteAccess RemoteAccess::Read(platform::FileSystem& fileSystem, std::string_view directory) {
  const Result<std::string> content = ReadOptionFile(fileSystem, directory, archive_file::AccessIni);
  return content ? Parse(*content) : RemoteAccess();
}

RemoteAccess RemoteAccess::Parse(std::string_view content) {
  RemoteAccess access;
  const std::string text = FromCodePage(content);
  for (const std::string_view line : LinesOf(text)) {
    if (line.find('=') == std::string_view::npos) continue;
    access.values_.try_emplace(FoldCase(KeyOfLine(line)), ValueOfLine(line));
  }
  return access;
}

std::string RemoteAccess::Value(std::string_view key) const {
  const auto found = values_.find(FoldCase(key));
  return found == values_.end() ? std::string() : found->second;
}

bool RemoteAccess::HasNumericPassword() const {
  const std::string password = Value("PASSWORD");
  return !password.empty() && password.find_first_not_of("0123456789") == std::string::npos;
}

std::string DecodeAccessValue(AccessDecoder decoder, std::string_view value) {
  for (const ValueText& row : ValueTexts)
    if (row.Decoder == decoder && EqualsFold(row.Value, value)) return std::string(row.Text);
  const auto* const other = std::ranges::find(OtherTexts, decoder, &ValueText::Decoder);
  if (other != OtherTexts.end()) return std::string(other->Text);
  return decoder == AccessDecoder::Reminder ? std::string(value) + " min" : std::string(value);
}

std::optional<platform::FileEntry> FindAnnouncement(platform::FileSystem& fileSystem,
                                                    std::string_view directory) {
  const auto entry = fileSystem.GetEntry(JoinPath(NormalizePath(directory), archive_file::Announcement));
  if (!entry || entry->IsFolder) return std::nullopt;
  return *entry;
}

}  // namespace velmora::store
