// The field of a dialog that holds the archive into which something goes.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "run/front_ends.h"
#include "store/account.h"

namespace velmora::panes {

class TargetArchive {
 public:
  // `archive`: the current one of the other pane, may be null.
  TargetArchive(store::DvAccount& account, std::shared_ptr<store::DvArchive> archive);

  const std::string& Text() const { return text_; }
  void SetText(std::string_view text) { text_ = text; }
  // The button beside the field: an archive of the tree.
  void Choose(run::Choosers& choosers, std::string_view title);
  // The archive that the field names, of a link what it leads to; null after a message when there is none.
  std::shared_ptr<store::DvArchive> Find(run::Prompts& prompts) const;

 private:
  store::DvAccount& account_;
  std::shared_ptr<store::DvArchive> archive_;
  std::string text_;
};

}  // namespace velmora::panes
