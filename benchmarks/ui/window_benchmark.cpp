// What a person waits for in the window: Enter on an archive of 100,000 messages until its rows are painted,
// the list scrolled through, a file of an entry looked up in it. No display is needed.
#include <benchmark/benchmark.h>
#include <fmt/core.h>
#include <stdlib.h>
#include <unistd.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QScrollBar>
#include <QTranslator>
#include <QWheelEvent>
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <memory>
#include <stdexcept>
#include <string>

#include "embedded_program.h"
#include "panes/commands/open_path.h"
#include "platform/clock.h"
#include "platform/host.h"
#include "run/silent_front_end.h"
#include "startup/main_sequence.h"
#include "store/embedded/embedded_store.h"
#include "store/embedded/store_setup.h"
#include "support/filled_archive.h"
#include "ui/application.h"
#include "ui/main_window.h"

namespace velmora::ui {
namespace {

namespace embedded = store::embedded;
using benchmarks::Must;

constexpr int Messages = 100'000;
constexpr double BytesPerMiB = 1024 * 1024;

// Of this process, as the kernel counts it.
double ResidentMiB() {
  std::ifstream file("/proc/self/statm");
  double total = 0, resident = 0;
  file >> total >> resident;
  return resident * static_cast<double>(sysconf(_SC_PAGESIZE)) / BytesPerMiB;
}

class PaintCounter final : public QObject {
 public:
  explicit PaintCounter(QWidget& widget) { widget.installEventFilter(this); }
  int Paints = 0;

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Paint) ++Paints;
    return QObject::eventFilter(watched, event);
  }
};

// The toolkit, a store in a directory of its own, and the main window on it.
class OpenWindow {
 public:
  OpenWindow() {
    std::string pattern = (std::filesystem::temp_directory_path() / "velmora-benchmark-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no temporary directory");
    directory_ = pattern;
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    for (const char* const name : {"CONFIG", "MACHINE_CONFIG", "STATE", "DATA", "TEMP"}) {
      setenv(fmt::format("VELMORA_{}_DIR", name).c_str(), (directory_ + "/" + name).c_str(), 1);
    }
    setenv("HOME", directory_.c_str(), 1);
    const std::string store = directory_ + "/store";
    const embedded::NewStore made{store, "BUERO", {1, "Anna", platform::UserLoginName(), "anna@x", 0}};
    if (!embedded::InitStore(made, platform::SystemClock())) throw std::runtime_error("no store");
    application_ = std::make_unique<QApplication>(argumentCount_, arguments_);
    PrepareApplication(german_);
    program_ = std::make_unique<EmbeddedProgram>(store, "", silent_.Set());
    startup::Context& context = program_->GetContext();
    if (!startup::StartAfterLogin(context).CanGoOn) throw std::runtime_error("no session");
    Fill(context.session);
    window_ = std::make_unique<MainWindow>(context, frontEnd_);
    window_->InitMain();
    painted_ = std::make_unique<PaintCounter>(*List().viewport());
    QCoreApplication::processEvents();
  }
  ~OpenWindow() {
    window_.reset();
    program_.reset();
    application_.reset();
    std::filesystem::remove_all(directory_);
  }

  MainWindow& Window() { return *window_; }
  PaneList& List() { return window_->Widget(panes::PaneView::LZEBView).View(); }
  panes::ArchivePane& Pane() { return window_->Commands().Panes.Left(); }
  const std::string& Archive() const { return archive_; }
  const std::string& LastFile() const { return lastFile_; }

  void Press(Qt::Key key) {
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
    QCoreApplication::sendEvent(&List(), &event);
  }
  // Until the list has been painted since.
  void Paint() {
    const int before = painted_->Paints;
    do {
      QCoreApplication::processEvents();
    } while (painted_->Paints == before);
  }
  // To the root, with the cursor on the archive.
  void LeaveArchive() {
    (void)Pane().GoToRoot();
    window_->Widget(panes::PaneView::LZEBView).Sync();
    for (std::size_t row = 0; row < Pane().RowCount(); ++row) {
      if (Pane().Name(row) == "Ablage") List().SetCursor(row);
    }
    QCoreApplication::processEvents();
  }
  void EnterArchive() {
    Press(Qt::Key_Return);
    if (Pane().RowCount() < static_cast<std::size_t>(Messages)) throw std::runtime_error("not entered");
  }

 private:
  void Fill(store::Session& session) {
    const auto archive = benchmarks::FillArchive(session, Messages);
    archive_ = archive->ID();
    const auto entries = Must(archive->GetEntries(settings::NoItemFilter));
    const auto last = Must(entries->Item(entries->Count() - 1));
    lastFile_ = store::FieldText(Must(last->Fields().Get(store::tag::Location))) + ".001";
  }

  std::string directory_, archive_, lastFile_;
  int argumentCount_ = 1;
  char name_[13] = "benchmark_ui";
  char* arguments_[2] = {name_, nullptr};
  QTranslator german_;
  std::unique_ptr<QApplication> application_;
  run::SilentFrontEnd silent_;
  QtFrontEnd frontEnd_{[] {}};
  std::unique_ptr<EmbeddedProgram> program_;
  std::unique_ptr<MainWindow> window_;
  std::unique_ptr<PaintCounter> painted_;
};

OpenWindow& TheWindow() {
  static OpenWindow window;
  return window;
}

void EnterUntilPainted(benchmark::State& state) {
  OpenWindow& open = TheWindow();
  const double before = ResidentMiB();
  for (auto _ : state) {
    state.PauseTiming();
    open.LeaveArchive();
    state.ResumeTiming();
    open.EnterArchive();
    open.Paint();
  }
  state.counters["MiB before"] = before;
  state.counters["MiB after"] = ResidentMiB();
}
BENCHMARK(EnterUntilPainted)->Unit(benchmark::kMillisecond)->Iterations(10)->UseRealTime();

// Each iteration is one step and the painting of what it shows; "longest ms" is the longest of them.
template <typename Step>
void Scroll(benchmark::State& state, Step step) {
  OpenWindow& open = TheWindow();
  if (open.Pane().RowCount() < static_cast<std::size_t>(Messages)) {
    open.LeaveArchive();
    open.EnterArchive();
  }
  open.List().SetCursor(0);
  open.Paint();
  double longest = 0;
  QElapsedTimer clock;
  for (auto _ : state) {
    clock.start();
    step(open);
    QCoreApplication::processEvents();
    longest = std::max(longest, static_cast<double>(clock.nsecsElapsed()) / 1e6);
  }
  state.counters["longest ms"] = longest;
}

void PageDown(benchmark::State& state) {
  Scroll(state, [](OpenWindow& open) { open.Press(Qt::Key_PageDown); });
}
BENCHMARK(PageDown)->Unit(benchmark::kMillisecond)->Iterations(1000)->UseRealTime();

void Wheel(benchmark::State& state) {
  Scroll(state, [](OpenWindow& open) {
    QWidget& viewport = *open.List().viewport();
    const QPointF middle = viewport.rect().center();
    QWheelEvent event(middle, viewport.mapToGlobal(middle), {}, {0, -120}, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&viewport, &event);
  });
}
BENCHMARK(Wheel)->Unit(benchmark::kMillisecond)->Iterations(1000)->UseRealTime();

void DragThroughTheList(benchmark::State& state) {
  int at = 0;
  Scroll(state, [&at](OpenWindow& open) {
    QScrollBar& bar = *open.List().verticalScrollBar();
    bar.setValue(bar.maximum() / 200 * (at++ % 201));
  });
}
BENCHMARK(DragThroughTheList)->Unit(benchmark::kMillisecond)->Iterations(1000)->UseRealTime();

void JumpToTheEndAndBack(benchmark::State& state) {
  bool isAtEnd = false;
  Scroll(state, [&isAtEnd](OpenWindow& open) {
    open.Press(isAtEnd ? Qt::Key_Home : Qt::Key_End);
    isAtEnd = !isAtEnd;
  });
}
BENCHMARK(JumpToTheEndAndBack)->Unit(benchmark::kMillisecond)->Iterations(100)->UseRealTime();

void SelectAllAndNothing(benchmark::State& state) {
  bool isSelected = false;
  Scroll(state, [&isSelected](OpenWindow& open) {
    isSelected = !isSelected;
    open.Window().RunAction(isSelected ? panes::Action::SelectAll : panes::Action::ClearSelection);
  });
}
BENCHMARK(SelectAllAndNothing)->Unit(benchmark::kMillisecond)->Iterations(100)->UseRealTime();

// The file of the last message, handed over by its path.
void OpenPathOfTheLastMessage(benchmark::State& state) {
  OpenWindow& open = TheWindow();
  for (auto _ : state) {
    if (!panes::OpenPathInPane(open.Window().Commands(), open.LastFile(), true).CurrentRow) {
      throw std::runtime_error("not found");
    }
  }
}
BENCHMARK(OpenPathOfTheLastMessage)->Unit(benchmark::kMillisecond)->Iterations(3)->UseRealTime();

}  // namespace
}  // namespace velmora::ui
