// A report on disk: one HTML file, or in a multi-part report one per section, each with a page head, the
// title bar and a foot, and with links from file to file.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "html/report_writer.h"
#include "run/run.h"

namespace velmora::html {

// What a report tells of its surroundings.
struct ReportEnvironment {
  std::string ServerDescription;  // the account's Description
  std::string UserName;           // of the account's User
  std::string CopyRight;          // the setting ArchiveFormCopyRight
  int MajorVersion = 0;
  int MinorVersion = 0;
  bool MultiPart = false;  // the option "Ergebnisdatei teilen"
};

// Any other kind is a documentation with the hyphenated title.
enum class ReportKind { Statistics = 0, SystemDocumentation = 1, ItemSheet = 2 };

inline constexpr std::size_t ReportSectionCount = 11;
inline constexpr std::size_t ArchivesPerPart = 500;  // the archive section is divided at every 500th

// Sheets of one selected item, in the program's temporary directory.
inline constexpr std::string_view TemporarySheetName = "doc$temp.html";
inline constexpr std::string_view TemporaryStatisticsName = "stat$temp.html";

// The directory of `firstPath` with its backslash, then `name`.
std::string ReportPartPath(std::string_view firstPath, std::string_view name);
std::string ReportBaseName(std::string_view path);
// The file name of a section of a multi-part report: "doku.html" gives itself for section 0, "doku_003.html"
// for section 3. The number goes before the last point.
std::string ReportSectionFile(std::string_view baseName, std::size_t section);

class Report : public ReportWriter {
 public:
  Report(run::Run& run, ReportEnvironment environment);
  Report(const Report&) = delete;
  Report& operator=(const Report&) = delete;

  // --- What the sections of a report share. ---
  bool ReportNavigation = false;  // write navigation lines
  // By section: anchors in a single file, file names in a multi-part report.
  std::vector<std::string> ReportSectionFiles;
  std::vector<std::string> ReportSectionTitles;  // multi-part only
  // One entry per section in writing order, then one per further part of the archive section; "" where there
  // is none. What "next" looks through.
  std::vector<std::string> ReportNextFiles;
  std::string ReportTopLink = "#docstrt";  // where "up" leads

  bool ReportMultiPart() const { return multiPart_; }
  const std::string& ReportFirstFile() const { return firstFile_; }
  const std::string& ReportNextFile() const { return nextFile_; }
  std::size_t ReportNextIndex() const { return nextIndex_; }

  // --- Files. ---
  // Opens the file and writes the page head. The first file of a report fixes its kind and whether it is
  // multi-part, and asks before an existing file is overwritten unless `noPrompt`; a further one takes the
  // name of a file beside the first. False when the user declines, or when the file cannot be created: then
  // the error log has it.
  bool OpenReportFile(std::string_view path, bool noPrompt, ReportKind kind, bool first);
  // Writes the foot and closes the file; with the link to the next file when there is one.
  void CloseReportFile(bool withNextLink);
  // In a multi-part report the file of a section, else nothing: true.
  bool OpenContinuationFile(std::size_t section);
  void CloseContinuationFile(std::size_t section);
  // Hands the first file of the report to the desktop's program for it.
  void ShowReport();

  // --- Navigation. ---
  // The line of links ahead of a section; `previous` and `next` are anchors without "#", "" where there is
  // none. Looks up the next file in any case.
  void WriteNavigation(std::size_t index, std::string_view previous, std::string_view next);
  // The first entry of ReportNextFiles behind `index` that is not empty becomes ReportNextFile; "" without.
  void FindNextFile(std::size_t index);
  // Room in ReportNextFiles for the parts of an archive section of so many archives.
  void GrowNextFiles(std::size_t archiveCount);

 private:
  bool MayWrite(std::string_view path);
  bool CreateFile(const std::string& path);
  void WritePageHead(std::string_view title);
  void WriteTitleBar(std::string_view title, std::string_view word);

  run::Run& run_;
  ReportEnvironment environment_;
  std::unique_ptr<FileReportStream> file_;
  ReportKind kind_ = ReportKind::Statistics;
  bool multiPart_ = false;
  std::string firstFile_;
  std::string nextFile_;
  std::size_t nextIndex_ = 0;
};

}  // namespace velmora::html
