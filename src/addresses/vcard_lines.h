// The content lines of vCards: 2.1 (versit), 3.0 (RFC 2426) and 4.0 (RFC 6350). Any bytes may be read.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velmora::addresses {

// What lies beyond of one property is left out: no text of an address is longer, and pictures are not read.
inline constexpr std::size_t LongestVCardLine = std::size_t{1} << 20;

enum class VCardVersion { V21, V30 };  // 4.0 is written like 3.0

struct VCardLine {
  std::string Name;                // in upper case, without its group
  std::vector<std::string> Types;  // in upper case: of TYPE=..., and parameters without a value
  std::string ValueKind;           // VALUE=... in upper case, "" for none
  std::string Charset;             // in upper case, "" for none
  std::string FileName;            // of a picture
  bool IsBase64 = false;
  std::string Value;  // folding and quoted-printable undone; still with its escapes and in its character set

  bool HasType(std::string_view type) const;
  // The value as one text, and split at each separator that is not escaped: escapes undone as the version has
  // them, in UTF-8, without control characters but CR LF.
  std::string Text(VCardVersion version) const;
  std::vector<std::string> Components(VCardVersion version, char separator = ';') const;
};

// Reads line after line. The bytes must outlive it.
class VCardLineReader {
 public:
  explicit VCardLineReader(std::string_view bytes);
  // The next line that has a name and a colon; nothing at the end. `version`: of the card as far as known.
  std::optional<VCardLine> Next(VCardVersion version);
  std::size_t Position() const { return position_; }
  // Of the line that Next gave last, from 1.
  std::size_t LineNumber() const { return lineNumber_; }

 private:
  // Without its end; nothing at the end of the bytes.
  std::optional<std::string_view> PhysicalLine();
  std::optional<std::string_view> PeekLine() const;
  // Each appends the next physical line where it goes on with this one.
  bool AppendFolded(std::string& line, VCardVersion version);
  bool AppendSoftBroken(std::string& line);

  std::string_view bytes_;
  std::size_t position_ = 0;
  std::size_t linesRead_ = 0;
  std::size_t lineNumber_ = 0;
  bool isOwnCard_ = false;  // written by this program
};

}  // namespace velmora::addresses
