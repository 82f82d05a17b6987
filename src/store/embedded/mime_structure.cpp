#include "store/embedded/mime_structure.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "base/code_page.h"
#include "base/text.h"
#include "store/embedded/encoded_words.h"
#include "store/embedded/gmime_handles.h"

namespace velmora::store::embedded {
namespace {

constexpr std::string_view RawType = "application/octet-stream";
// A MIME header field longer than this names nothing that could be used; what lies behind is not read.
constexpr std::size_t LongestMimeField = 16'384;

// Position behind the line end that follows `position`; the end of the text without one.
std::size_t NextLine(std::string_view source, std::size_t position) {
  const auto end = source.find('\n', position);
  return end == std::string_view::npos ? source.size() : end + 1;
}

std::string_view WithoutLineEnd(std::string_view line) {
  if (line.ends_with('\n')) line.remove_suffix(1);
  if (line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

// Length of the field name of a header line, 0 for a line that is none.
std::size_t FieldNameLength(std::string_view line) {
  const auto colon = line.find(':');
  if (colon == std::string_view::npos || colon == 0) return 0;
  const auto name = Trim(line.substr(0, colon));
  const bool isName =
      !name.empty() && std::ranges::all_of(name, [](char c) { return c > ' ' && c < '\x7F'; });
  return isName && line.front() != ' ' && line.front() != '\t' ? colon : 0;
}

bool IsFolded(std::string_view line) { return line.starts_with(' ') || line.starts_with('\t'); }

std::string MimeField(const std::vector<HeaderField>& fields, std::string_view name) {
  return UnifyEncodedWords(UnfoldHeader(FindHeader(fields, name).substr(0, LongestMimeField)));
}

std::string ToText(const char* text) { return text == nullptr ? std::string{} : std::string(text); }

// One multipart whose end has not come yet.
struct OpenMultipart {
  std::string Boundary;
  std::string_view ChildType;  // media type of a part that names none
  bool IsRelated = false;
  bool HasParts = false;
  MimeLeaf Whole;  // what it becomes when no part of it is found
};

struct BoundaryLine {
  std::size_t Begin = 0, Next = 0;  // of the line
  std::size_t Level = 0;            // index of the multipart that it belongs to
  bool IsClosing = false;
};

class Splitter {
 public:
  explicit Splitter(std::string_view source) : source_(source) {}

  MimeStructure Run() {
    std::size_t body = 0;
    result_.Fields = ReadHeaderFields(source_, EnvelopeLength(), body);
    result_.HeaderEnd = body;
    OpenPart(ReadPartHeader(result_.Fields, "text/plain"), 0, body);
    std::size_t position = body;
    while (!isDone_) {
      const auto boundary = FindBoundary(position);
      const auto end = boundary ? EndBefore(boundary->Begin, position) : source_.size();
      CloseLeaf(end);
      CloseMultiparts(boundary ? boundary->Level + (boundary->IsClosing ? 0 : 1) : 0, end);
      if (!boundary) break;
      position = boundary->Next;
      if (!boundary->IsClosing && !IsDoubled(*boundary)) position = BeginPart(position);
    }
    return std::move(result_);
  }

 private:
  // A mailbox file's "From " line in front of the message.
  std::size_t EnvelopeLength() const { return source_.starts_with("From ") ? NextLine(source_, 0) : 0; }

  // The same boundary line follows at once: there is no part between the two.
  bool IsDoubled(const BoundaryLine& line) const {
    const auto text = source_.substr(line.Begin, line.Next - line.Begin);
    return source_.substr(line.Next).starts_with(text);
  }

  std::size_t BeginPart(std::size_t begin) {
    open_.back().HasParts = true;
    std::size_t body = begin;
    const auto fields = ReadHeaderFields(source_, begin, body);
    OpenPart(ReadPartHeader(fields, open_.back().ChildType), begin, body);
    return body;
  }

  void OpenPart(PartHeader header, std::size_t begin, std::size_t body) {
    const bool isMultipart = header.MediaType.starts_with("multipart/") && !header.Boundary.empty();
    MimeLeaf leaf{std::move(header), body, body, !open_.empty() && open_.back().IsRelated};
    if (result_.Leaves.size() + 1 >= MaxParts) {
      TakeRaw(leaf, begin, source_.size());
      isDone_ = true;
      return;
    }
    if (!isMultipart) {
      leaf_ = std::move(leaf);
      return;
    }
    if (open_.size() >= MaxPartDepth) {
      // Its own boundary is left unknown, so that all of it up to the next outer one is the leaf.
      leaf_ = std::move(leaf);
      leaf_->Header = {.MediaType = "message/rfc822"};
      leaf_->Begin = begin;
      return;
    }
    OpenMultipart multipart{leaf.Header.Boundary,
                            leaf.Header.MediaType == "multipart/digest" ? "message/rfc822" : "text/plain",
                            leaf.Header.MediaType == "multipart/related", false, std::move(leaf)};
    open_.push_back(std::move(multipart));
  }

  void TakeRaw(MimeLeaf leaf, std::size_t begin, std::size_t end) {
    leaf.Header = {.MediaType = std::string(RawType)};
    leaf.Begin = begin;
    leaf.End = end;
    result_.Leaves.push_back(std::move(leaf));
  }

  void CloseLeaf(std::size_t end) {
    if (!leaf_) return;
    leaf_->End = std::max(end, leaf_->Begin);
    // A multipart without a boundary is the text that stands in it.
    if (leaf_->Header.MediaType.starts_with("multipart/")) leaf_->Header.MediaType = "text/plain";
    result_.Leaves.push_back(std::move(*leaf_));
    leaf_.reset();
  }

  void CloseMultiparts(std::size_t remaining, std::size_t end) {
    while (open_.size() > remaining) {
      // Without content there is nothing that could be lost; only the message itself always has a leaf.
      if (!open_.back().HasParts && (open_.size() == 1 || end > open_.back().Whole.Begin)) {
        leaf_ = std::move(open_.back().Whole);
        CloseLeaf(end);
      }
      open_.pop_back();
    }
  }

  // The end of a content in front of a boundary line: the line end before it belongs to the boundary.
  std::size_t EndBefore(std::size_t boundary, std::size_t from) const {
    auto end = boundary;
    if (end > from && source_[end - 1] == '\n') --end;
    if (end > from && source_[end - 1] == '\r') --end;
    return end;
  }

  std::optional<BoundaryLine> FindBoundary(std::size_t position) const {
    while (!open_.empty() && position < source_.size()) {
      const auto next = NextLine(source_, position);
      if (source_.substr(position).starts_with("--")) {
        if (auto found = MatchBoundary(position, next)) return found;
      }
      // Straight to the next line that may be one.
      const auto candidate = source_.find("\n--", next - 1);
      if (candidate == std::string_view::npos) break;
      position = candidate + 1;
    }
    return std::nullopt;
  }

  std::optional<BoundaryLine> MatchBoundary(std::size_t begin, std::size_t next) const {
    auto text = WithoutLineEnd(source_.substr(begin, next - begin)).substr(2);
    while (text.ends_with(' ') || text.ends_with('\t')) text.remove_suffix(1);
    for (auto level = open_.size(); level-- > 0;) {
      const std::string_view boundary = open_[level].Boundary;
      if (text == boundary) return BoundaryLine{begin, next, level, false};
      if (text.size() == boundary.size() + 2 && text.starts_with(boundary) && text.ends_with("--")) {
        return BoundaryLine{begin, next, level, true};
      }
    }
    return std::nullopt;
  }

  std::string_view source_;
  MimeStructure result_;
  std::vector<OpenMultipart> open_;
  std::optional<MimeLeaf> leaf_;
  bool isDone_ = false;
};

}  // namespace

std::vector<HeaderField> ReadHeaderFields(std::string_view source, std::size_t begin,
                                          std::size_t& bodyBegin) {
  std::vector<HeaderField> fields;
  auto position = begin;
  while (position < source.size()) {
    const auto next = NextLine(source, position);
    const auto line = WithoutLineEnd(source.substr(position, next - position));
    if (line.empty()) {
      position = next;
      break;
    }
    if (IsFolded(line)) {
      if (!fields.empty()) {
        auto& value = fields.back().Value;
        value = std::string_view(value.data(),
                                 static_cast<std::size_t>(line.data() + line.size() - value.data()));
      }
    } else if (const auto length = FieldNameLength(line); length > 0) {
      fields.push_back({Trim(line.substr(0, length)), line.substr(length + 1)});
    } else {
      break;
    }
    position = next;
  }
  bodyBegin = position;
  return fields;
}

std::string_view FindHeader(const std::vector<HeaderField>& fields, std::string_view name) {
  const auto found = std::ranges::find_if(fields, [&](const HeaderField& field) {
    return field.Name.size() == name.size() && EqualsFold(field.Name, name);
  });
  return found == fields.end() ? std::string_view{} : found->Value;
}

std::string UnfoldHeader(std::string_view raw) {
  std::string line;
  line.reserve(raw.size());
  for (const char c : raw) {
    if (c != '\r' && c != '\n' && c != '\0') line.push_back(c == '\t' ? ' ' : c);
  }
  if (!IsValidUtf8(line)) line = FromCodePage(line);
  return std::string(Trim(line));
}

PartHeader ReadPartHeader(const std::vector<HeaderField>& fields, std::string_view defaultType) {
  PartHeader header{.MediaType = std::string(defaultType)};
  const auto contentType = MimeField(fields, "Content-Type");
  if (!contentType.empty()) {
    const GObjectHandle<GMimeContentType> type(
        g_mime_content_type_parse(MailParserOptions(), contentType.c_str()));
    const auto mediaType = ToLower(ToText(g_mime_content_type_get_media_type(type.get())));
    const auto subType = ToLower(ToText(g_mime_content_type_get_media_subtype(type.get())));
    if (!mediaType.empty() && !subType.empty()) header.MediaType = mediaType + "/" + subType;
    header.Charset = ToText(g_mime_content_type_get_parameter(type.get(), "charset"));
    header.Boundary = ToText(g_mime_content_type_get_parameter(type.get(), "boundary"));
    while (header.Boundary.ends_with(' ')) header.Boundary.pop_back();
    header.FileName = ToText(g_mime_content_type_get_parameter(type.get(), "name"));
  }
  const auto disposition = MimeField(fields, "Content-Disposition");
  if (!disposition.empty()) {
    const GObjectHandle<GMimeContentDisposition> parsed(
        g_mime_content_disposition_parse(MailParserOptions(), disposition.c_str()));
    header.IsInline = EqualsFold(ToText(g_mime_content_disposition_get_disposition(parsed.get())), "inline");
    header.IsAttachment = !header.IsInline;
    const auto name = ToText(g_mime_content_disposition_get_parameter(parsed.get(), "filename"));
    if (!name.empty()) header.FileName = name;
  }
  header.Encoding = MimeField(fields, "Content-Transfer-Encoding");
  auto contentId = MimeField(fields, "Content-ID");
  if (contentId.starts_with('<')) contentId.erase(0, 1);
  if (contentId.ends_with('>')) contentId.pop_back();
  header.ContentId = std::move(contentId);
  return header;
}

MimeStructure SplitMessage(std::string_view source) { return Splitter(source).Run(); }

}  // namespace velmora::store::embedded
