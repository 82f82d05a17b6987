// Runs fuzz targets without a fuzzer, for compilers that have none: every file of the folders, and for some
// seconds changed and spliced ones.
//
//   fuzz_replay TARGET [--seconds N] FOLDER...
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#define VELMORA_TARGET(name) extern "C" int Fuzz_##name(const std::uint8_t* data, std::size_t size);
#include "fuzz_targets.inc"
#undef VELMORA_TARGET

namespace {

namespace fs = std::filesystem;

struct Target {
  std::string_view Name;
  int (*Run)(const std::uint8_t* data, std::size_t size);
};

constexpr Target Targets[] = {
#define VELMORA_TARGET(name) {#name, Fuzz_##name},
#include "fuzz_targets.inc"
#undef VELMORA_TARGET
};

std::vector<std::string> ReadInputs(const fs::path& folder) {
  std::vector<fs::path> paths;
  if (fs::is_directory(folder)) {
    for (const auto& file : fs::recursive_directory_iterator(folder))
      if (file.is_regular_file()) paths.push_back(file.path());
  }
  std::sort(paths.begin(), paths.end());
  std::vector<std::string> inputs;
  for (const fs::path& path : paths) {
    std::ifstream file(path, std::ios::binary);
    inputs.emplace_back(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
  }
  return inputs;
}

// A few changes of the kinds that break readers: bits, lengths, repeated and missing pieces, pieces of
// others.
class Mutator {
 public:
  explicit Mutator(const std::vector<std::string>& inputs) : inputs_(inputs) {}

  std::string Next() {
    std::string input = inputs_[Below(inputs_.size())];
    for (std::size_t change = Below(6) + 1; change > 0; --change) Change(input);
    return input;
  }

 private:
  std::size_t Below(std::size_t bound) {
    return std::uniform_int_distribution<std::size_t>(0, bound - 1)(random_);
  }
  void Change(std::string& input) {
    const std::size_t place = Below(input.size() + 1), length = Below(input.size() - place + 1);
    switch (Below(7)) {
      case 0:
        input.erase(place, length);
        break;
      case 1:
        if (input.size() < 100'000) input.insert(place, input.substr(place, length));
        break;
      case 2:
        input.insert(place, 1, static_cast<char>(Below(256)));
        break;
      case 3:
        if (place < input.size()) input[place] = static_cast<char>(input[place] ^ (1 << Below(8)));
        break;
      case 4:
        if (place < input.size()) input[place] = "\0\xFF\x7F\x80\r\n\"<%="[Below(10)];
        break;
      case 5:
        input.resize(place);
        break;
      default: {
        const std::string& other = inputs_[Below(inputs_.size())];
        const std::size_t from = Below(other.size() + 1);
        input.insert(place, other.substr(from, Below(2'000)));
      }
    }
  }

  const std::vector<std::string>& inputs_;
  std::mt19937 random_{1};
};

void Run(const Target& target, const std::string& input) {
  (void)target.Run(reinterpret_cast<const std::uint8_t*>(input.data()), input.size());
}

// Where a crash can be looked at: the input that was being run.
class LastInput {
 public:
  explicit LastInput(fs::path place)
      : place_(std::move(place)),
        descriptor_(open(place_.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600)) {}
  LastInput(const LastInput&) = delete;
  LastInput& operator=(const LastInput&) = delete;
  ~LastInput() {
    close(descriptor_);
    fs::remove(place_);
  }
  bool Keep(const std::string& input) const {
    const auto size = static_cast<off_t>(input.size());
    return pwrite(descriptor_, input.data(), input.size(), 0) == size && ftruncate(descriptor_, size) == 0;
  }

 private:
  fs::path place_;
  int descriptor_;
};

int Replay(const Target& target, double seconds, const std::vector<fs::path>& folders) {
  std::vector<std::string> inputs{""};
  for (const fs::path& folder : folders) {
    for (std::string& input : ReadInputs(folder)) inputs.push_back(std::move(input));
  }
  for (const std::string& input : inputs) Run(target, input);
  const LastInput last(fs::temp_directory_path() / ("velmora-fuzz-" + std::string(target.Name)));
  Mutator mutator(inputs);
  std::size_t count = 0;
  const auto end = std::chrono::steady_clock::now() + std::chrono::duration<double>(seconds);
  for (; std::chrono::steady_clock::now() < end; ++count) {
    const std::string input = mutator.Next();
    if (!last.Keep(input)) return 2;
    Run(target, input);
  }
  std::printf("%.*s: %zu inputs, %zu changed ones\n", static_cast<int>(target.Name.size()),
              target.Name.data(), inputs.size(), count);
  return inputs.size() > 1 ? 0 : 2;  // nothing to run is a mistake
}

}  // namespace

int main(int argc, char** argv) {
  const std::vector<std::string> arguments(argv + 1, argv + argc);
  double seconds = 0;
  std::vector<fs::path> folders;
  for (std::size_t i = 1; i < arguments.size(); ++i) {
    if (arguments[i] == "--seconds" && i + 1 < arguments.size()) {
      seconds = std::strtod(arguments[++i].c_str(), nullptr);
    } else {
      folders.emplace_back(arguments[i]);
    }
  }
  for (const Target& target : Targets) {
    if (!arguments.empty() && target.Name == arguments[0]) return Replay(target, seconds, folders);
  }
  std::fprintf(stderr, "fuzz_replay TARGET [--seconds N] FOLDER...\nTargets:");
  for (const Target& target : Targets) std::fprintf(stderr, " %s", std::string(target.Name).c_str());
  std::fprintf(stderr, "\n");
  return 2;
}
