#include "store/embedded/mail_item.h"

#include "base/line_ends.h"
#include "store/errors.h"

namespace velmora::store::embedded {
namespace {

// What the indicator says of an HTML mail.
constexpr std::string_view HtmlMail = "HTML";

}  // namespace

Result<std::string> MailItem::Text() { return Message().Text(tag::PlainText); }

Result<std::string> MailItem::HtmlIndicator() {
  const auto hasHtml = Message().HasText(tag::HtmlText);
  if (!hasHtml) return Fail(hasHtml.error());
  return std::string(*hasHtml ? HtmlMail : "");
}

Status MailItem::SetText(std::string_view text) {
  Message().SetText(tag::PlainText, WithCrLf(text));
  return {};
}

Status MailItem::SetTextFormat(int format) {
  if (format == 0) return {};
  return Fail(store_error::WrongKind, "Neue Nachrichten haben nur reinen Text");
}

Status MailItem::Submit(int) {
  if (const auto stored = Message().Update(); !stored) return stored;
  return handler_ ? handler_(*this, Message().Key()) : Status{};
}

}  // namespace velmora::store::embedded
