#include "store/embedded/record_properties.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace velmora::store::embedded {
namespace {

constexpr std::string_view Mark = "VAR1";
constexpr std::size_t KindOffset = 4, DisplayTypeOffset = 8, OwnerOffset = 12, OptionsOffset = 16,
                      SwitchesOffset = 20;
constexpr unsigned char HiddenSwitch = 0x01, PackedSwitch = 0x02, AdminOnlySwitch = 0x04, LinkSwitch = 0x08;
constexpr unsigned char KnownSwitches = HiddenSwitch | PackedSwitch | AdminOnlySwitch | LinkSwitch;

// Numbers stand with their lowest byte first.
std::uint32_t ReadNumber(std::string_view head, std::size_t offset) {
  std::uint32_t value = 0;
  for (std::size_t i = 4; i-- > 0;) value = value << 8 | static_cast<unsigned char>(head[offset + i]);
  return value;
}

void WriteNumber(std::string& head, std::size_t offset, std::uint32_t value) {
  for (std::size_t i = 0; i < 4; ++i, value >>= 8) head[offset + i] = static_cast<char>(value & 0xFF);
}

}  // namespace

HeadContent ReadHead(const DirRecord& record) {
  const std::string_view head = record.Head();
  HeadContent content;
  if (!head.starts_with(Mark)) return content;
  const auto switches = static_cast<unsigned char>(head[SwitchesOffset]);
  ArchiveProperties& properties = content.Properties;
  properties.Kind = static_cast<std::int32_t>(ReadNumber(head, KindOffset));
  properties.DisplayType = static_cast<std::int32_t>(ReadNumber(head, DisplayTypeOffset));
  properties.Owner = static_cast<std::int32_t>(ReadNumber(head, OwnerOffset));
  properties.OptionFlags = ReadNumber(head, OptionsOffset);
  properties.Hidden = (switches & HiddenSwitch) != 0;
  properties.Packed = (switches & PackedSwitch) != 0;
  properties.AdminOnly = (switches & AdminOnlySwitch) != 0;
  content.IsLink = (switches & LinkSwitch) != 0;
  return content;
}

void WriteHead(DirRecord& record, const HeadContent& content) {
  std::string head(record.Head());
  if (!head.starts_with(Mark)) {
    head.assign(Mark);
    head.resize(DirRecord::HeadSize, '\0');
  }
  const ArchiveProperties& properties = content.Properties;
  WriteNumber(head, KindOffset, static_cast<std::uint32_t>(properties.Kind));
  WriteNumber(head, DisplayTypeOffset, static_cast<std::uint32_t>(properties.DisplayType));
  WriteNumber(head, OwnerOffset, static_cast<std::uint32_t>(properties.Owner));
  WriteNumber(head, OptionsOffset, properties.OptionFlags);
  int switches = static_cast<unsigned char>(head[SwitchesOffset]) & ~KnownSwitches;
  if (properties.Hidden) switches |= HiddenSwitch;
  if (properties.Packed) switches |= PackedSwitch;
  if (properties.AdminOnly) switches |= AdminOnlySwitch;
  if (content.IsLink) switches |= LinkSwitch;
  head[SwitchesOffset] = static_cast<char>(switches);
  record.SetHead(head);
}

}  // namespace velmora::store::embedded
