// Saves again and again until it is killed, and tells of each save once it has returned, by an empty line:
//   saving_tool settings DIRECTORY               the settings: five values that are always the same number,
//   one
//                                                more each time
//   saving_tool records ARCHIVE SHARE DIRECTORY  the list of an archive: one name after the other, then all
//                                                again. ARCHIVE is its ID, below SHARE, which lies in
//                                                DIRECTORY
#include <fmt/format.h>

#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include "platform/host_file_system.h"
#include "settings/options_store.h"
#include "settings/options_table.h"
#include "settings/store.h"
#include "store/archive_files.h"
#include "store/archive_records.h"
#include "store/record_edit.h"

namespace velmora {
namespace {

void TellSaved() {
  std::fputs("\n", stdout);
  std::fflush(stdout);
}

int SaveSettings(platform::FileSystem& files, const std::string& directory) {
  settings::Store store(files, directory, directory + "\\machine");
  const settings::Options defaults = settings::DefaultOptions({}, {});
  for (;;) {
    const settings::Options loaded = settings::LoadOptions(store.Read(settings::Scope::User), "", defaults);
    settings::Options options = loaded;
    options.LastUserRights = loaded.LastUserRights + 1;
    const std::string number = fmt::to_string(options.LastUserRights);
    options.LastUsedServer = options.DefaultAddressbookName = options.ArchiveFormComment = number;
    options.MaxItemCount = number;
    const Status saved = store.Merge(settings::Scope::User, [&](const settings::Values& stored) {
      return settings::SaveChanges(stored, "", options, loaded);
    });
    if (!saved) return 1;
    TellSaved();
  }
}

int SaveRecords(platform::FileSystem& files, const std::string& directory) {
  for (int number = 1;; ++number) {
    const auto content = store::ReadArchiveList(files, directory);
    if (!content) return 1;
    const auto count = static_cast<int>(store::CountRecords(*content));
    for (int at = 1; at <= count; ++at) {
      const auto old = store::RecordAt(*content, static_cast<std::size_t>(at));
      const auto record = store::RebuildRecord(*old, *old, fmt::format("Archiv {}", number));
      if (!record) return 1;
      if (!store::WriteArchiveRecord(files, directory, {at, *old}, *record, store::RecordKind::Own)) return 1;
      TellSaved();
    }
  }
}

}  // namespace
}  // namespace velmora

int main(int argc, char** argv) {
  const std::string_view what = argc > 2 ? argv[1] : "";
  std::vector<velmora::platform::PathMapping> mappings;
  if (argc == 5) mappings.push_back({argv[3], argv[4]});
  const auto files = velmora::platform::MakeHostFileSystem(mappings);
  if (what == "settings") return velmora::SaveSettings(*files, files->FromHostPath(argv[2]));
  if (what == "records") return velmora::SaveRecords(*files, argv[2]);
  return 2;
}
