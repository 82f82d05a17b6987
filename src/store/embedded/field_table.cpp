#include "store/embedded/field_table.h"

#include <algorithm>
#include <array>

#include "base/text.h"
#include "store/vocabulary.h"

namespace velmora::store::embedded {
namespace {

constexpr std::array Fields = {
    FieldInfo{0, field_name::AttachmentCount, "", FieldPlace::AttachmentCount},
    FieldInfo{0, field_name::Bcc, "Bcc", FieldPlace::Recipients, Column::Flags, 0, RecipientRole::Bcc},
    FieldInfo{0, field_name::Cc, "", FieldPlace::Recipients, Column::Flags, 0, RecipientRole::Cc},
    FieldInfo{0, field_name::Pages, "", FieldPlace::Column, Column::Pages},
    FieldInfo{0, field_name::SenderDisplayName, "SenderName", FieldPlace::Column, Column::SenderName},
    FieldInfo{tag::Flags, "Flags", "", FieldPlace::Column, Column::Flags},
    FieldInfo{tag::ItemType, "ItemType", "Type", FieldPlace::Column, Column::ItemType},
    FieldInfo{tag::RecNo, "RecNo", "", FieldPlace::Key},
    FieldInfo{tag::MailFlags, "MailFlags", "FlagsEx", FieldPlace::Column, Column::MailFlags},
    FieldInfo{tag::MailOptions, "Options", "MailOptions", FieldPlace::Column, Column::MailOptions},
    FieldInfo{tag::Owner, "Owner", "", FieldPlace::Column, Column::Owner},
    FieldInfo{tag::Creator, "Creator", "", FieldPlace::Column, Column::Creator},
    FieldInfo{tag::Priority, "Priority", "", FieldPlace::Column, Column::Priority},
    FieldInfo{tag::StatusTime, "StatusTime", "", FieldPlace::Column, Column::StatusTime},
    FieldInfo{tag::RecipientAddress, "RecipientAddress", "", FieldPlace::Column, Column::RecipientAddress},
    FieldInfo{tag::SenderAddress, "SenderAddress", "From", FieldPlace::Column, Column::SenderAddress},
    FieldInfo{tag::Location, "FileName", "Location", FieldPlace::Location},
    FieldInfo{tag::Subject, "Subject", "", FieldPlace::Column, Column::Subject},
    FieldInfo{tag::RecipientText, "RecipientText", "", FieldPlace::Column, Column::RecipientText},
    FieldInfo{tag::Viewed, "Viewed", "", FieldPlace::FlagBit, Column::Flags, item_flag::Viewed},
    FieldInfo{tag::CopyMarker, "CopyMarker", "", FieldPlace::Column, Column::CopyMarker},
    FieldInfo{tag::DisplayVariant, "DisplayVariant", "", FieldPlace::Column, Column::DisplayVariant},
    FieldInfo{tag::SendStatus, "Status", "SendStatus", FieldPlace::Column, Column::SendStatus},
    FieldInfo{tag::DocumentFlags, "DocumentFlags", "", FieldPlace::Column, Column::DocumentFlags},
    FieldInfo{tag::HtmlText, "HtmlText", "", FieldPlace::Text},
    FieldInfo{tag::SmtpHeader, "SmtpHeader", "", FieldPlace::Text},
    FieldInfo{tag::Comment, "Comment", "", FieldPlace::Text},
    FieldInfo{tag::PlainText, "PlainText", "Content", FieldPlace::Text},
    FieldInfo{tag::HtmlRendition, "HtmlRendition", "", FieldPlace::HtmlRendition},
    FieldInfo{tag::Recipients, "To", "Recipients", FieldPlace::Recipients},
};
static_assert(std::ranges::is_sorted(Fields, {}, &FieldInfo::Tag));

}  // namespace

std::span<const FieldInfo> KnownFields() { return Fields; }

const FieldInfo* FindField(FieldTag tag) {
  const auto found = std::ranges::lower_bound(Fields, tag, {}, &FieldInfo::Tag);
  return tag != 0 && found != Fields.end() && found->Tag == tag ? &*found : nullptr;
}

const FieldInfo* FindField(std::string_view name) {
  const auto found = std::ranges::find_if(Fields, [&](const FieldInfo& field) {
    return EqualsFold(field.Name, name) || (!field.OtherName.empty() && EqualsFold(field.OtherName, name));
  });
  return found == Fields.end() ? nullptr : &*found;
}

}  // namespace velmora::store::embedded
