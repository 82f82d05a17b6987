// The rules of an archive as the object layer gives them.
#pragma once

#include <functional>

#include "store/embedded/rule_file.h"
#include "store/rules.h"

namespace velmora::store::embedded {

class RuleList final : public DvRules {
 public:
  // `access` tells whether the signed-on user may use the archive.
  RuleList(RuleFile file, std::function<Status()> access);

  Result<int> Count() override;
  Result<std::unique_ptr<DvRule>> Item(int index) override;
  // A rule in memory; it stands in the archive from its first Update on.
  Result<std::unique_ptr<DvRule>> Add(std::string_view name) override;

 private:
  RuleFile file_;
  std::function<Status()> access_;
};

}  // namespace velmora::store::embedded
