// Routing rules of an archive.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "base/date_time.h"
#include "base/result.h"
#include "store/fields.h"

namespace velmora::store {

struct DvCondition {
  FieldTag object = tag::ConditionObject;  // the field that is compared
  int Comparision = 0;                     // 0 to 3: =, <>, <, >; the server's own spelling
  std::string Value;
  int Operator = 0;  // 0 "Und", 1 "Oder": how it joins the condition before it

  bool operator==(const DvCondition&) const = default;
};

// All that a rule holds, as one value.
struct DvRuleData {
  std::string Name;  // at most 30 characters
  bool Enabled = true;
  DateTime ValidFrom, ValidUntil;
  bool RouteAlways = false, RouteAsCopy = true, RouteOnlySubject = false;
  bool Forward = false;
  int ForwardAs = 0;
  std::string ForwardTo;
  bool AutoReply = false;
  bool NewMessage = false;
  bool Miscellaneous = false;
  bool DeleteMessage = false, ExcludeAttachments = false, OnlySubject = false;
  std::string ReplacedSender, IncludeBefore, IncludeAfter;
  int UsedCount = 0;
  DateTime LastUsed;
  int Symbol = 0, ColorMark = 0;
  std::vector<std::string> Destinations;  // FullPaths
  std::vector<DvCondition> Conditions;

  bool operator==(const DvRuleData&) const = default;
};

class DvRule {
 public:
  virtual ~DvRule() = default;
  // The rule in memory; Update commits what was changed.
  virtual DvRuleData& Data() = 0;
  virtual Status Update() = 0;
  virtual Status Delete() = 0;
};

class DvRules {
 public:
  virtual ~DvRules() = default;
  virtual Result<int> Count() = 0;
  virtual Result<std::unique_ptr<DvRule>> Item(int index) = 0;  // from 0
  virtual Result<std::unique_ptr<DvRule>> Add(std::string_view name) = 0;
};

}  // namespace velmora::store
