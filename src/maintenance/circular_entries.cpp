#include "maintenance/circular_entries.h"

#include "maintenance/tree_check.h"
#include "maintenance/tree_traversal.h"

namespace velmora::maintenance {

std::vector<CircularEntry> FindCircularEntries(run::Run& run, const std::shared_ptr<store::DvArchive>& start,
                                               const Visibility& isVisible) {
  std::vector<CircularEntry> found;
  Traversal traversal;
  traversal.IsVisible = isVisible;
  traversal.Visit = [&](const auto& parent, const auto& sub, Encounter encounter) {
    if (encounter == Encounter::OnPath) found.push_back({parent, parent->ID(), sub->ID()});
    return true;
  };
  TraverseTree(run, start, traversal);
  return found;
}

int RemoveCircularEntries(run::Run& run, const std::shared_ptr<store::DvArchive>& start,
                          const Visibility& isVisible) {
  TreeReport report;
  for (CircularEntry& entry : FindCircularEntries(run, start, isVisible)) {
    TreeFinding finding;
    finding.Fault = TreeFault::Circular;
    finding.Parent = std::move(entry.ParentArchive);
    finding.ID = std::move(entry.Child);
    report.Findings.push_back(std::move(finding));
  }
  if (run.CancelRequested()) return 0;
  return RepairTree(run, report, {}).Circular;
}

}  // namespace velmora::maintenance
