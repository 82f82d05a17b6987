// The picture FilterWarning, which blinks while a filter is in force.
#pragma once

#include <string_view>

#include "settings/options.h"
#include "store/filter.h"

namespace velmora::panes {

inline constexpr std::string_view FilterWarningTip = "Filter aktiv. DoppelClick deaktiviert den Filter";
inline constexpr int DisplayTimerInterval = 1000;  // milliseconds

class FilterWarning {
 public:
  explicit FilterWarning(const settings::Options& options) : options_(options) {}

  // At the start and after each change of the filter.
  void StartStopWarnings() { isVisible_ = isRunning_ = IsInForce(); }
  // A tick of the DisplayTimer.
  void Tick() {
    if (IsInForce()) {
      isVisible_ = !isVisible_;
    } else {
      isVisible_ = isRunning_ = false;
    }
  }

  bool IsVisible() const { return isVisible_; }
  bool DisplayTimerRuns() const { return isRunning_; }

 private:
  bool IsInForce() const {
    return store::IsFilterActive(static_cast<std::uint32_t>(options_.DvItemFilter), options_.DvInhibitItems);
  }

  const settings::Options& options_;
  bool isVisible_ = false, isRunning_ = false;
};

}  // namespace velmora::panes
