// Runs a piece of work again and again, failing its first, second, third ... file operation of each kind,
// until it comes through without meeting the fault.
#pragma once

#include <gtest/gtest.h>
#include <stdlib.h>
#include <unistd.h>

#include <array>
#include <exception>
#include <string>
#include <string_view>

#include "support/faulty_file_system.h"

namespace velmora::faults {

using test::Fault;

struct KindName {
  Fault Kind;
  std::string_view Name;
};
inline constexpr std::array<KindName, 15> Kinds{{{Fault::Open, "open"},
                                                 {Fault::Read, "read"},
                                                 {Fault::Write, "write"},
                                                 {Fault::ShortWrite, "short write"},
                                                 {Fault::Append, "append"},
                                                 {Fault::Copy, "copy"},
                                                 {Fault::Rename, "rename"},
                                                 {Fault::LateReplace, "late replace"},
                                                 {Fault::SetTime, "set time"},
                                                 {Fault::Attributes, "attributes"},
                                                 {Fault::Delete, "delete"},
                                                 {Fault::List, "list"},
                                                 {Fault::CreateFolder, "create folder"},
                                                 {Fault::Sync, "sync"},
                                                 {Fault::Any, "any"}}};
inline constexpr std::array<int, 3> ErrorNumbers{
    platform::file_error::DiskFull, platform::file_error::AccessDenied, platform::file_error::DeviceError};

// VELMORA_FAULTS=all: each place with each error number, alone and lasting. Without it the error number
// changes from place to place, single faults are of one kind each, and lasting ones are of the kind "any" at
// every third place.
inline bool SweepsAll() {
  const char* const wish = getenv("VELMORA_FAULTS");
  return wish != nullptr && std::string_view(wish) == "all";
}

// Ends a run that hangs: SIGALRM kills the test program, and the test has failed.
class Watchdog {
 public:
  Watchdog() { alarm(LongestRun); }
  Watchdog(const Watchdog&) = delete;
  Watchdog& operator=(const Watchdog&) = delete;
  ~Watchdog() { alarm(0); }

 private:
  static constexpr unsigned LongestRun = 30;  // seconds
};

struct Place {
  KindName Kind;
  int Number = 0;  // of the call that fails
  int ErrorNumber = 0;
  bool Lasts = false;  // every later call fails, too

  std::string Text() const {
    return std::string(Kind.Name) + " " + std::to_string(Number) + (Lasts ? " and on" : "") + " with " +
           std::to_string(ErrorNumber);
  }
  void Plan(test::FaultyFileSystem& files) const {
    files.FailOn(Kind.Kind, Number, ErrorNumber, Lasts ? test::FaultyFileSystem::Always : 1);
  }
};

// `run` works at one place and tells whether the fault was met; what it expects is said of the place by the
// trace.
template <typename Run>
void Sweep(const Run& run) {
  constexpr int MostCalls =
      5000;  // a run with more operations than this is no small one, or turns in circles
  int runs = 0, met = 0;
  for (const KindName& kind : Kinds) {
    for (const bool lasts : {false, true}) {
      if (lasts != (kind.Kind == Fault::Any) && !SweepsAll()) continue;
      const int step = SweepsAll() || !lasts ? 1 : 3;
      for (int number = 1;; number += step) {
        if (number > MostCalls) {
          ADD_FAILURE() << kind.Name << ": the run does not end";
          break;
        }
        bool isMet = false;
        for (std::size_t i = 0; i < (SweepsAll() ? ErrorNumbers.size() : 1); ++i) {
          const std::size_t turn =
              SweepsAll() ? i : static_cast<std::size_t>(number / step) % ErrorNumbers.size();
          const Place place{kind, number, ErrorNumbers[turn], lasts};
          const testing::ScopedTrace trace(__FILE__, __LINE__, place.Text());
          const Watchdog watchdog;
          try {
            isMet = run(place);
          } catch (const std::exception& error) {
            ADD_FAILURE() << error.what();
            isMet = true;
          }
          ++runs;
          met += isMet ? 1 : 0;
        }
        if (!isMet) break;
      }
    }
  }
  EXPECT_GT(met, 0) << "not one operation could fail";
  testing::Test::RecordProperty("runs", runs);
}

}  // namespace velmora::faults
