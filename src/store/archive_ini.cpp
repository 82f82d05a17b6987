#include "store/archive_ini.h"

#include <algorithm>
#include <cstdint>
#include <vector>

#include "base/code_page.h"
#include "base/paths.h"
#include "base/text.h"

namespace velmora::store {
namespace {

constexpr std::string_view AccessSection = "[DvISE Archive Access Form]";
constexpr std::string_view UserNameKey = "UserName", PassWordKey = "PassWord";
// These files are typed by hand; what is larger is something else.
constexpr std::int64_t LargestFile = std::int64_t{16} << 20;

// The first line that `isIt`, of a file in UTF-8; "" without one.
template <typename Test>
std::string FindLine(platform::FileSystem& fileSystem, std::string_view directory, std::string_view name,
                     Test isIt) {
  const Result<std::string> content = ReadOptionFile(fileSystem, directory, name);
  if (!content) return "";
  const std::string text = FromCodePage(*content);
  for (const std::string_view line : LinesOf(text))
    if (isIt(line)) return std::string(line);
  return "";
}

bool IsKey(std::string_view line, std::string_view key) { return EqualsFold(KeyOfLine(line), key); }

std::string MakeLine(std::string_view key, std::string_view value) {
  return std::string(key) + "=" + ToCodePage(BlankControlCharacters(value));
}

bool IsSection(std::string_view line) { return Trim(line).starts_with('['); }

bool IsAccessSection(std::string_view line) { return StartsWithFold(Trim(line), AccessSection); }

// The lines of the access section, which begins behind `head`, with the new values; missing ones first.
void SetAccessLines(std::vector<std::string>& lines, std::size_t head, const AccessData& access) {
  const std::string userName = MakeLine(UserNameKey, access.UserName);
  const std::string passWord = MakeLine(PassWordKey, access.PassWord);
  bool hasUserName = false, hasPassWord = false;
  for (std::size_t i = head + 1; i < lines.size() && !IsSection(lines[i]); ++i) {
    if (IsKey(lines[i], UserNameKey)) {
      lines[i] = userName;
      hasUserName = true;
    } else if (IsKey(lines[i], PassWordKey)) {
      lines[i] = passWord;
      hasPassWord = true;
    }
  }
  auto place = lines.begin() + static_cast<std::ptrdiff_t>(head) + 1;
  if (!hasUserName) place = lines.insert(place, userName) + 1;
  if (!hasPassWord) {
    // Behind the user name, wherever that stands.
    while (hasUserName && !IsKey(*place, UserNameKey)) ++place;
    if (hasUserName) ++place;
    lines.insert(place, passWord);
  }
}

Status WriteWithAccess(platform::FileSystem& fileSystem, std::string_view directory, std::string_view name,
                       const AccessData& access, IniBase base) {
  std::string content(IniTemplate);
  if (base == IniBase::Existing) {
    Result<std::string> existing = ReadOptionFile(fileSystem, directory, name);
    if (existing)
      content = std::move(*existing);
    else if (existing.error().Number != platform::file_error::FileNotFound)
      return Fail(existing.error());
  }
  return fileSystem.ReplaceFile(JoinPath(NormalizePath(directory), name), WithAccessData(content, access));
}

}  // namespace

std::vector<std::string_view> LinesOf(std::string_view text) {
  std::vector<std::string_view> lines;
  while (!text.empty()) {
    const std::size_t end = text.find_first_of("\r\n");
    lines.push_back(text.substr(0, end));
    if (end == std::string_view::npos) break;
    text.remove_prefix(end + (text.substr(end).starts_with("\r\n") ? 2 : 1));
  }
  return lines;
}

std::string_view KeyOfLine(std::string_view line) { return Trim(line.substr(0, line.find('='))); }

std::string_view ValueOfLine(std::string_view line) {
  const std::size_t equals = line.find('=');
  return equals == std::string_view::npos ? std::string_view() : Trim(line.substr(equals + 1));
}

Result<std::string> ReadOptionFile(platform::FileSystem& fileSystem, std::string_view directory,
                                   std::string_view name) {
  const std::string file = JoinPath(NormalizePath(directory), name);
  const Result<platform::FileEntry> entry = fileSystem.GetEntry(file);
  if (!entry) return Fail(entry.error());
  if (entry->IsFolder || entry->Size > LargestFile)
    return Fail(platform::file_error::BadName, file + " ist keine Optionsdatei");
  return fileSystem.ReadFile(file);
}

std::string ReadLayoutFile(platform::FileSystem& fileSystem, std::string_view directory) {
  const std::string line = FindLine(fileSystem, directory, archive_file::Ini, [](std::string_view candidate) {
    return StartsWithFold(Trim(candidate), "layoutfile");
  });
  return std::string(ValueOfLine(line));
}

std::string ReadArchiveIniValue(platform::FileSystem& fileSystem, std::string_view directory,
                                std::string_view key) {
  const std::string folded = FoldCase(key);
  const std::string line = FindLine(
      fileSystem, directory, archive_file::Ini,
      [&](std::string_view candidate) { return FoldCase(candidate).find(folded) != std::string::npos; });
  const std::size_t equals = line.find('=');
  if (equals == std::string::npos) return "";
  const bool isLiteral = line.find('*') != std::string::npos;
  return isLiteral ? line.substr(equals + 1) : std::string(ValueOfLine(line));
}

std::optional<std::string> ReadDatabaseIni(platform::FileSystem& fileSystem, std::string_view directory) {
  const Result<std::string> content = ReadOptionFile(fileSystem, directory, archive_file::DatabaseIni);
  if (!content) return std::nullopt;
  return FromCodePage(*content);
}

AccessData ReadAccessIni(platform::FileSystem& fileSystem, std::string_view directory) {
  AccessData access;
  const Result<std::string> content = ReadOptionFile(fileSystem, directory, archive_file::AccessIni);
  if (!content) return access;
  const std::string text = FromCodePage(*content);
  bool isInside = false, hasUserName = false, hasPassWord = false;
  for (const std::string_view line : LinesOf(text)) {
    if (IsSection(line)) isInside = IsAccessSection(line);
    if (!isInside) continue;
    if (!hasUserName && IsKey(line, UserNameKey)) {
      access.UserName = ValueOfLine(line);
      hasUserName = true;
    } else if (!hasPassWord && IsKey(line, PassWordKey)) {
      access.PassWord = ValueOfLine(line);
      hasPassWord = true;
    }
  }
  return access;
}

std::string WithAccessData(std::string_view content, const AccessData& access) {
  std::vector<std::string> lines;
  for (const std::string_view line : LinesOf(content)) lines.emplace_back(line);
  auto head = std::ranges::find_if(lines, IsAccessSection);
  if (head == lines.end()) head = lines.emplace(lines.begin(), AccessSection);
  SetAccessLines(lines, static_cast<std::size_t>(head - lines.begin()), access);
  std::string text;
  for (const std::string& line : lines) text += line + "\r\n";
  return text;
}

Status WriteAccessIni(platform::FileSystem& fileSystem, std::string_view directory, const AccessData& access,
                      IniBase base) {
  return WriteWithAccess(fileSystem, directory, archive_file::AccessIni, access, base);
}

Status RegenerateArchiveIni(platform::FileSystem& fileSystem, std::string_view directory,
                            const AccessData& access, IniBase base) {
  return WriteWithAccess(fileSystem, directory, archive_file::Ini, access, base);
}

}  // namespace velmora::store
