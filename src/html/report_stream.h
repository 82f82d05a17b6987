// Where a report's text goes.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "base/result.h"
#include "platform/file_system.h"

namespace velmora::html {

class ReportStream {
 public:
  virtual ~ReportStream() = default;
  virtual Status Write(std::string_view utf8) = 0;
};

// Collects a page in memory.
class StringReportStream : public ReportStream {
 public:
  Status Write(std::string_view utf8) override;
  const std::string& Text() const { return text_; }
  std::string TakeText() { return std::move(text_); }

 private:
  std::string text_;
};

// Writes a file in Windows-1252; characters beyond it become decimal references. Holds back a few
// kilobytes; Close writes them and reports what failed late.
class FileReportStream : public ReportStream {
 public:
  explicit FileReportStream(std::unique_ptr<platform::FileWriter> file) : file_(std::move(file)) {}
  Status Write(std::string_view utf8) override;
  Status Close();

 private:
  Status Flush();

  std::unique_ptr<platform::FileWriter> file_;
  std::string pending_;
};

}  // namespace velmora::html
