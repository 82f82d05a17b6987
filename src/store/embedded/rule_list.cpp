#include "store/embedded/rule_list.h"

#include <utility>

#include "base/text.h"
#include "store/errors.h"

namespace velmora::store::embedded {
namespace {

class Rule final : public DvRule {
 public:
  Rule(RuleFile file, RuleFile::Entry entry) : file_(std::move(file)), entry_(std::move(entry)) {}

  DvRuleData& Data() override { return entry_.Data; }

  Status Update() override {
    const auto id = file_.Write(entry_.Id, entry_.Data);
    if (!id) return Fail(id.error());
    entry_.Id = *id;
    entry_.Data.Name = LeftCharacters(entry_.Data.Name, RuleFile::MaxNameCharacters);
    return {};
  }

  Status Delete() override {
    if (entry_.Id == 0) return Fail(store_error::NotFound, "Die Regel ist nicht gespeichert");
    return file_.Delete(entry_.Id);
  }

 private:
  RuleFile file_;
  RuleFile::Entry entry_;
};

}  // namespace

RuleList::RuleList(RuleFile file, std::function<Status()> access)
    : file_(std::move(file)), access_(std::move(access)) {}

Result<int> RuleList::Count() {
  if (const auto access = access_(); !access) return Fail(access.error());
  return file_.Count();
}

Result<std::unique_ptr<DvRule>> RuleList::Item(int index) {
  if (const auto access = access_(); !access) return Fail(access.error());
  auto entry = file_.Read(index);
  if (!entry) return Fail(entry.error());
  return std::make_unique<Rule>(file_, std::move(*entry));
}

Result<std::unique_ptr<DvRule>> RuleList::Add(std::string_view name) {
  if (const auto access = access_(); !access) return Fail(access.error());
  RuleFile::Entry entry;
  entry.Data.Name = LeftCharacters(name, RuleFile::MaxNameCharacters);
  return std::make_unique<Rule>(file_, std::move(entry));
}

}  // namespace velmora::store::embedded
