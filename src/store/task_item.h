// The typed view of a task.
#pragma once

#include <array>

#include "store/property_view.h"

namespace velmora::store {

enum class TaskProperty {
  Subject,
  Content,
  DueTime,
  StartTime,
  TaskStatus,
  PercentComplete,
  DateCompleted,
  TotalWork,
  ActualWork,
  Companies,
  Resources,
  AssignTo,
  KeepUpdatedCopy,
  StatusReportOnCompletion,
  Priority,
};

// In the order of TaskProperty.
inline constexpr auto TaskProperties = std::to_array<PropertyInfo<TaskProperty>>({
    {TaskProperty::Subject, "Subject", PropertyKind::Text},
    {TaskProperty::Content, "Content", PropertyKind::Text},  // the text of the entry
    {TaskProperty::DueTime, "DueTime", PropertyKind::Date},
    {TaskProperty::StartTime, "StartTime", PropertyKind::Date},
    {TaskProperty::TaskStatus, "TaskStatus", PropertyKind::Number},  // see TaskStatusText
    {TaskProperty::PercentComplete, "PercentComplete", PropertyKind::Number},
    {TaskProperty::DateCompleted, "DateCompleted", PropertyKind::Date},
    {TaskProperty::TotalWork, "TotalWork", PropertyKind::Text},    // as a person wrote it
    {TaskProperty::ActualWork, "ActualWork", PropertyKind::Text},  // as a person wrote it
    {TaskProperty::Companies, "Companies", PropertyKind::Text},
    {TaskProperty::Resources, "Resources", PropertyKind::Text},
    {TaskProperty::AssignTo, "AssignTo", PropertyKind::Text},
    {TaskProperty::KeepUpdatedCopy, "KeepUpdatedCopy", PropertyKind::Flag},
    {TaskProperty::StatusReportOnCompletion, "StatusReportOnCompletion", PropertyKind::Flag},
    {TaskProperty::Priority, "Priority", PropertyKind::Number},  // see PriorityGerman
});

class DvTaskItem : public DvPropertyView<TaskProperty> {
 public:
  DvTaskItem* AsTask() override { return this; }
};

}  // namespace velmora::store
