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
    {CalendarProperty::Subject, "Subject", PropertyKind::Text, "Betreff"},
    {CalendarProperty::Content, "Content", PropertyKind::Text, "Inhalt"},  // the text of the entry
    {CalendarProperty::StartTime, "StartTime", PropertyKind::Date, "Beginn"},
    {CalendarProperty::StopTime, "StopTime", PropertyKind::Date, "Stoppzeit"},
    {CalendarProperty::AllDayEvent, "AllDayEvent", PropertyKind::Flag, "Ganztägig"},
    {CalendarProperty::AllDayEventNoWorkDay, "AllDayEventNoWorkDay", PropertyKind::Flag, "Kein Arbeitstag"},
    {CalendarProperty::Reminder, "Reminder", PropertyKind::Flag, "Erinnerung"},
    {CalendarProperty::ReminderMinutes, "ReminderMinutes", PropertyKind::Number,
     "Erinnerung vor Minuten"},                                                  // lead time
    {CalendarProperty::ShowAs, "ShowAs", PropertyKind::Number, "Anzeigen als"},  // see BusyStateGerman
    {CalendarProperty::Kind, "Kind", PropertyKind::Text, "Art"},                 // as a person named it
    {CalendarProperty::Public, "Public", PropertyKind::Flag, "Öffentlich"},
    {CalendarProperty::Participants, "Participants", PropertyKind::Text, "Teilnehmer"},  // joined by "; "
    {CalendarProperty::NoEndDate, "NoEndDate", PropertyKind::Flag,
     "Kein Enddatum"},  // of the series, as all that follow
    {CalendarProperty::EndDate, "EndDate", PropertyKind::Date, "Endet am"},
    {CalendarProperty::Recurrence, "Recurrence", PropertyKind::Number,
     "Wiederholung"},  // see RecurrenceGerman; 0 for a single appointment
    {CalendarProperty::Interval, "Interval", PropertyKind::Number, "Intervall"},
    {CalendarProperty::DaysOfWeek, "DaysOfWeek", PropertyKind::Number,
     "Tage in der Woche"},  // bit mask, see WeekDayText
    {CalendarProperty::DayOfWeek, "DayOfWeek", PropertyKind::Number, "Tag in der Woche"},
    {CalendarProperty::DayOfMonth, "DayOfMonth", PropertyKind::Number, "Tag im Monat"},
    {CalendarProperty::MonthOfYear, "MonthOfYear", PropertyKind::Number, "Monat im Jahr"},
    {CalendarProperty::RecurrenceKind, "RecurrenceKind", PropertyKind::Number,
     "Wiederholungsart"},  // see RecurrenceKindGerman
    {CalendarProperty::RecurrenceSubtype, "RecurrenceSubtype", PropertyKind::Number,
     "RekursionsSubtyp"},  // how the series ends, see RecurrenceEndText
    {CalendarProperty::Occurrences, "Occurrences", PropertyKind::Number,
     "Anzahl der Wiederholungen"},  // number of repetitions
});

class DvCalendarItem : public DvPropertyView<CalendarProperty> {
 public:
  DvCalendarItem* AsCalendar() override { return this; }
};

}  // namespace velmora::store
