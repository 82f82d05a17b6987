// Writes a mail item as a message (RFC 5322, MIME): for sending, and for an entry without a source of its
// own.
#pragma once

#include <string>
#include <string_view>

#include "base/result.h"
#include "platform/clock.h"
#include "platform/file_system.h"
#include "store/item.h"

namespace velmora::store::embedded {

struct ComposeOptions {
  std::string DefaultSender;       // address for a mail that names none
  std::string MessageIdDomain;     // behind the "@" of the message id
  std::string TemporaryDirectory;  // Windows path; attachments pass through it
};

// The message with CR LF line ends: From, To, Cc, Subject, Date and Message-ID, the plain text and, where
// there is one, the HTML body, the attachments. Bcc recipients are not named. No value can add a header
// field: control characters in it become blanks.
Result<std::string> ComposeMail(DvMailItem& mail, platform::FileSystem& fileSystem, platform::Clock& clock,
                                const ComposeOptions& options);

// Whether an address can be given to a mail program and written into a header field: not empty, no leading
// "-", no control character, blank or special character of an address list.
bool IsPlainAddress(std::string_view address);

}  // namespace velmora::store::embedded
