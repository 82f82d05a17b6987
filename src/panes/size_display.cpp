#include "panes/size_display.h"

namespace velmora::panes {

bool SizeDisplay::Start(Pane& pane, std::size_t row) {
  Stop();
  if (!options_.DisplayArcSize || row >= pane.RowCount()) return false;
  const store::ImpatientReading reading(session_.Account.get());
  counter_ = pane.CountSize(row);
  if (!Runs()) return false;
  pane_ = &pane;
  generation_ = pane.Generation();
  unsortedIndex_ = pane.UnsortedIndex(row);
  return true;
}

bool SizeDisplay::RunSlice() {
  if (!Runs()) return false;
  if (pane_->Generation() != generation_) {
    Stop();  // its place may be another row's now
    return false;
  }
  const store::ImpatientReading reading(session_.Account.get());
  const std::int64_t end = clock_.SteadyMilliseconds() + SliceMilliseconds;
  while (counter_->Step()) {
    if (clock_.SteadyMilliseconds() >= end) return false;
  }
  const SizeCount count = counter_->Total();
  Stop();
  if (count.FirstError) return false;
  pane_->PutSize(unsortedIndex_, count);
  return true;
}

}  // namespace velmora::panes
