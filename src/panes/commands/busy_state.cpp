#include "panes/commands/busy_state.h"

namespace velmora::panes {

void BusyState::SetBusy(BusyCursor cursor) {
  isBusy_ = true;
  cursor_ = cursor;
  focusView_ = false;
  Changed();
}

void BusyState::ClearBusy(bool focusView) {
  isBusy_ = false;
  cursor_ = BusyCursor::Standard;
  focusView_ = focusView;
  Changed();
}

void BusyState::SetLongOperation(bool on) {
  isLongOperation_ = on;
  Changed();
}

}  // namespace velmora::panes
