#include "ui/column_widths.h"

#include <string>
#include <vector>

#include "base/numbers.h"
#include "base/text.h"
#include "ui/window_geometry.h"

namespace velmora::ui {
namespace {

using settings::Options;

// What a column can be without losing its header, in dots, and what may still be of use on several screens.
constexpr int SmallestWidth = 10, LargestWidth = 8000;
constexpr std::string_view Separator = ",";

struct Kept {
  panes::PaneView View;
  std::span<const panes::Column> Columns;
  std::string Options::*Member;
};

// Each text holds the widths in twips, one for each column; "" where the program decides.
constexpr Kept KeptWidths[] = {
    {panes::PaneView::LZEBView, panes::MessageColumns, &Options::LZEBColumnWidths},
    {panes::PaneView::LZEBView, panes::RuleColumns, &Options::LZEBRoutingColumnWidths},
    {panes::PaneView::RZEBView, panes::MessageColumns, &Options::RZEBColumnWidths},
    {panes::PaneView::RZEBView, panes::RuleColumns, &Options::RZEBRoutingColumnWidths},
    {panes::PaneView::RFSView, panes::FileColumns, &Options::FSColumnWidths},
};

std::string Options::*MemberOf(panes::PaneView view, std::span<const panes::Column> columns) {
  for (const Kept& kept : KeptWidths) {
    if (kept.View == view && kept.Columns.data() == columns.data()) return kept.Member;
  }
  return nullptr;
}

}  // namespace

std::optional<int> ColumnWidths::Get(std::span<const panes::Column> columns, std::size_t column) const {
  const auto member = MemberOf(view_, columns);
  if (member == nullptr) return {};
  const std::vector<std::string> widths = Split(options_.*member, Separator);
  const auto twips = column < widths.size() ? ParseInteger(widths[column]) : std::nullopt;
  if (!twips || *twips < SmallestWidth * TwipsPerDot || *twips > LargestWidth * TwipsPerDot) return {};
  return static_cast<int>(*twips / TwipsPerDot);
}

void ColumnWidths::Set(std::span<const panes::Column> columns, std::size_t column, int width) {
  const auto member = MemberOf(view_, columns);
  if (member == nullptr) return;
  std::vector<std::string> widths = Split(options_.*member, Separator);
  widths.resize(columns.size());
  widths.at(column) = std::to_string(width * TwipsPerDot);
  options_.*member = Join(widths, Separator);
}

}  // namespace velmora::ui
