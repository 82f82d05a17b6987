// The kinds of entries that `velmoractl store put-...` makes, and the options of each.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "store/property_view.h"

namespace velmora::cli {

enum class PutFiles {
  None,
  Content,  // each file is the content of one entry
  Cards,    // files of vCards, each card an entry
};

// An option whose value becomes the field of that name.
struct FieldOption {
  std::string Option;  // "--subject"
  std::string_view Field;
  store::PropertyKind Kind;
  std::string_view Label;  // German
};

struct PutKind {
  const char* Command;
  const char* Description;
  int Type;
  const char* RecipientKind;  // of a message
  PutFiles Files;
  // In the order of the help text.
  std::vector<FieldOption> (*Fields)();
};

// The option whose value is the recipient of a message.
inline constexpr std::string_view RecipientOption = "--to";

const std::vector<PutKind>& PutKinds();

// Flags of an entry that are set by an option of their own.
struct FlagOption {
  const char* Option;
  std::uint32_t Bit;
  const char* Label;
};
const std::vector<FlagOption>& FlagOptions();

}  // namespace velmora::cli
