#include "ui/message_content.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "base/text.h"
#include "panes/display_text.h"
#include "store/item_properties.h"
#include "store/vocabulary.h"
#include "ui/html_text.h"

namespace velmora::ui {
namespace {

using store::DvItem;
using store::DvItemView;

constexpr std::string_view PartScheme = "velmora-part:";
constexpr std::string_view CutText = "Die Nachricht ist zu lang, um ganz angezeigt zu werden.";
constexpr std::string_view BrokenText = "Sehr lange Zeilen sind für die Anzeige umgebrochen.";
constexpr std::string_view DeepText =
    "Der HTML-Text ist zu tief verschachtelt, um formatiert angezeigt zu werden.";
constexpr std::string_view LongHtmlText =
    "Der HTML-Text ist zu lang, um formatiert angezeigt zu werden; gezeigt wird sein Anfang als Text.";

// What the desktop's associations, or a person's double click, would execute.
constexpr auto ExecutableExtensions = std::to_array<std::string_view>(
    {"appimage", "bash", "bat", "cmd", "com", "command", "cpl", "desktop", "dll", "exe", "hta", "jar",
     "js",       "jse",  "lnk", "msi", "out", "pif",     "pl",  "ps1",     "py",  "rb",  "reg", "run",
     "scf",      "scr",  "sh",  "so",  "url", "vb",      "vbe", "vbs",     "ws",  "wsf", "wsh", "zsh"});

std::string HeaderText(std::string_view text) { return panes::DisplayText(text, ShownHeaderCharacters); }

// A value of the store as text; what cannot be read is empty.
std::string TextOf(const Result<std::string>& text) { return text ? HeaderText(*text) : std::string(); }

std::string FieldTextOf(DvItem& item, store::FieldTag tag) {
  const auto value = item.Fields().Get(tag);
  return value ? store::FieldText(*value) : std::string();
}

std::string RecipientOf(const store::DvRecipient& recipient) {
  if (recipient.Name.empty() || recipient.Name == recipient.Address) return recipient.Address;
  return recipient.Address.empty() ? recipient.Name
                                   : fmt::format("{} <{}>", recipient.Name, recipient.Address);
}

std::string RecipientsOf(const Result<std::vector<store::DvRecipient>>& recipients) {
  if (!recipients) return {};
  std::vector<std::string> shown;
  for (const store::DvRecipient& recipient : *recipients) {
    if (shown.size() == ShownRecipients) {
      shown.push_back(fmt::format("und {} weitere", recipients->size() - ShownRecipients));
      break;
    }
    shown.push_back(RecipientOf(recipient));
  }
  return HeaderText(Join(shown, "; "));
}

void AddLine(MessageContent& content, std::string_view label, std::string value) {
  if (!value.empty()) content.Header.push_back({std::string(label), std::move(value)});
}

// The last place at or before `at` that does not stand within a character.
std::size_t CharacterStart(std::string_view text, std::size_t at) {
  while (at > 0 && (static_cast<unsigned char>(text[at]) & 0xC0U) == 0x80U) --at;
  return at;
}

// Valid UTF-8 with line ends after at most ShownLineBytes.
std::string BreakLongLines(std::string text, MessageContent& content) {
  std::string broken;
  std::size_t done = 0;
  for (std::size_t line = 0, end = 0; line < text.size(); line = end + 1) {
    end = std::min(text.find('\n', line), text.size());
    while (end - line > ShownLineBytes) {
      line = CharacterStart(text, line + ShownLineBytes);
      broken.append(text, done, line - done).push_back('\n');
      done = line;
    }
  }
  if (done == 0) return text;
  if (content.Notice.empty()) content.Notice = BrokenText;
  return broken.append(text, done);
}

// At most `limit` bytes, in lines that can be laid out.
std::string Shortened(std::string text, std::size_t limit, MessageContent& content) {
  if (text.size() > limit) {
    text.resize(CharacterStart(text, limit));
    content.Notice = CutText;
  }
  return BreakLongLines(MakeValidUtf8(text), content);
}

void ReadHeader(store::DvMessageItem& message, MessageContent& content) {
  DvItem& item = message.Item();
  content.Title = TextOf(message.Subject());
  const auto sender = message.Sender();
  std::string from = sender ? RecipientOf(*sender) : std::string();
  if (from.empty()) from = FieldTextOf(item, store::tag::SenderAddress);
  std::string to = RecipientsOf(message.To());
  if (to.empty()) to = TextOf(message.RecipientText());
  if (to.empty()) to = FieldTextOf(item, store::tag::RecipientAddress);
  const auto date = message.Date();
  AddLine(content, "Von:", HeaderText(from));
  AddLine(content, "An:", std::move(to));
  AddLine(content, "Kopie:", RecipientsOf(message.Cc()));
  AddLine(content, "Blindkopie:", RecipientsOf(message.Bcc()));
  AddLine(content, "Datum:", date && !date->IsNull() ? FormatDateTime(*date) : std::string());
  AddLine(content, "Betreff:", content.Title);
  AddLine(content, "Kommentar:", HeaderText(FieldTextOf(item, store::tag::Comment)));
}

void ReadAttachments(DvItem& item, MessageContent& content) {
  const auto count = item.Attachments().Count();
  for (int i = 0; count && i < *count; ++i) {
    const auto attachment = item.Attachments().Item(i);
    if (!attachment) continue;  // the others can still be opened
    content.Attachments.push_back(
        {i, MakeValidUtf8((*attachment)->Name()), (*attachment)->Size(),
         store::TestBit((*attachment)->Flags(), store::attachment_flag::InlineImage)});
  }
}

// Of a mail without a plain text the store gives the HTML as its text.
bool IsHtmlItself(std::string_view text, std::string_view html) {
  constexpr std::size_t compared = 64;
  return text.substr(0, compared) == html.substr(0, compared) || text.empty();
}

void ReadMailBody(store::DvMailItem& mail, MessageContent& content) {
  content.Kind = ContentKind::Text;
  std::string html = FieldTextOf(mail.Item(), store::tag::HtmlRendition);
  const auto text = mail.Text();
  content.Text = Shortened(text ? *text : std::string(), ShownBodyBytes, content);
  if (html.empty()) return;
  if (html.size() <= ShownHtmlBytes && TableDepth(html) <= ShownTableDepth) {
    content.Kind = ContentKind::Html;
    content.Notice.clear();  // it was about the text, which is not shown
    // The store's references are paths, which no toolkit takes for the same thing.
    const std::string location = FieldTextOf(mail.Item(), store::tag::Location);
    content.Html = MakeValidUtf8(location.empty() ? html : ReplaceAll(html, location + ".$", PartScheme));
    return;
  }
  content.Notice = html.size() > ShownHtmlBytes ? LongHtmlText : DeepText;
  if (IsHtmlItself(content.Text, html)) {
    html.resize(std::min(html.size(), ShownHtmlBytes));
    content.Text = BreakLongLines(MakeValidUtf8(TextOfHtml(html)), content);
  }
}

template <typename View, typename Table>
void ReadProperties(View& view, const Table& table, MessageContent& content) {
  content.Kind = ContentKind::Properties;
  for (const auto& property : table) {
    const auto value = view.Get(property.Which);
    if (!value) continue;  // the others can still be shown
    std::string text = store::FieldText(*value);
    if (property.Kind == store::PropertyKind::Flag) text = store::FieldBool(*value) ? "Ja" : "";
    if (property.Kind == store::PropertyKind::Date) {
      const DateTime date = store::FieldDate(*value);
      text = date.IsNull() ? std::string() : FormatDateTime(date);
    }
    if (text.find('\n') != std::string::npos) {
      if (!content.Text.empty()) content.Text += "\n\n";
      content.Text += Shortened(std::move(text), ShownBodyBytes, content);
    } else {
      AddLine(content, fmt::format("{}:", property.Label), HeaderText(text));
    }
  }
  content.Title = HeaderText(FieldTextOf(view.Item(), store::tag::Subject));
}

}  // namespace

Result<MessageContent> ReadMessageContent(store::DvArchive& archive, store::EntryKey key) {
  auto view = archive.ItemView(key);
  if (!view) return Fail(view.error());
  MessageContent content;
  if (store::DvMessageItem* message = (*view)->AsMessage()) {
    ReadHeader(*message, content);
    if (store::DvMailItem* mail = (*view)->AsMail()) ReadMailBody(*mail, content);
    if (store::DvFaxItem* fax = (*view)->AsFax()) {
      content.Kind = ContentKind::Fax;
      content.FilePath = fax->ImagePath();
    }
    if (store::DvVoiceItem* voice = (*view)->AsVoice()) {
      content.Kind = ContentKind::Voice;
      content.FilePath = voice->WavePath();
    }
  } else {
    (void)store::VisitProperties(**view, [&](auto& typed, const auto& table) {  // else there is nothing
      ReadProperties(typed, table, content);
    });
  }
  ReadAttachments((*view)->Item(), content);
  return content;
}

int InlinePartOf(std::string_view reference) {
  if (!reference.starts_with(PartScheme) || reference.size() != PartScheme.size() + 2) return 0;
  const std::string_view digits = reference.substr(PartScheme.size());
  const auto isDigit = [](char character) { return character >= '0' && character <= '9'; };
  return isDigit(digits[0]) && isDigit(digits[1]) ? (digits[0] - '0') * 10 + (digits[1] - '0') : 0;
}

int TableDepth(std::string_view html) {
  int depth = 0, deepest = 0;
  for (std::size_t at = html.find('<'); at != std::string_view::npos; at = html.find('<', at + 1)) {
    const std::string_view tag = html.substr(at + 1, 6);
    if (StartsWithFold(tag, "table")) deepest = std::max(deepest, ++depth);
    if (StartsWithFold(tag, "/table")) depth = std::max(depth - 1, 0);
  }
  return deepest;
}

bool IsExecutableName(std::string_view fileName) {
  const std::size_t point = fileName.rfind('.');
  if (point == std::string_view::npos) return false;
  const std::string extension = ToLower(Trim(fileName.substr(point + 1)));
  return std::find(ExecutableExtensions.begin(), ExecutableExtensions.end(), extension) !=
         ExecutableExtensions.end();
}

}  // namespace velmora::ui
