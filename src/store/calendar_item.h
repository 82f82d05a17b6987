// The typed view of an appointment, single or recurring.
#pragma once

#include <array>

#include "store/property_view.h"

namespace velmora::store {

enum class CalendarProperty {
  Subject,
  Content,
  StartTime,
  StopTime,
  AllDayEvent,
  AllDayEventNoWorkDay,
  Reminder,
  ReminderMinutes,
  ShowAs,
  Kind,
  Public,
  Participants,
  NoEndDate,
  EndDate,
  Recurrence,
  Interval,
  DaysOfWeek,
  DayOfWeek,
  DayOfMonth,
  MonthOfYear,
  RecurrenceKind,
  RecurrenceSubtype,
  Occurrences,
};

// In the order of CalendarProperty.
inline constexpr auto CalendarProperties = std::to_array<PropertyInfo<CalendarProperty>>({
    {CalendarProperty::Subject, "Subject", PropertyKind::Text},
    {CalendarProperty::Content, "Content", PropertyKind::Text},  // the text of the entry
    {CalendarProperty::StartTime, "StartTime", PropertyKind::Date},
    {CalendarProperty::StopTime, "StopTime", PropertyKind::Date},
    {CalendarProperty::AllDayEvent, "AllDayEvent", PropertyKind::Flag},
    {CalendarProperty::AllDayEventNoWorkDay, "AllDayEventNoWorkDay", PropertyKind::Flag},
    {CalendarProperty::Reminder, "Reminder", PropertyKind::Flag},
    {CalendarProperty::ReminderMinutes, "ReminderMinutes", PropertyKind::Number},  // lead time
    {CalendarProperty::ShowAs, "ShowAs", PropertyKind::Number},                    // see BusyStateGerman
    {CalendarProperty::Kind, "Kind", PropertyKind::Text},                          // as a person named it
    {CalendarProperty::Public, "Public", PropertyKind::Flag},
    {CalendarProperty::Participants, "Participants", PropertyKind::Text},  // joined by "; "
    {CalendarProperty::NoEndDate, "NoEndDate", PropertyKind::Flag},  // of the series, as all that follow
    {CalendarProperty::EndDate, "EndDate", PropertyKind::Date},
    {CalendarProperty::Recurrence, "Recurrence",
     PropertyKind::Number},  // see RecurrenceGerman; 0 for a single appointment
    {CalendarProperty::Interval, "Interval", PropertyKind::Number},
    {CalendarProperty::DaysOfWeek, "DaysOfWeek", PropertyKind::Number},  // bit mask, see WeekDayText
    {CalendarProperty::DayOfWeek, "DayOfWeek", PropertyKind::Number},
    {CalendarProperty::DayOfMonth, "DayOfMonth", PropertyKind::Number},
    {CalendarProperty::MonthOfYear, "MonthOfYear", PropertyKind::Number},
    {CalendarProperty::RecurrenceKind, "RecurrenceKind", PropertyKind::Number},  // see RecurrenceKindGerman
    {CalendarProperty::RecurrenceSubtype, "RecurrenceSubtype",
     PropertyKind::Number},  // how the series ends, see RecurrenceEndText
    {CalendarProperty::Occurrences, "Occurrences", PropertyKind::Number},  // number of repetitions
});

class DvCalendarItem : public DvPropertyView<CalendarProperty> {
 public:
  DvCalendarItem* AsCalendar() override { return this; }
};

}  // namespace velmora::store
