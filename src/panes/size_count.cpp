#include "panes/size_count.h"

#include <fmt/core.h>

#include <vector>

#include "base/numbers.h"
#include "base/paths.h"
#include "store/tree_walk.h"

namespace velmora::panes {
namespace {

class ArchiveCounter {
 public:
  ArchiveCounter(std::uint32_t filter, platform::FileSystem& fileSystem, Breather& breather)
      : filter_(filter), fileSystem_(fileSystem), breather_(breather) {}

  void Count(store::DvArchive& archive) {
    if (!path_.Enter(archive.ID())) return;
    AddMessages(archive);
    AddFiles(archive.ID());
    const auto subArchives = archive.SubArchives();
    if (!subArchives) Note(subArchives.error());
    if (subArchives) CountSubArchives(*subArchives);
    path_.Leave();
  }

  const SizeCount& Total() const { return total_; }

 private:
  void CountSubArchives(const std::vector<std::shared_ptr<store::DvArchive>>& subArchives) {
    for (const auto& sub : subArchives) {
      if (sub->IsShortCut() || path_.Contains(sub->ID())) continue;
      total_.IsStopped = total_.IsStopped || breather_.Breathe();
      if (total_.IsStopped) return;
      ++total_.Archives;
      Count(*sub);
    }
  }

  void AddMessages(store::DvArchive& archive) {
    const auto entries = archive.GetEntries(filter_);
    if (!entries) return Note(entries.error());
    total_.Messages += (*entries)->Count();
  }

  void AddFiles(std::string_view directory) {
    const auto files = fileSystem_.List(directory, "*.*", platform::ListWhat::Files);
    if (!files) return Note(files.error());
    for (const auto& file : *files) total_.Bytes += file.Size;
  }

  void Note(const Error& error) {
    if (!total_.FirstError) total_.FirstError = error;
  }

  std::uint32_t filter_;
  platform::FileSystem& fileSystem_;
  Breather& breather_;
  store::WalkPath path_;
  SizeCount total_;
};

std::string BytesText(std::int64_t bytes) {
  constexpr double kilo = 1024, mega = kilo * kilo;
  const auto size = static_cast<double>(bytes);
  std::string text = FormatNumber(size, "###,###") + "  ";
  if (size >= mega) return text + "(" + FormatNumber(size / mega, "###,###") + " MB)";
  return size >= kilo ? text + "(" + FormatNumber(size / kilo, "###,###") + " KB)" : text;
}

}  // namespace

SizeCount CountArchive(store::DvArchive& archive, std::uint32_t filter, platform::FileSystem& fileSystem,
                       Breather& breather) {
  ArchiveCounter counter(filter, fileSystem, breather);
  counter.Count(archive);
  return counter.Total();
}

SizeCount CountDirectory(std::string_view path, platform::FileSystem& fileSystem, Breather& breather) {
  SizeCount count;
  std::vector<std::string> waiting{std::string(path)};
  while (!waiting.empty()) {
    const std::string directory = std::move(waiting.back());
    waiting.pop_back();
    const auto entries = fileSystem.List(directory, "*.*", platform::ListWhat::All);
    if (!entries && !count.FirstError) count.FirstError = entries.error();
    if (!entries) continue;
    for (const auto& entry : *entries) {
      if (entry.IsFolder && !entry.IsLink) {
        ++count.Directories;
        waiting.push_back(JoinPath(directory, entry.Name));
      } else {
        ++count.Files;
        count.Bytes += entry.IsFolder ? 0 : entry.Size;
      }
    }
    if (breather.Breathe()) {
      count.IsStopped = true;
      return count;
    }
  }
  return count;
}

SizeTexts ArchiveSizeTexts(const SizeCount& count) {
  return {fmt::format("{} Arc(s)/ {} Msg(s)", count.Archives, count.Messages), BytesText(count.Bytes)};
}

SizeTexts DirectorySizeTexts(const SizeCount& count) {
  return {fmt::format("{} Dir(s)/ {} File(s)", count.Directories, count.Files), BytesText(count.Bytes)};
}

}  // namespace velmora::panes
