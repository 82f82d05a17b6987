#include "panes/history.h"

#include "base/text.h"

namespace velmora::panes {

void PlaceHistory::Visit(const std::string& place) {
  if (position_ > 0 && EqualsFold(places_[position_ - 1], place)) return;
  places_.resize(position_);
  places_.push_back(place);
  if (places_.size() > MaxPlaces) places_.erase(places_.begin());
  position_ = places_.size();
}

std::optional<std::string> PlaceHistory::Back() {
  if (!CanGoBack()) return std::nullopt;
  --position_;
  return places_[position_ - 1];
}

std::optional<std::string> PlaceHistory::Forward() {
  if (!CanGoForward()) return std::nullopt;
  ++position_;
  return places_[position_ - 1];
}

void PlaceHistory::Undo(bool wasBack) {
  const auto gone = position_ - 1;
  places_.erase(places_.begin() + static_cast<std::ptrdiff_t>(gone));
  position_ = wasBack ? gone + 1 : gone;
  // What stood on both sides of it may be one place.
  if (gone > 0 && gone < places_.size() && EqualsFold(places_[gone - 1], places_[gone])) {
    places_.erase(places_.begin() + static_cast<std::ptrdiff_t>(gone));
    if (wasBack) --position_;
  }
}

}  // namespace velmora::panes
