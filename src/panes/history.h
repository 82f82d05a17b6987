// The places that a pane has shown, to go back and forward among them.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace velmora::panes {

class PlaceHistory {
 public:
  static constexpr std::size_t MaxPlaces = 100;  // the oldest is forgotten first

  // The place shown now; what lay ahead is forgotten. The present place again changes nothing.
  void Visit(const std::string& place);
  bool CanGoBack() const { return position_ > 1; }
  bool CanGoForward() const { return position_ < places_.size(); }
  // The place that a step leads to, which becomes the present one; nothing at the end.
  std::optional<std::string> Back();
  std::optional<std::string> Forward();
  // The present place cannot be shown: it is forgotten, and the one that stood before the step is present
  // again.
  void Undo(bool wasBack);

 private:
  std::vector<std::string> places_;
  std::size_t position_ = 0;  // how many lie behind, the present one included
};

}  // namespace velmora::panes
