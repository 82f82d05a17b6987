#include "startup/control_file.h"

#include <algorithm>
#include <array>
#include <limits>

#include "base/code_page.h"
#include "base/numbers.h"
#include "base/text.h"
#include "startup/text_replacement.h"

namespace velmora::startup {
namespace {

constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";

bool IsYes(std::string_view value) { return ToLower(value) == "y"; }

struct Choice {
  std::string_view Word;
  int Number;
};

constexpr std::array LogTypes = {Choice{"rxlog", log_type::Rx}, Choice{"txlog", log_type::Tx},
                                 Choice{"bothlogs", log_type::Both}};
constexpr std::array ArchiveTypes = {Choice{"all", 0}, Choice{"user", 1}, Choice{"system", 2},
                                     Choice{"other", 3}};
constexpr std::array Sortings = {Choice{"sizeall", 0}, Choice{"sizeself", 1}, Choice{"msgall", 2},
                                 Choice{"msgself", 3}, Choice{"subarcs", 4}};

struct CommandWord {
  std::string_view Word;
  BatchCommand Command;
};
constexpr std::array Commands = {CommandWord{"archivecopymove", BatchCommand::ArchiveCopyMove},
                                 CommandWord{"archivestatistics", BatchCommand::ArchiveStatistics},
                                 CommandWord{"copydavidlogs", BatchCommand::CopyDavidLogs}};

// Any other word counts as 0.
template <std::size_t Count>
int Choose(const std::array<Choice, Count>& choices, std::string_view value) {
  const std::string word = ToLower(value);
  const auto found =
      std::find_if(choices.begin(), choices.end(), [&](const Choice& choice) { return choice.Word == word; });
  return found == choices.end() ? 0 : found->Number;
}

int ToInt(std::string_view value) {
  const std::int64_t number = ParseInteger(value).value_or(0);
  return number >= 0 && number <= std::numeric_limits<int>::max() ? static_cast<int>(number) : 0;
}

// One key: what its value does to the file that is being read.
struct Key {
  std::string_view Name;
  void (*Assign)(ControlFile& file, const std::string& value);
};

using File = ControlFile&;
using Text = const std::string&;

constexpr std::array Keys = {
    Key{"srcarchive", [](File f, Text v) { f.Archives.push_back(v); }},
    Key{"dstarchive", [](File f, Text v) { f.Archives.push_back(v); }},
    Key{"statsarchive", [](File f, Text v) { f.Archives.push_back(v); }},
    Key{"logtype", [](File f, Text v) { f.LogType = Choose(LogTypes, v); }},
    Key{"dstdirectory", [](File f, Text v) { f.DstDirectory = v; }},
    Key{"deletedst", [](File f, Text v) { f.DeleteDst = IsYes(v); }},
    Key{"dstnum", [](File f, Text v) { f.Export.NoDuplicates = IsYes(v); }},
    Key{"copymode",
        [](File f, Text v) {
          f.Export.Mode = ToLower(v) == "mov" ? mailarchive::CopyMode::Move : mailarchive::CopyMode::Copy;
        }},
    Key{"makeidx", [](File f, Text v) { f.Export.MakeIndex = IsYes(v); }},
    Key{"delarcs", [](File f, Text v) { f.Export.DeleteArchives = IsYes(v); }},
    Key{"onlyeml", [](File f, Text v) { f.Export.OnlyOriginals = IsYes(v); }},
    Key{"saveeml", [](File f, Text v) { f.Export.SaveOriginals = IsYes(v); }},
    Key{"savecmt", [](File f, Text v) { f.Export.SaveComments = IsYes(v); }},
    Key{"onlycmt", [](File f, Text v) { f.Export.OnlyComments = IsYes(v); }},
    Key{"saveatt", [](File f, Text v) { f.Export.SaveAttachments = IsYes(v); }},
    Key{"onlyatt", [](File f, Text v) { f.Export.OnlyAttachments = IsYes(v); }},
    Key{"witherr", [](File f, Text v) { f.Export.WithErrors = IsYes(v); }},
    Key{"savesmtp", [](File f, Text v) { f.Export.SaveSmtpHeader = IsYes(v); }},
    Key{"linkedarcs", [](File f, Text v) { f.Export.LinkedArchives = IsYes(v); }},
    Key{"idxdatesortdir", [](File f, Text v) { f.Export.DateIndexSortedUp = ToLower(v) == "up"; }},
    Key{"copyright", [](File f, Text v) { f.Export.CopyRight = v; }},
    Key{"comment", [](File f, Text v) { f.Export.Comment = v; }},
    Key{"sendmail", [](File f, Text v) { f.Mail.Send = IsYes(v); }},
    Key{"mailto", [](File f, Text v) { f.Mail.To = v; }},
    Key{"mailfrom", [](File f, Text v) { f.Mail.From = v; }},
    Key{"mailsubject", [](File f, Text v) { f.Mail.Subject = v; }},
    Key{"mailbody", [](File f, Text v) { f.Mail.Body = v; }},
    Key{"includesubarcs", [](File f, Text v) { f.Statistics.IncludeSubArchives = IsYes(v); }},
    Key{"statdstfile", [](File f, Text v) { f.Statistics.OutputFile = v; }},
    Key{"enableuserstats", [](File f, Text v) { f.Statistics.UserStatistics = IsYes(v); }},
    Key{"enableoldusers", [](File f, Text v) { f.Statistics.OldUsers = IsYes(v); }},
    Key{"enableactiveusers", [](File f, Text v) { f.Statistics.ActiveUsers = IsYes(v); }},
    Key{"enableuserdetails", [](File f, Text v) { f.Statistics.UserDetails = IsYes(v); }},
    Key{"enablearchivestats", [](File f, Text v) { f.Statistics.ArchiveStatistics = IsYes(v); }},
    Key{"arctypes", [](File f, Text v) { f.Statistics.ArchiveTypes = Choose(ArchiveTypes, v); }},
    Key{"enablearccharts", [](File f, Text v) { f.Statistics.ArchiveCharts = IsYes(v); }},
    Key{"chartslen", [](File f, Text v) { f.Statistics.ChartsLength = v; }},
    Key{"chartsminimumsize", [](File f, Text v) { f.Statistics.ChartsMinimumSize = ToInt(v); }},
    Key{"sortwithsize", [](File f, Text v) { f.Statistics.Sorting = Choose(Sortings, v); }},
};

std::string Decode(std::string_view bytes) {
  if (bytes.starts_with(ByteOrderMark)) {
    bytes.remove_prefix(ByteOrderMark.size());
  }
  // Plain ASCII is the same in both.
  return IsValidUtf8(bytes) ? std::string(bytes) : FromCodePage(bytes);
}

// False ends the reading.
bool ReadCommand(ControlFile& file, std::string_view value) {
  const std::string word = ToLower(value);
  const auto found = std::find_if(Commands.begin(), Commands.end(),
                                  [&](const CommandWord& command) { return command.Word == word; });
  if (found == Commands.end()) {
    file.Command = BatchCommand::None;
    file.UnknownCommand = value;
    file.StoppedAtCommand = true;
    return false;
  }
  file.Command = found->Command;
  return true;
}

bool ReadLine(ControlFile& file, std::string_view line) {
  line = Trim(line);
  const std::size_t equals = line.find('=');
  if (line.empty() || line.front() == ';' || equals == std::string_view::npos) {
    return true;
  }
  const std::string key = ToLower(Trim(line.substr(0, equals)));
  const std::string value(Trim(line.substr(equals + 1)));
  if (key == "command") {
    return ReadCommand(file, value);
  }
  const auto found = std::find_if(Keys.begin(), Keys.end(), [&](const Key& row) { return row.Name == key; });
  if (found != Keys.end()) {
    found->Assign(file, value);
  }
  return true;
}

}  // namespace

ControlFile ParseControlFile(std::string_view bytes, const mailarchive::ExportOptions& defaults,
                             const MomentTexts& moment) {
  ControlFile file;
  file.Export = defaults;
  const std::string text = ReplaceAll(ReplaceAll(Decode(bytes), "\r\n", "\n"), "\r", "\n");
  for (std::size_t start = 0; start < text.size();) {
    const std::size_t end = std::min(text.find('\n', start), text.size());
    if (!ReadLine(file, std::string_view(text).substr(start, end - start))) {
      break;
    }
    start = end + 1;
  }
  file.Export.Comment = ReplacePlaceholders(file.Export.Comment, MomentReplacements(moment));
  return file;
}

}  // namespace velmora::startup
