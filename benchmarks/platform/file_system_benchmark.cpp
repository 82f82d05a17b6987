// What FileSystem costs beside the system calls that any program would make: filling one directory, free
// numbers of one name, look-ups of names that do not exist.

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>

#include "platform/host_file_system.h"

namespace velmora::platform {
namespace {

namespace fs = std::filesystem;

const DateTime SomeTime = DateTime::FromCivil({2020, 1, 2, 3, 4, 5}).value();
const std::string Content(200, 'x');

// In memory where the machine has such a directory: the disk's own speed is not what is measured.
class Directory {
 public:
  Directory() {
    std::string pattern =
        (fs::exists("/dev/shm") ? "/dev/shm" : "/tmp") + std::string("/velmora-bench-XXXXXX");
    if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no temporary directory");
    hostPath_ = pattern;
  }
  Directory(const Directory&) = delete;
  Directory& operator=(const Directory&) = delete;
  ~Directory() { fs::remove_all(hostPath_); }

  const std::string& HostPath() const { return hostPath_; }
  std::string Path() const { return MakeHostFileSystem({})->FromHostPath(hostPath_); }

 private:
  std::string hostPath_;
};

std::string NameOf(std::int64_t number) { return "Message " + std::to_string(number) + ".htm"; }

void Require(const Status& status) {
  if (!status) throw std::runtime_error(status.error().Text);
}

// The floor: open, write, set the time, close.
void SystemCallsAlone(benchmark::State& state) {
  for (auto run : state) {
    const Directory directory;
    const int folder = open(directory.HostPath().c_str(), O_PATH | O_DIRECTORY);
    for (std::int64_t i = 0; i < state.range(0); ++i) {
      const int file = openat(folder, NameOf(i).c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
      if (write(file, Content.data(), Content.size()) < 0) throw std::runtime_error("write");
      const std::array<struct timespec, 2> times{};
      (void)futimens(file, times.data());  // the cost counts, not the result
      close(file);
    }
    close(folder);
    state.PauseTiming();
    fs::remove_all(directory.HostPath());
    state.ResumeTiming();
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

void WriteFilesIntoOneDirectory(benchmark::State& state) {
  for (auto run : state) {
    const Directory directory;
    const std::string path = directory.Path() + "\\";
    const auto files = MakeHostFileSystem({});
    const WriteOptions options{.Mode = Create::Exclusive, .Time = SomeTime};
    for (std::int64_t i = 0; i < state.range(0); ++i) {
      Require(files->WriteFile(path + NameOf(i), Content, options));
    }
    state.PauseTiming();
    fs::remove_all(directory.HostPath());
    state.ResumeTiming();
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

void UniqueNamesOfOneHead(benchmark::State& state) {
  for (auto run : state) {
    const Directory directory;
    const std::string path = directory.Path();
    const auto files = MakeHostFileSystem({});
    for (std::int64_t i = 0; i < state.range(0); ++i) {
      const std::string name = files->UniqueFileName(path, "Report.htm");
      Require(files->WriteFile(path + "\\" + name, Content, {.Mode = Create::Exclusive}));
    }
    state.PauseTiming();
    fs::remove_all(directory.HostPath());
    state.ResumeTiming();
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

void LookUpsOfMissingNames(benchmark::State& state) {
  const Directory directory;
  const std::string path = directory.Path() + "\\";
  const auto files = MakeHostFileSystem({});
  for (std::int64_t i = 0; i < state.range(0); ++i) Require(files->WriteFile(path + NameOf(i), Content));
  std::int64_t number = 0;
  for (auto run : state) {
    if (files->FileExists(path + "No " + NameOf(++number))) throw std::runtime_error("found");
  }
}

void LookUpsInAnotherCase(benchmark::State& state) {
  const Directory directory;
  const std::string path = directory.Path() + "\\";
  const auto files = MakeHostFileSystem({});
  for (std::int64_t i = 0; i < state.range(0); ++i) Require(files->WriteFile(path + NameOf(i), Content));
  std::int64_t number = 0;
  for (auto run : state) {
    const std::string name = "MESSAGE " + std::to_string(number++ % state.range(0)) + ".HTM";
    if (!files->FileExists(path + name)) throw std::runtime_error("not found");
  }
}

void ListOneDirectory(benchmark::State& state) {
  const Directory directory;
  const auto files = MakeHostFileSystem({});
  for (std::int64_t i = 0; i < state.range(0); ++i) {
    Require(files->WriteFile(directory.Path() + "\\" + NameOf(i), Content));
  }
  for (auto run : state) {
    if (!files->List(directory.Path(), "*.*", ListWhat::Files)) throw std::runtime_error("list");
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

BENCHMARK(SystemCallsAlone)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);
BENCHMARK(WriteFilesIntoOneDirectory)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);
BENCHMARK(UniqueNamesOfOneHead)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);
BENCHMARK(LookUpsOfMissingNames)->Arg(10'000)->Arg(100'000);
BENCHMARK(LookUpsInAnotherCase)->Arg(10'000)->Arg(100'000);
BENCHMARK(ListOneDirectory)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace velmora::platform
