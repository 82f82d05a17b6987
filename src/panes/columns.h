// The columns of the views, and what their headers sort by.
#pragma once

#include <array>
#include <span>
#include <string_view>

namespace velmora::panes {

// How a list is sorted: the numbers that the settings hold.
namespace sort_mode {
inline constexpr int None = 0;
inline constexpr int Name = 1, Date = 2, From = 3, To = 4, Attachments = 5;  // messages
inline constexpr int Condition = 6, Destination = 7, Enabled = 8;            // rules, beside Name
inline constexpr int FileName = 1, FileDate = 2, FileSize = 3;               // file list
}  // namespace sort_mode

enum class SortMarker { ArrowNo, ArrowUp, ArrowDown };
inline constexpr std::array<std::string_view, 3> SortMarkerKeys = {"ArrowNo", "ArrowUp", "ArrowDown"};

struct Column {
  std::string_view Caption;
  int SortMode;
};

inline constexpr auto MessageColumns = std::to_array<Column>({{"Name/Betreff", sort_mode::Name},
                                                              {"Datum", sort_mode::Date},
                                                              {"Von", sort_mode::From},
                                                              {"Attachments/Link", sort_mode::Attachments},
                                                              {"An", sort_mode::To}});
inline constexpr auto RuleColumns = std::to_array<Column>({{"Regel", sort_mode::Name},
                                                           {"Aktiv", sort_mode::Enabled},
                                                           {"Wert", sort_mode::Condition},
                                                           {"Ziel", sort_mode::Destination}});
inline constexpr auto PropertyColumns = std::to_array<Column>({{"Eigenschaft", sort_mode::None},
                                                               {"Bezeichner/Wert", sort_mode::None},
                                                               {"Wert", sort_mode::None},
                                                               {"Verknüpfung", sort_mode::None}});
inline constexpr auto FileColumns = std::to_array<Column>(
    {{"Name", sort_mode::FileName}, {"Datum", sort_mode::FileDate}, {"Größe", sort_mode::FileSize}});

// A list's sort mode as it works: one that none of the columns has is the first column's.
int EffectiveSortMode(std::span<const Column> columns, int mode);
SortMarker MarkerOf(std::span<const Column> columns, std::size_t column, int mode, bool ascending);

// The two settings of one list.
struct SortState {
  int Mode = sort_mode::Name;
  bool Ascending = true;

  bool operator==(const SortState&) const = default;
};
// After a click on a column's header: the same column again turns the direction, another sorts rising.
SortState ClickedHeader(std::span<const Column> columns, std::size_t column, const SortState& state);

}  // namespace velmora::panes
