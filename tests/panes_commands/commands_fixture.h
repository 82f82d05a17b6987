// The commands over a whole program: a built-in store with the archives "Rechnungen" (two messages) and
// "Leer", signed on as the administrator "anna", the left pane at its root, a directory on the right.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

#include "base/text.h"
#include "panes/commands/dispatch.h"
#include "startup/program_fixture.h"

namespace velmora::panes {

class CommandsTest : public startup::ProgramTest, protected FillWatcher {
 protected:
  CommandsTest() {
    login = "anna";
    StartSession();
    const auto archive = MakeArchive("Rechnungen");
    AddMail(*archive, "Angebot");
    AddMail(*archive, "Bestellung");
    MakeArchive("Leer");
    context().process.CurrentPath = directory.Path("target") + "\\";
    Reopen();
  }

  // The panes of a window that has just opened.
  void Reopen() {
    context().session.LeftArchive = context().session.RightArchive = context().session.DefaultArchive;
    panes = std::make_unique<TwoPanes>(PaneContext{context().session, context().options, context().run,
                                                   context().process.CurrentPath, *this});
    designs = std::make_unique<mailarchive::DesignSet>(*files, context().options.DesignPath,
                                                       context().options.ArchiveDesign);
    EXPECT_TRUE(designs->LoadDesignSet());
    commands = std::make_unique<CommandContext>(
        CommandContext{context(), *panes, *designs, busy, formTexts, patterns});
    panes->SignedOn();
    EXPECT_TRUE(panes->RefreshAll());
  }

  bool Breathe() override { return false; }

  // --- Rows of the active pane. ---
  std::size_t RowNamed(std::string_view name) {
    const Pane& pane = panes->Active();
    for (std::size_t row = 0; row < pane.RowCount(); ++row) {
      if (pane.Name(row) == name) return row;
    }
    ADD_FAILURE() << "no row " << name;
    return 0;
  }
  ViewMarks At(std::string_view name) { return {RowNamed(name), {}}; }
  ViewMarks Marked(std::initializer_list<std::string_view> names) {
    ViewMarks marks{std::nullopt, SelectionSet(panes->Active().RowCount(), false)};
    for (const std::string_view name : names) marks.Selection[RowNamed(name)] = true;
    return marks;
  }
  void Enter(std::string_view name) {
    EXPECT_EQ(panes->Active().Enter(RowNamed(name)), EnterResult::Entered);
  }
  void ActivateFiles() { panes->SetActiveView(PaneView::RFSView); }

  Outcome Run(Action action, const ViewMarks& marks = {}) { return RunAction(*commands, action, marks); }
  // The last box, "title: text".
  std::string LastBox() const {
    return front.Boxes.empty() ? "" : front.Boxes.back().Title + ": " + front.Boxes.back().Text;
  }
  std::shared_ptr<store::DvArchive> Archive(std::string_view name) {
    const auto archive = context().session.Account->GetArchive(name);
    EXPECT_TRUE(archive.has_value()) << name;
    return archive ? *archive : nullptr;
  }
  bool Exists(std::string_view relative) const {
    return std::filesystem::exists(directory.HostPath("target/" + std::string(relative)));
  }

  BusyState busy;
  FormUserTexts formTexts;
  LastPatterns patterns;
  std::unique_ptr<TwoPanes> panes;
  std::unique_ptr<mailarchive::DesignSet> designs;
  std::unique_ptr<CommandContext> commands;
};

}  // namespace velmora::panes
