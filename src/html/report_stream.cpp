#include "html/report_stream.h"

#include "base/code_page.h"

namespace velmora::html {
namespace {

constexpr std::size_t PendingLimit = 32 * 1024;

}  // namespace

Status StringReportStream::Write(std::string_view utf8) {
  text_ += utf8;
  return {};
}

Status FileReportStream::Write(std::string_view utf8) {
  pending_ += ToCodePage(utf8, Unmappable::Reference);
  return pending_.size() < PendingLimit ? Status{} : Flush();
}

Status FileReportStream::Close() {
  const Status flushed = Flush();
  const Status closed = file_->Close();
  return flushed ? closed : flushed;
}

Status FileReportStream::Flush() {
  const Status written = file_->Write(pending_);
  pending_.clear();
  return written;
}

}  // namespace velmora::html
