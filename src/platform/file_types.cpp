// Registration of file types, by the shared MIME-info and the desktop entry specifications: per extension
// one MIME package and one desktop entry that is shown in no menu.

#include <fmt/format.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <system_error>

#include "base/text.h"
#include "platform/file_errors.h"
#include "platform/host.h"

namespace velmora::platform {
namespace {

namespace fs = std::filesystem;

std::string WithoutPoint(std::string_view extension) {
  return ToLower(extension.starts_with('.') ? extension.substr(1) : extension);
}

std::string EscapeXml(std::string_view text) {
  std::string escaped = ReplaceAll(text, "&", "&amp;");
  escaped = ReplaceAll(escaped, "<", "&lt;");
  return ReplaceAll(escaped, "\"", "&quot;");
}

// An argument of an Exec line: quoted, once for the command line and once more for the entry's text; "%" is
// doubled.
std::string QuoteForExec(std::string_view argument) {
  std::string quoted;
  for (const char character : argument) {
    if (std::string_view("\"`$\\").find(character) != std::string_view::npos) quoted += '\\';
    quoted += character;
    if (character == '%') quoted += '%';
  }
  return "\"" + ReplaceAll(quoted, "\\", "\\\\") + "\"";
}

struct FileType {
  fs::path Package;
  std::string PackageText;
  fs::path Entry;
  std::string EntryText;
};

FileType Describe(const HostDirectories& directories, const std::string& extension,
                  const std::string& program) {
  const std::string name = WithoutPoint(extension);
  const fs::path data(directories.UserData);
  FileType type;
  type.Package = data / "mime" / "packages" / ("velmora-" + name + ".xml");
  type.PackageText = fmt::format(
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
      "<mime-info xmlns=\"http://www.freedesktop.org/standards/shared-mime-info\">\n"
      "  <mime-type type=\"application/x-velmora-{0}\">\n"
      "    <comment>Velmora {0}</comment>\n"
      "    <glob pattern=\"*.{0}\"/>\n"
      "  </mime-type>\n"
      "</mime-info>\n",
      EscapeXml(name));
  type.Entry = data / "applications" / ("velmora-" + name + ".desktop");
  type.EntryText = fmt::format(
      "[Desktop Entry]\n"
      "Type=Application\n"
      "Name=Velmora\n"
      "Exec={1} %f\n"
      "MimeType=application/x-velmora-{0};\n"
      "NoDisplay=true\n",
      name, QuoteForExec(program));
  return type;
}

bool HasContent(const fs::path& path, const std::string& content) {
  std::ifstream file(path, std::ios::binary);
  const std::string present{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  return file.is_open() && present == content;
}

// Whether anything was written.
Result<bool> WriteIfDifferent(const fs::path& path, const std::string& content) {
  if (HasContent(path, content)) return false;
  std::error_code error;
  fs::create_directories(path.parent_path(), error);
  if (error) return FailWithErrno(error.value(), file_error::PathNotFound);
  const fs::path beside = path.string() + ".tmp";
  std::ofstream file(beside, std::ios::binary | std::ios::trunc);
  file << content;
  file.close();
  if (!file) return FailWith(file_error::AccessDenied);
  fs::rename(beside, path, error);
  if (error) return FailWithErrno(error.value());
  return true;
}

// The desktop reads databases made of the entries. A host without these tools reads the entries themselves.
void UpdateDatabases(const fs::path& data) {
  (void)RunProcess({"update-mime-database", (data / "mime").string()}, "");
  (void)RunProcess({"update-desktop-database", (data / "applications").string()}, "");
}

}  // namespace

Status RegisterFileTypes(const HostDirectories& directories, const std::vector<std::string>& extensions,
                         const std::string& programHostPath) {
  bool isChanged = false;
  for (const std::string& extension : extensions) {
    const FileType type = Describe(directories, extension, programHostPath);
    for (const auto& [path, text] :
         {std::pair(type.Package, type.PackageText), std::pair(type.Entry, type.EntryText)}) {
      const Result<bool> written = WriteIfDifferent(path, text);
      if (!written) return Fail(written.error());
      isChanged = isChanged || *written;
    }
  }
  if (isChanged) UpdateDatabases(directories.UserData);
  return {};
}

Status UnregisterFileTypes(const HostDirectories& directories, const std::vector<std::string>& extensions) {
  bool isChanged = false;
  for (const std::string& extension : extensions) {
    const FileType type = Describe(directories, extension, "");
    for (const fs::path& path : {type.Package, type.Entry}) {
      std::error_code error;
      if (fs::remove(path, error)) isChanged = true;
      if (error) return FailWithErrno(error.value());
    }
  }
  if (isChanged) UpdateDatabases(directories.UserData);
  return {};
}

}  // namespace velmora::platform
