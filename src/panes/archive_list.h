// The list of an archive pane: the way up, the sub-archives, then messages or rules.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/result.h"
#include "panes/archive_icons.h"
#include "panes/columns.h"
#include "panes/pane_context.h"
#include "panes/rows.h"
#include "store/archive.h"

namespace velmora::panes {

struct ArchiveList {
  std::vector<ListRow> Rows;
  int ArchiveRows = 0;      // the ControlEntry and the ArchiveEntry rows, which stand above all others
  int MessageRows = 0;      // messages or rules really listed
  int HiddenTotal = 0;      // messages in the archive when their number struck SizeCheck, else 0
  bool HoldsRules = false;  // it was listed for the rule view
};

// There is no switch for it: administrators and users see every sub-archive that the store gives them.
inline constexpr bool ShowAllArchives = true;
// The visibility rule: with `showAll` every archive; else those at or below the current one and those on the
// way down to it. Physical IDs in any form.
bool IsArchiveVisible(std::string_view id, std::string_view currentId, bool showAll);
// Whether the archive is the root of the session, above which a pane does not go.
bool IsSessionRoot(const store::Session& session, const store::DvArchive& archive);

struct ListingOptions {
  SortState Sorting;
  std::uint32_t Filter = 0;
  bool InhibitItems = true;  // also what users have hidden
  int SizeCheck = 0;         // from this number of messages on hiding strikes; 0 never
  bool IsHiding = true;      // the pane's flag
  bool MarkHidden = true, MarkCircular = true;
};

// Each appends to the list and sorts what it appended. A failure leaves the rows read so far, sorted.
Status ListArchives(ArchiveList& list, PaneContext& context, const ArchiveIcons& icons,
                    store::DvArchive& archive, const ListingOptions& options);
Status ListMessages(ArchiveList& list, PaneContext& context, store::DvArchive& archive,
                    const ListingOptions& options);
Status ListRoutingEntries(ArchiveList& list, PaneContext& context, store::DvArchive& archive,
                          const ListingOptions& options);

// Archives by name only, messages or rules by the mode; the ControlEntry and the archives keep the top.
// Rows with equal keys keep their order.
void SortArchiveList(ArchiveList& list, const SortState& sorting);

MessageRow MakeMessageRow(store::DvEntryRow entry);

// What a rule does, as a number: 0 none of these, 1 forward, 2 auto reply, 3 new message,
// 4 miscellaneous, 6 routes always; the last that is set wins.
int RoutingMode(const store::DvRuleData& rule);
// "Fax", "EMail", "TMail", "SMS" and "VoiceMail" for the item types 1, 2, 3, 7 and 4; others as they are.
std::string ConditionText(std::string_view value);

}  // namespace velmora::panes
