// Building the content index of one directory from the descriptors on the disk.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <memory>
#include <string>

#include "mailarchive/content_index.h"
#include "mailarchive/format/descriptor.h"
#include "mailarchive/format/marker.h"
#include "platform/host_file_system.h"
#include "run/silent_front_end.h"
#include "support/temp_dir.h"

namespace {

using namespace velmora;
using namespace velmora::mailarchive;

void AddEntries(platform::FileSystem& files, const std::string& directory, std::int64_t count) {
  for (std::int64_t i = 0; i < count; ++i) {
    EntryDescriptor entry;
    entry.Subject = "Betreff der Nachricht " + std::to_string(i * 7919 % count);
    entry.Sortaddr = "absender" + std::to_string(i % 321) + "@example.com";
    entry.Date = DateTime::FromSeconds(3'900'000'000 + i * 977 % 10'000'000);
    const std::string base = directory + "\\Nachricht " + std::to_string(i);
    if (!files.WriteFile(base + ".htm", "<html></html>") ||
        !files.WriteFile(base + ".add", FormatDescriptor(entry)))
      std::abort();
  }
}

void BuildIndex(benchmark::State& state) {
  const test::TempDir dir;
  const auto files = platform::MakeHostFileSystem({{"Z:", "/"}});
  run::SilentFrontEnd frontEnd;
  run::Run run(*files, platform::SystemClock(), frontEnd.Set(), dir.Path());
  if (!files->WriteFile(dir.Path("Bare.ini"),
                        "[MessageIndexByDate]\r\nform=Form.htm\r\n[MessageIndexBySubject]\r\n"
                        "form=Form.htm\r\n[MessageIndexByAddress]\r\nform=Form.htm\r\n") ||
      !files->WriteFile(dir.Path("Form.htm"), "<html><body>%VELMORA_IDXLINKS%</body></html>"))
    std::abort();
  DesignSet designs(*files, dir.Path(), "Bare");
  (void)designs.LoadDesignSet();
  if (!WriteArchiveMarker(*files, dir.Path(), MailArcKind::Sub, {}, true)) std::abort();
  AddEntries(*files, dir.Path(), state.range(0));
  IndexContext context{run, designs, false, ""};
  for (auto _ : state) BuildContentIndex(context, dir.Path(), true, false, true);
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BuildIndex)->Arg(1'000)->Arg(10'000)->Unit(benchmark::kMillisecond);

}  // namespace
