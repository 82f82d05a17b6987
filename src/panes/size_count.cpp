#include "panes/size_count.h"

#include <fmt/core.h>

#include <utility>
#include <vector>

#include "base/numbers.h"
#include "base/paths.h"
#include "store/tree_walk.h"

namespace velmora::panes {
namespace {

class ArchiveCounter final : public SizeCounter {
 public:
  ArchiveCounter(std::shared_ptr<store::DvArchive> archive, std::uint32_t filter,
                 platform::FileSystem& fileSystem)
      : first_(std::move(archive)), filter_(filter), fileSystem_(fileSystem) {}

  bool Step() override {
    if (first_ != nullptr) {
      Enter(*std::exchange(first_, nullptr));
      return !levels_.empty();
    }
    while (!levels_.empty()) {
      Level& level = levels_.back();
      if (level.Next == level.Archives.size()) {
        levels_.pop_back();
        path_.Leave();
        continue;
      }
      const auto sub = level.Archives[level.Next++];
      if (sub->IsShortCut() || path_.Contains(sub->ID())) continue;
      ++total_.Archives;
      Enter(*sub);
      return true;
    }
    return false;
  }

 private:
  // The sub-archives of an archive on the way down.
  struct Level {
    std::vector<std::shared_ptr<store::DvArchive>> Archives;
    std::size_t Next = 0;
  };

  void Enter(store::DvArchive& archive) {
    if (!path_.Enter(archive.ID())) return;
    AddMessages(archive);
    AddFiles(archive.ID());
    auto subArchives = archive.SubArchives();
    if (!subArchives) Note(subArchives.error());
    levels_.emplace_back();
    if (subArchives) levels_.back().Archives = *std::move(subArchives);
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

  std::shared_ptr<store::DvArchive> first_;
  std::uint32_t filter_;
  platform::FileSystem& fileSystem_;
  store::WalkPath path_;
  std::vector<Level> levels_;
};

class DirectoryCounter final : public SizeCounter {
 public:
  DirectoryCounter(std::string_view path, platform::FileSystem& fileSystem)
      : fileSystem_(fileSystem), waiting_{std::string(path)} {}

  bool Step() override {
    if (waiting_.empty()) return false;
    const std::string directory = std::move(waiting_.back());
    waiting_.pop_back();
    const auto entries = fileSystem_.List(directory, "*.*", platform::ListWhat::All);
    if (!entries && !total_.FirstError) total_.FirstError = entries.error();
    if (entries) Add(directory, *entries);
    return !waiting_.empty();
  }

 private:
  void Add(const std::string& directory, const std::vector<platform::FileEntry>& entries) {
    for (const auto& entry : entries) {
      if (entry.IsFolder && !entry.IsLink) {
        ++total_.Directories;
        waiting_.push_back(JoinPath(directory, entry.Name));
      } else {
        ++total_.Files;
        total_.Bytes += entry.IsFolder ? 0 : entry.Size;
      }
    }
  }

  platform::FileSystem& fileSystem_;
  std::vector<std::string> waiting_;
};

std::string BytesText(std::int64_t bytes) {
  constexpr double kilo = 1024, mega = kilo * kilo;
  const auto size = static_cast<double>(bytes);
  std::string text = FormatNumber(size, "###,###") + "  ";
  if (size >= mega) return text + "(" + FormatNumber(size / mega, "###,###") + " MB)";
  return size >= kilo ? text + "(" + FormatNumber(size / kilo, "###,###") + " KB)" : text;
}

}  // namespace

std::unique_ptr<SizeCounter> CountArchive(std::shared_ptr<store::DvArchive> archive, std::uint32_t filter,
                                          platform::FileSystem& fileSystem) {
  return std::make_unique<ArchiveCounter>(std::move(archive), filter, fileSystem);
}

std::unique_ptr<SizeCounter> CountDirectory(std::string_view path, platform::FileSystem& fileSystem) {
  return std::make_unique<DirectoryCounter>(path, fileSystem);
}

SizeCount CountAll(SizeCounter& counter, Breather& breather) {
  while (counter.Step()) {
    if (!breather.Breathe()) continue;
    SizeCount count = counter.Total();
    count.IsStopped = true;
    return count;
  }
  return counter.Total();
}

SizeTexts ArchiveSizeTexts(const SizeCount& count) {
  return {fmt::format("{} Arc(s)/ {} Msg(s)", count.Archives, count.Messages), BytesText(count.Bytes)};
}

SizeTexts DirectorySizeTexts(const SizeCount& count) {
  return {fmt::format("{} Dir(s)/ {} File(s)", count.Directories, count.Files), BytesText(count.Bytes)};
}

}  // namespace velmora::panes
