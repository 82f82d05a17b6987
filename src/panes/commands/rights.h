// What a user may do, from the bits of the rights word, and the mode that the status bar shows.
#pragma once

#include <cstdint>
#include <string_view>

#include "store/session.h"

namespace velmora::panes {

// Each bit grants when it is set.
struct Rights {
  bool IsAdministrator = false;   // 0x10
  bool ObjectProperties = false;  // 0x200
  bool MoveAndDelete = false;     // 0x1000
  bool RuleView = false;          // 0x2000

  bool operator==(const Rights&) const = default;
};

constexpr Rights RightsOf(std::uint32_t trustees) {
  return {(trustees & store::trustee::Administrator) != 0, (trustees & store::trustee::MoveArchives) != 0,
          (trustees & store::trustee::DeleteArchives) != 0, (trustees & store::trustee::Expert) != 0};
}

enum class UserMode { Standard, Advanced, Administrator };

constexpr UserMode UserModeOf(const Rights& rights) {
  if (rights.IsAdministrator && rights.ObjectProperties && rights.MoveAndDelete && rights.RuleView) {
    return UserMode::Administrator;
  }
  return rights.ObjectProperties || rights.MoveAndDelete ? UserMode::Advanced : UserMode::Standard;
}

// The text of the fourth status panel.
constexpr std::string_view PanelText(UserMode mode) {
  switch (mode) {
    case UserMode::Administrator:
      return "Admin";
    case UserMode::Advanced:
      return "AdvUsr";
    case UserMode::Standard:
      break;
  }
  return "StdUsr";
}

}  // namespace velmora::panes
