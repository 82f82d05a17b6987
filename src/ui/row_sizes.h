// Shows the size of the row on which the cursor rests, where the settings want it: counted between two
// events, so that no key waits for it.
#pragma once

#include <QObject>
#include <QTimer>
#include <functional>

#include "panes/size_display.h"
#include "ui/pane_widget.h"

namespace velmora::ui {

class RowSizes final : public QObject {
 public:
  // `isBusy`: a command runs, and the count waits. Options, session and clock must outlive it.
  RowSizes(const settings::Options& options, const store::Session& session, platform::Clock& clock,
           std::function<bool()> isBusy, QObject* parent = nullptr);

  // Cursor, selection or list of the active pane have changed.
  void Follow(PaneWidget& widget);
  // Ends a count; the row stays without a size until the cursor comes again.
  void Stop();

 private:
  void Tick();

  panes::SizeDisplay display_;
  std::function<bool()> isBusy_;
  QTimer timer_;
  PaneWidget* widget_ = nullptr;
  int row_ = -1;
};

}  // namespace velmora::ui
