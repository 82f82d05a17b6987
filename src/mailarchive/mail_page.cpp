// The whole export of a mail: page, components, descriptor.

#include "base/paths.h"
#include "base/text.h"
#include "html/converters.h"
#include "mailarchive/attachment_names.h"
#include "mailarchive/format/page_text.h"
#include "mailarchive/inline_references.h"
#include "mailarchive/links.h"
#include "mailarchive/mail_export.h"

namespace velmora::mailarchive {

namespace {

constexpr std::int64_t SentDocument = 72;   // send status "Dokument"
constexpr std::int64_t DfmlBit = 0x100000;  // of the mail flag word
constexpr std::int64_t NoteVariant = 68;    // display variant of a note

std::string CutAt(std::string_view text, std::string_view end) {
  return std::string(text.substr(0, text.find(end)));
}

platform::WriteOptions UndatedOptions(platform::Create mode) {
  platform::WriteOptions options;
  options.Mode = mode;
  return options;
}

}  // namespace

void MailExport::WritePage() {
  MailPage page;
  page.IsHtml = !Read(mail_.HtmlIndicator()).empty();
  page.Body =
      page.IsHtml ? TextField(store::tag::HtmlRendition) : ReplaceAll(Read(mail_.Text()), "\r\n", "<br>\r\n");
  const auto form = OpenForm(Form::Mail);
  if (!form) return;
  NamePage(page);
  WriteComment(page, page.Base + ".txt");
  WriteOriginal(page);
  const std::vector<std::string> attachments = WriteAttachments(page);
  if (page.IsHtml) {
    WriteHtmlBody(page, attachments);
  } else {
    page.Content = NeutralizeHeadTags(page.Body);
  }
  std::vector<FormValue> values = {{"%VELMORA_CONTENT%", page.Content}};
  if (page.CommentLink) values.emplace_back("%VELMORA_MSGCOMMENT%", *page.CommentLink);
  values.emplace_back("%VELMORA_EML%", page.OriginalLink);
  values.emplace_back("%VELMORA_ATTLINKS%", page.AttachmentLinks);
  page.Descriptor.Flags = DescriptorFlags() | DirectionFlag();
  if (WritePageFile(page, *form, values)) ++context_.run.counters.Mails;
}

void MailExport::NamePage(MailPage& page) {
  if (page.IsHtml) {
    // Tested where separate folders put the body, even while they are off.
    page.BodyFile = files_.FreeName(place_.FolderName(Component::HtmlMails), base_ + ".htm");
    page.Base = CutAt(page.BodyFile, ".htm");
    page.FileName = page.Base + "_inf.htm";
  } else {
    page.FileName = files_.FreeName("", base_ + ".htm");
    page.Base = CutAt(page.FileName, ".htm");
  }
}

void MailExport::WriteOriginal(MailPage& page) {
  if (!options_.SaveOriginals) return;
  const auto source = context_.session.Account->DVEmlFromMailItem(mail_.Item(), context_.TempDir);
  if (source) {
    page.Descriptor.Eml = CopyOriginal(Component::Originals, page.Base + ".eml", *source).value_or("");
    if (options_.SaveSmtpHeader) {
      page.Descriptor.Smtp = WriteSmtpHeader(Component::Originals, page.Base + ".smtp").value_or("");
    }
  } else {
    files_.SetIncomplete();
    // A copy passes over it, but an entry that a move leaves behind must not stay there without a reason.
    if (options_.Mode == CopyMode::Move) NoteReadFailure(source.error());
  }
  // A mail without its original keeps a link that leads nowhere.
  page.OriginalLink = FileLink(page.Descriptor.Eml, "Original Mail");
}

std::vector<std::string> MailExport::WriteAttachments(MailPage& page) {
  store::DvAttachments& attachments = mail_.Item().Attachments();
  const int count = options_.SaveAttachments ? Read(attachments.Count()) : 0;
  std::vector<std::string> paths;
  std::string previous;
  for (int i = 0; i < count; ++i) {
    paths.emplace_back();
    const auto attachment = attachments.Item(i);
    if (!attachment) {
      NoteReadFailure(attachment.error());
      continue;
    }
    const std::string prefix = place_.FolderPrefix(Component::Attachments);
    const std::string name = AvoidReservedName(
        AttachmentFileName((*attachment)->Name(), options_.NumbersNames() ? previous : ""), prefix.empty());
    previous = files_.FreeName(prefix, name);
    const auto path = SaveAttachment(Component::Attachments, previous, **attachment);
    if (!path) continue;
    previous = FileNameOf(*path);
    paths.back() = *path;
    page.AttachmentLinks += FileLink(*path, previous) + "\r\n";
    page.Descriptor.Attachments.push_back(*path);
  }
  page.Descriptor.HasAttachments = count > 0;
  return paths;
}

void MailExport::WriteHtmlBody(MailPage& page, const std::vector<std::string>& attachments) {
  const std::string location = attachments.empty() ? "" : TextField(store::tag::Location);
  const std::string html = html::ToNumericEntities(ReplaceInlineReferences(page.Body, location, attachments));
  const auto path = files_.Write(
      Component::HtmlMails, page.BodyFile, [&](const std::string& target, platform::Create mode) {
        return context_.run.fileSystem().WriteFile(target, html, UndatedOptions(mode));
      });
  page.Descriptor.Body = path.value_or("");
  std::string linkPath = path.value_or(place_.FolderPrefix(Component::HtmlMails) + page.BodyFile);
  // Without a folder the link has the closing "/" of the missing prefix: existing mail archives have it so.
  if (linkPath.find('\\') == std::string::npos) linkPath.insert(0, "\\");
  page.Content = FileLink(linkPath, "[" + page.Base + "]") + "\r\n";
}

int MailExport::DescriptorFlags() {
  int kind = entry_flag::Internal;
  if ((NumberField(store::tag::MailFlags) & DfmlBit) != 0) {
    kind = entry_flag::Dfml;
  } else if (NumberField(store::tag::SendStatus) == SentDocument) {
    kind = entry_flag::Status72;
  }
  if (NumberField(store::tag::DisplayVariant) == NoteVariant) kind = entry_flag::Note;
  return kind;
}

}  // namespace velmora::mailarchive
