#include "addresses/vcard_reader.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "base/date_time.h"
#include "base/line_ends.h"
#include "base/numbers.h"
#include "base/text.h"
#include "store/vocabulary.h"

namespace velmora::addresses {
namespace {

using store::AddressProperty;
using store::AddressValues;

constexpr std::uint32_t AllCategories = 0xFFFF;

// Which places a telephone number may take, the first free one of them; the first row that fits decides. A
// row without a type fits all.
struct PhoneRow {
  std::string_view Type;
  std::string_view OtherType;  // "": the first alone
  std::array<AddressProperty, 3> Places;
};
constexpr auto PhoneRows = std::to_array<PhoneRow>({
    {"FAX", "HOME", {AddressProperty::SecondFax, AddressProperty::FaxNumber, AddressProperty::SecondFax}},
    {"FAX", "", {AddressProperty::FaxNumber, AddressProperty::SecondFax, AddressProperty::SecondFax}},
    {"PAGER", "", {AddressProperty::Pager, AddressProperty::Pager, AddressProperty::Pager}},
    {"CELL", "", {AddressProperty::MobilePhone, AddressProperty::MobilePhone, AddressProperty::MobilePhone}},
    {"WORK",
     "",
     {AddressProperty::BusinessPhone, AddressProperty::BusinessPhone, AddressProperty::BusinessPhone}},
    {"HOME", "", {AddressProperty::HomePhone, AddressProperty::HomePhone, AddressProperty::HomePhone}},
    {"", "", {AddressProperty::BusinessPhone, AddressProperty::HomePhone, AddressProperty::MobilePhone}},
});

// Lines whose text is the value of one property.
struct TextRow {
  std::string_view Name;
  AddressProperty Property;
};
constexpr auto TextRows = std::to_array<TextRow>({
    {"FN", AddressProperty::DisplayName},
    {"TITLE", AddressProperty::Title},
    {"URL", AddressProperty::WebAddress},
    {"X-DAVID-VOICEBOX", AddressProperty::VoiceBox},
    {"X-DAVID-PDACATEGORY", AddressProperty::PdaCategory},
});

std::string OneLine(std::string_view text) { return std::string(Trim(ReplaceAll(text, CrLf, " "))); }

std::optional<std::uint32_t> NumberOf(std::string_view text, std::uint32_t largest) {
  const auto number = ParseInteger(text);
  if (!number || *number < 0 || *number > largest) return std::nullopt;
  return static_cast<std::uint32_t>(*number);
}

// The text behind "tel:" or "mailto:", without what may follow the number or address.
std::string WithoutScheme(std::string_view text, std::string_view scheme) {
  if (!StartsWithFold(text, scheme)) return std::string(text);
  text.remove_prefix(scheme.size());
  return std::string(text.substr(0, text.find_first_of(";?")));
}

// "19701231", "1970-12-31", each also with a time behind it; "--1231" has no year.
std::string BirthdayText(std::string_view text) {
  std::string digits;
  for (const char c : text.substr(0, text.find('T'))) {
    if (c >= '0' && c <= '9') {
      digits += c;
    } else if (c != '-') {
      return std::string(text);
    }
  }
  constexpr std::string_view leapYear = "2000";  // for days of no year
  const bool hasYear = !text.starts_with("--");
  if (!hasYear) digits.insert(0, leapYear);
  constexpr std::size_t length = 8;
  if (digits.size() != length) return "";
  const auto number = [&](std::size_t from, std::size_t count) {
    return static_cast<int>(ParseInteger(std::string_view(digits).substr(from, count)).value_or(0));
  };
  const auto date = DateTime::FromCivil({number(0, 4), number(4, 2), number(6, 2), 0, 0, 0});
  if (!date) return "";  // "19000000" among them, which stands for none
  return hasYear ? FormatDate(*date) : fmt::format("{:02}.{:02}.", number(6, 2), number(4, 2));
}

// Collects the lines of one card.
class CardBuilder {
 public:
  void Add(const VCardLine& line, VCardVersion version);
  AddressValues Finish();

 private:
  struct Mail {
    std::string Address;
    bool IsPreferred = false;
  };

  bool Has(AddressProperty property) const { return values_.contains(property); }
  // The first value that is not empty stands.
  void Put(AddressProperty property, std::string_view text);
  void AddSpecial(const VCardLine& line, VCardVersion version);
  void AddName(const std::vector<std::string>& parts);
  void AddAddress(const VCardLine& line, const std::vector<std::string>& parts);
  void AddCompany(const std::vector<std::string>& parts);
  void AddPhone(const VCardLine& line, std::string_view text);
  void AddNotes(std::string_view text);
  void AddPhoto(const VCardLine& line, std::string_view text);
  void AddCategories(const std::vector<std::string>& names);
  void MakeDisplayName();

  AddressValues values_;
  std::vector<Mail> mails_;
  std::uint32_t categories_ = 0;
  std::string otherCategories_;
  bool hasWorkAddress_ = false;
  std::string plainBirthday_;
};

void CardBuilder::Put(AddressProperty property, std::string_view text) {
  auto value = OneLine(text);
  if (!value.empty()) values_.try_emplace(property, std::move(value));
}

void CardBuilder::Add(const VCardLine& line, VCardVersion version) {
  if (line.Name == "PHOTO") return AddPhoto(line, line.IsBase64 ? "" : line.Text(version));
  if (line.IsBase64) return;
  if (line.Name == "N") return AddName(line.Components(version));
  if (line.Name == "ORG") return AddCompany(line.Components(version));
  if (line.Name == "CATEGORIES") return AddCategories(line.Components(version, ','));
  if (line.Name == "ADR") return AddAddress(line, line.Components(version));
  const auto* const row = std::ranges::find(TextRows, line.Name, &TextRow::Name);
  if (row != TextRows.end()) return Put(row->Property, line.Text(version));
  AddSpecial(line, version);
}

void CardBuilder::AddSpecial(const VCardLine& line, VCardVersion version) {
  constexpr std::uint32_t anyNumber = std::numeric_limits<std::int32_t>::max();
  const auto text = [&] { return line.Text(version); };
  if (line.Name == "TEL") {
    AddPhone(line, text());
  } else if (line.Name == "EMAIL") {
    // More than a few are of no use, and their number has no limit.
    constexpr std::size_t mostMails = 8;
    const auto address = OneLine(WithoutScheme(text(), "mailto:"));
    if (!address.empty() && mails_.size() < mostMails) mails_.push_back({address, line.HasType("PREF")});
  } else if (line.Name == "NOTE") {
    AddNotes(text());
  } else if (line.Name == "BDAY") {
    if (plainBirthday_.empty()) plainBirthday_ = BirthdayText(OneLine(text()));
  } else if (line.Name == "X-DAVID-BDAY") {
    Put(AddressProperty::Birthday, text());
  } else if (line.Name == "X-DAVID-2EMAIL") {
    Put(AddressProperty::SecondEMail, text());
  } else if (line.Name == "X-DAVID-CATEGORY") {
    categories_ |= NumberOf(text(), AllCategories).value_or(0);
  } else if (line.Name == "X-DAVID-DEFAULTADDR") {
    const auto number = NumberOf(text(), anyNumber);
    if (number) Put(AddressProperty::DefaultAddress, std::to_string(*number));
  }
}

void CardBuilder::AddName(const std::vector<std::string>& parts) {
  constexpr std::array places{AddressProperty::LastName, AddressProperty::FirstName,
                              AddressProperty::MiddleInitial, AddressProperty::Salutation};
  for (std::size_t i = 0; i < std::min(parts.size(), places.size()); ++i) Put(places[i], parts[i]);
}

// A business address goes before any other, else the first one stands.
void CardBuilder::AddAddress(const VCardLine& line, const std::vector<std::string>& parts) {
  constexpr std::size_t extended = 1, street = 2;
  constexpr std::array places{AddressProperty::Street, AddressProperty::City, AddressProperty::State,
                              AddressProperty::PostalCode, AddressProperty::Country};
  const bool isForWork = line.HasType("WORK");
  const bool isEmpty = std::ranges::all_of(parts, [](const auto& part) { return Trim(part).empty(); });
  const bool hasAddress = std::ranges::any_of(places, [&](const auto place) { return Has(place); });
  if (isEmpty || (hasAddress && (!isForWork || hasWorkAddress_))) return;
  hasWorkAddress_ = isForWork;
  for (const auto place : places) values_.erase(place);
  for (std::size_t i = 0; i < places.size() && street + i < parts.size(); ++i)
    Put(places[i], parts[street + i]);
  // Some programs write the street into the first two parts.
  for (std::size_t i = 0; i <= extended && i < parts.size(); ++i) Put(AddressProperty::Street, parts[i]);
}

// The company and its departments.
void CardBuilder::AddCompany(const std::vector<std::string>& parts) {
  std::vector<std::string> names;
  for (const auto& part : parts) {
    if (!Trim(part).empty()) names.push_back(OneLine(part));
  }
  Put(AddressProperty::Company, Join(names, "; "));
}

void CardBuilder::AddPhone(const VCardLine& line, std::string_view text) {
  const auto* const row = std::ranges::find_if(PhoneRows, [&](const PhoneRow& phone) {
    return (phone.Type.empty() || line.HasType(phone.Type)) &&
           (phone.OtherType.empty() || line.HasType(phone.OtherType));
  });
  const auto* const place =
      std::ranges::find_if(row->Places, [&](const auto property) { return !Has(property); });
  if (place != row->Places.end()) Put(*place, WithoutScheme(text, "tel:"));
}

void CardBuilder::AddNotes(std::string_view text) {
  if (Trim(text).empty()) return;
  auto& notes = values_[AddressProperty::Notes];
  if (notes.size() + text.size() > LongestVCardLine) return;
  if (!notes.empty()) notes += CrLf;
  notes += text;
}

// The picture itself is not kept, only what its file was called.
void CardBuilder::AddPhoto(const VCardLine& line, std::string_view text) {
  std::string_view name = line.FileName;
  if (name.empty() && !StartsWithFold(text, "data:")) {
    text = text.substr(0, text.find_first_of("?#"));
    name = text.substr(0, text.find(CrLf));
  }
  const auto slash = name.find_last_of("/\\");
  Put(AddressProperty::Photo, name.substr(slash == std::string_view::npos ? 0 : slash + 1));
}

// Those that the store knows are bits, the others a text.
void CardBuilder::AddCategories(const std::vector<std::string>& names) {
  static const auto known = store::CategoryNames(AllCategories);  // behind an empty one
  for (const auto& part : names) {
    const auto name = OneLine(part);
    const auto found = std::ranges::find_if(known, [&](const auto& one) { return EqualsFold(one, name); });
    if (name.empty()) continue;
    if (found != known.end()) {
      categories_ |= std::uint32_t{1} << (found - known.begin() - 1);
    } else if (otherCategories_.size() + name.size() < LongestVCardLine) {
      otherCategories_ += (otherCategories_.empty() ? "" : "; ") + name;
    }
  }
}

// 2.1 does not require one, and without it nobody would find the address.
void CardBuilder::MakeDisplayName() {
  const auto value = [&](AddressProperty property) {
    const auto found = values_.find(property);
    return found == values_.end() ? std::string() : found->second;
  };
  Put(AddressProperty::DisplayName,
      value(AddressProperty::FirstName) + " " + value(AddressProperty::LastName));
  Put(AddressProperty::DisplayName, value(AddressProperty::Company));
  Put(AddressProperty::DisplayName, value(AddressProperty::EMail));
}

AddressValues CardBuilder::Finish() {
  std::ranges::stable_partition(mails_, &Mail::IsPreferred);
  if (!mails_.empty()) Put(AddressProperty::EMail, mails_[0].Address);
  if (mails_.size() > 1) Put(AddressProperty::SecondEMail, mails_[1].Address);
  Put(AddressProperty::Birthday, plainBirthday_);
  Put(AddressProperty::AddressCategories, otherCategories_);
  if (categories_ != 0) Put(AddressProperty::Categories, std::to_string(categories_));
  MakeDisplayName();
  return std::move(values_);
}

bool IsCardLine(const VCardLine& line, std::string_view name) {
  return line.Name == name && EqualsFold(Trim(line.Value), "VCARD");
}

}  // namespace

std::optional<VCard> VCardReader::Next() {
  auto version = VCardVersion::V30;
  while (!begun_) {
    const auto line = lines_.Next(version);
    if (!line) return std::nullopt;
    if (IsCardLine(*line, "BEGIN")) begun_ = lines_.LineNumber();
  }
  VCard card;
  card.Line = *std::exchange(begun_, std::nullopt);
  CardBuilder builder;
  bool isAfterAgent = false;  // 2.1 writes the card of an agent into that of the person
  std::size_t agents = 0;
  while (const auto line = lines_.Next(version)) {
    if (IsCardLine(*line, "BEGIN")) {
      if (!isAfterAgent) {
        begun_ = lines_.LineNumber();
        break;
      }
      ++agents;
    } else if (IsCardLine(*line, "END")) {
      if (agents == 0) break;
      --agents;
    } else if (agents == 0 && line->Name == "VERSION") {
      version = Trim(line->Value).starts_with("2") ? VCardVersion::V21 : VCardVersion::V30;
    } else if (agents == 0) {
      builder.Add(*line, version);
    }
    isAfterAgent = line->Name == "AGENT" && Trim(line->Value).empty();
  }
  card.Values = builder.Finish();
  return card;
}

}  // namespace velmora::addresses
