// The windows of the program, as the start and the end of the process see them.

#include <QEventLoop>

#include "panes/commands/command_table.h"
#include "startup/main_sequence.h"
#include "ui/application.h"
#include "ui/main_window.h"
#include "ui/qt_front_end.h"
#include "window_program.h"

namespace velmora {
namespace {

class Windows final : public WindowProgram, private startup::WindowFactory {
 public:
  Windows(int& argumentCount, char** arguments)
      : application_(argumentCount, arguments), frontEnd_([this] { application_.Ensure(); }) {}

  run::FrontEnd Set() override { return frontEnd_.Set(); }
  startup::WindowFactory& Factory() override { return *this; }

 private:
  int RunMainWindow(startup::Context& context) override {
    application_.Ensure();
    QApplication::setQuitOnLastWindowClosed(false);  // the end has an order of its own
    context_ = &context;
    frontEnd_.SetSession(&context.fileSystem, &context.session);
    panes::Outcome end;
    do {
      end = RunOneWindow(context);
      window_.reset();
    } while (end.Session == panes::SessionChange::Reloaded && !end.ExitStatus);
    frontEnd_.SetSession(nullptr, nullptr);
    return end.ExitStatus.value_or(startup::exit_status::Done);
  }

  // Until the process is to end, or the session is another one.
  panes::Outcome RunOneWindow(startup::Context& context) {
    window_ = std::make_unique<ui::MainWindow>(context, frontEnd_);
    QEventLoop loop;
    panes::Outcome end;
    bool isFinished = false;
    window_->Finished = [&](const panes::Outcome& outcome) {
      if (!isFinished) end = outcome;
      isFinished = true;
      loop.quit();
    };
    window_->InitMain();
    if (!isFinished) loop.exec();
    window_->Unload();
    return end;
  }

  void ShowMigrationDialog(startup::Context& context) override {
    context.prompts().Message("Migration", panes::NotYetAvailable, run::Icon::Information);
  }

  // The running instance comes to the front by itself when it takes the line that was handed over: no desktop
  // lets one process raise the window of another.
  void ActivateWindow(std::string_view) override {}

  void UnloadWindows() override {
    if (window_ != nullptr) window_->Unload();
    if (context_ != nullptr) startup::Shutdown(*context_);
  }

  ui::Application application_;
  ui::QtFrontEnd frontEnd_;
  startup::Context* context_ = nullptr;  // not owned
  std::unique_ptr<ui::MainWindow> window_;
};

}  // namespace

std::unique_ptr<WindowProgram> MakeWindowProgram(int& argumentCount, char** arguments) {
  if (!ui::Application::HasDisplay()) return nullptr;
  return std::make_unique<Windows>(argumentCount, arguments);
}

}  // namespace velmora
