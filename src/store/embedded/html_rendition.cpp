#include "store/embedded/html_rendition.h"

#include <fmt/core.h>

#include <algorithm>
#include <array>
#include <vector>

#include "base/text.h"
#include "store/embedded/share_references.h"

namespace velmora::store::embedded {
namespace {

constexpr std::string_view Blanks = " \t\r\n\f";
constexpr int HighestInlinePart = 99;

// Elements that escape the policy: `base` bends links, `link` has names looked up and connections made ahead,
// and so do a frame and the sending of a form, even where the policy then forbids them.
constexpr std::array<std::string_view, 6> DroppedElements = {"base",   "form", "frame",
                                                             "iframe", "link", "script"};
// Attributes that are text and load nothing.
constexpr std::array<std::string_view, 4> TextAttributes = {"alt", "content", "title", "value"};

// Elements whose content is text for the parser, up to their end tag.
constexpr std::array<std::string_view, 8> RawTextElements = {"iframe", "noembed",  "noframes", "script",
                                                             "style",  "textarea", "title",    "xmp"};

bool IsBlank(char c) { return Blanks.find(c) != std::string_view::npos; }
bool IsLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

std::string LowerAscii(std::string_view text) {
  std::string lower(text);
  std::ranges::transform(lower, lower.begin(), ToLowerAscii);
  return lower;
}

bool StartsWithWord(std::string_view text, std::string_view lowerWord) {
  return text.size() >= lowerWord.size() && LowerAscii(text.substr(0, lowerWord.size())) == lowerWord;
}

// Position of `lowerWord` in any case, from `position` on.
std::size_t FindWord(std::string_view text, std::string_view lowerWord, std::size_t position) {
  const auto found =
      std::search(text.begin() + static_cast<std::ptrdiff_t>(std::min(position, text.size())), text.end(),
                  lowerWord.begin(), lowerWord.end(), [](char a, char b) { return ToLowerAscii(a) == b; });
  return found == text.end() ? std::string_view::npos : static_cast<std::size_t>(found - text.begin());
}

// Whether a parser might read a tag at the "<".
bool IsTagStart(std::string_view html, std::size_t position) {
  const auto letter = position + (html.substr(position + 1).starts_with('/') ? 2 : 1);
  return letter < html.size() && IsLetter(html[letter]);
}

void AppendWithoutTags(std::string& result, std::string_view text) {
  std::size_t copied = 0;
  for (auto open = text.find('<'); open != std::string_view::npos; open = text.find('<', open + 1)) {
    if (!IsTagStart(text, open)) continue;
    result.append(text.substr(copied, open - copied)).append("&lt;");
    copied = open + 1;
  }
  result.append(text.substr(copied));
}

struct Attribute {
  std::string Name;                // lower case
  std::string_view Value;          // as written, without quotes
  std::size_t Begin = 0, End = 0;  // of the value with its quotes, within the tag
};

struct Tag {
  std::string Name;  // lower case
  bool IsEnd = false;
  std::size_t End = 0;  // position behind ">"
  std::vector<Attribute> Attributes;
};

// Reads tags by the rules of the HTML standard's tokenizer.
class TagReader {
 public:
  TagReader(std::string_view html, std::size_t begin) : html_(html), begin_(begin), position_(begin + 1) {}

  // Nothing when the text ends within the tag.
  std::optional<Tag> Read() {
    Tag tag;
    if (Current() == '/') {
      tag.IsEnd = true;
      ++position_;
    }
    tag.Name = LowerAscii(TakeUntil(" \t\r\n\f/>"));
    while (position_ < html_.size()) {
      if (Current() == '>') {
        tag.End = position_ + 1;
        return tag;
      }
      if (IsBlank(Current()) || Current() == '/') {
        ++position_;
      } else {
        tag.Attributes.push_back(ReadAttribute());
      }
    }
    return std::nullopt;
  }

 private:
  char Current() const { return position_ < html_.size() ? html_[position_] : '\0'; }

  std::string_view TakeUntil(std::string_view stops) {
    const auto begin = position_;
    position_ = std::min(html_.find_first_of(stops, begin), html_.size());
    return html_.substr(begin, position_ - begin);
  }

  void SkipBlanks() {
    while (position_ < html_.size() && IsBlank(Current())) ++position_;
  }

  Attribute ReadAttribute() {
    Attribute attribute;
    const auto begin = position_;
    ++position_;  // a name may begin with any character, "=" included
    (void)TakeUntil(" \t\r\n\f/>=");
    attribute.Name = LowerAscii(html_.substr(begin, position_ - begin));
    SkipBlanks();
    if (Current() != '=') return attribute;
    ++position_;
    SkipBlanks();
    attribute.Begin = position_ - begin_;
    if (const char quote = Current(); quote == '"' || quote == '\'') {
      ++position_;
      attribute.Value = TakeUntil(std::string_view(&quote, 1));
      if (position_ < html_.size()) ++position_;
    } else {
      attribute.Value = TakeUntil(" \t\r\n\f>");
    }
    attribute.End = position_ - begin_;
    return attribute;
  }

  std::string_view html_;
  std::size_t begin_, position_;
};

int HexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  const char lower = ToLowerAscii(c);
  return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

// The Content-ID of a `cid:` URL as it stands in HTML (RFC 2392: percent-encoded).
std::string DecodeContentId(std::string_view url) {
  const auto text = ReplaceAll(url, "&amp;", "&");
  std::string id;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const int high = text[i] == '%' && i + 2 < text.size() ? HexDigit(text[i + 1]) : -1;
    const int low = high >= 0 ? HexDigit(text[i + 2]) : -1;
    if (low < 0) {
      id.push_back(text[i]);
    } else {
      id.push_back(static_cast<char>(high * 16 + low));
      i += 2;
    }
  }
  return id;
}

class Rendition {
 public:
  Rendition(std::string_view html, std::string_view location, const FindInlinePart& findPart)
      : html_(html), location_(location), findPart_(findPart) {}

  std::string Make() {
    result_.reserve(RenditionHead.size() + html_.size());
    result_.append(RenditionHead);
    while (position_ < html_.size()) {
      const auto tag = std::min(html_.find('<', position_), html_.size());
      Copy(tag);
      if (tag < html_.size()) CopyMarkup();
    }
    return std::move(result_);
  }

 private:
  void Copy(std::size_t end) {
    result_.append(html_.substr(position_, end - position_));
    position_ = end;
  }
  // The same for what is no tag, or the inside of one.
  void CopyWithoutTags(std::size_t end) {
    AppendWithoutTags(result_, html_.substr(position_, end - position_));
    position_ = end;
  }

  void CopyMarkup() {
    const auto rest = html_.substr(position_);
    if (rest.starts_with("<!--")) return CopyWithoutTags(CommentEnd());
    if (IsTagStart(html_, position_)) return CopyTag();
    const char first = rest.size() > 1 ? rest[1] : '\0';
    // "<!", "<?" and "</" with anything else are comments up to ">"; any other "<" is text.
    if (first == '!' || first == '?' || first == '/') {
      const auto end = html_.find('>', position_);
      return CopyWithoutTags(end == std::string_view::npos ? html_.size() : end + 1);
    }
    if (first != '<') return Copy(position_ + 1);
    // A tag behind it that is dropped would leave it before the text that follows.
    result_.append("&lt;");
    ++position_;
  }

  std::size_t CommentEnd() const {
    const auto body = position_ + 4;
    const auto rest = html_.substr(body);
    if (rest.starts_with('>')) return body + 1;
    if (rest.starts_with("->")) return body + 2;
    for (auto dashes = html_.find("--", body); dashes != std::string_view::npos;
         dashes = html_.find("--", dashes + 1)) {
      const auto behind = html_.substr(dashes + 2);
      if (behind.starts_with('>')) return dashes + 3;
      if (behind.starts_with("!>")) return dashes + 4;
    }
    return html_.size();
  }

  void CopyTag() {
    const auto tag = TagReader(html_, position_).Read();
    if (!tag) {  // no parser makes a tag of it
      position_ = html_.size();
      return;
    }
    const bool isRawText =
        !tag->IsEnd && std::ranges::find(RawTextElements, tag->Name) != RawTextElements.end();
    if (IsDropped(*tag)) {
      position_ = tag->End;
      if (isRawText) position_ = RawTextEnd(tag->Name);
      return;
    }
    CopyWithReferences(*tag);
    if (!isRawText) return;
    const auto end = RawTextEnd(tag->Name);
    if (tag->Name == "style") {
      AppendWithoutTags(result_, RewriteCss(html_.substr(position_, end - position_)));
      position_ = end;
    } else {
      CopyWithoutTags(end);
    }
  }

  static bool IsDropped(const Tag& tag) {
    if (std::ranges::find(DroppedElements, tag.Name) != DroppedElements.end()) return true;
    return tag.Name == "meta" && std::ranges::any_of(tag.Attributes, [](const Attribute& attribute) {
             return attribute.Name == "charset" || attribute.Name == "http-equiv";
           });
  }

  // Where the end tag of a raw text element begins.
  std::size_t RawTextEnd(const std::string& name) const {
    const auto endTag = "</" + name;
    for (auto found = FindWord(html_, endTag, position_); found != std::string_view::npos;
         found = FindWord(html_, endTag, found + 1)) {
      const auto behind = found + endTag.size();
      if (behind < html_.size() && !IsBlank(html_[behind]) && html_[behind] != '/' && html_[behind] != '>')
        continue;
      return found;
    }
    return html_.size();
  }

  void CopyWithReferences(const Tag& tag) {
    const auto begin = position_;
    Copy(begin + 1);
    for (const auto& attribute : tag.Attributes) {
      const auto value = RewriteAttribute(tag, attribute);
      if (!value) continue;
      CopyWithoutTags(begin + attribute.Begin);
      const bool isQuoted = attribute.End - attribute.Begin > attribute.Value.size();
      const char quote = isQuoted ? html_[position_] : '"';
      result_.push_back(quote);
      AppendWithoutTags(result_, isQuoted ? *value : ReplaceAll(*value, "\"", "&quot;"));
      result_.push_back(quote);
      position_ = begin + attribute.End;
    }
    CopyWithoutTags(tag.End);
  }

  std::optional<std::string> RewriteAttribute(const Tag& tag, const Attribute& attribute) const {
    const auto value = Trim(attribute.Value);
    if (StartsWithWord(value, "cid:")) {
      if (auto resolved = Resolve(value.substr(4))) return resolved;
    }
    const bool isLink = attribute.Name == "href" && (tag.Name == "a" || tag.Name == "area");
    if (isLink || std::ranges::find(TextAttributes, attribute.Name) != TextAttributes.end())
      return std::nullopt;
    auto broken = BreakShareReferences(attribute.Value);
    if (attribute.Name != "style" || FindWord(attribute.Value, "cid:", 0) == std::string_view::npos)
      return broken;
    return ResolveInCss(broken ? *broken : attribute.Value);
  }

  std::string RewriteCss(std::string_view css) const {
    const auto broken = BreakShareReferences(css);
    return ResolveInCss(broken ? *broken : css);
  }

  // References within CSS, url(cid:...), with or without quotes.
  std::string ResolveInCss(std::string_view css) const {
    std::string result;
    std::size_t copied = 0;
    std::size_t end = 0;
    // On behind each reference, not within it: a long text of nothing but "cid:" is one, and is read once.
    for (auto found = FindWord(css, "cid:", 0); found != std::string_view::npos;
         found = FindWord(css, "cid:", end)) {
      end = std::min(css.find_first_of(")\"'; \t\r\n&", found), css.size());
      const auto resolved = Resolve(css.substr(found + 4, end - found - 4));
      if (!resolved) continue;
      result.append(css.substr(copied, found - copied)).append(*resolved);
      copied = end;
    }
    return result.append(css.substr(copied));
  }

  std::optional<std::string> Resolve(std::string_view url) const {
    const auto number = findPart_(DecodeContentId(url));
    if (!number || *number < 1 || *number > HighestInlinePart) return std::nullopt;
    return fmt::format("{}.${:02}", location_, *number);
  }

  std::string_view html_, location_;
  const FindInlinePart& findPart_;
  std::size_t position_ = 0;
  std::string result_;
};

}  // namespace

std::string MakeHtmlRendition(std::string_view html, std::string_view location,
                              const FindInlinePart& findPart) {
  return Rendition(html, location, findPart).Make();
}

std::string FindHtmlCharset(std::string_view html) {
  constexpr std::size_t DeclarationRange = 1024;
  const auto head = html.substr(0, DeclarationRange);
  const auto meta = FindWord(head, "<meta", 0);
  auto found = meta == std::string_view::npos ? meta : FindWord(head, "charset", meta);
  if (found == std::string_view::npos) return {};
  found = head.find_first_not_of(" \t\r\n=\"'", found + std::string_view("charset").size());
  if (found == std::string_view::npos) return {};
  const auto end = std::min(head.find_first_of(" \t\r\n\"';/>", found), head.size());
  const auto charset = head.substr(found, end - found);
  // A declaration that could be read byte by byte is in no such set (the HTML standard's rule).
  return StartsWithWord(charset, "utf-16") || StartsWithWord(charset, "utf-32") ? std::string("utf-8")
                                                                                : std::string(charset);
}

}  // namespace velmora::store::embedded
