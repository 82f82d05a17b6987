#include "store/embedded/item_attachments.h"

#include <fmt/core.h>

#include <algorithm>
#include <optional>
#include <utility>

#include "store/embedded/content_decoder.h"
#include "store/embedded/content_files.h"
#include "store/embedded/message_item.h"
#include "store/errors.h"

namespace velmora::store::embedded {
namespace {

constexpr std::int64_t CopiedBytes = 262'144;

// Stands for itself, so that it may outlive its item.
class ItemAttachment : public DvAttachment {
 public:
  ItemAttachment(EntryStore& store, std::string directory, EntryKey key, AttachmentRecord record)
      : store_(store), directory_(std::move(directory)), key_(key), record_(std::move(record)) {}

  // Of a draft, whose content lies in memory.
  ItemAttachment(EntryStore& store, AttachmentRecord record, std::string bytes)
      : store_(store), record_(std::move(record)), draftBytes_(std::move(bytes)) {}

  std::string Name() override { return record_.Name; }
  std::int64_t Size() override { return record_.Size; }
  DateTime Date() override { return record_.Date; }
  std::uint32_t Flags() override { return record_.Flags; }

  Status SaveAs(std::string_view path, bool exclusive) override {
    platform::WriteOptions options;
    options.Mode = exclusive ? platform::Create::Exclusive : platform::Create::Overwrite;
    if (draftBytes_) return store_.Files().WriteFile(path, *draftBytes_, options);
    // Before the target is touched: an attachment that cannot be read must not cost an existing file.
    if (const auto present = store_.ContentPath(directory_, key_, record_.Content.File); !present) {
      return Fail(present.error());
    }
    auto writer = store_.Files().OpenWriter(path, options);
    if (!writer) return Fail(writer.error());
    auto saved = ReadAttachment(store_, directory_, key_, record_,
                                [&](std::string_view piece) { return (*writer)->Write(piece); });
    if (saved) saved = (*writer)->Close();
    if (saved) return {};
    writer->reset();
    (void)store_.Files().DeleteFile(path, true);  // half a file is worse than none
    return saved;
  }

 private:
  EntryStore& store_;
  std::string directory_;
  EntryKey key_ = 0;
  AttachmentRecord record_;
  std::optional<std::string> draftBytes_;
};

}  // namespace

Status ReadAttachment(EntryStore& store, std::string_view directory, EntryKey key,
                      const AttachmentRecord& attachment,
                      const std::function<Status(std::string_view piece)>& take) {
  const auto& range = attachment.Content;
  const auto path = store.ContentPath(directory, key, range.File);
  if (!path) return Fail(path.error());
  const auto reader = ContentReader::Open(*path);
  if (!reader) return Fail(reader.error());
  TransferDecoder decoder(range.Encoding);
  for (std::int64_t done = 0; done < range.Length;) {
    const auto count = std::min(CopiedBytes, range.Length - done);
    const auto piece = reader->Read(range.Offset + done, static_cast<std::size_t>(count));
    if (!piece) return Fail(piece.error());
    if (piece->empty()) {
      return Fail(store_error::Damaged, fmt::format("Die Inhaltsdatei ist unvollständig: {}.{:03}",
                                                    EntryStore::Location(directory, key), range.File));
    }
    if (const auto taken = take(decoder.Decode(*piece)); !taken) return taken;
    done += static_cast<std::int64_t>(piece->size());
  }
  return {};
}

Result<int> ItemAttachments::Count() { return item_.Row().AttachmentCount; }

Result<std::unique_ptr<DvAttachment>> ItemAttachments::Item(int index) {
  const auto list = item_.AttachmentList();
  if (!list) return Fail(list.error());
  if (index < 0 || static_cast<std::size_t>(index) >= (*list)->size()) {
    return Fail(store_error::NotFound, fmt::format("Der Eintrag hat keinen Anhang mit der Nummer {}", index));
  }
  const auto position = static_cast<std::size_t>(index);
  const auto& record = (**list)[position];
  if (item_.IsDraft()) {
    return std::make_unique<ItemAttachment>(item_.Store(), record, item_.DraftParts()[position].Bytes);
  }
  return std::make_unique<ItemAttachment>(item_.Store(), item_.Directory(), item_.Key(), record);
}

Status ItemAttachments::Add(std::string_view path, std::uint32_t flags) {
  return item_.AddAttachment(path, flags);
}

}  // namespace velmora::store::embedded
