// The program as a user starts it, in a home directory of its own.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "platform/host.h"
#include "support/temp_dir.h"

namespace velmora::cli {

class StoreCommandsFixture : public testing::Test {
 protected:
  struct Outcome {
    int Status;
    std::string Output;
  };

  // `velmoractl store ARGUMENTS...`; VELMORA_STORE is set to `store` unless that is "".
  Outcome Run(std::vector<std::string> arguments, const std::string& store = "") {
    std::vector<std::string> command{"/usr/bin/env", "-i", "TZ=UTC", "HOME=" + directory_.HostPath()};
    if (!store.empty()) command.push_back("VELMORA_STORE=" + store);
    command.insert(command.end(), {VELMORACTL, "store"});
    command.insert(command.end(), arguments.begin(), arguments.end());
    const auto result = platform::RunProcess(command, "");
    EXPECT_TRUE(result) << result.error().Text;
    return result ? Outcome{result->ExitStatus, result->Output} : Outcome{-1, ""};
  }
  // A line of the shell in which "velmoractl" is the program.
  Outcome RunShell(const std::string& line) {
    const auto result = platform::RunProcess(
        {"/usr/bin/env", "-i", "TZ=UTC", "PATH=/usr/bin:/bin", "HOME=" + directory_.HostPath(), "/bin/sh",
         "-c", "velmoractl() { '" VELMORACTL "' \"$@\"; }; " + line},
        "");
    EXPECT_TRUE(result) << result.error().Text;
    return result ? Outcome{result->ExitStatus, result->Output} : Outcome{-1, ""};
  }
  // What a Python expression over `e`, the entries of the archive as JSON, prints.
  std::string Json(const std::string& archive, const std::string& expression) {
    const std::string script =
        "import json, subprocess, sys\n"
        "out = subprocess.run([sys.argv[1], 'store', 'list', '--json', '--archive', "
        "sys.argv[2]], capture_output=True, check=True).stdout\n"
        "e = json.loads(out)\nprint((" +
        expression + "))";
    const auto result =
        platform::RunProcess({"/usr/bin/env", "-i", "TZ=UTC", "PYTHONUTF8=1", "PATH=/usr/bin:/bin",
                              "HOME=" + directory_.HostPath(), "python3", "-c", script, VELMORACTL, archive},
                             "");
    EXPECT_TRUE(result) << result.error().Text;
    if (!result) return {};
    std::string output = result->Output;
    while (output.ends_with('\n')) output.pop_back();
    return output;
  }
  std::string Store() const { return directory_.HostPath("store"); }
  void Init() {
    const auto made = Run({"init", Store(), "--server", "BUERO"});
    ASSERT_EQ(made.Status, 0) << made.Output;
  }
  // The host path of the new file.
  std::string WriteFile(const std::string& name, std::string_view bytes) {
    directory_.WriteHostFile(name, std::string(bytes));
    return directory_.HostPath(name);
  }

  velmora::test::TempDir directory_;
};

}  // namespace velmora::cli
