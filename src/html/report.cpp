#include "html/report.h"

#include <fmt/format.h>

#include <algorithm>

#include "base/date_time.h"
#include "base/paths.h"

namespace velmora::html {
namespace {

// One entry per section and one behind the last.
constexpr std::size_t FirstNextFiles = ReportSectionCount + 1;
constexpr std::string_view PageStart = "#docstrt";
constexpr std::string_view BarColor = "#99CCFF", BarTextColor = "#000000";
constexpr std::string_view PageColor = "#FFFFFF", PageTextColor = "#333399";
constexpr std::string_view LinkGap = "&nbsp; &nbsp;";

struct KindTexts {
  std::string_view Title;
  std::string_view Word;
};

KindTexts TextsOf(ReportKind kind) {
  switch (kind) {
    case ReportKind::Statistics:
      return {"System Statistik ", "Statistik"};
    case ReportKind::SystemDocumentation:
      return {"System Dokumentation ", "Dokumentation"};
    case ReportKind::ItemSheet:
      break;
  }
  return {"System-Dokumentation ", "Dokumentation"};
}

std::string Link(std::string_view target, std::string_view text) {
  return AnchorHref(target).append(text).append(AnchorEnd());
}

}  // namespace

std::string ReportPartPath(std::string_view firstPath, std::string_view name) {
  return std::string(DirectoryOf(firstPath)).append(name);
}

std::string ReportBaseName(std::string_view path) { return std::string(FileNameOf(path)); }

std::string ReportSectionFile(std::string_view baseName, std::size_t section) {
  if (section == 0) return std::string(baseName);
  const std::size_t point = std::min(baseName.rfind('.'), baseName.size());
  return fmt::format("{}_{:03}{}", baseName.substr(0, point), section, baseName.substr(point));
}

Report::Report(run::Run& run, ReportEnvironment environment)
    : ReportSectionFiles(ReportSectionCount),
      ReportSectionTitles(ReportSectionCount),
      ReportNextFiles(FirstNextFiles),
      run_(run),
      environment_(std::move(environment)) {}

bool Report::OpenReportFile(std::string_view path, bool noPrompt, ReportKind kind, bool first) {
  if (first) {
    kind_ = kind;
    multiPart_ = environment_.MultiPart;
    if (!noPrompt && !MayWrite(path)) return false;
  }
  const bool isContinuation = !first && multiPart_;
  if (!isContinuation) firstFile_ = path;
  if (!CreateFile(isContinuation ? ReportPartPath(firstFile_, path) : firstFile_)) return false;
  const KindTexts texts = TextsOf(kind_);
  const std::string title =
      std::string(texts.Title).append(isContinuation ? "Fortsetzung" : environment_.ServerDescription);
  WritePageHead(title);
  WriteTitleBar(title, texts.Word);
  return true;
}

void Report::CloseReportFile(bool withNextLink) {
  SetColors(PageColor, PageTextColor);
  Style.Border = "0";
  Style.FontSize = "1";
  Style.Align = "right";
  OpenReportTable("", 1);
  WriteRow1(environment_.CopyRight);
  Style.Align = "left";
  CloseReportTable();
  if (withNextLink && !nextFile_.empty()) {
    // The further parts of the archive section have no title of their own.
    const std::string& title =
        nextIndex_ < ReportSectionTitles.size() ? ReportSectionTitles[nextIndex_] : nextFile_;
    Style.FontSize = "2";
    WriteTextBox(fmt::format("<B><A href=\"{}\" >[{}] </A><BR></B>", nextFile_, title));
    Style.FontSize = "1";
  }
  WriteLine({"\r\n</BODY></HTML>"});
  // Like any other write of a report, one that fails late is passed over.
  if (file_) (void)file_->Close();
  SetStream(nullptr);
  file_.reset();
}

bool Report::OpenContinuationFile(std::size_t section) {
  if (!multiPart_) return true;
  return section < ReportSectionFiles.size() &&
         OpenReportFile(ReportSectionFiles[section], true, kind_, false);
}

void Report::CloseContinuationFile(std::size_t section) {
  if (!multiPart_) return;
  FindNextFile(section);
  CloseReportFile(true);
}

void Report::ShowReport() { run_.frontEnd().viewers.OpenDocument(firstFile_); }

void Report::WriteNavigation(std::size_t index, std::string_view previous, std::string_view next) {
  std::string line;
  if (index > 0 && multiPart_) line += Link(ReportBaseName(firstFile_), "&laquo;&laquo;") + "<BR>";
  line += Link(ReportTopLink, "&laquo;");
  if (!previous.empty()) line.append(LinkGap).append(Link(std::string("#").append(previous), " &lt; "));
  if (!next.empty()) line.append(LinkGap).append(Link(std::string("#").append(next), " &gt; "));
  FindNextFile(index);
  if (!nextFile_.empty()) line.append(LinkGap).append(Link(nextFile_, "&raquo;"));
  if (!ReportNavigation) return;
  SetColors(PageColor, PageTextColor);
  Style.Border = "0";
  Style.FontSize = "3";
  WriteTextBox(line);
}

void Report::FindNextFile(std::size_t index) {
  nextFile_.clear();
  for (std::size_t i = index + 1; i < ReportNextFiles.size(); ++i) {
    if (ReportNextFiles[i].empty()) continue;
    nextIndex_ = i;
    nextFile_ = ReportNextFiles[i];
    return;
  }
}

void Report::GrowNextFiles(std::size_t archiveCount) {
  const std::size_t size = FirstNextFiles + archiveCount / ArchivesPerPart;
  if (size > ReportNextFiles.size()) ReportNextFiles.resize(size);
}

bool Report::MayWrite(std::string_view path) {
  if (!run_.fileSystem().FileExists(path)) return true;
  return run_.frontEnd().prompts.Question(
             "Dokumentation schreiben",
             fmt::format("Eine Dokumentationsdatei {} existiert bereits.\r\nDatei überschreiben ?", path),
             run::Buttons::YesNo, run::Answer::No) == run::Answer::Yes;
}

bool Report::CreateFile(const std::string& path) {
  auto writer = run_.fileSystem().OpenWriter(path);
  if (!writer) {
    run_.LogError("HTML-File " + path, writer.error());
    return false;
  }
  file_ = std::make_unique<FileReportStream>(std::move(*writer));
  SetStream(file_.get());
  return true;
}

void Report::WritePageHead(std::string_view title) {
  WriteLine({"<HTML>"});
  WriteLine({"<HEAD>"});
  WriteLine({"<META http-equiv=\"Content-Language\" content=\"de\">"});
  WriteLine({fmt::format("<META name=\"GENERATOR\" content=\"Velmora {}.{}\">", environment_.MajorVersion,
                         environment_.MinorVersion)});
  WriteLine({"<style type='text/css'>"});
  WriteLine({"<!--"});
  WriteLine({"a:link { text-decoration:none; font-weight:normal; color:#333399; }"});
  WriteLine({"a:visited { text-decoration:none; font-weight:normal; color:#2000FF; }"});
  WriteLine({"a:hover { text-decoration:underline; font-weight:bold; }"});
  WriteLine({"a:active { text-decoration:none; font-weight:normal; }"});
  WriteLine({"-->"});
  WriteLine({"</style>"});
  WriteTitle(title);
  WriteLine({"</HEAD>"});
  WriteLine({"<BODY>"});
}

void Report::WriteTitleBar(std::string_view title, std::string_view word) {
  Style.TableWidth = Style.PageWidth;
  SetColors(BarColor, BarTextColor);
  Style.Border = "3";
  Style.FontSize = "4";
  WriteHeadingBar(AnchorName(PageStart).append(title).append(AnchorEnd()));
  Style.TableWidth = Style.TextWidth;
  SetColors(PageColor, PageTextColor);
  Style.Border = "0";
  Style.FontSize = "2";
  WriteBreaks(1);
  WriteTextBox(fmt::format("{} vom {}<BR>gestartet von Benutzer: <B>{}</B>", word,
                           FormatDate(run_.clock().Now()), environment_.UserName));
  WriteBreaks(1);
}

}  // namespace velmora::html
