#include <filesystem>

#include "base/text.h"
#include "store/embedded/mail_address.h"
#include "store/filter.h"
#include "store_fixture.h"

namespace velmora::store::embedded {
namespace {

class OutgoingTest : public StoreFixture {
 protected:
  // A program that writes its arguments, one a line, and its input into files.
  void UseSendmail(int exitStatus) {
    directory_.WriteHostFile(
        "sendmail", "#!/bin/sh\nprintf '%s\\n' \"$@\" > '" + directory_.HostPath("arguments") + "'\ncat > '" +
                        directory_.HostPath("input") + "'\nexit " + std::to_string(exitStatus) + "\n");
    std::filesystem::permissions(directory_.HostPath("sendmail"), std::filesystem::perms::owner_all);
    auto site = Site();
    ASSERT_TRUE(site.SetValue(site_value::Sendmail, directory_.HostPath("sendmail")));
  }
  bool SendmailRan() const { return std::filesystem::exists(directory_.HostPath("arguments")); }

  std::unique_ptr<DvItemView> NewMail() {
    auto archive = anna_->GetSpecialArchive(special::Outgoing);
    auto item = (*archive)->CreateItem(2);
    EXPECT_TRUE(item);
    auto& mail = *(*item)->AsMail();
    EXPECT_TRUE(mail.SetSubject("Grüße"));
    EXPECT_TRUE(mail.SetText("Guten Tag"));
    EXPECT_TRUE(mail.SetTextFormat(0));
    return std::move(*item);
  }
  // Submits the mail and gives its send status as another session reads it.
  std::int64_t Submit(DvMailItem& mail) {
    const auto submitted = mail.Submit(1);
    EXPECT_TRUE(submitted) << submitted.error().Text;
    const auto again = SignOn("anna");
    const auto entries = (*again->GetSpecialArchive(special::Outgoing))->GetEntries(filter_preset::None);
    EXPECT_EQ((*entries)->Count(), 1);
    const auto status = (*(*entries)->Item(0))->Fields().Get(tag::SendStatus);
    return FieldNumber(*status);
  }
  int MessagesInBertsInbox() { return *(*SignOn("bert")->GetSpecialArchive(special::Inbox))->MessageCount(); }
};

TEST_F(OutgoingTest, ReachesUsersOfTheStoreInAnyCaseAndOnce) {
  const auto item = NewMail();
  auto& mail = *item->AsMail();
  ASSERT_TRUE(mail.AddTo({"", "BERT@example.org", "Mail"}));
  ASSERT_TRUE(mail.AddCc({"", "bert@Example.org", "Mail"}));
  EXPECT_EQ(Submit(mail), 0);
  ASSERT_EQ(MessagesInBertsInbox(), 1);
  const auto bert = SignOn("bert");
  const auto entries = (*bert->GetSpecialArchive(special::Inbox))->GetEntries(filter_preset::None);
  const auto received = (*entries)->Item(0);
  EXPECT_EQ(FieldText(*(*received)->Fields().Get(tag::Subject)), "Grüße");
  EXPECT_EQ(FieldText(*(*received)->Fields().Get(tag::SenderAddress)), "anna@example.org");
  EXPECT_FALSE(FieldBool(*(*received)->Fields().Get(tag::Viewed)));
}

TEST_F(OutgoingTest, HandsOthersToTheProgram) {
  UseSendmail(0);
  const auto item = NewMail();
  auto& mail = *item->AsMail();
  ASSERT_TRUE(mail.AddTo({"Carl", "carl@example.net", "Mail"}));
  ASSERT_TRUE(mail.AddTo({"", "bert@example.org", "Mail"}));
  ASSERT_TRUE(mail.AddBcc({"", "dora@example.net", "Mail"}));
  EXPECT_EQ(Submit(mail), 0);
  EXPECT_EQ(directory_.ReadHostFile("arguments"),
            "-oi\n-f\nanna@example.org\n--\ncarl@example.net\ndora@example.net\n");
  const std::string message = directory_.ReadHostFile("input");
  EXPECT_NE(message.find("carl@example.net"), std::string::npos);
  EXPECT_EQ(message.find("dora@example.net"), std::string::npos) << "a blind copy is not told";
  EXPECT_NE(message.find("Guten Tag"), std::string::npos);
  EXPECT_EQ(MessagesInBertsInbox(), 1);
}

TEST_F(OutgoingTest, WithoutAProgramTheEntryFailsAndTheOthersGetTheirMail) {
  const auto item = NewMail();
  auto& mail = *item->AsMail();
  ASSERT_TRUE(mail.AddTo({"", "carl@example.net", "Mail"}));
  ASSERT_TRUE(mail.AddTo({"", "bert@example.org", "Mail"}));
  EXPECT_EQ(Submit(mail), 43);
  EXPECT_EQ(MessagesInBertsInbox(), 1);
}

TEST_F(OutgoingTest, AFailingOrMissingProgramFailsTheEntry) {
  UseSendmail(75);
  const auto item = NewMail();
  ASSERT_TRUE(item->AsMail()->AddTo({"", "carl@example.net", "Mail"}));
  EXPECT_EQ(Submit(*item->AsMail()), 43);
  EXPECT_TRUE(SendmailRan());
}

TEST_F(OutgoingTest, AMissingProgramFailsTheEntry) {
  auto site = Site();
  ASSERT_TRUE(site.SetValue(site_value::Sendmail, directory_.HostPath("missing")));
  const auto item = NewMail();
  ASSERT_TRUE(item->AsMail()->AddTo({"", "carl@example.net", "Mail"}));
  EXPECT_EQ(Submit(*item->AsMail()), 43);
}

TEST_F(OutgoingTest, AMailWithoutRecipientsFails) {
  UseSendmail(0);
  const auto item = NewMail();
  EXPECT_EQ(Submit(*item->AsMail()), 43);
  EXPECT_FALSE(SendmailRan());
}

TEST_F(OutgoingTest, AddressesThatAreOptionsOrLinesNeverReachTheProgram) {
  UseSendmail(0);
  for (const auto* address : {"-oQ/tmp/x", "-bs"}) {
    EXPECT_FALSE(IsPlainAddress(address));
  }
  const auto item = NewMail();
  auto& mail = *item->AsMail();
  ASSERT_TRUE(mail.AddTo({"", "-oQ/tmp/x", "Mail"}));
  ASSERT_TRUE(mail.AddTo({"", "eve@example.net\r\nBcc: x@example.net", "Mail"}));
  ASSERT_TRUE(mail.AddTo({"", "carl@example.net", "Mail"}));
  EXPECT_EQ(Submit(mail), 43);
  EXPECT_EQ(directory_.ReadHostFile("arguments"), "-oi\n-f\nanna@example.org\n--\ncarl@example.net\n");
}

TEST_F(OutgoingTest, ASenderThatIsAnOptionNeverReachesTheProgram) {
  UseSendmail(0);
  const auto item = NewMail();
  auto& mail = *item->AsMail();
  ASSERT_TRUE(mail.SetSender("-oQ/tmp/x"));
  ASSERT_TRUE(mail.AddTo({"", "carl@example.net", "Mail"}));
  EXPECT_EQ(Submit(mail), 43);
  EXPECT_FALSE(SendmailRan());
}

TEST_F(OutgoingTest, NoValueAddsAHeaderField) {
  UseSendmail(0);
  const auto item = NewMail();
  auto& mail = *item->AsMail();
  ASSERT_TRUE(mail.SetSubject("Hallo\r\nX-Injected: 1\r\n\r\nKörper"));
  ASSERT_TRUE(mail.AddTo({"Carl\r\nX-Injected: 2", "carl@example.net", "Mail"}));
  EXPECT_EQ(Submit(mail), 0);
  const std::string message = directory_.ReadHostFile("input");
  EXPECT_EQ(message.find("\nX-Injected"), std::string::npos) << message;
}

TEST(MailAddressTest, PlainAddresses) {
  for (const auto* address : {"a@b.de", "root", "jürgen@example.org", "a+b@c.d", "o'neill@example.org"}) {
    EXPECT_TRUE(IsPlainAddress(address)) << address;
  }
  for (const auto* address :
       {"", "-f", "a b@c.d", "a@b,c@d", "<a@b>", "a@b\n", "a@b\t", "a\x7F@b", "a\xFF@b"}) {
    EXPECT_FALSE(IsPlainAddress(address)) << address;
  }
  EXPECT_FALSE(IsPlainAddress(std::string_view("a@b\0c", 5)));
}

}  // namespace
}  // namespace velmora::store::embedded
