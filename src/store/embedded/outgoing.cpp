#include "store/embedded/outgoing.h"

#include <fmt/core.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "base/paths.h"
#include "base/text.h"
#include "platform/host.h"
#include "store/embedded/mail_address.h"
#include "store/vocabulary.h"

namespace velmora::store::embedded {
namespace {

constexpr std::int64_t MailServerUnreachable = 43;  // a send status, see store/send_status.cpp

Result<std::vector<std::string>> AllRecipients(DvMailItem& mail) {
  std::vector<std::string> addresses;
  for (const auto& list : {mail.To(), mail.Cc(), mail.Bcc()}) {
    if (!list) return Fail(list.error());
    for (const auto& recipient : *list) addresses.emplace_back(Trim(recipient.Address));
  }
  return addresses;
}

struct Distribution {
  std::vector<int> Users;           // ids, each once
  std::vector<std::string> Others;  // for the sendmail program
  bool HasRefused = false;          // an address that cannot be one
};

Distribution Distribute(const std::vector<std::string>& addresses, const std::vector<UserRecord>& users) {
  Distribution result;
  for (const auto& address : addresses) {
    if (!IsPlainAddress(address)) {
      result.HasRefused = true;
      continue;
    }
    bool isLocal = false;
    for (const auto& user : users) {
      if (!EqualsFold(user.MailAddress, address)) continue;
      isLocal = true;
      if (std::ranges::find(result.Users, user.Id) == result.Users.end()) result.Users.push_back(user.Id);
    }
    if (!isLocal) result.Others.push_back(address);
  }
  return result;
}

bool DeliverToUsers(StoreSession& session, const std::vector<int>& users, const std::string& message) {
  bool delivered = true;
  DeliverOptions options;
  options.Received = session.Clock.Now();
  options.Mailbox = session.User.LoginName;
  for (const int user : users) {
    const auto inbox = session.Layout.SpecialDirectory(special::Inbox, user);
    const auto key = inbox ? session.Messages.Deliver(*inbox, message, options) : Result<EntryKey>();
    delivered = inbox && key && delivered;
    if (inbox && key) LogDelivery(session, *inbox, *key, options.Mailbox);
  }
  return delivered;
}

bool HandToProgram(StoreSession& session, const std::string& sender,
                   const std::vector<std::string>& recipients, const std::string& message) {
  if (recipients.empty()) return true;
  const auto program = session.Site.Value(site_value::Sendmail);
  if (!program || program->empty() || !IsPlainAddress(sender)) return false;
  std::vector<std::string> arguments{*program, "-oi", "-f", sender, "--"};
  arguments.insert(arguments.end(), recipients.begin(), recipients.end());
  const auto result = platform::RunProcess(arguments, message);
  return result && result->ExitStatus == 0;
}

Result<std::string> SenderOf(StoreSession& session, DvMailItem& mail) {
  auto sender = mail.Sender();
  if (!sender) return Fail(sender.error());
  return sender->Address.empty() ? session.User.MailAddress : sender->Address;
}

// The entry's source where it has one, else a message made of its fields.
Result<std::string> MessageBytes(StoreSession& session, DvItem& item, EntryKey key) {
  const auto location = item.Fields().Get(tag::Location);
  if (!location) return Fail(location.error());
  const std::string directory = StripBackslash(DirectoryOf(FieldText(*location)));
  const std::string source = session.Messages.SourcePath(directory, key);
  return source.empty() ? session.Messages.ComposeSource(directory, key)
                        : session.FileSystem.ReadFile(source);
}

void LogSending(StoreSession& session, DvMailItem& mail, EntryKey key) {
  const auto location = mail.Item().Fields().Get(tag::Location);
  auto entry = LogEntryOf(mail.Item(), session.Clock.Now());
  entry.Comment = fmt::format("Benutzer: {}\r\nArchiv: {}\r\nEintrag: {}\r\n", session.User.LoginName,
                              StripBackslash(DirectoryOf(FieldText(location.value_or(FieldValue())))), key);
  session.Logs.NoteSent(std::move(entry));
}

Result<bool> Send(StoreSession& session, DvMailItem& mail, EntryKey key) {
  const auto addresses = AllRecipients(mail);
  if (!addresses) return Fail(addresses.error());
  const auto users = session.Site.Users();
  if (!users) return Fail(users.error());
  const auto sender = SenderOf(session, mail);
  if (!sender) return Fail(sender.error());
  const auto message = MessageBytes(session, mail.Item(), key);
  if (!message) return Fail(message.error());
  const auto distribution = Distribute(*addresses, *users);
  const bool delivered = DeliverToUsers(session, distribution.Users, *message);
  const bool handedOn = HandToProgram(session, *sender, distribution.Others, *message);
  return delivered && handedOn && !addresses->empty() && !distribution.HasRefused;
}

}  // namespace

Status SubmitMail(StoreSession& session, DvMailItem& mail, EntryKey key) {
  const auto sent = Send(session, mail, key);
  const bool isSent = sent && *sent;
  auto& item = mail.Item();
  if (const auto set = item.Fields().Set(tag::SendStatus,
                                         isSent ? std::int64_t{send_status::Sent} : MailServerUnreachable);
      !set)
    return set;
  if (const auto updated = item.Update(); !updated) return updated;
  const auto committed = session.Messages.Commit();
  LogSending(session, mail, key);
  session.Logs.Write();
  if (!committed) return committed;
  return sent ? Status() : Fail(sent.error());
}

void LogDelivery(StoreSession& session, std::string_view directory, EntryKey key, std::string_view origin) {
  const auto item = session.Messages.GetEntry(directory, key);
  if (!item) return;  // gone again already
  auto entry = LogEntryOf(**item, session.Clock.Now());
  entry.Comment = fmt::format("Quelle: {}\r\nArchiv: {}\r\nEintrag: {}\r\n", origin, directory, key);
  session.Logs.NoteReceived(std::move(entry));
}

}  // namespace velmora::store::embedded
