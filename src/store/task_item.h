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
    {TaskProperty::Subject, "Subject", PropertyKind::Text, "Betreff"},
    {TaskProperty::Content, "Content", PropertyKind::Text, "Details"},  // the text of the entry
    {TaskProperty::DueTime, "DueTime", PropertyKind::Date, "Fällig am"},
    {TaskProperty::StartTime, "StartTime", PropertyKind::Date, "Beginnt am"},
    {TaskProperty::TaskStatus, "TaskStatus", PropertyKind::Number,
     "Bearbeitungsstatus"},  // see TaskStatusText
    {TaskProperty::PercentComplete, "PercentComplete", PropertyKind::Number, "Erledigt"},
    {TaskProperty::DateCompleted, "DateCompleted", PropertyKind::Date, "Erledigt am"},
    {TaskProperty::TotalWork, "TotalWork", PropertyKind::Text, "Gesamtaufwand"},  // as a person wrote it
    {TaskProperty::ActualWork, "ActualWork", PropertyKind::Text, "Ist-Aufwand"},  // as a person wrote it
    {TaskProperty::Companies, "Companies", PropertyKind::Text, "Firmen"},
    {TaskProperty::Resources, "Resources", PropertyKind::Text, "Ressourcen"},
    {TaskProperty::AssignTo, "AssignTo", PropertyKind::Text, "Aufgabe zuweisen an"},
    {TaskProperty::KeepUpdatedCopy, "KeepUpdatedCopy", PropertyKind::Flag, "Aktualisierte Kopie"},
    {TaskProperty::StatusReportOnCompletion, "StatusReportOnCompletion", PropertyKind::Flag,
     "Statusbericht bei Erledigung"},
    {TaskProperty::Priority, "Priority", PropertyKind::Number, "Priorität"},  // see PriorityGerman
});

class DvTaskItem : public DvPropertyView<TaskProperty> {
 public:
  DvTaskItem* AsTask() override { return this; }
};

}  // namespace velmora::store
