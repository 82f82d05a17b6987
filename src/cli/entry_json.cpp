#include "cli/entry_json.h"

#include <fmt/core.h>

#include <cmath>
#include <type_traits>
#include <variant>

#include "base/date_time.h"
#include "cli/entry_row.h"
#include "cli/json.h"
#include "cli/option_names.h"
#include "store/item_properties.h"

namespace velmora::cli {
namespace {

using store::FieldValue;

// "2026-12-31T23:59:00", local time; null without a date.
std::string JsonDate(DateTime date) {
  if (date.IsNull()) return "null";
  const auto civil = date.Civil();
  return fmt::format("\"{:04}-{:02}-{:02}T{:02}:{:02}:{:02}\"", civil.Year, civil.Month, civil.Day,
                     civil.Hour, civil.Minute, civil.Second);
}

template <typename Items, typename Json>
std::string JsonArray(const Items& items, Json json) {
  std::string text;
  for (const auto& item : items) text += fmt::format("{}{}", text.empty() ? "" : ", ", json(item));
  return fmt::format("[{}]", text);
}

std::string JsonValue(const FieldValue& value) {
  return std::visit(
      [](const auto& held) -> std::string {
        using Held = std::decay_t<decltype(held)>;
        if constexpr (std::is_same_v<Held, std::monostate>) {
          return "null";
        } else if constexpr (std::is_same_v<Held, std::string>) {
          return JsonText(held);
        } else if constexpr (std::is_same_v<Held, DateTime>) {
          return JsonDate(held);
        } else if constexpr (std::is_same_v<Held, std::vector<std::string>>) {
          return JsonArray(held, JsonText);
        } else if constexpr (std::is_same_v<Held, double>) {
          return std::isfinite(held) ? fmt::format("{}", held) : "null";
        } else {
          return fmt::format("{}", held);
        }
      },
      value);
}

// One object of the properties that a table names.
Result<std::string> PropertiesJson(store::DvItemView& view) {
  std::string properties;
  std::optional<Error> failure;
  const bool has = store::VisitProperties(view, [&](auto& typed, const auto& table) {
    for (const auto& info : table) {
      const auto value = typed.Get(info.Which);
      if (!value) failure = value.error();
      if (failure) return;
      properties += fmt::format("{}{}: {}", properties.empty() ? "" : ", ", JsonText(CamelCase(info.Name)),
                                JsonValue(*value));
    }
  });
  if (failure) return tl::unexpected(*failure);
  return has ? fmt::format(", \"properties\": {{{}}}", properties) : std::string();
}

std::string ContentJson(store::DvItemView& view, platform::FileSystem& fileSystem) {
  std::string path;
  if (auto* const fax = view.AsFax()) path = fax->ImagePath();
  if (auto* const voice = view.AsVoice()) path = voice->WavePath();
  if (path.empty()) return {};
  const auto file = fileSystem.GetEntry(path);
  return fmt::format(", \"content\": {{\"path\": {}, \"size\": {}}}", JsonText(path),
                     file && !file->IsFolder ? fmt::format("{}", file->Size) : "null");
}

// What only messages have.
Result<std::string> MessageJson(store::DvItemView& view) {
  auto* const message = view.AsMessage();
  if (message == nullptr) return std::string();
  const auto sender = message->Sender();
  if (!sender) return Fail(sender.error());
  const auto cc = message->Cc();
  if (!cc) return Fail(cc.error());
  const auto bcc = message->Bcc();
  if (!bcc) return Fail(bcc.error());
  const auto pages = view.Item().Pages();
  if (!pages) return Fail(pages.error());
  const auto distribution = view.Item().Fields().Get(store::field_name::DistributionID);
  if (!distribution) return Fail(distribution.error());
  const auto address = [](const store::DvRecipient& recipient) {
    return JsonText(recipient.Address.empty() ? recipient.Name : recipient.Address);
  };
  return fmt::format(", \"fromName\": {}, \"cc\": {}, \"bcc\": {}, \"pages\": {}, \"distributionId\": {}",
                     JsonText(sender->Name), JsonArray(*cc, address), JsonArray(*bcc, address), *pages,
                     JsonText(store::FieldText(*distribution)));
}

}  // namespace

Result<std::string> EntryJson(store::DvItemView& view, platform::FileSystem& fileSystem) {
  const auto row = ReadEntryRow(view.Item());
  if (!row) return Fail(row.error());
  const auto comment = view.Item().Fields().Get(store::tag::Comment);
  if (!comment) return Fail(comment.error());
  const auto priority = view.Item().Fields().Get(store::tag::Priority);
  if (!priority) return Fail(priority.error());
  const auto message = MessageJson(view);
  if (!message) return message;
  const auto properties = PropertiesJson(view);
  if (!properties) return properties;
  const auto attachments = JsonArray(row->Attachments, [](const AttachmentRow& attachment) {
    return fmt::format("{{\"name\": {}, \"size\": {}, \"flags\": {}}}", JsonText(attachment.Name),
                       attachment.Size, attachment.Flags);
  });
  return fmt::format(
      "{{\"key\": {}, \"type\": {}, \"subject\": {}, \"from\": {}, \"to\": {}, \"date\": {}, \"flags\": {}, "
      "\"status\": {}, \"attachments\": {}, \"comment\": {}, \"priority\": {}{}{}{}}}",
      row->Key, row->Type, JsonText(row->Subject), JsonText(row->From), JsonText(row->To),
      JsonDate(row->Date), row->Flags, row->Status, attachments, JsonText(store::FieldText(*comment)),
      store::FieldNumber(*priority), *message, ContentJson(view, fileSystem), *properties);
}

}  // namespace velmora::cli
