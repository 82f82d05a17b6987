// Writes the mail message of an entry that was not delivered as one.
#pragma once

#include <string>
#include <vector>

#include "base/date_time.h"
#include "store/item.h"

namespace velmora::store::embedded {

struct ComposedPart {
  std::string Name;
  std::string Bytes;
};

struct MailContent {
  DvRecipient Sender;
  std::vector<DvRecipient> To, Cc;  // who gets a blind copy does not stand in a message
  std::string Subject;
  DateTime Date;
  std::string PlainText, HtmlText;
  std::vector<ComposedPart> Attachments;
};

// The bytes of the message, lines ended by CR LF.
std::string ComposeMail(const MailContent& mail);

}  // namespace velmora::store::embedded
