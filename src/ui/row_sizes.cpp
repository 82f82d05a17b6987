#include "ui/row_sizes.h"

#include <utility>

namespace velmora::ui {
namespace {

constexpr int Rest = static_cast<int>(panes::SizeDisplay::RestMilliseconds);

}  // namespace

RowSizes::RowSizes(const settings::Options& options, const store::Session& session, platform::Clock& clock,
                   std::function<bool()> isBusy, QObject* parent)
    : QObject(parent), display_(options, session, clock), isBusy_(std::move(isBusy)) {
  timer_.setSingleShot(true);
  connect(&timer_, &QTimer::timeout, this, &RowSizes::Tick);
}

void RowSizes::Follow(PaneWidget& widget) {
  const int row = widget.View().currentIndex().row();
  if (display_.Runs() && widget_ == &widget && row_ == row) return;  // the selection alone has changed
  display_.Stop();
  widget_ = &widget;
  row_ = row;
  timer_.start(Rest);
}

void RowSizes::Stop() {
  display_.Stop();
  timer_.stop();
}

void RowSizes::Tick() {
  if (isBusy_() || widget_->IsStale()) {
    timer_.start(Rest);
    return;
  }
  if (!display_.Runs() && (row_ < 0 || !display_.Start(widget_->Pane(), static_cast<std::size_t>(row_))))
    return;
  if (display_.RunSlice()) widget_->View().ShowTexts();
  if (display_.Runs()) timer_.start(0);
}

}  // namespace velmora::ui
