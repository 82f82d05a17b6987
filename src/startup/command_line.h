// Reading the command line: the saved one, the one handed over by a second instance, and its options.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "startup/process.h"

namespace velmora::startup {

// The options that stand at the start of a line, known by its first characters.
enum class LineOption {
  None,
  SaveOff,         // -w0
  SaveOnce,        // -w1
  SaveAlways,      // -w2
  SaveStatus,      // -w?
  IgnoreSaved,     // -wi
  UseSaved,        // -wa
  Archive,         // -c
  Message,         // -e
  Integrate,       // -i
  Disintegrate,    // -u
  ForgetArchives,  // -r
  Batch,           // -b
  Help,            // -?, -h
  Path,            // any other text
};

// The options of the first three characters, which deal with the saved line; None for any other text.
LineOption DecodeSaveOption(std::string_view line);
// The options of the first two characters; Path for any other text, None for an empty line.
LineOption DecodeStartOption(std::string_view line);
// "-migrate" and nothing else, blanks and case apart.
bool IsMigration(std::string_view commandLine);
// A line that starts with "-b:": an unattended run, which shows no box and is no instance.
bool IsUnattended(std::string_view commandLine);
// What follows the first colon of "-b:<file>"; nothing without a colon.
std::optional<std::string> ControlFileOf(std::string_view line);
// The argument of -c and -e: from the fourth character on, whatever separates it.
std::string ArgumentOf(std::string_view line);
std::string HelpText();

enum class LineSource { Arguments, HandOver };

// Decodes the command line, or the hand-over file, into the process fields. Some options end the process:
// then the exit status. In a hand-over -b counts for nothing.
std::optional<int> ReadCommandLine(Context& context, LineSource source);

}  // namespace velmora::startup
