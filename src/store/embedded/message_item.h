// An entry as an item object: fields read lazily, changes kept until Update. An item that was made for
// writing (a draft) stands in memory only until its first Update. An item must not outlive its store.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "store/embedded/entry_store.h"
#include "store/embedded/mail_composer.h"
#include "store/item.h"

namespace velmora::store::embedded {

class MessageItem : public DvItem {
 public:
  // An entry of the store; what is not given is read when it is asked for.
  MessageItem(EntryStore& store, std::string directory, EntryRow row);
  MessageItem(EntryStore& store, std::string directory, EntryRow row, EntryParts parts);
  // A draft of that type for the directory.
  static std::unique_ptr<MessageItem> MakeDraft(EntryStore& store, std::string directory, int type);
  ~MessageItem() override;

  EntryKey Key() const override { return row_.Key; }
  int Type() override { return row_.Type; }
  DvFields& Fields() override;
  DvFields& UserFields() override;
  DvAttachments& Attachments() override;
  Result<int> Pages() override;
  Status SetPages(int pages) override;
  Status CopyTo(DvArchive& target, bool move) override;
  Status Update() override;
  Status UpdateField(FieldTag tag) override;
  Status Delete() override;

  // --- For the views and parts of the item. ---
  EntryStore& Store() { return store_; }
  const std::string& Directory() const { return directory_; }
  bool IsDraft() const { return isDraft_; }
  EntryRow& Row() { return row_; }
  FieldValue Value(Column column) const { return row_[column]; }
  void SetValue(Column column, FieldValue value);
  Result<std::string> Text(FieldTag tag);
  Result<bool> HasText(FieldTag tag);
  void SetText(FieldTag tag, std::string text);
  Result<std::vector<RecipientRecord>> Recipients();
  void SetRecipients(std::vector<RecipientRecord> recipients);
  Result<const std::vector<AttachmentRecord>*> AttachmentList();
  Status AddAttachment(std::string_view path, std::uint32_t flags);
  // Of a draft: the bytes of its attachments, in their order.
  const std::vector<ComposedPart>& DraftParts() const { return draftParts_; }
  // Fields without a column, user fields or not.
  Result<FieldValue> OtherValue(bool isUserField, FieldTag tag, std::string_view name);
  Result<std::vector<OtherField>> Others(bool isUserField);
  void SetOther(OtherField field);
  // Windows path of content file 1 in the archive's present directory, whether it is there or not; of a draft
  // "".
  std::string ContentFilePath() const;
  // Of a draft: a copy of the file becomes content file 1.
  Status SetContentFile(std::string_view path);
  // All that a message of this entry is made of.
  Result<MailContent> Content();

 private:
  // All of the draft or nothing.
  Status InsertDraft();
  Status StoreDraftParts(EntryKey key);
  // What is to be written of one field, taken out of the changes.
  EntryChanges TakeChangesOf(FieldTag tag);
  Status LoadParts();
  void Accept(EntryParts parts);
  // Big texts as they were read are no longer those of the entry.
  void ForgetTexts();

  EntryStore& store_;
  std::string directory_;
  EntryRow row_;
  bool isDraft_ = false;
  EntryChanges changes_;
  std::optional<std::vector<RecipientRecord>> recipients_;
  std::optional<std::vector<AttachmentRecord>> attachments_;
  std::optional<std::vector<OtherField>> others_;
  std::optional<std::vector<FieldTag>> textTags_;  // which big texts there are
  std::optional<std::map<FieldTag, std::string>> texts_;
  std::vector<ComposedPart> draftParts_;
  std::optional<std::string> draftContent_;
  std::unique_ptr<DvFields> fields_, userFields_;
  std::unique_ptr<DvAttachments> attachmentView_;
};

}  // namespace velmora::store::embedded
