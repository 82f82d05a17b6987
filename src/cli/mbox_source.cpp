#include "cli/mbox_source.h"

#include <fmt/core.h>

#include <utility>

#include "store/errors.h"

namespace velmora::cli {
namespace {

constexpr std::size_t ChunkBytes = std::size_t{1} << 16;
constexpr std::string_view Separator = "From ";

bool IsEmptyLine(std::string_view line) { return line == "\n" || line == "\r\n"; }

// "From " behind at least one ">".
bool IsQuotedSeparator(std::string_view line) {
  const auto first = line.find_first_not_of('>');
  return first != 0 && first != std::string_view::npos && line.substr(first).starts_with(Separator);
}

// Without the empty line that the format puts behind a message.
void CutFormatLine(std::string& message) {
  if (message.ends_with("\n\r\n") || message == "\r\n") {
    message.resize(message.size() - 2);
  } else if (message.ends_with("\n\n") || message == "\n") {
    message.resize(message.size() - 1);
  }
}

}  // namespace

MboxSource::MboxSource(std::unique_ptr<platform::FileReader> reader, std::string name, std::int64_t size,
                       std::size_t maxMessageBytes)
    : reader_(std::move(reader)), name_(std::move(name)), size_(size), maxMessageBytes_(maxMessageBytes) {}

tl::expected<std::optional<SourceMessage>, SourceError> MboxSource::Next() {
  std::int64_t begin = separatorAt_;
  while (!atEnd_) {
    const std::int64_t lineBegin = position_;
    const auto read = ReadLine();
    if (!read) {
      atEnd_ = true;
      separatorAt_ = -1;
      return tl::unexpected(SourceError{Origin(position_), read.error()});
    }
    if (!*read) {
      atEnd_ = true;
      break;
    }
    if (!IsSeparator()) {
      AddLine();
      continue;
    }
    previousLineEmpty_ = false;
    separatorAt_ = lineBegin;
    if (begin >= 0) return Finish(begin);
    begin = lineBegin;
  }
  separatorAt_ = -1;
  if (begin < 0) return std::optional<SourceMessage>();
  return Finish(begin);
}

bool MboxSource::IsSeparator() const {
  return previousLineEmpty_ && std::string_view(line_).starts_with(Separator);
}

void MboxSource::AddLine() {
  previousLineEmpty_ = IsEmptyLine(line_);
  const std::string_view text = std::string_view(line_).substr(IsQuotedSeparator(line_) ? 1 : 0);
  if (isTooLarge_ || message_.size() + text.size() > maxMessageBytes_) {
    isTooLarge_ = true;
    message_ = std::string();
  } else {
    message_ += text;
  }
}

tl::expected<std::optional<SourceMessage>, SourceError> MboxSource::Finish(std::int64_t begin) {
  SourceMessage message;
  message.Origin = Origin(begin);
  ++number_;
  message.Bytes = std::exchange(message_, {});
  if (std::exchange(isTooLarge_, false)) {
    return tl::unexpected(
        SourceError{std::move(message.Origin), {store::store_error::Failed, "Die Nachricht ist zu groß"}});
  }
  CutFormatLine(message.Bytes);
  return std::optional(std::move(message));
}

std::string MboxSource::Origin(std::int64_t begin) const {
  return fmt::format("{}, Nachricht {} ab Byte {}", name_, number_ + 1, begin);
}

Result<bool> MboxSource::ReadLine() {
  line_.clear();
  while (true) {
    if (consumed_ == buffer_.size()) {
      auto filled = FillBuffer();
      if (!filled) return filled;
      if (!*filled) return !line_.empty();
    }
    const auto end = buffer_.find('\n', consumed_);
    const std::size_t count = (end == std::string::npos ? buffer_.size() : end + 1) - consumed_;
    position_ += static_cast<std::int64_t>(count);
    if (line_.size() + count > maxMessageBytes_) {
      isTooLarge_ = true;
      line_ = std::string();
    }
    line_.append(buffer_, consumed_, count);
    consumed_ += count;
    if (end != std::string::npos) return true;
  }
}

Result<bool> MboxSource::FillBuffer() {
  auto chunk = reader_->Read(ChunkBytes);
  if (!chunk) return Fail(chunk.error());
  buffer_ = std::move(*chunk);
  consumed_ = 0;
  return !buffer_.empty();
}

}  // namespace velmora::cli
