#include "addresses/vcard_lines.h"

#include <algorithm>
#include <array>

#include "base/code_page.h"
#include "base/line_ends.h"
#include "base/text.h"

namespace velmora::addresses {
namespace {

constexpr std::string_view CardEnd = "END:VCARD";
// This program's own cards promise quoted-printable for three lines and encode nothing: a value may end with
// "=". They are known by the case of their first line, and behind those three lines come these.
constexpr std::string_view OwnCard = "VCard";
constexpr std::array<std::string_view, 3> BehindOwnLines{
    "LABEL;WORK;ENCODING=QUOTED-PRINTABLE:", "BDAY:", "REV:"};
constexpr std::string_view QuotedPrintable = "QUOTED-PRINTABLE";

constexpr std::array<std::string_view, 3> WesternCharsets{"ISO-8859-1", "WINDOWS-1252", "LATIN1"};

void AppendWithin(std::string& line, std::string_view piece) {
  line += piece.substr(0, LongestVCardLine - std::min(line.size(), LongestVCardLine));
}

// Where the parameters end; npos without a colon. A quoted parameter of 3.0 may hold one.
std::size_t FindColon(std::string_view line) {
  bool isQuoted = false;
  for (std::size_t i = 0; i < line.size(); ++i) {
    if (line[i] == '"') isQuoted = !isQuoted;
    if (line[i] == ':' && !isQuoted) return i;
  }
  return line.find(':');  // the quote has no end, so it was none
}

// The pieces between separators that stand outside of quotes; the quotes themselves are dropped.
std::vector<std::string> SplitUnquoted(std::string_view text, char separator) {
  std::vector<std::string> pieces(1);
  bool isQuoted = false;
  for (const char c : text) {
    if (c == '"') {
      isQuoted = !isQuoted;
    } else if (c == separator && !isQuoted) {
      pieces.emplace_back();
    } else {
      pieces.back() += c;
    }
  }
  return pieces;
}

struct Encoding {
  bool IsQuotedPrintable = false;
  bool IsBase64 = false;
};

void ReadEncoding(std::string_view value, Encoding& encoding) {
  if (value == QuotedPrintable) encoding.IsQuotedPrintable = true;
  if (value == "BASE64" || value == "B") encoding.IsBase64 = true;
}

// One "NAME=VALUE", or a bare word as 2.1 has them.
void ReadParameter(const std::string& parameter, VCardLine& line, Encoding& encoding) {
  const auto parts = Split(parameter, "=", 2);
  const std::string name = ToUpper(Trim(parts[0]));
  if (parts.size() == 1) {
    ReadEncoding(name, encoding);
    line.Types.push_back(name);
    return;
  }
  const std::string value = ToUpper(Trim(parts[1]));
  if (name == "TYPE") {
    for (const auto& type : Split(value, ",")) line.Types.emplace_back(Trim(type));
  } else if (name == "ENCODING") {
    ReadEncoding(value, encoding);
  } else if (name == "CHARSET") {
    line.Charset = value;
  } else if (name == "VALUE") {
    line.ValueKind = value;
  } else if (name == "PREF") {
    line.Types.emplace_back("PREF");
  } else if (name == "X-FILENAME" || name == "FILENAME") {
    line.FileName = Trim(parts[1]);
  }
}

// What stands before the colon.
Encoding ReadHead(std::string_view head, VCardLine& line) {
  Encoding encoding;
  const auto nameEnd = std::min(head.find(';'), head.size());
  const auto name = head.substr(0, nameEnd);
  const auto group = name.rfind('.');
  line.Name = ToUpper(Trim(group == std::string_view::npos ? name : name.substr(group + 1)));
  if (nameEnd == head.size()) return encoding;
  for (const auto& parameter : SplitUnquoted(head.substr(nameEnd + 1), ';')) {
    ReadParameter(parameter, line, encoding);
  }
  return encoding;
}

bool IsQuotedPrintable(std::string_view line) {
  const auto colon = FindColon(line);
  if (colon == std::string_view::npos) return false;
  VCardLine head;
  return ReadHead(line.substr(0, colon), head).IsQuotedPrintable;
}

int HexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  return -1;
}

// Programs announce quoted-printable and write plain text: what is no code stays as it is.
std::string DecodeQuotedPrintable(std::string_view text) {
  std::string decoded;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const int high = text[i] == '=' && i + 2 < text.size() ? HexDigit(text[i + 1]) : -1;
    const int low = high >= 0 ? HexDigit(text[i + 2]) : -1;
    if (low < 0) {
      decoded += text[i];
      continue;
    }
    decoded += static_cast<char>(high * 16 + low);
    i += 2;
  }
  return decoded;
}

std::string ToText(std::string_view bytes, std::string_view charset) {
  const bool isWestern = std::ranges::find(WesternCharsets, charset) != WesternCharsets.end();
  const bool isUtf8 = charset == "UTF-8" || (!isWestern && IsValidUtf8(bytes));
  return CleanLines(isUtf8 ? MakeValidUtf8(bytes) : FromCodePage(bytes));
}

// Appends what the escape at `position`, a backslash, stands for, and moves behind it. 2.1 knows only "\;":
// any other backslash is one, of a path for example.
void AppendEscaped(std::string_view value, std::size_t& position, VCardVersion version, std::string& text) {
  const char next = position + 1 < value.size() ? value[position + 1] : '\0';
  const bool isEscape =
      version == VCardVersion::V21
          ? next == ';'
          : next != '\0' && std::string_view("nN,;:\\").find(next) != std::string_view::npos;
  if (!isEscape) {
    text += '\\';
  } else if (next == 'n' || next == 'N') {
    text += '\n';
  } else {
    text += next;
  }
  position += isEscape ? 2 : 1;
}

// Split at every separator that is not escaped, or not at all.
std::vector<std::string> Unescape(std::string_view value, VCardVersion version,
                                  std::optional<char> separator) {
  std::vector<std::string> texts(1);
  for (std::size_t i = 0; i < value.size();) {
    if (value[i] == '\\') {
      AppendEscaped(value, i, version, texts.back());
    } else if (value[i] == separator) {
      texts.emplace_back();
      ++i;
    } else {
      texts.back() += value[i++];
    }
  }
  return texts;
}

}  // namespace

bool VCardLine::HasType(std::string_view type) const { return std::ranges::find(Types, type) != Types.end(); }

std::string VCardLine::Text(VCardVersion version) const {
  return ToText(Unescape(Value, version, std::nullopt).front(), Charset);
}

std::vector<std::string> VCardLine::Components(VCardVersion version, char separator) const {
  auto texts = Unescape(Value, version, separator);
  for (auto& text : texts) text = ToText(text, Charset);
  return texts;
}

VCardLineReader::VCardLineReader(std::string_view bytes) : bytes_(bytes) {
  constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
  if (bytes_.starts_with(byteOrderMark)) bytes_.remove_prefix(byteOrderMark.size());
}

std::optional<std::string_view> VCardLineReader::PeekLine() const {
  if (position_ >= bytes_.size()) return std::nullopt;
  const auto rest = bytes_.substr(position_);
  return rest.substr(0, rest.find_first_of(CrLf));
}

std::optional<std::string_view> VCardLineReader::PhysicalLine() {
  const auto line = PeekLine();
  if (!line) return line;
  position_ += line->size();
  if (bytes_.substr(position_).starts_with(CrLf)) ++position_;
  ++position_;
  ++linesRead_;
  return line;
}

bool VCardLineReader::AppendFolded(std::string& line, VCardVersion version) {
  const auto next = PeekLine();
  if (!next || !(next->starts_with(' ') || next->starts_with('\t'))) return false;
  (void)PhysicalLine();  // it is the one that was looked at
  // In 2.1 the fold was put before a blank of the text.
  AppendWithin(line, version == VCardVersion::V21 ? *next : next->substr(1));
  return true;
}

bool VCardLineReader::AppendSoftBroken(std::string& line) {
  const auto next = PeekLine();
  // A card whose last line ends by chance with "=" still has its end.
  if (!line.ends_with('=') || !next || EqualsFold(Trim(*next), CardEnd)) return false;
  const auto follows = [&](std::string_view begin) { return next->starts_with(begin); };
  if (isOwnCard_ && std::ranges::any_of(BehindOwnLines, follows)) return false;
  (void)PhysicalLine();  // it is the one that was looked at
  line.pop_back();
  AppendWithin(line, *next);
  return true;
}

std::optional<VCardLine> VCardLineReader::Next(VCardVersion version) {
  while (const auto physical = PhysicalLine()) {
    lineNumber_ = linesRead_;
    std::string text;
    AppendWithin(text, *physical);
    const bool hasSoftBreaks = IsQuotedPrintable(text);
    while ((hasSoftBreaks && AppendSoftBroken(text)) || AppendFolded(text, version)) {
    }
    const auto colon = FindColon(text);
    if (colon == std::string::npos) continue;
    VCardLine line;
    const auto encoding = ReadHead(std::string_view(text).substr(0, colon), line);
    if (line.Name.empty()) continue;
    line.IsBase64 = encoding.IsBase64;
    line.Value = text.substr(colon + 1);
    if (encoding.IsQuotedPrintable) line.Value = DecodeQuotedPrintable(line.Value);
    if (line.Name == "BEGIN") isOwnCard_ = line.Value == OwnCard;
    return line;
  }
  return std::nullopt;
}

}  // namespace velmora::addresses
