#include "startup/result_mail.h"

#include <fmt/format.h>

#include <memory>

#include "base/text.h"
#include "store/errors.h"
#include "store/item.h"
#include "store/vocabulary.h"

namespace velmora::startup {
namespace {

constexpr int NewMailType = 2;
constexpr int PlainTextFormat = 0;
constexpr int SubmitAtOnce = 1;

std::vector<std::string> TrimmedPieces(std::string_view list) {
  std::vector<std::string> pieces;
  for (const std::string& piece : Split(list, ",")) {
    if (!Trim(piece).empty()) {
      pieces.emplace_back(Trim(piece));
    }
  }
  return pieces;
}

// Runs the steps until one fails.
class Steps {
 public:
  void Do(const Status& done) {
    if (result_ && !done) {
      result_ = done;
    }
  }
  Status Result() const { return result_; }

 private:
  Status result_;
};

Result<std::unique_ptr<store::DvItemView>> CreateMail(store::Session& session) {
  Result<std::shared_ptr<store::DvArchive>> outgoing =
      session.Account->GetSpecialArchive(store::special::Outgoing);
  if (!outgoing) {
    return Fail(outgoing.error());
  }
  return (*outgoing)->CreateItem(NewMailType);
}

// A store that sends at once knows already what has become of the mail.
Status RequireSent(store::DvMailItem& mail) {
  const Result<int> code = mail.SendStatus();
  if (!code) {
    return {};
  }
  const store::SendStatusText status = store::SendStatus(*code);
  return status.IsFailure
             ? Fail(store::store_error::Failed,
                    fmt::format("Die Ergebnismail steht im Ausgang, wurde aber nicht zugestellt ({})",
                                status.German))
             : Status{};
}

}  // namespace

Status SendResultMail(store::Session& session, std::string_view to, std::string_view from,
                      std::string_view subject, std::string_view body, std::string_view attachments) {
  const std::vector<std::string> addresses = TrimmedPieces(to);
  if (addresses.empty()) {
    return Fail(store::store_error::Failed, "Die Ergebnismail hat keinen Empfänger");
  }
  const Result<std::unique_ptr<store::DvItemView>> view = CreateMail(session);
  if (!view) {
    return Fail(view.error());
  }
  store::DvMailItem* mail = (*view)->AsMail();
  if (mail == nullptr) {
    return Fail(store::store_error::WrongKind, "Das Ausgangsarchiv nimmt keine Mail an");
  }
  Steps steps;
  for (const std::string& address : addresses) {
    steps.Do(mail->AddTo({" ", address, "Mail"}));
  }
  for (const std::string& path : TrimmedPieces(attachments)) {
    steps.Do(mail->Item().Attachments().Add(path, 0));
  }
  if (!from.empty()) {
    steps.Do(mail->SetSender(from));
  }
  steps.Do(mail->SetSubject(BlankControlCharacters(subject)));
  steps.Do(mail->SetText(body));
  steps.Do(mail->SetTextFormat(PlainTextFormat));
  if (steps.Result()) {
    steps.Do(mail->Submit(SubmitAtOnce));
  }
  if (steps.Result()) {
    steps.Do(RequireSent(*mail));
  }
  return steps.Result();
}

}  // namespace velmora::startup
