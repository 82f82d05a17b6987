// Voice mails: the recording with its page, descriptor and comment, or parts of them alone.
#include "mailarchive/export_fixture.h"
#include "store/vocabulary.h"

namespace velmora::mailarchive {
namespace {

class VoiceExportTest : public ExportTest {
 protected:
  VoiceExportTest() { options.SaveAttachments = true; }

  test::FakeMail& AddCall(const std::string& subject, const std::string& recording = "RIFFWAVE") {
    test::FakeMail& call = AddContentEntry(store::item_type::Voice, subject, recording);
    call.Fields[store::tag::SenderAddress] = "0171 22";
    call.Fields[store::tag::RecipientAddress] = "30";
    return call;
  }
};

TEST_F(VoiceExportTest, PageDescriptorAndRecording) {
  test::FakeMail& call = AddCall(" Rückruf ");
  RunMail(call);
  const std::string base = "Rueckruf_Call-from-0171 22-to-30";
  EXPECT_EQ(Names(), (Strings{base + ".add", base + ".htm", "VoiceMails"}));
  EXPECT_EQ(ReadTarget("VoiceMails\\" + base + ".wav"), "RIFFWAVE");
  EXPECT_TRUE(HasTarget("VoiceMails\\VelmoraDataArc.vla"));
  EXPECT_EQ(files.GetEntry(Target("VoiceMails\\" + base + ".wav"))->Modified, call.Date);
  EXPECT_EQ(Part(base + ".htm", "T"),
            "R\xFC"
            "ckruf_Call-from-0171 22-to-30");
  EXPECT_EQ(Part(base + ".htm", "S"),
            "R\xFC"
            "ckruf_Call-from-0171 22-to-30");
  EXPECT_EQ(Part(base + ".htm", "F"), "0171 22");
  EXPECT_EQ(Part(base + ".htm", "TO"), "30");
  EXPECT_EQ(Part(base + ".htm", "D"), "29.02.2024 13:14:15");
  EXPECT_EQ(Part(base + ".htm", "X"),
            "<a  target=\"_blank\" href=\"VoiceMails/" + base + ".wav\">VoiceMail</a><br>");
  EXPECT_EQ(ReadTarget(base + ".add"),
            "Sortaddr=0171 22\r\nSubject=R\xFC"
            "ckruf_Call-from-0171 22-to-30\r\nDate=29.02.2024 13:14:15\r\n"
            "From=0171 22\r\nTo=30\r\nFlags=8\r\nMailArcEntry=" +
                base +
                ".htm\r\n"
                "MailArcAdd=" +
                base + ".add\r\nVOICE=VoiceMails\\" + base + ".wav\r\n");
  EXPECT_EQ(run.counters.VoiceMails, 1);
  EXPECT_EQ(run.counters.Attachments, 0);
  EXPECT_EQ(Log(), "");
}

TEST_F(VoiceExportTest, UnknownCallerIsNamedSo) {
  test::FakeMail& call = AddCall("x");
  call.Fields[store::tag::SenderAddress] = "";
  RunMail(call);
  EXPECT_EQ(Value("x_Call-from-unbekannt-to-30.add", "From"), "unbekannt");
}

TEST_F(VoiceExportTest, RecipientFallsBackToTheRecipientText) {
  test::FakeMail& call = AddCall("x");
  call.Fields[store::tag::RecipientAddress] = "";
  call.Fields[store::tag::RecipientText] = "Zentrale";
  RunMail(call);
  EXPECT_EQ(Value("x_Call-from-0171 22-to-Zentrale.add", "To"), "Zentrale");
}

// The name of the page is made with the recording's, so without it the page fails: one error per voice mail.
TEST_F(VoiceExportTest, WithoutAttachmentsThereIsNoPageAndOneError) {
  options.SaveAttachments = false;
  RunMail(AddCall("x"));
  EXPECT_EQ(Names(), Strings{"VoiceMails"});
  EXPECT_EQ(Names("VoiceMails"), Strings{});
  EXPECT_EQ(Log(),
            " Fehler: 52 - Ung\xFCltiger Dateiname: Sprachnachrichten werden nur mit ihren Attachments "
            "gespeichert -> " +
                Target("") + "\r\n");
  EXPECT_EQ(StatusLine(), "Mail:0/Att:0/Fax:0/Voice:0/Addr:0/Err:1");
}

TEST_F(VoiceExportTest, MoveKeepsAVoiceMailWithoutAPage) {
  options.Mode = CopyMode::Move;
  options.SaveAttachments = false;
  RunMail(AddCall("x"));
  EXPECT_EQ(store.Deletions, Strings{});
}

TEST_F(VoiceExportTest, CommentHasALinkAndNoKeyInTheDescriptor) {
  options.SaveComments = true;
  test::FakeMail& call = AddCall("x");
  call.Fields[store::tag::Comment] = "Bitte zurückrufen";
  RunMail(call);
  const std::string base = "x_Call-from-0171 22-to-30";
  EXPECT_EQ(ReadTarget("Comments\\" + base + ".txt"),
            "Bitte zur\xFC"
            "ckrufen");
  EXPECT_EQ(Part(base + ".htm", "M"), "<a href=\"Comments/" + base + ".txt\">Kommentar</a><br>");
  EXPECT_EQ(Value(base + ".add", "COMMENT"), "none");
}

TEST_F(VoiceExportTest, EmptyCommentLeavesNothing) {
  options.SaveComments = true;
  RunMail(AddCall("x"));
  EXPECT_EQ(Part("x_Call-from-0171 22-to-30.htm", "M"), "");
}

// Mails and faxes lose the variable here; forms made for voice mails hide what stays of it.
TEST_F(VoiceExportTest, WithoutCommentsTheVariableStaysInThePage) {
  RunMail(AddCall("x"));
  EXPECT_EQ(Part("x_Call-from-0171 22-to-30.htm", "M"), "%VELMORA_MSGCOMMENT%");
}

TEST_F(VoiceExportTest, CallsOfOneTitleAreNumbered) {
  options.SaveComments = true;
  test::FakeMail& first = AddCall("x", "1");
  test::FakeMail& second = AddCall("x", "2");
  first.Fields[store::tag::Comment] = "eins";
  second.Fields[store::tag::Comment] = "zwei";
  RunMails({first.Key, second.Key});
  const std::string base = "x_Call-from-0171 22-to-30";
  EXPECT_EQ(ReadTarget("VoiceMails\\" + base + "1.wav"), "2");
  EXPECT_EQ(Value(base + "1.add", "VOICE"), "VoiceMails\\" + base + "1.wav");
  EXPECT_EQ(ReadTarget("Comments\\" + base + "1.txt"), "zwei");
}

TEST_F(VoiceExportTest, BadStatusDoesNotKeepAVoiceMailBack) {
  test::FakeMail& call = AddCall("x");
  call.Fields[store::tag::SendStatus] = std::int64_t{21};
  RunMail(call);
  EXPECT_TRUE(HasTarget("x_Call-from-0171 22-to-30.htm"));
  EXPECT_EQ(Log(),
            " Warnung: belegt - DvISE Mailstatus Error (trotzdem archiviert) -> "
            "/Archive/x_Call-from-0171 22-to-30\r\n");
}

TEST_F(VoiceExportTest, OnlyAttachmentsSaveTheRecordingInTheDirectoryItself) {
  options.OnlyAttachments = true;
  RunMails({AddCall("x", "1").Key, AddCall("x", "2").Key});
  EXPECT_EQ(Names(), (Strings{"x_Call-from-0171 22-to-30.wav", "x_Call-from-0171 22-to-301.wav"}));
  EXPECT_EQ(run.counters.VoiceMails, 2);
}

TEST_F(VoiceExportTest, OnlyCommentsCountAsVoiceMails) {
  options.OnlyComments = true;
  test::FakeMail& call = AddCall("x");
  call.Fields[store::tag::Comment] = "Kommentar";
  RunMail(call);
  EXPECT_EQ(Names(), Strings{"x_Call-from-0171 22-to-30.txt"});
  EXPECT_EQ(run.counters.VoiceMails, 1);
}

// Only-originals says nothing of voice mails, so they are written as ever.
TEST_F(VoiceExportTest, OnlyOriginalsWriteTheWholePage) {
  options.OnlyOriginals = true;
  RunMail(AddCall("x"));
  EXPECT_TRUE(HasTarget("x_Call-from-0171 22-to-30.htm"));
}

TEST_F(VoiceExportTest, VanishedRecordingIsLoggedAndThePageWritten) {
  options.Mode = CopyMode::Move;
  test::FakeMail& call = AddCall("x");
  ASSERT_TRUE(files.DeleteFile(call.ContentPath, false));
  RunMail(call);
  EXPECT_TRUE(HasTarget("x_Call-from-0171 22-to-30.htm"));
  EXPECT_EQ(run.counters.VoiceMails, 0);
  EXPECT_EQ(run.counters.Errors, 1);
  EXPECT_EQ(store.Deletions, Strings{});
}

TEST_F(VoiceExportTest, MoveDeletesWhatWasWritten) {
  options.Mode = CopyMode::Move;
  RunMail(AddCall("x"));
  EXPECT_EQ(store.Deletions, Strings{"mail 1"});
}

TEST_F(VoiceExportTest, MoveOfOnlyAttachmentsDeletesWhatWasSaved) {
  options.Mode = CopyMode::Move;
  options.OnlyAttachments = true;
  faulty.FailingPart = "y_Call";
  RunMails({AddCall("x").Key, AddCall("y").Key});
  EXPECT_EQ(store.Deletions, Strings{"mail 1"});
}

TEST_F(VoiceExportTest, MoveOfOnlyCommentsDeletesNothing) {
  options.Mode = CopyMode::Move;
  options.OnlyComments = true;
  test::FakeMail& call = AddCall("x");
  call.Fields[store::tag::Comment] = "Kommentar";
  RunMail(call);
  EXPECT_EQ(store.Deletions, Strings{});
}

}  // namespace
}  // namespace velmora::mailarchive
