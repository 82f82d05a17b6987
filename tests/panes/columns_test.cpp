// Columns, what their headers sort by, and their markers.
#include "panes/columns.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace velmora::panes {
namespace {

std::vector<std::string> Captions(std::span<const Column> columns) {
  std::vector<std::string> captions;
  for (const auto& column : columns) captions.emplace_back(column.Caption);
  return captions;
}

TEST(Columns, Captions) {
  using Texts = std::vector<std::string>;
  EXPECT_EQ(Captions(MessageColumns), (Texts{"Name/Betreff", "Datum", "Von", "Attachments/Link", "An"}));
  EXPECT_EQ(Captions(RuleColumns), (Texts{"Regel", "Aktiv", "Wert", "Ziel"}));
  EXPECT_EQ(Captions(PropertyColumns), (Texts{"Eigenschaft", "Bezeichner/Wert", "Wert", "Verknüpfung"}));
  EXPECT_EQ(Captions(FileColumns), (Texts{"Name", "Datum", "Größe"}));
}

TEST(Columns, SecondClickTurnsTheDirectionAnotherColumnSortsRising) {
  SortState state;
  state = ClickedHeader(MessageColumns, 0, state);
  EXPECT_EQ(state, (SortState{sort_mode::Name, false}));
  state = ClickedHeader(MessageColumns, 0, state);
  EXPECT_EQ(state, (SortState{sort_mode::Name, true}));
  state = ClickedHeader(MessageColumns, 0, state);
  state = ClickedHeader(MessageColumns, 1, state);
  EXPECT_EQ(state, (SortState{sort_mode::Date, true})) << "also when the other column was falling";
}

TEST(Columns, EveryColumnHasItsMode) {
  const int messageModes[] = {1, 2, 3, 5, 4}, ruleModes[] = {1, 8, 6, 7}, fileModes[] = {1, 2, 3};
  for (std::size_t i = 0; i < 5; ++i) EXPECT_EQ(MessageColumns[i].SortMode, messageModes[i]);
  for (std::size_t i = 0; i < 4; ++i) EXPECT_EQ(RuleColumns[i].SortMode, ruleModes[i]);
  for (std::size_t i = 0; i < 3; ++i) EXPECT_EQ(FileColumns[i].SortMode, fileModes[i]);
}

TEST(Columns, AModeOfAnotherViewIsTheFirstColumns) {
  for (const int mode : {0, 6, 7, 8, 99, -1}) EXPECT_EQ(EffectiveSortMode(MessageColumns, mode), 1) << mode;
  for (const int mode : {0, 2, 3, 4, 5, 9}) EXPECT_EQ(EffectiveSortMode(RuleColumns, mode), 1) << mode;
  EXPECT_EQ(EffectiveSortMode(FileColumns, 4), 1);
  // A click on that column is then a second click.
  EXPECT_EQ(ClickedHeader(RuleColumns, 0, {sort_mode::Date, true}), (SortState{sort_mode::Name, false}));
}

TEST(Columns, OnlyTheSortedColumnBearsAnArrow) {
  EXPECT_EQ(MarkerOf(MessageColumns, 1, sort_mode::Date, true), SortMarker::ArrowUp);
  EXPECT_EQ(MarkerOf(MessageColumns, 1, sort_mode::Date, false), SortMarker::ArrowDown);
  EXPECT_EQ(MarkerOf(MessageColumns, 0, sort_mode::Date, true), SortMarker::ArrowNo);
  EXPECT_EQ(MarkerOf(PropertyColumns, 0, sort_mode::Name, true), SortMarker::ArrowNo);
  EXPECT_EQ(MarkerOf(MessageColumns, 9, sort_mode::Name, true), SortMarker::ArrowNo);
  EXPECT_EQ(SortMarkerKeys[static_cast<std::size_t>(SortMarker::ArrowUp)], "ArrowUp");
  EXPECT_EQ(SortMarkerKeys[static_cast<std::size_t>(SortMarker::ArrowDown)], "ArrowDown");
  EXPECT_EQ(SortMarkerKeys[static_cast<std::size_t>(SortMarker::ArrowNo)], "ArrowNo");
}

TEST(Columns, PropertiesAreNotSorted) {
  const SortState state{sort_mode::From, false};
  EXPECT_EQ(ClickedHeader(PropertyColumns, 0, state), state);
  EXPECT_EQ(ClickedHeader(MessageColumns, 5, state), state);
}

}  // namespace
}  // namespace velmora::panes
