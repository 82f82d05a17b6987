// All views whose properties are a table, for whoever treats them alike.
#pragma once

#include "store/address_item.h"
#include "store/calendar_item.h"
#include "store/item.h"
#include "store/link_item.h"
#include "store/task_item.h"
#include "store/tv_program_item.h"

namespace velmora::store {

// Calls `visit(typed view, table)` for a view that has such a table; false for any other.
template <typename Visit>
bool VisitProperties(DvItemView& view, Visit visit) {
  if (auto* const address = view.AsAddress()) return visit(*address, AddressProperties), true;
  if (auto* const appointment = view.AsCalendar()) return visit(*appointment, CalendarProperties), true;
  if (auto* const task = view.AsTask()) return visit(*task, TaskProperties), true;
  if (auto* const link = view.AsLink()) return visit(*link, LinkProperties), true;
  if (auto* const program = view.AsTvProgram()) return visit(*program, TvProgramProperties), true;
  return false;
}

}  // namespace velmora::store
