#include "ui/column_widths.h"

#include <gtest/gtest.h>

namespace velmora::ui {
namespace {

using panes::FileColumns;
using panes::MessageColumns;
using panes::PaneView;
using panes::RuleColumns;

TEST(ColumnWidthsTest, AreOfTwipsInTheSettings) {
  settings::Options options;
  ColumnWidths left(options, PaneView::LZEBView);
  left.Set(MessageColumns, 1, 100);
  EXPECT_EQ(options.LZEBColumnWidths, ",1500,,,");
  left.Set(MessageColumns, 0, 222);
  EXPECT_EQ(options.LZEBColumnWidths, "3330,1500,,,");
  EXPECT_EQ(left.Get(MessageColumns, 0), 222);
  EXPECT_EQ(left.Get(MessageColumns, 1), 100);
  EXPECT_EQ(left.Get(MessageColumns, 2), std::nullopt);
}

TEST(ColumnWidthsTest, EachListAndEachKindHasItsOwn) {
  settings::Options options;
  ColumnWidths(options, PaneView::LZEBView).Set(MessageColumns, 0, 100);
  ColumnWidths(options, PaneView::LZEBView).Set(RuleColumns, 0, 110);
  ColumnWidths(options, PaneView::RZEBView).Set(MessageColumns, 0, 120);
  ColumnWidths(options, PaneView::RZEBView).Set(RuleColumns, 0, 130);
  ColumnWidths(options, PaneView::RFSView).Set(FileColumns, 0, 140);
  EXPECT_EQ(ColumnWidths(options, PaneView::LZEBView).Get(MessageColumns, 0), 100);
  EXPECT_EQ(ColumnWidths(options, PaneView::LZEBView).Get(RuleColumns, 0), 110);
  EXPECT_EQ(ColumnWidths(options, PaneView::RZEBView).Get(MessageColumns, 0), 120);
  EXPECT_EQ(ColumnWidths(options, PaneView::RZEBView).Get(RuleColumns, 0), 130);
  EXPECT_EQ(ColumnWidths(options, PaneView::RFSView).Get(FileColumns, 0), 140);
}

TEST(ColumnWidthsTest, WhatNoScreenShowsIsForTheProgramToDecide) {
  settings::Options options;
  options.FSColumnWidths = "-15,99999999999999999999,99999999";
  const ColumnWidths files(options, PaneView::RFSView);
  for (std::size_t column = 0; column < FileColumns.size(); ++column) {
    EXPECT_EQ(files.Get(FileColumns, column), std::nullopt) << column;
  }
  options.FSColumnWidths = "breit,0";
  for (std::size_t column = 0; column < FileColumns.size(); ++column) {
    EXPECT_EQ(files.Get(FileColumns, column), std::nullopt) << column;
  }
}

TEST(ColumnWidthsTest, ADamagedTextIsMendedByTheNextChange) {
  settings::Options options;
  options.FSColumnWidths = "a,b,c,d,e,f,g";
  ColumnWidths files(options, PaneView::RFSView);
  files.Set(FileColumns, 2, 50);
  EXPECT_EQ(files.Get(FileColumns, 2), 50);
  EXPECT_EQ(options.FSColumnWidths, "a,b,750");
}

}  // namespace
}  // namespace velmora::ui
