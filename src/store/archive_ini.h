// The text files beside an archive's records that hold its options: archive.ini, access.ini, database.ini.
// Lines "key=value" below "[section]" lines, in the code page, without quoting. They belong to the server:
// lines that nobody here knows are kept byte for byte. Directories are physical ones, the ID of an archive.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/result.h"
#include "platform/file_system.h"

namespace velmora::store {

namespace archive_file {
inline constexpr std::string_view Ini = "archive.ini";
inline constexpr std::string_view AccessIni = "access.ini";  // its presence alone makes the access live
inline constexpr std::string_view DatabaseIni = "database.ini";
}  // namespace archive_file

// The content of a new file, in lines ended by CR LF.
inline constexpr std::string_view IniTemplate =
    "[DvISE Archive Access Form]\r\n"
    "UserName=\r\n"
    "PassWord=\r\n"
    "[ArchiveProperties]\r\n"
    "LayoutFile=\r\n";

// --- Reading: "" for a file, a key or a value that is not there, or cannot be read. ---

// The form of the archive's view, from archive.ini: the line whose beginning, without leading blanks and
// without regard to case, is "layoutfile".
std::string ReadLayoutFile(platform::FileSystem& fileSystem, std::string_view directory);
// From archive.ini: what the first line says that holds the key anywhere, without regard to case, be it in a
// comment or in the middle of a longer key. Trimmed, unless the line holds a "*": then as it stands.
std::string ReadArchiveIniValue(platform::FileSystem& fileSystem, std::string_view directory,
                                std::string_view key);
// database.ini as a whole; nothing when it is not there or cannot be read.
std::optional<std::string> ReadDatabaseIni(platform::FileSystem& fileSystem, std::string_view directory);

// --- The access data: user name and password in the section "[DvISE Archive Access Form]". ---

struct AccessData {
  std::string UserName, PassWord;

  bool operator==(const AccessData&) const = default;
};

// From access.ini.
AccessData ReadAccessIni(platform::FileSystem& fileSystem, std::string_view directory);

// What the new content is made from.
enum class IniBase {
  Existing,  // the file as it stands; the template where there is none
  Template,  // the template, whatever stands there
};
// Writes access.ini, as a whole. An existing file that cannot be read is not overwritten.
Status WriteAccessIni(platform::FileSystem& fileSystem, std::string_view directory, const AccessData& access,
                      IniBase base);
// The same for archive.ini.
Status RegenerateArchiveIni(platform::FileSystem& fileSystem, std::string_view directory,
                            const AccessData& access, IniBase base);

// The content (bytes in the code page) with these access data: the lines UserName and PassWord of the section
// replaced; added behind its head where they are missing, and the section as the first one where that is.
// Other keys that begin like them (PasswordReplica, PASSWORD2) and other sections stay. Line ends become
// CR LF; line breaks in the values become blanks.
std::string WithAccessData(std::string_view content, const AccessData& access);

// Bytes of a file of options, with an upper limit to what is read; FileNotFound, or why it cannot be read.
Result<std::string> ReadOptionFile(platform::FileSystem& fileSystem, std::string_view directory,
                                   std::string_view name);

// The lines of a text, whatever ends them: CR LF, LF or CR. The last one only when it is not empty.
std::vector<std::string_view> LinesOf(std::string_view text);
// The key of a line: what stands before its first "=", trimmed; the whole line without one.
std::string_view KeyOfLine(std::string_view line);
// What stands behind the first "=", trimmed; "" without one.
std::string_view ValueOfLine(std::string_view line);

}  // namespace velmora::store
