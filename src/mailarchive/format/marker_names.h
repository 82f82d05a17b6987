// The names of marker files.
#pragma once

#include <array>
#include <string_view>

#include "mailarchive/format/marker.h"

namespace velmora::mailarchive {

struct MarkerName {
  MailArcKind Kind;
  std::string_view Name;       // the marker file
  std::string_view FirstLine;  // its first line
  std::string_view Legacy;     // the name under which older archives have it, "" without one
};

// In the order in which a directory's kind is probed.
inline constexpr MarkerName MarkerNames[] = {
    {MailArcKind::Root, "VelmoraRootArc.vla", ";Velmora Mail Rootarchive", "VelmoraRootArc"},
    {MailArcKind::Sub, "VelmoraSubArc.vla", ";Velmora Mail Subarchive", "VelmoraSubArc"},
    {MailArcKind::Data, "VelmoraDataArc.vla", ";Velmora Mail Dataarchive", "VelmoraDataArc"},
    {MailArcKind::Address, "VelmoraAddrArc.vla", ";Velmora Address Archive", ""},
};

// Read and removed, never written.
inline constexpr std::array LegacyMarkerNames = {MarkerNames[0].Legacy, MarkerNames[1].Legacy,
                                                 MarkerNames[2].Legacy};

}  // namespace velmora::mailarchive
