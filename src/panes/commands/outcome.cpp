#include "panes/commands/outcome.h"

#include <utility>

namespace velmora::panes {
namespace {

template <typename T>
void Take(std::optional<T>& into, std::optional<T>&& from) {
  if (from) into = std::move(from);
}

}  // namespace

void Outcome::Add(Outcome later) {
  for (const auto flag :
       {&Outcome::LeftChanged, &Outcome::RightChanged, &Outcome::FilesChanged, &Outcome::LayoutChanged,
        &Outcome::ActiveViewChanged, &Outcome::FilterChanged, &Outcome::ErrorLogChanged,
        &Outcome::OptionsChanged, &Outcome::ResetFormSize, &Outcome::RestoreFormSize, &Outcome::EditLabel,
        &Outcome::EditPath, &Outcome::ChooseDrive}) {
    this->*flag = this->*flag || later.*flag;
  }
  if (later.Dialog != DialogKind::None) Dialog = later.Dialog;
  if (later.Session != SessionChange::None) Session = later.Session;
  if (later.Export != nullptr) Export = std::move(later.Export);
  if (later.Prepared.index() != 0) Prepared = std::move(later.Prepared);
  Take(PatternAction, std::move(later.PatternAction));
  Take(Message, std::move(later.Message));
  Take(ExitStatus, std::move(later.ExitStatus));
  Take(CurrentRow, std::move(later.CurrentRow));
  Take(Selection, std::move(later.Selection));
}

}  // namespace velmora::panes
