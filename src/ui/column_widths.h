// The widths of a list's columns, which the settings keep: for each list, and for messages, rules and files
// apart.
#pragma once

#include <optional>
#include <span>

#include "panes/columns.h"
#include "panes/pane.h"
#include "settings/options.h"

namespace velmora::ui {

class ColumnWidths {
 public:
  // Reads and writes the settings of that list.
  ColumnWidths(settings::Options& options, panes::PaneView view) : options_(options), view_(view) {}

  // What a person has set, in dots. Nothing where the program decides: where nobody has set a width, or where
  // the settings hold what no screen could show.
  std::optional<int> Get(std::span<const panes::Column> columns, std::size_t column) const;
  void Set(std::span<const panes::Column> columns, std::size_t column, int width);

 private:
  settings::Options& options_;
  panes::PaneView view_;
};

}  // namespace velmora::ui
