// Where messages come from: a single file, an mbox file or a Maildir directory. Read as a stream: whatever
// the size of the source, one message at a time is in memory.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "base/result.h"
#include "platform/file_system.h"

namespace velmora::cli {

struct SourceMessage {
  std::string Bytes;
  std::string Origin;   // file and, in an mbox file, the position: for messages to the user
  bool Viewed = false;  // a Maildir knows it
};

// What kept one message from being read.
struct SourceError {
  std::string Origin;
  velmora::Error Cause;
};

class MailSource {
 public:
  virtual ~MailSource() = default;
  // The next message, nothing at the end. After an error the next call goes on behind it.
  virtual tl::expected<std::optional<SourceMessage>, SourceError> Next() = 0;
  // For the progress: how much there is and how much has been read, in a unit of the source's own.
  virtual std::int64_t Total() const = 0;
  virtual std::int64_t Done() const = 0;
};

// A larger message is refused.
inline constexpr std::size_t MaxMessageBytes = std::size_t{1} << 30;

// `path`: Windows path. A directory must be a Maildir (with `cur` or `new`); a file that begins with "From "
// is an mbox file; any other file is one message, whatever it contains.
Result<std::unique_ptr<MailSource>> OpenMailSource(platform::FileSystem& fileSystem, std::string_view path,
                                                   std::size_t maxMessageBytes = MaxMessageBytes);

}  // namespace velmora::cli
