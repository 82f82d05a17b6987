// Copying, moving and deleting within a store: entries of one archive, and trees of archives.
#include <benchmark/benchmark.h>
#include <fmt/core.h>
#include <stdlib.h>

#include <filesystem>
#include <stdexcept>
#include <string>

#include "base/paths.h"
#include "operations/archive_copy.h"
#include "operations/archive_deletion.h"
#include "platform/clock.h"
#include "platform/host_file_system.h"
#include "run/silent_front_end.h"
#include "store/embedded/embedded_store.h"
#include "store/embedded/store_location.h"
#include "support/test_store.h"

namespace velmora::operations {
namespace {

using Archive = std::shared_ptr<store::DvArchive>;

template <typename T>
T Take(Result<T> result) {
  if (!result) throw std::runtime_error(result.error().Text);
  return std::move(*result);
}

// A store of its own, with "/Archive/Quelle" and "/Archive/Ziel".
class Bench {
 public:
  Bench() {
    std::string pattern = (std::filesystem::temp_directory_path() / "velmora-benchmark-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no temporary directory");
    directory_ = pattern;
    const store::embedded::StoreLocation location{"BUERO", directory_ + "/store"};
    velmora::test::CopyTestStore(velmora::test::BueroStore, location.HostDirectory);
    files_ = platform::MakeHostFileSystem({store::embedded::MappingOf(location)});
    session_.Api = store::embedded::OpenEmbeddedApi(*files_, platform::SystemClock(), {location}, "anna");
    session_.Account = Take(session_.Api->Logon(""));
    session_.Trustees = session_.ServerTrustees = session_.Account->User().Trustees();
    run_ = std::make_unique<run::Run>(*files_, platform::SystemClock(), silent_.Set(),
                                      files_->FromHostPath(directory_));
    run_->BatchMode = true;
    root_ = Take(session_.Account->GetArchive("/Archive"));
    source_ = Take(root_->CreateSubArchive("Quelle"));
    target_ = Take(root_->CreateSubArchive("Ziel"));
  }
  ~Bench() {
    root_ = source_ = target_ = nullptr;
    session_ = {};
    std::filesystem::remove_all(directory_);
  }

  void Fill(std::int64_t mails) {
    const auto path = JoinPath(files_->FromHostPath(directory_), "mail.eml");
    std::string mail = "From: a@example.org\r\nTo: b@example.org\r\nSubject: Angebot\r\n\r\n";
    while (mail.size() < 5'000) mail += "Eine Zeile Text, wie sie in einer Mail an eine Liste steht.\r\n";
    if (!files_->WriteFile(path, mail)) throw std::runtime_error("mail not written");
    for (std::int64_t i = 0; i < mails; ++i) Take(session_.Account->DVMailItemFromEml(path, *source_));
    if (!session_.Account->Commit()) throw std::runtime_error("commit failed");
  }
  // `count` archives below Quelle, `width` in each.
  void Grow(std::int64_t count, std::int64_t width) {
    std::vector<Archive> parents{source_};
    for (std::int64_t made = 0; made < count; ++made) {
      const auto parent = static_cast<std::size_t>(made / width);
      parents.push_back(Take(parents[parent]->CreateSubArchive(fmt::format("Fach {}", made))));
    }
  }
  std::int64_t CountTree(store::DvArchive& archive) {
    std::int64_t count = 1;
    for (const auto& sub : Take(archive.SubArchives())) count += CountTree(*sub);
    return count;
  }

  void Copy(CopyMode mode, bool deleteArchives = false) {
    StoreCopyOptions options;
    options.Mode = mode;
    options.EnDelArchives = deleteArchives;
    RunStoreCopy({*run_, session_, {}, false}, options, {root_, {Mark()}}, target_);
    RequireNoErrors();
  }
  void Delete() {
    RunStoreDelete({*run_, session_, {}, false}, {true, false, false}, {root_, {Mark()}});
    RequireNoErrors();
  }
  store::DvArchive& Source() { return *source_; }

 private:
  store::Selection::Object Mark() const {
    return {store::Selection::Object::Kind::Archive, 0, source_->ID(), false, ""};
  }
  void RequireNoErrors() const {
    if (run_->counters.Errors > 0) throw std::runtime_error("the run had errors");
  }

  std::string directory_;
  std::unique_ptr<platform::FileSystem> files_;
  run::SilentFrontEnd silent_;
  std::unique_ptr<run::Run> run_;
  store::Session session_;
  Archive root_, source_, target_;
};

// Each round has a store of its own, made and removed outside of the measured time.
template <typename Prepare, typename Work>
void Rounds(benchmark::State& state, std::int64_t items, Prepare prepare, Work work) {
  for (auto _ : state) {
    state.PauseTiming();
    auto bench = std::make_unique<Bench>();
    prepare(*bench);
    state.ResumeTiming();
    work(*bench);
    state.PauseTiming();
    bench.reset();
    state.ResumeTiming();
  }
  state.SetItemsProcessed(state.iterations() * items);
}

void CopyMessages(benchmark::State& state) {
  Rounds(
      state, state.range(0), [&](Bench& bench) { bench.Fill(state.range(0)); },
      [](Bench& bench) { bench.Copy(CopyMode::Copy); });
}
void MoveMessages(benchmark::State& state) {
  Rounds(
      state, state.range(0), [&](Bench& bench) { bench.Fill(state.range(0)); },
      [](Bench& bench) { bench.Copy(CopyMode::Move); });
}
void DeleteMessages(benchmark::State& state) {
  Rounds(
      state, state.range(0), [&](Bench& bench) { bench.Fill(state.range(0)); },
      [](Bench& bench) { bench.Delete(); });
}

constexpr std::int64_t Width = 25;

void CopyTree(benchmark::State& state) {
  Rounds(
      state, state.range(0), [&](Bench& bench) { bench.Grow(state.range(0), Width); },
      [](Bench& bench) { bench.Copy(CopyMode::Copy); });
}
void CountTree(benchmark::State& state) {
  Rounds(
      state, state.range(0), [&](Bench& bench) { bench.Grow(state.range(0), Width); },
      [](Bench& bench) { benchmark::DoNotOptimize(bench.CountTree(bench.Source())); });
}
void DeleteTree(benchmark::State& state) {
  Rounds(
      state, state.range(0), [&](Bench& bench) { bench.Grow(state.range(0), Width); },
      [](Bench& bench) { bench.Delete(); });
}

void Entries(benchmark::internal::Benchmark* benchmark) {
  benchmark->Arg(10'000)->Arg(100'000)->Iterations(1)->Unit(benchmark::kSecond)->UseRealTime();
}
void Trees(benchmark::internal::Benchmark* benchmark) {
  benchmark->Arg(2'000)->Arg(20'000)->Iterations(1)->Unit(benchmark::kSecond)->UseRealTime();
}
BENCHMARK(CopyMessages)->Apply(Entries);
BENCHMARK(MoveMessages)->Apply(Entries);
BENCHMARK(DeleteMessages)->Apply(Entries);
BENCHMARK(CopyTree)->Apply(Trees);
BENCHMARK(CountTree)->Apply(Trees);
BENCHMARK(DeleteTree)->Apply(Trees);

}  // namespace
}  // namespace velmora::operations
