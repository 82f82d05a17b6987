// `velmoractl store put-...`: entries of every kind from options and files.
#include <fmt/core.h>

#include <optional>
#include <utility>
#include <vector>

#include "addresses/vcard_reader.h"
#include "cli/card_file.h"
#include "cli/entry_files.h"
#include "cli/entry_values.h"
#include "cli/exit_status.h"
#include "cli/output.h"
#include "cli/put_kinds.h"
#include "cli/store_commands.h"
#include "cli/store_writing.h"
#include "store/errors.h"
#include "store/item_properties.h"

namespace velmora::cli {
namespace {

using store::DvItemView;
using store::FieldValue;

// What the command line says of every entry that it makes.
struct EntryValues {
  std::vector<std::pair<std::string_view, FieldValue>> Fields;  // by name
  store::DvRecipient Recipient;
};

// Nothing once it has been told which value is none.
std::optional<EntryValues> ReadValues(const PutOptions& options) {
  EntryValues values;
  values.Recipient.Kind = options.Kind->RecipientKind;
  for (const auto& field : options.Kind->Fields()) {
    if (const auto flag = options.Switches.find(field.Option); flag != options.Switches.end()) {
      if (flag->second) values.Fields.emplace_back(field.Field, true);
      continue;
    }
    const auto text = options.Values.find(field.Option);
    if (text == options.Values.end() || text->second.empty()) continue;
    auto value = ParseValue(text->second, field.Kind);
    if (!value) {
      PrintError(field.Option, value.error());
      return std::nullopt;
    }
    if (field.Option == RecipientOption) values.Recipient.Address = store::FieldText(*value);
    values.Fields.emplace_back(field.Field, std::move(*value));
  }
  std::int64_t flags = 0;
  for (const auto& flag : FlagOptions()) {
    if (options.Switches.at(flag.Option)) flags |= flag.Bit;
  }
  if (flags != 0) values.Fields.emplace_back("Flags", flags);
  return values;
}

Status SetField(DvItemView& view, std::string_view name, const FieldValue& value) {
  std::optional<Status> set;
  (void)store::VisitProperties(view, [&](auto& typed, const auto& table) {  // false: it has none
    for (const auto& info : table) {
      if (info.Name == name) set = typed.Set(info.Which, value);
    }
  });
  return set ? *set : view.Item().Fields().Set(name, value);
}

Status SetFields(DvItemView& view, const EntryValues& values) {
  for (const auto& [name, value] : values.Fields) {
    if (const auto set = SetField(view, name, value); !set) return set;
  }
  auto* const message = view.AsMessage();
  return message != nullptr && !values.Recipient.Address.empty() ? message->AddTo(values.Recipient)
                                                                 : Status{};
}

// The content of a fax or voice message, checked.
Status SetContent(DvItemView& view, platform::FileSystem& fileSystem, std::string_view path) {
  if (auto* const voice = view.AsVoice()) {
    const auto checked = CheckWaveFile(fileSystem, path);
    return checked ? voice->SetWave(path) : checked;
  }
  const auto pages = CountFaxPages(fileSystem, path);
  if (!pages) return Fail(pages.error());
  if (*pages == 0) PrintError(fmt::format("Warnung: {} enthält keine lesbare Seite", path));
  if (const auto set = view.Item().SetPages(*pages); !set) return set;
  return view.AsFax()->SetImage(path);
}

// A new entry of the kind; `fill` gives it what is its own, before the values of the command line.
template <typename Fill>
void PutOne(StoreWriting& writing, int type, const EntryValues& values, std::string_view origin, Fill fill) {
  const auto put = [&]() -> Status {
    const auto view = writing.Target().CreateItem(type);
    if (!view) return Fail(view.error());
    if (const auto filled = fill(**view); !filled) return filled;
    if (const auto set = SetFields(**view, values); !set) return set;
    return (*view)->Item().Update();
  }();
  if (put) {
    writing.NoteDone();
  } else {
    writing.Report(origin, put.error());
  }
}

void PutContents(StoreWriting& writing, const PutOptions& options, const EntryValues& values) {
  std::int64_t done = 0;
  for (const auto& file : options.Files) {
    if (writing.IsCancelled(done++, static_cast<std::int64_t>(options.Files.size()))) return;
    PutOne(writing, options.Kind->Type, values, file, [&](DvItemView& view) {
      return SetContent(view, writing.Files(), WindowsPath(writing.Files(), file));
    });
  }
}

// False once the user has cancelled.
bool PutCards(StoreWriting& writing, int type, const EntryValues& values, const std::string& hostPath) {
  const auto bytes = ReadCardFile(writing.Files(), WindowsPath(writing.Files(), hostPath));
  if (!bytes) {
    writing.Report(hostPath, bytes.error());
    return true;
  }
  addresses::VCardReader reader(*bytes);
  std::int64_t cards = 0;
  while (const auto card = reader.Next()) {
    const auto origin = fmt::format("{}, Zeile {}", hostPath, card->Line);
    PutOne(writing, type, values, origin, [&](DvItemView& view) -> Status {
      if (card->Values.empty()) return Fail(store::store_error::WrongKind, "Die Karte ist leer");
      for (const auto& [property, text] : card->Values) {
        if (const auto set = view.AsAddress()->Set(property, text); !set) return set;
      }
      return {};
    });
    ++cards;
    const auto total = static_cast<std::int64_t>(bytes->size());
    if (writing.IsCancelled(static_cast<std::int64_t>(reader.Position()), total)) return false;
  }
  if (cards == 0) writing.Report(hostPath, NoCard());
  return true;
}

}  // namespace

int RunStorePut(const PutOptions& options) {
  const auto values = ReadValues(options);
  if (!values) return exit_status::WrongUsage;
  if (options.Files.empty() && values->Fields.empty()) {
    PrintError("Der Eintrag wäre leer: es fehlt eine Angabe");
    return exit_status::WrongUsage;
  }
  auto writing = StoreWriting::Open(options.Store, options.Archive, "Ablage");
  if (!writing) return writing.error();
  const int type = options.Kind->Type;
  if (options.Kind->Files == PutFiles::Content) {
    PutContents(*writing, options, *values);
  } else if (options.Files.empty()) {
    PutOne(*writing, type, *values, options.Archive, [](DvItemView&) { return Status{}; });
  } else {
    for (const auto& file : options.Files) {
      if (!PutCards(*writing, type, *values, file)) break;
    }
  }
  return writing->Finish([](std::int64_t count) {
    return fmt::format("{} {} abgelegt", count, count == 1 ? "Eintrag" : "Einträge");
  });
}

}  // namespace velmora::cli
