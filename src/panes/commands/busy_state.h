// The busy state: while a command runs no other one starts, and the hand-over timer stands still.
#pragma once

#include <functional>
#include <string_view>
#include <utility>

#include "panes/pane.h"

namespace velmora::panes {

// The mouse pointer while busy.
enum class BusyCursor { Arrow = 0, Wait = 1, WaitWithArrow = 2, Standard = 3 };

class BusyState {
 public:
  // `changed`: the window shows the new state: menus, tool bar, drive bar, pane buttons, first status panel,
  // mouse pointer, timer.
  explicit BusyState(std::function<void()> changed = {}) : changed_(std::move(changed)) {}
  BusyState(const BusyState&) = delete;
  BusyState& operator=(const BusyState&) = delete;

  void SetBusy(BusyCursor cursor = BusyCursor::Standard);
  // `focusView`: whether the focus goes back into the active view.
  void ClearBusy(bool focusView = false);
  // A long operation counts as busy, whatever else is set and cleared meanwhile.
  void SetLongOperation(bool on);

  bool IsBusy() const { return isBusy_ || isLongOperation_; }
  BusyCursor Cursor() const { return cursor_; }
  bool FocusesView() const { return focusView_; }
  bool InterchangeTimerRuns() const { return !IsBusy(); }
  std::string_view PanelText() const { return IsBusy() ? FillingText : ReadyText; }

 private:
  void Changed() const {
    if (changed_) changed_();
  }

  std::function<void()> changed_;
  bool isBusy_ = false, isLongOperation_ = false, focusView_ = false;
  BusyCursor cursor_ = BusyCursor::Standard;
};

// Busy as long as it lives; does nothing where the program is busy already (Entered is false then).
class BusyScope {
 public:
  explicit BusyScope(BusyState& state, BusyCursor cursor = BusyCursor::Standard)
      : state_(state), entered_(!state.IsBusy()) {
    if (entered_) state_.SetBusy(cursor);
  }
  BusyScope(const BusyScope&) = delete;
  BusyScope& operator=(const BusyScope&) = delete;
  ~BusyScope() {
    if (entered_) state_.ClearBusy(true);
  }
  bool Entered() const { return entered_; }

 private:
  BusyState& state_;
  bool entered_;
};

}  // namespace velmora::panes
