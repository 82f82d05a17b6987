#include "store/embedded/message_store.h"

#include <fmt/core.h>

#include <algorithm>
#include <span>
#include <utility>

#include "base/paths.h"
#include "store/embedded/content_files.h"
#include "store/embedded/database_pool.h"
#include "store/embedded/entry_store.h"
#include "store/embedded/item_view.h"
#include "store/embedded/mail_composer.h"
#include "store/embedded/mail_parser.h"
#include "store/embedded/message_item.h"
#include "store/embedded/property_item.h"
#include "store/errors.h"
#include "store/vocabulary.h"

namespace velmora::store::embedded {
namespace {

class Entries : public DvEntries {
 public:
  Entries(EntryStore& store, std::string directory, std::vector<EntryKey> keys)
      : store_(store), directory_(std::move(directory)), keys_(std::move(keys)) {}

  int Count() override { return static_cast<int>(keys_.size()); }
  EntryKey Key(int index) override { return IsIndex(index) ? keys_[static_cast<std::size_t>(index)] : 0; }

  Result<std::unique_ptr<DvItem>> Item(int index) override {
    if (!IsIndex(index)) {
      return Fail(store_error::NotFound,
                  fmt::format("Die Liste hat keinen Eintrag mit der Nummer {}", index));
    }
    auto row = store_.ReadRow(directory_, Key(index));
    if (!row) return Fail(row.error());
    return std::make_unique<MessageItem>(store_, directory_, std::move(*row));
  }

  Status ReadRows(int first, int count, std::vector<DvEntryRow>& rows) override {
    if (!IsIndex(first) || count <= 0) return {};
    const auto start = static_cast<std::size_t>(first);
    const auto length = std::min(static_cast<std::size_t>(count), keys_.size() - start);
    return store_.ReadListRows(directory_, std::span(keys_).subspan(start, length), rows);
  }

 private:
  bool IsIndex(int index) const { return index >= 0 && static_cast<std::size_t>(index) < keys_.size(); }

  EntryStore& store_;
  std::string directory_;
  std::vector<EntryKey> keys_;
};

void AppendRecipients(std::vector<RecipientRecord>& records, RecipientRole role,
                      std::vector<DvRecipient>& recipients) {
  for (auto& recipient : recipients) records.push_back({role, std::move(recipient)});
}

// The entry of a delivered mail.
EntryRecord MakeRecord(ParsedMail mail, DateTime date, bool isViewed) {
  EntryRecord record;
  auto& row = record.Row;
  row.Type = item_type::EMail;
  row[Column::Flags] = std::int64_t{item_flag::Received | (isViewed ? item_flag::Viewed : 0)};
  row[Column::Priority] = std::int64_t{mail.Priority};
  row[Column::StatusTime] = date;
  row[Column::SenderAddress] = mail.Sender.Address.empty() ? mail.Sender.Name : mail.Sender.Address;
  row[Column::SenderName] = std::move(mail.Sender.Name);
  row[Column::Subject] = std::move(mail.Subject);
  row[Column::RecipientText] = std::move(mail.RecipientText);
  row[Column::SendStatus] = std::int64_t{send_status::Sent};
  AppendRecipients(record.Recipients, RecipientRole::To, mail.To);
  AppendRecipients(record.Recipients, RecipientRole::Cc, mail.Cc);
  AppendRecipients(record.Recipients, RecipientRole::Bcc, mail.Bcc);
  record.Texts = {{tag::HtmlText, std::move(mail.HtmlText)},
                  {tag::SmtpHeader, std::move(mail.Header)},
                  {tag::PlainText, std::move(mail.PlainText)}};
  std::erase_if(record.Texts, [](const auto& text) { return text.second.empty(); });
  record.Attachments = std::move(mail.Attachments);
  for (auto& attachment : record.Attachments) attachment.Date = date;
  return record;
}

}  // namespace

struct MessageStore::State {
  State(platform::FileSystem& fileSystem, platform::Clock& clock, const std::string& moveJournals)
      : Entries(fileSystem, clock, moveJournals) {
    // What hinders now (another process, a full disk) is tried again by whoever opens the store next.
    if (!moveJournals.empty()) (void)Entries.SettleAbandonedMoves(moveJournals);
  }

  Result<std::unique_ptr<MessageItem>> Open(std::string_view directory, EntryKey key) {
    auto row = Entries.ReadRow(directory, key);
    if (!row) return Fail(row.error());
    return std::make_unique<MessageItem>(Entries, std::string(directory), std::move(*row));
  }

  EntryStore Entries;
  SubmitHandler Submit;
};

MessageStore::MessageStore(platform::FileSystem& fileSystem, platform::Clock& clock, std::string moveJournals)
    : state_(std::make_unique<State>(fileSystem, clock, moveJournals)) {}

MessageStore::~MessageStore() = default;

void MessageStore::SetSubmitHandler(SubmitHandler handler) { state_->Submit = std::move(handler); }

void MessageStore::SetPatience(Patience patience) { state_->Entries.Pool().SetPatience(patience); }

Result<int> MessageStore::Count(std::string_view directory) { return state_->Entries.Count(directory); }

Result<std::unique_ptr<DvEntries>> MessageStore::GetEntries(std::string_view directory, std::uint32_t filter,
                                                            EntryOrder order) {
  auto keys = state_->Entries.Keys(directory, filter, order);
  if (!keys) return Fail(keys.error());
  return std::make_unique<Entries>(state_->Entries, std::string(directory), std::move(*keys));
}

Result<std::unique_ptr<DvItem>> MessageStore::GetEntry(std::string_view directory, EntryKey key) {
  auto item = state_->Open(directory, key);
  if (!item) return Fail(item.error());
  return std::move(*item);
}

Result<std::unique_ptr<DvItemView>> MessageStore::ItemView(std::string_view directory, EntryKey key) {
  // Whoever wants the view reads most of the entry.
  auto entry = state_->Entries.ReadEntry(directory, key);
  if (!entry) return Fail(entry.error());
  auto& [row, parts] = *entry;
  return MakeItemView(std::make_unique<MessageItem>(state_->Entries, std::string(directory), std::move(row),
                                                    std::move(parts)),
                      state_->Submit);
}

Result<std::unique_ptr<DvItemView>> MessageStore::CreateItem(std::string_view directory, int type) {
  return MakeItemView(MessageItem::MakeDraft(state_->Entries, std::string(directory), type), state_->Submit);
}

Result<std::unique_ptr<DvItem>> MessageStore::CreateEntry(std::string_view directory, int type) {
  const auto draft = MessageItem::MakeDraft(state_->Entries, std::string(directory), type);
  EntryRecord record;
  record.Row = draft->Row();
  const auto key = state_->Entries.Insert(directory, std::move(record), std::nullopt);
  if (!key) return Fail(key.error());
  return GetEntry(directory, *key);
}

Result<EntryKey> MessageStore::Deliver(std::string_view directory, std::string_view message,
                                       const DeliverOptions& options) {
  auto mail = ParseMail(message);
  auto date = options.Received;
  if (mail.UnixTime) date = platform::FromUnixTime(*mail.UnixTime);
  if (date.IsNull()) date = state_->Entries.Clock().Now();
  return state_->Entries.Insert(directory, MakeRecord(std::move(mail), date, options.Viewed), message);
}

std::unique_ptr<DvAddressItem> MessageStore::MakeAddress(const AddressValues& values) {
  auto address =
      std::make_unique<AddressItem>(MessageItem::MakeDraft(state_->Entries, "", item_type::Address));
  // A draft takes every value.
  for (const auto& [property, text] : values) (void)address->Set(property, text);
  return address;
}

std::string MessageStore::SourcePath(std::string_view directory, EntryKey key) {
  const auto row = state_->Entries.ReadRow(directory, key);
  if (!row || row->Type != item_type::EMail || !FieldBool((*row)[Column::HasSource])) return {};
  if (!state_->Entries.ContentPath(directory, key, 1)) return {};
  return JoinPath(directory, ContentFileName(key, 1));
}

Result<std::string> MessageStore::ComposeSource(std::string_view directory, EntryKey key) {
  const auto item = state_->Open(directory, key);
  if (!item) return Fail(item.error());
  const auto content = (*item)->Content();
  if (!content) return Fail(content.error());
  return ComposeMail(*content);
}

Status MessageStore::RemoveEmpty(std::string_view directory) {
  const auto count = state_->Entries.Count(directory);
  if (!count) return Fail(count.error());
  if (*count > 0) {
    return Fail(store_error::NotEmpty,
                fmt::format("Das Archiv enthält noch {} Einträge: {}", *count, directory));
  }
  if (const auto closed = CommitAndClose(directory); !closed) return closed;
  auto& files = state_->Entries.Files();
  const auto listed = files.List(directory, "*", platform::ListWhat::Files);
  if (!listed) return Fail(listed.error());
  for (const auto& file : *listed) {
    if (!KeyOfContentFile(file.Name) && !IsDatabaseFile(file.Name)) continue;
    if (const auto removed = files.DeleteFile(JoinPath(directory, file.Name), true); !removed) return removed;
  }
  return {};
}

Status MessageStore::Commit() { return state_->Entries.Pool().Commit(); }

Status MessageStore::CommitAndClose(std::string_view directoryOrBelow) {
  return state_->Entries.Pool().CommitAndClose(directoryOrBelow);
}

std::vector<MessageStore::Finding> MessageStore::Check(std::string_view directory) {
  std::vector<Finding> findings;
  for (auto& [key, text, isNote] : state_->Entries.Check(directory)) {
    findings.push_back({std::string(directory), key, std::move(text), isNote});
  }
  return findings;
}

}  // namespace velmora::store::embedded
