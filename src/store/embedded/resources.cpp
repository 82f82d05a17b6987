#include "store/embedded/resources.h"

#include <algorithm>
#include <array>

#include "base/code_page.h"
#include "base/paths.h"
#include "base/text.h"
#include "platform/make_folders.h"

namespace velmora::store::embedded {
namespace {

struct ResourceKind {
  std::string_view SiteValue;
  std::string_view Folder;  // below `code\`
};

constexpr std::array<ResourceKind, 4> Kinds{{
    {site_value::CoverPages, "cover"},
    {site_value::FaxTemplates, "faxtmpl"},
    {site_value::Graphics, "graphics"},
    {site_value::BroadcastLists, "rnd"},
}};

// More of a first line than this is no name.
constexpr std::size_t MaxFirstLine = 1024;

// The description in the first line of a broadcast list, "" without one.
std::string DescriptionOf(platform::FileSystem& fileSystem, std::string_view path) {
  const auto reader = fileSystem.OpenReader(path);
  if (!reader) return {};
  const auto head = (*reader)->Read(MaxFirstLine);
  if (!head) return {};
  const std::string line = FromCodePage(head->substr(0, head->find_first_of("\r\n")));
  const std::string_view text = Trim(line);
  return text.starts_with(';') ? std::string(Trim(text.substr(1))) : std::string();
}

}  // namespace

Resources::Resources(platform::FileSystem& fileSystem, const StoreLayout& layout, SiteDatabase& site)
    : fileSystem_(fileSystem), layout_(layout), site_(site) {}

Result<std::vector<DvResourceFile>> Resources::CoverPages() { return Files(site_value::CoverPages, "*"); }
Result<std::vector<DvResourceFile>> Resources::FaxTemplates() { return Files(site_value::FaxTemplates, "*"); }
Result<std::vector<DvResourceFile>> Resources::Graphics() { return Files(site_value::Graphics, "*"); }

Result<std::vector<DvBroadcastList>> Resources::BroadcastLists() {
  const auto files = Files(site_value::BroadcastLists, "*.rnd");
  if (!files) return Fail(files.error());
  std::vector<DvBroadcastList> lists;
  for (const auto& file : *files) {
    std::string description = DescriptionOf(fileSystem_, file.FilePath);
    lists.push_back({description.empty() ? file.Name : std::move(description), file.FilePath});
  }
  return lists;
}

std::string Resources::BroadcastListDirectory() { return DirectoryOfKind(site_value::BroadcastLists); }

std::string Resources::DirectoryOfKind(std::string_view siteValue) {
  const auto named = site_.Value(siteValue);
  if (named && !named->empty()) return StripBackslash(*named);
  const auto kind = std::ranges::find(Kinds, siteValue, &ResourceKind::SiteValue);
  return JoinPath(layout_.Code(), kind->Folder);
}

Result<std::vector<DvResourceFile>> Resources::Files(std::string_view siteValue, std::string_view mask) {
  const std::string directory = DirectoryOfKind(siteValue);
  std::vector<DvResourceFile> files;
  if (!fileSystem_.FolderExists(directory)) return files;
  const auto entries = fileSystem_.List(directory, mask, platform::ListWhat::Files);
  if (!entries) return Fail(entries.error());
  for (const auto& entry : *entries) files.push_back({entry.Name, JoinPath(directory, entry.Name)});
  return files;
}

Status MakeResourceDirectories(platform::FileSystem& fileSystem, const StoreLayout& layout) {
  for (const auto& kind : Kinds) {
    const auto made = platform::MakeFolders(fileSystem, JoinPath(layout.Code(), kind.Folder), true);
    if (!made) return made;
  }
  return {};
}

}  // namespace velmora::store::embedded
