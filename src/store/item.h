// Entries of an archive: the raw item with its fields and attachments, and the typed views.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/date_time.h"
#include "base/result.h"
#include "store/fields.h"

namespace velmora::store {

class DvArchive;

// Key of an entry in its archive.
using EntryKey = std::uint32_t;

class DvAttachment {
 public:
  virtual ~DvAttachment() = default;
  virtual std::string Name() = 0;  // no path part, no control character, at most 200 bytes
  virtual std::int64_t Size() = 0;
  virtual DateTime Date() = 0;
  virtual std::uint32_t Flags() = 0;  // see vocabulary.h, attachment_flag
  // Writes the decoded content at a Windows path; fails with a file error or when the source has vanished.
  // `exclusive`: refuses an existing target.
  virtual Status SaveAs(std::string_view path, bool exclusive) = 0;
};

class DvAttachments {
 public:
  virtual ~DvAttachments() = default;
  virtual Result<int> Count() = 0;
  virtual Result<std::unique_ptr<DvAttachment>> Item(int index) = 0;  // from 0, in the order of the message
  virtual Status Add(std::string_view path, std::uint32_t flags) = 0;
};

// One entry of an archive. Reading is lazy; an entry that has vanished gives store_error::NotFound.
class DvItem {
 public:
  virtual ~DvItem() = default;
  virtual EntryKey Key() const = 0;
  virtual int Type() = 0;  // item type, see vocabulary.h
  virtual DvFields& Fields() = 0;
  virtual DvFields& UserFields() = 0;
  virtual DvAttachments& Attachments() = 0;
  virtual Result<int> Pages() = 0;
  virtual Status SetPages(int pages) = 0;
  // A copy in the target archive; with `move` the source is deleted once the copy is committed.
  virtual Status CopyTo(DvArchive& target, bool move) = 0;
  virtual Status Update() = 0;
  virtual Status UpdateField(FieldTag tag) = 0;
  virtual Status Delete() = 0;
};

struct DvRecipient {
  std::string Name;
  std::string Address;
  std::string Kind = "Mail";  // "Mail", "Fax", ...

  bool operator==(const DvRecipient&) const = default;
};

class DvMessageItem;
class DvMailItem;
class DvFaxItem;
class DvVoiceItem;
class DvAddressItem;    // address_item.h
class DvCalendarItem;   // calendar_item.h
class DvTaskItem;       // task_item.h
class DvLinkItem;       // link_item.h
class DvTvProgramItem;  // tv_program_item.h

// The typed view of an entry: one of the As... answers for its type.
class DvItemView {
 public:
  virtual ~DvItemView() = default;
  virtual int Type() = 0;
  virtual DvItem& Item() = 0;
  virtual DvMessageItem* AsMessage() { return nullptr; }  // mail, fax, SMS, voice, TMail, video, audio
  virtual DvMailItem* AsMail() { return nullptr; }        // the same without fax and voice
  virtual DvFaxItem* AsFax() { return nullptr; }
  virtual DvVoiceItem* AsVoice() { return nullptr; }
  virtual DvAddressItem* AsAddress() { return nullptr; }
  virtual DvCalendarItem* AsCalendar() { return nullptr; }
  virtual DvTaskItem* AsTask() { return nullptr; }
  virtual DvLinkItem* AsLink() { return nullptr; }
  virtual DvTvProgramItem* AsTvProgram() { return nullptr; }
};

// What all messages have, whatever carried them.
class DvMessageItem : public DvItemView {
 public:
  DvMessageItem* AsMessage() override { return this; }

  virtual Result<std::string> Subject() = 0;
  virtual Result<DvRecipient> Sender() = 0;
  virtual Result<std::string> RecipientText() = 0;  // the recipients as one text: addresses joined by "; "
  virtual Result<std::string> OtherRecipientText() = 0;  // the display names, where no address is known
  virtual Result<DateTime> Date() = 0;
  virtual Result<int> SendStatus() = 0;
  virtual Result<std::vector<DvRecipient>> To() = 0;
  virtual Result<std::vector<DvRecipient>> Cc() = 0;
  virtual Result<std::vector<DvRecipient>> Bcc() = 0;

  // Writing a new message: change, then Item().Update() or Submit.
  virtual Status AddTo(DvRecipient recipient) = 0;
  virtual Status AddCc(DvRecipient recipient) = 0;
  virtual Status AddBcc(DvRecipient recipient) = 0;
  virtual Status SetSender(std::string_view address) = 0;
  virtual Status SetSubject(std::string_view subject) = 0;
};

// Mail, SMS, TMail, video and audio items.
class DvMailItem : public DvMessageItem {
 public:
  DvMailItem* AsMail() override { return this; }

  virtual Result<std::string> Text() = 0;           // plain text, lines ended by CR LF
  virtual Result<std::string> HtmlIndicator() = 0;  // empty for a plain text mail
  virtual Status SetText(std::string_view text) = 0;
  virtual Status SetTextFormat(int format) = 0;  // 0 plain text
  // Hands the mail to delivery: flag 1 sends at once.
  virtual Status Submit(int flag) = 0;
};

// A fax. Sender and recipient are fields: tag::SenderAddress, tag::RecipientAddress.
class DvFaxItem : public DvMessageItem {
 public:
  DvFaxItem* AsFax() override { return this; }

  // Windows path of the TIFF, where the store keeps it whether it is there or not. Read it, never change it.
  virtual std::string ImagePath() = 0;
  // Of a new fax, before its Update: takes a copy of the file. Fails with a file error.
  virtual Status SetImage(std::string_view path) = 0;
};

// A voice message. Sender and recipient are fields: tag::SenderAddress, tag::RecipientAddress.
class DvVoiceItem : public DvMessageItem {
 public:
  DvVoiceItem* AsVoice() override { return this; }

  // Windows path of the wave file, where the store keeps it whether it is there or not. Read it, never change
  // it.
  virtual std::string WavePath() = 0;
  // Of a new voice message, before its Update: takes a copy of the file. Fails with a file error.
  virtual Status SetWave(std::string_view path) = 0;
};

// What a list shows of an entry: the values that its item gives, a field without a value as 0 or "".
struct DvEntryRow {
  EntryKey Key = 0;
  int Type = 0;
  std::uint32_t Flags = 0;          // tag::Flags
  std::uint32_t MailFlags = 0;      // tag::MailFlags
  std::uint32_t SendStatus = 0;     // tag::SendStatus
  std::uint32_t DocumentFlags = 0;  // tag::DocumentFlags
  std::int64_t DisplayVariant = 0;  // tag::DisplayVariant
  DateTime StatusTime;              // tag::StatusTime
  std::string Subject;              // tag::Subject
  std::string SenderAddress;        // tag::SenderAddress
  std::string RecipientAddress;     // tag::RecipientAddress
  std::string RecipientText;        // tag::RecipientText
  std::string FirstRecipient;       // the first of tag::Recipients
  std::vector<std::string> AttachmentNames;
  std::string Link;      // of a link item
  std::string Location;  // tag::Location

  bool operator==(const DvEntryRow&) const = default;
};

// The entries of an archive that pass a filter. Keys and count are fixed at the call that made it.
class DvEntries {
 public:
  virtual ~DvEntries() = default;
  virtual int Count() = 0;
  virtual EntryKey Key(int index) = 0;  // from 0, without reading the entry
  virtual Result<std::unique_ptr<DvItem>> Item(int index) = 0;
  // Appends the rows of `count` entries from `first` on, far cheaper than their items. Entries that have
  // vanished since are left out; rows that were read before a failure stay.
  virtual Status ReadRows(int first, int count, std::vector<DvEntryRow>& rows) = 0;
};

}  // namespace velmora::store
