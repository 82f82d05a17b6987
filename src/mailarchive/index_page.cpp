#include "mailarchive/index_page.h"

#include <fmt/format.h>

#include "base/paths.h"
#include "base/text.h"
#include "html/converters.h"
#include "html/report_writer.h"
#include "mailarchive/format/marker.h"
#include "mailarchive/format/page_text.h"
#include "mailarchive/links.h"

namespace velmora::mailarchive {

namespace {

constexpr std::string_view ListVariable = "%VELMORA_IDXLINKS%";

// The form with its variables filled in, the place of the list still marked.
std::string FillIndexForm(IndexContext& context, Form form, const std::string& directory) {
  const auto text = context.designs.FormText(form);
  if (!text) return "";
  const ArcDescriptor marker =
      ReadArcDescriptor(context.run.fileSystem(), directory).value_or(ArcDescriptor{});
  const std::string name(FileNameOf(StripBackslash(directory)));
  const std::string title = NeutralizeHeadTags("Inhalt von " + name);
  const std::string folder =
      NeutralizeHeadTags(marker.ArchiveFullPath.empty() ? name : marker.ArchiveFullPath);
  const std::string now = FormatDateTime(context.run.clock().Now());
  const std::string copyRight = NeutralizeHeadTags(marker.ArchiveCopyRight);
  const std::string comment = NeutralizeHeadTags(marker.ArchiveComment);
  return FillForm(*text, {{"%VELMORA_TITLE%", title},
                          {"%VELMORA_IDXFOLDER%", folder},
                          {"%VELMORA_IDXARCDATE%", now},
                          {"%VELMORA_COPYRIGHT%", copyRight},
                          {"%VELMORA_COMMENT%", comment}});
}

std::string RowTitle(const IndexRow& row) {
  std::string_view title = row.Subject;
  if (title.empty()) {
    const std::string_view page = row.PageFile;
    title = page.substr(0, page.find("_inf.htm"));
    title = title.substr(0, title.find(".htm"));
  }
  return PathToUrl(html::TextToHtml(title, false));
}

std::string AddressCell(std::string_view address) {
  const std::string text = NeutralizeHeadTags(address);
  if (address.find('@') == std::string_view::npos) return text;
  return fmt::format(R"(<a href="mailto:{}">{}</a>)", ReplaceAll(text, "\"", "%22"), text);
}

std::string DateCell(DateTime date) { return date.IsNull() ? "" : FormatDateTime(date); }

void WriteFolders(html::ReportWriter& writer, const IndexContent& content) {
  if (!content.IsRoot) writer.WriteBoldBox(R"(<a href="../index.html">..</a><br>)");
  for (const IndexFolder& folder : content.Folders) {
    writer.WriteBoldBox(PlainLink(folder.DirName + "\\index.html", NeutralizeHeadTags(folder.DisplayName)));
  }
  writer.WriteBreaks(1);
}

void WriteRows(html::ReportWriter& writer, run::Run& run, const IndexContent& content,
               const std::vector<std::uint32_t>& order, bool showProgress) {
  writer.SetColumnWidths3("15%", "20%", "70%");  // 105% in all: existing indexes have it so
  writer.Style.FontSize = "3";
  writer.Style.TableWidth = "100%";
  writer.OpenReportTable(" ", 3);
  writer.WriteRow3("<B>Datum</B>", "<B>Von / An</B>", "<B>Betreff</B>");
  writer.Style.FontSize = "2";
  for (const std::uint32_t number : order) {
    const IndexRow& row = content.Rows[number];
    writer.WriteRow3(DateCell(row.Date), AddressCell(row.Sortaddr), PlainLink(row.PageFile, RowTitle(row)));
    if (showProgress) {
      ++run.counters.Messages;
      run.frontEnd().progress.SetItemText(row.Subject);
    }
    (void)run.frontEnd().progress.Pump();  // keeps the window alive; an index that was begun is finished
  }
  writer.CloseReportTable();
}

}  // namespace

void WriteIndexFile(IndexContext& context, Form form, std::string_view fileName, const IndexContent& content,
                    const std::vector<std::uint32_t>& order, bool showProgress) {
  (void)context.designs.LoadDesignForm(form, content.Directory);  // a missing picture is no reason to stop
  const std::string page = FillIndexForm(context, form, content.Directory);
  auto file = context.run.fileSystem().OpenWriter(JoinPath(content.Directory, fileName));
  if (!file) return;
  html::FileReportStream stream(std::move(*file));
  const std::size_t listAt = page.find(ListVariable);
  if (page.empty() || !stream.Write(std::string_view(page).substr(0, listAt))) {
    (void)stream.Close();  // an empty page is all that there is
    return;
  }
  html::ReportWriter writer(&stream);
  writer.InitReportStyle();
  writer.Style.FontFace = "Arial";
  writer.Style.FontSize = "3";
  writer.Style.Border = "0";
  WriteFolders(writer, content);
  if (!content.Rows.empty()) WriteRows(writer, context.run, content, order, showProgress);
  if (listAt != std::string::npos) {
    // What fails here is only visible in the page, as everything that an index leaves out.
    (void)stream.Write(std::string_view(page).substr(listAt + ListVariable.size()));
  }
  (void)stream.Close();
}

}  // namespace velmora::mailarchive
