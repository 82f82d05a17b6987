// The fields of an entry: numbered properties, found by tag or by name.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "base/date_time.h"
#include "base/result.h"

namespace velmora::store {

// 0x8000nnnn and 0xC000nnnn as the server's interface numbers them.
using FieldTag = std::uint32_t;

// The tags that the program reads or writes, in the order of their numbers.
namespace tag {
inline constexpr FieldTag Flags = 0x80002000;      // flag bits of the entry, see vocabulary.h
inline constexpr FieldTag ItemType = 0x80002001;   // item type of the entry
inline constexpr FieldTag RecNo = 0x80002012;      // the entry's key in its archive
inline constexpr FieldTag MailFlags = 0x80003002;  // mail flag word; bit 0x100000: DFML
inline constexpr FieldTag MailOptions = 0x80003003;
inline constexpr FieldTag Owner = 0x80003004;    // user id
inline constexpr FieldTag Creator = 0x80003035;  // user id
inline constexpr FieldTag Priority = 0x8000304C;
inline constexpr FieldTag StatusTime = 0x80007007;        // date of the entry
inline constexpr FieldTag RecipientAddress = 0x80008038;  // fax and voice recipient
inline constexpr FieldTag SenderAddress = 0x80008039;     // fax and voice sender; sender of a mail row
inline constexpr FieldTag Location = 0x8000803A;  // archive directory + "\" + file name base of the entry
inline constexpr FieldTag Subject = 0x8000803B;
inline constexpr FieldTag RecipientText = 0x8000803F;  // recipient fallback text
inline constexpr FieldTag ConditionObject = 0x80008062;
inline constexpr FieldTag Viewed = 0x8000B04D;          // boolean; the same fact as flag bit 0x100
inline constexpr FieldTag CopyMarker = 0x8000B055;      // written before a copy
inline constexpr FieldTag DisplayVariant = 0x8000B061;  // decides the display type of an e-mail
inline constexpr FieldTag SendStatus = 0x8001000A;      // status code, see vocabulary.h
inline constexpr FieldTag DocumentFlags = 0x80010029;   // bit 0x40: external document
inline constexpr FieldTag HtmlText = 0xC0008000;        // HTML body as delivered
inline constexpr FieldTag SmtpHeader = 0xC0008005;
inline constexpr FieldTag Comment = 0xC0008007;
inline constexpr FieldTag PlainText = 0xC000801C;  // plain text body
inline constexpr FieldTag HtmlRendition =
    0xC0008022;  // HTML body made for saving, inline parts as <location>.$NN
inline constexpr FieldTag Recipients = 0xC200800B;  // array of texts
}  // namespace tag

// Fields that have a name and no number.
namespace field_name {
inline constexpr std::string_view AttachmentCount = "AttachCount";  // read-only; no value without attachments
inline constexpr std::string_view Bcc = "Bc";                       // array of texts
inline constexpr std::string_view Cc = "Cc";                        // array of texts
inline constexpr std::string_view DistributionID = "DistributionID";
inline constexpr std::string_view Pages = "Pages";
inline constexpr std::string_view SenderDisplayName = "SRFromDisplay";
}  // namespace field_name

// A field without a value is monostate. Reading helpers below convert as a person would expect.
using FieldValue =
    std::variant<std::monostate, bool, std::int64_t, double, std::string, DateTime, std::vector<std::string>>;

std::string FieldText(const FieldValue& value);     // numbers as decimal text, arrays joined by "; "
std::int64_t FieldNumber(const FieldValue& value);  // texts that are no number, and dates: 0
DateTime FieldDate(const FieldValue& value);        // not a date: the null date
bool FieldBool(const FieldValue& value);            // a number other than 0; "1" and "true"

class DvField {
 public:
  virtual ~DvField() = default;
  virtual FieldTag Tag() const = 0;  // 0 for a user field
  virtual std::string Name() const = 0;
  virtual Result<FieldValue> Value() = 0;
};

class DvFields {
 public:
  virtual ~DvFields() = default;
  // A tag or name that the entry does not have gives monostate, not an error; an error means that the store
  // could not be read.
  virtual Result<FieldValue> Get(FieldTag tag) = 0;
  virtual Result<FieldValue> Get(std::string_view name) = 0;
  // Changes the entry in memory; DvItem::Update commits. A read-only field (RecNo, Location) is refused.
  virtual Status Set(FieldTag tag, FieldValue value) = 0;
  virtual Status Set(std::string_view name, FieldValue value) = 0;
  // The fields that have a value, in the order of their tags.
  virtual Result<int> Count() = 0;
  virtual Result<std::unique_ptr<DvField>> Item(int index) = 0;
};

}  // namespace velmora::store
