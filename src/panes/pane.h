// What a view needs of the pane behind it, whatever the pane lists. Left and right archive and the file
// system are the same to a view: rows with texts and icons, columns, a place, a status text.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "panes/columns.h"
#include "panes/history.h"
#include "panes/rows.h"
#include "panes/size_count.h"

namespace velmora::panes {

enum class PaneView { LZEBView = 0, RZEBView = 1, RFSView = 2 };  // the numbers of ActiveView

inline constexpr std::string_view ReadyText = "Bereit", FillingText = "Bitte warten";

// The image of a row: a key of store::ListImageKeys, "SimpleFile", or "ED" or "DI" with an extension in
// capitals, whose image the platform gives. With a path, the image comes from that file itself; where it has
// none, Fallback stands.
struct RowIcon {
  std::string Key;
  std::string FilePath{};
  std::string Fallback{};

  bool operator==(const RowIcon&) const = default;
};

// What a row says of itself beside its texts, where the settings want it marked.
struct RowMarks {
  bool IsHidden = false, IsCircular = false;

  bool operator==(const RowMarks&) const = default;
};
std::string MarksText(const RowMarks& marks);  // "" for none

enum class EnterResult {
  Entered,  // the pane shows another place
  Message,  // an entry for whoever shows messages
  File,     // a file for whoever opens files
  Nothing,  // there is nothing to enter
  Failed,   // reported; the pane shows what it showed
};

class Pane {
 public:
  virtual ~Pane() = default;

  virtual PaneView View() const = 0;

  // --- Rows, in the order of the list. Texts for display are harmless: see display_text.h. ---
  virtual std::size_t RowCount() const = 0;
  virtual int EntryType(std::size_t row) const = 0;
  virtual std::uint32_t UnsortedIndex(std::size_t row) const = 0;
  virtual std::string Key(std::size_t row) const = 0;
  virtual std::string Tag(std::size_t row) const = 0;
  virtual std::string Name(std::size_t row) const = 0;                      // as it is stored
  virtual std::string Text(std::size_t row, std::size_t column) const = 0;  // for display
  virtual RowIcon Icon(std::size_t row) const = 0;
  virtual std::string_view ColumnIcon(std::size_t row, std::size_t column) const = 0;
  virtual RowMarks MarksOf(std::size_t /*row*/) const { return {}; }
  // Rises with everything that changes rows, their order or their texts.
  std::uint64_t Generation() const { return generation_; }
  // Where a view puts its cursor after the pane went elsewhere: on the place it came up from, else the top.
  std::size_t CursorRow() const { return cursorRow_; }

  // --- Columns and order, of the rows that are shown. ---
  virtual std::span<const Column> Columns() const = 0;
  virtual SortState Sorting() const = 0;
  SortMarker Marker(std::size_t column) const;
  void ClickHeader(std::size_t column);

  // --- The place. Each answers false, and the pane shows what it showed, when there is nothing to go to or
  // it cannot be shown; the latter is reported. ---
  virtual bool Refresh() = 0;
  virtual EnterResult Enter(std::size_t row) = 0;
  virtual bool GoUp() = 0;
  virtual bool GoToRoot() = 0;
  bool GoBack() { return Step(true); }
  bool GoForward() { return Step(false); }
  bool CanGoBack() const { return history_.CanGoBack(); }
  bool CanGoForward() const { return history_.CanGoForward(); }
  void ForgetPlaces() { history_ = {}; }
  virtual std::string PathText() const = 0;  // the pane's heading

  // --- Status bar. ---
  virtual std::string StatusText(std::size_t selectedRows) const = 0;
  // Counts a row that is an archive or directory, and shows the counts in its columns; what cannot be read is
  // logged. False for others, and when the user stopped it. The rows stay: a view paints them anew.
  virtual bool ShowSize(std::size_t row) = 0;
  // The same for whoever counts in steps, between which the program lives on: the count of a row, null for a
  // row without one and where it stands already; and what it came to, for the row appended at that place.
  virtual std::unique_ptr<SizeCounter> CountSize(std::size_t /*row*/) { return nullptr; }
  virtual void PutSize(std::uint32_t /*unsortedIndex*/, const SizeCount& /*count*/) {}

 protected:
  virtual bool ShowPlace(const std::string& place) = 0;  // a place of the history
  virtual void SetSorting(const SortState& state) = 0;   // sorts the list
  void Changed() { ++generation_; }
  void SetCursorRow(std::size_t row) { cursorRow_ = row; }
  PlaceHistory& History() { return history_; }
  void SwapBase(Pane& other);

 private:
  bool Step(bool back);

  std::uint64_t generation_ = 0;
  std::size_t cursorRow_ = 0;
  PlaceHistory history_;
};

}  // namespace velmora::panes
