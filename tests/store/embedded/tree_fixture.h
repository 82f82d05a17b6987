// A tree of archives in a temporary directory.
#pragma once

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "platform/host_file_system.h"
#include "store/embedded/archive_tree.h"
#include "support/temp_dir.h"

namespace velmora::store::embedded {

class TreeTest : public testing::Test {
 protected:
  static constexpr std::string_view Root = R"(\\SERVER\DAVID\ARCHIVE)";

  TreeTest() {
    std::filesystem::create_directory(Temp.HostPath("ARCHIVE"));
    Files = MakeFiles();
    Tree = std::make_unique<ArchiveTree>(*Files, std::string(Root));
  }

  std::unique_ptr<platform::FileSystem> MakeFiles() const {
    return platform::MakeHostFileSystem({{R"(\\SERVER\DAVID)", Temp.HostPath()}});
  }

  ArchiveRecord Make(std::string_view parent, std::string_view name,
                     const ArchiveProperties& properties = {}) {
    auto made = Tree->Create(parent, name, properties);
    if (!made) {
      ADD_FAILURE() << name << ": " << made.error().Text;
      return {};
    }
    return *made;
  }
  std::vector<ArchiveRecord> Children(std::string_view directory) {
    auto children = Tree->Children(directory);
    if (!children) {
      ADD_FAILURE() << directory << ": " << children.error().Text;
      return {};
    }
    return *children;
  }
  std::vector<std::string> ChildNames(std::string_view directory) {
    std::vector<std::string> names;
    for (const ArchiveRecord& child : Children(directory)) names.push_back(child.Name);
    return names;
  }
  // What a check finds damaged.
  std::string CheckTexts() {
    std::string texts;
    for (const ArchiveTree::Finding& finding : Tree->Check().Findings)
      if (!finding.IsNote) texts += finding.Directory + ": " + finding.Text + "\n";
    return texts;
  }
  bool HostExists(std::string_view relative) const {
    return std::filesystem::exists(Temp.HostPath(relative));
  }

  test::TempDir Temp;
  std::unique_ptr<platform::FileSystem> Files;
  std::unique_ptr<ArchiveTree> Tree;
};

using Names = std::vector<std::string>;

}  // namespace velmora::store::embedded
