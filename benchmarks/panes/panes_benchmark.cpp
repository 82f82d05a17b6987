// What a user waits for before a pane: an archive of 100,000 messages listed, and sorted by a click on a
// header.
#include <benchmark/benchmark.h>
#include <stdlib.h>

#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>

#include "panes/two_panes.h"
#include "platform/host_file_system.h"
#include "run/silent_front_end.h"
#include "store/embedded/embedded_store.h"
#include "store/embedded/store_setup.h"
#include "support/filled_archive.h"

namespace velmora::panes {
namespace {

namespace embedded = store::embedded;
using benchmarks::FillArchive;
using benchmarks::Must;

class QuietWatcher final : public FillWatcher {
 public:
  bool Breathe() override { return false; }
};

// A store in a directory of its own, and panes that show its archive.
class FilledPanes {
 public:
  explicit FilledPanes(int count) {
    std::string pattern = (std::filesystem::temp_directory_path() / "velmora-benchmark-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no temporary directory");
    directory_ = pattern;
    const embedded::StoreLocation location{"BUERO", directory_ + "/store"};
    auto& clock = platform::SystemClock();
    const embedded::NewStore made{
        location.HostDirectory, location.ServerName, {1, "Anna", "anna", "anna@x", 0}};
    if (!embedded::InitStore(made, clock)) throw std::runtime_error("no store");
    files_ = platform::MakeHostFileSystem({embedded::MappingOf(location)});
    session_.Account = Must(embedded::OpenEmbeddedApi(*files_, clock, {location}, "anna")->Logon(""));
    session_.DefaultArchive = Must(session_.Account->GetSpecialArchive(store::special::ArchiveRoot));
    session_.LeftArchive = session_.RightArchive = session_.DefaultArchive;
    archive_ = FillArchive(session_, count)->ID();
    run_ = std::make_unique<run::Run>(*files_, clock, silent_.Set(), files_->FromHostPath(directory_));
    panes_ = std::make_unique<TwoPanes>(PaneContext{session_, options_, *run_, currentPath_, watcher_});
    panes_->SignedOn();
  }
  ~FilledPanes() {
    panes_.reset();
    session_ = {};
    std::filesystem::remove_all(directory_);
  }

  ArchivePane& Pane() { return panes_->Left(); }
  const std::string& Archive() const { return archive_; }

 private:
  std::string directory_, archive_, currentPath_ = "Z:\\";
  std::unique_ptr<platform::FileSystem> files_;
  run::SilentFrontEnd silent_;
  settings::Options options_;
  store::Session session_;
  QuietWatcher watcher_;
  std::unique_ptr<run::Run> run_;
  std::unique_ptr<TwoPanes> panes_;
};

FilledPanes& Panes100000() {
  static FilledPanes panes(100'000);
  return panes;
}

void ListAndSort(benchmark::State& state) {
  auto& panes = Panes100000();
  for (auto _ : state) {
    if (!panes.Pane().ShowArchive(std::string_view(panes.Archive()))) throw std::runtime_error("not listed");
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(panes.Pane().RowCount()));
}
BENCHMARK(ListAndSort)->Unit(benchmark::kMillisecond)->Iterations(10)->UseRealTime();

void ClickHeader(benchmark::State& state) {
  auto& pane = Panes100000().Pane();
  for (auto _ : state) pane.ClickHeader(static_cast<std::size_t>(state.range(0)));
}
BENCHMARK(ClickHeader)->DenseRange(0, 4)->Unit(benchmark::kMillisecond)->Iterations(10)->UseRealTime();

void TextsOfAScreen(benchmark::State& state) {
  auto& pane = Panes100000().Pane();
  for (auto _ : state) {
    for (std::size_t row = 1; row < 51; ++row) {
      for (std::size_t column = 0; column < 5; ++column) benchmark::DoNotOptimize(pane.Text(row, column));
      benchmark::DoNotOptimize(pane.Icon(row));
    }
  }
}
BENCHMARK(TextsOfAScreen)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace velmora::panes
