// The messages of an mbox file (RFC 4155, in the variant "mboxrd").
//
// A message begins with a line "From ..." at the beginning of the file or behind an empty line; that line and
// the empty line before the next one belong to the format. ">From ", ">>From " and so on at the beginning of
// a line lose one ">".
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "cli/mail_source.h"

namespace velmora::cli {

class MboxSource final : public MailSource {
 public:
  // `name`: of the file, for messages to the user. `size`: of the file in bytes.
  MboxSource(std::unique_ptr<platform::FileReader> reader, std::string name, std::int64_t size,
             std::size_t maxMessageBytes);

  tl::expected<std::optional<SourceMessage>, SourceError> Next() override;
  std::int64_t Total() const override { return size_; }
  std::int64_t Done() const override { return position_; }

 private:
  // Puts the next line, with its end, into line_; false at the end of the file. A line longer than a message
  // may be is cut, and isTooLarge_ set.
  Result<bool> ReadLine();
  Result<bool> FillBuffer();
  bool IsSeparator() const;
  void AddLine();
  std::string Origin(std::int64_t begin) const;
  tl::expected<std::optional<SourceMessage>, SourceError> Finish(std::int64_t begin);

  std::unique_ptr<platform::FileReader> reader_;
  std::string name_;
  std::int64_t size_;
  std::size_t maxMessageBytes_;
  std::string buffer_;
  std::size_t consumed_ = 0;       // of the buffer
  std::int64_t position_ = 0;      // in the file, behind line_
  std::int64_t number_ = 0;        // of messages finished
  std::int64_t separatorAt_ = -1;  // where the message to be read next begins; -1: no separator seen yet
  std::string line_;
  std::string message_;
  bool previousLineEmpty_ = true;
  bool isTooLarge_ = false;
  bool atEnd_ = false;
};

}  // namespace velmora::cli
