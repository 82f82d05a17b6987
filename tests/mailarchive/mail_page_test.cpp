// The whole export of one mail: page, descriptor, components.
#include "mailarchive/export_fixture.h"

namespace velmora::mailarchive {
namespace {

class MailPageTest : public ExportTest {};

TEST_F(MailPageTest, PlainMailFillsTheFormInItsOrder) {
  test::FakeMail& mail = store.AddMail(*archive, "  Angebot  ");
  mail.Sender = "hans@example.com";
  mail.Recipients = "info@example.com";
  mail.Text = "Zeile 1\r\nZeile 2";
  options.CopyRight = "© Firma";
  options.Comment = "a\r\nb";
  RunMail(mail);
  EXPECT_EQ(ReadTarget("Angebot.htm"),
            "T[Angebot]S[Angebot]F[hans@example.com]TO[info@example.com]D[29.02.2024 13:14:15]"
            "A[31.12.2026 23:59:00]R[&copy;&nbsp;Firma]K[a<BR>b]C[Zeile 1<br>\r\nZeile 2]M[]E[]L[]"
            "V[%VELMORA_VERSION%]");
  EXPECT_EQ(run.counters.Mails, 1);
  EXPECT_EQ(run.counters.Entries, 1);
  EXPECT_EQ(Log(), "");
}

TEST_F(MailPageTest, DescriptorOfAPlainMail) {
  test::FakeMail& mail = store.AddMail(*archive, "a=b");
  mail.Sender = "hans@example.com";
  mail.Recipients = "info@example.com";
  RunMail(mail);
  EXPECT_EQ(
      ReadTarget("a=b.add"),
      "Sortaddr=hans@example.com\r\nSubject=a=b\r\nDate=29.02.2024 13:14:15\r\nFrom=hans@example.com\r\n"
      "To=info@example.com\r\nFlags=2\r\nMailArcEntry=a=b.htm\r\nMailArcAdd=a=b.add\r\nHTML=\r\nEML=\r\n"
      "SMTP=\r\nCOMMENT=\r\n");
}

TEST_F(MailPageTest, OutBoxSortsByRecipient) {
  archive->DisplayType = 2;
  test::FakeMail& mail = store.AddMail(*archive, "x");
  mail.Sender = "hans@example.com";
  mail.Recipients = "info@example.com";
  RunMail(mail);
  EXPECT_EQ(Value("x.add", "Sortaddr"), "info@example.com");
  EXPECT_EQ(Value("x.add", "Flags"), "3");
}

TEST_F(MailPageTest, RecipientFallsBackToTheFieldThenToTheOtherRecipients) {
  test::FakeMail& byField = store.AddMail(*archive, "a");
  byField.Fields[store::tag::RecipientText] = std::string("Feld");
  byField.OtherRecipients = "Andere";
  test::FakeMail& byOthers = store.AddMail(*archive, "b");
  byOthers.OtherRecipients = "Andere";
  RunMails({byField.Key, byOthers.Key});
  EXPECT_EQ(Part("a.htm", "TO"), "Feld");
  EXPECT_EQ(Part("b.htm", "TO"), "Andere");
}

TEST_F(MailPageTest, EmptySubjectTakesTheSenderThenTheRecipient) {
  test::FakeMail& withSender = store.AddMail(*archive, " ");
  withSender.Sender = "hans";
  withSender.Recipients = "info";
  test::FakeMail& withoutSender = store.AddMail(*archive, "");
  withoutSender.Recipients = "info";
  RunMails({withSender.Key, withoutSender.Key});
  EXPECT_EQ(Value("hans.add", "Subject"), "hans");
  EXPECT_EQ(Value("info.add", "Subject"), "info");
}

TEST_F(MailPageTest, MailWithoutSubjectSenderAndRecipientIsDotHtm) {
  RunMail(store.AddMail(*archive, ""));
  EXPECT_EQ(Names(), (Strings{".add", ".htm"}));
  EXPECT_EQ(Value(".add", "MailArcEntry"), ".htm");
  EXPECT_EQ(Value(".add", "MailArcAdd"), ".add");
}

TEST_F(MailPageTest, EqualSubjectsAreNumberedWithAllTheirComponents) {
  options.SaveComments = true;
  std::vector<store::EntryKey> mails;
  for (int i = 0; i < 2; ++i) {
    test::FakeMail& mail = store.AddMail(*archive, "x");
    mail.Fields[store::tag::Comment] = "Kommentar " + std::to_string(i);
    mails.push_back(mail.Key);
  }
  RunMails(mails);
  EXPECT_EQ(Names(), (Strings{"Comments", "x.add", "x.htm", "x1.add", "x1.htm"}));
  EXPECT_EQ(ReadTarget("Comments\\x.txt"), "Kommentar 0");
  EXPECT_EQ(ReadTarget("Comments\\x1.txt"), "Kommentar 1");
  EXPECT_EQ(Value("x1.add", "COMMENT"), "Comments\\x1.txt");
}

TEST_F(MailPageTest, WithoutNumberingAnOlderFileIsOverwritten) {
  options.NoDuplicates = false;
  test::FakeMail& first = store.AddMail(*archive, "x");
  first.Text = "alt";
  test::FakeMail& second = store.AddMail(*archive, "x");
  second.Text = "neu";
  RunMails({first.Key, second.Key});
  EXPECT_EQ(Names(), (Strings{"x.add", "x.htm"}));
  EXPECT_EQ(Part("x.htm", "C"), "neu");
  EXPECT_EQ(run.counters.Mails, 2);
}

TEST_F(MailPageTest, SubjectOfSeventyCharactersIsCutBeforeItIsNumbered) {
  const std::string subject(70, 'a');
  RunMails({store.AddMail(*archive, subject).Key, store.AddMail(*archive, subject).Key});
  const std::string base(59, 'a');
  EXPECT_EQ(Names(), (Strings{base + ".add", base + ".htm", base + "1.add", base + "1.htm"}));
}

TEST_F(MailPageTest, HtmlMailHasItsBodyInAFileOfItsOwn) {
  test::FakeMail& mail = store.AddMail(*archive, "Bericht");
  mail.Html = "<html>";
  mail.Fields[store::tag::HtmlRendition] = std::string("<p>Grüße – Привет</p>");
  RunMail(mail);
  EXPECT_EQ(Names(), (Strings{"Bericht_inf.add", "Bericht_inf.htm", "HTMLMails"}));
  EXPECT_EQ(ReadTarget("HTMLMails\\Bericht.htm"),
            "<p>Gr&uuml;&szlig;e &#150; &#1055;&#1088;&#1080;&#1074;&#1077;&#1090;</p>");
  EXPECT_TRUE(HasTarget("HTMLMails\\VelmoraDataArc.vla"));
  // The two blanks behind the first letter belong to the format.
  EXPECT_NE(ReadTarget("Bericht_inf.htm")
                .find("C[<a  target=\"_blank\" href=\"HTMLMails/Bericht.htm\">[Bericht]</a><br>\r\n]"),
            std::string::npos);
  EXPECT_EQ(Value("Bericht_inf.add", "HTML"), "HTMLMails\\Bericht.htm");
  EXPECT_EQ(Value("Bericht_inf.add", "MailArcEntry"), "Bericht_inf.htm");
}

TEST_F(MailPageTest, HtmlLinkBeginsWithASlashWithoutSeparateFolders) {
  // The prefix is empty and gets its closing "/" all the same: existing mail archives look so.
  options.SeparateAttachmentsFolder = false;
  test::FakeMail& mail = store.AddMail(*archive, "x");
  mail.Html = "<html>";
  mail.Fields[store::tag::HtmlRendition] = std::string("body");
  RunMail(mail);
  EXPECT_EQ(Names(), (Strings{"x.htm", "x_inf.add", "x_inf.htm"}));
  EXPECT_NE(ReadTarget("x_inf.htm").find("href=\"/x.htm\""), std::string::npos);
  EXPECT_EQ(Value("x_inf.add", "HTML"), "x.htm");
  EXPECT_FALSE(HasTarget("VelmoraDataArc.vla"));
}

TEST_F(MailPageTest, HtmlBodyWithoutAttachmentsIsWrittenToo) {
  options.SaveAttachments = true;
  test::FakeMail& mail = store.AddMail(*archive, "x");
  mail.Html = "<html>";
  mail.Fields[store::tag::HtmlRendition] = std::string("body");
  RunMail(mail);
  EXPECT_EQ(ReadTarget("HTMLMails\\x.htm"), "body");
  EXPECT_FALSE(HasTarget("Attachments"));  // a folder exists only when something went into it
}

TEST_F(MailPageTest, InlineImageIsReferencedBesideTheBody) {
  options.SaveAttachments = true;
  test::FakeMail& mail = store.AddMail(*archive, "x");
  mail.Html = "<html>";
  mail.Fields[store::tag::Location] = std::string(R"(\\SERVER\DAVID\ARCHIVE\A1B2)");
  mail.Fields[store::tag::HtmlRendition] = std::string(R"(<img src="\\SERVER\DAVID\ARCHIVE\A1B2.$01">)");
  mail.Attachments = {{"logo.gif", "GIF"}};
  RunMail(mail);
  EXPECT_EQ(ReadTarget("HTMLMails\\x.htm"), R"(<img src="../Attachments/logo.gif">)");
}

TEST_F(MailPageTest, WithoutAttachmentsTheHtmlBodyKeepsItsReferences) {
  test::FakeMail& mail = store.AddMail(*archive, "x");
  mail.Html = "<html>";
  mail.Fields[store::tag::Location] = std::string("LOC");
  mail.Fields[store::tag::HtmlRendition] = std::string("LOC.$01");
  mail.Attachments = {{"logo.gif", "GIF"}};
  RunMail(mail);
  EXPECT_EQ(ReadTarget("HTMLMails\\x.htm"), "LOC.$01");
  EXPECT_EQ(Value("x_inf.add", "Attachments"), "none");
  EXPECT_EQ(Part("x_inf.htm", "L"), "");
}

TEST_F(MailPageTest, AttachmentsAreSavedLinkedAndNamedInTheDescriptor) {
  options.SaveAttachments = true;
  test::FakeMail& mail = store.AddMail(*archive, "x");
  mail.Attachments = {{"Rechnung Nr. 5.pdf", "A"}, {"Maße.50%.PNG", "B"}};
  RunMail(mail);
  EXPECT_EQ(Names("Attachments"), (Strings{"Masse_50%.PNG", "Rechnung Nr_ 5.pdf"}));
  EXPECT_EQ(Part("x.htm", "L"),
            "<a  target=\"_blank\" href=\"Attachments/Rechnung Nr_ 5.pdf\">Rechnung Nr_ 5.pdf</a><br>\r\n"
            "<a  target=\"_blank\" href=\"Attachments/Masse_50%25.PNG\">Masse_50%.PNG</a><br>\r\n");
  EXPECT_TRUE(ReadTarget("x.add").ends_with(
      "COMMENT=\r\nAttachments=\"Attachments\\Rechnung Nr_ 5.pdf\",\"Attachments\\Masse_50%.PNG\"\r\n"));
  EXPECT_EQ(run.counters.Attachments, 2);
}

TEST_F(MailPageTest, AttachmentsOfOneNameAreNumbered) {
  options.SaveAttachments = true;
  test::FakeMail& first = store.AddMail(*archive, "a");
  first.Attachments = {{"bild.png", "1"}, {"bild.png", "2"}};
  test::FakeMail& second = store.AddMail(*archive, "b");
  second.Attachments = {{"Bild.png", "3"}};
  RunMails({first.Key, second.Key});
  EXPECT_EQ(ReadTarget("Attachments\\bild.png"), "1");
  EXPECT_EQ(ReadTarget("Attachments\\bild1.png"), "2");
  EXPECT_EQ(ReadTarget("Attachments\\Bild2.png"), "3");
}

TEST_F(MailPageTest, AttachmentWithoutAPointTakesThePreviousNameNumbered) {
  options.SaveAttachments = true;
  test::FakeMail& mail = store.AddMail(*archive, "x");
  mail.Attachments = {{"LIESMICH", "1"}, {"a.txt", "2"}, {"README", "3"}};
  RunMail(mail);
  EXPECT_EQ(Names("Attachments"), (Strings{"a.txt", "a1.txt", "LIESMICH"}));
  EXPECT_EQ(ReadTarget("Attachments\\a1.txt"), "3");
}

TEST_F(MailPageTest, AttachmentWithoutAPointKeepsItsNameWhenNamesAreNotNumbered) {
  options.SaveAttachments = true;
  options.NoDuplicates = false;
  test::FakeMail& mail = store.AddMail(*archive, "x");
  mail.Attachments = {{"a.txt", "2"}, {"README", "3"}};
  RunMail(mail);
  EXPECT_EQ(Names("Attachments"), (Strings{"a.txt", "README"}));
}

TEST_F(MailPageTest, AttachmentCannotPassForAMarkerOrReplaceAnIndex) {
  options.SaveAttachments = true;
  options.SeparateAttachmentsFolder = false;
  test::FakeMail& mail = store.AddMail(*archive, "x");
  mail.Attachments = {{"index.html", "A"}, {"VelmoraSubArc.vla", "B"}};
  RunMail(mail);
  EXPECT_EQ(ReadTarget("index1.html"), "A");
  EXPECT_EQ(ReadTarget("VelmoraSubArc1.vla"), "B");
  EXPECT_FALSE(HasTarget("index.html"));
  EXPECT_FALSE(HasTarget("VelmoraSubArc.vla"));
}

TEST_F(MailPageTest, FailedAttachmentIsLoggedAndLeftOutOfThePage) {
  options.SaveAttachments = true;
  test::FakeMail& mail = store.AddMail(*archive, "x");
  mail.Attachments = {{"a.txt", "1"}, {"b.txt", "2", true}};
  RunMail(mail);
  EXPECT_EQ(Value("x.add", "Attachments"), "\"Attachments\\a.txt\"");
  EXPECT_EQ(Part("x.htm", "L").find("b.txt"), std::string::npos);
  EXPECT_EQ(run.counters.Attachments, 1);
  EXPECT_EQ(run.counters.Errors, 1);
  EXPECT_EQ(Log(), " Fehler: 61 - Datentr\xE4ger voll -> " + Target("Attachments\\b.txt") + "\r\n");
}

TEST_F(MailPageTest, CommentIsWrittenDatedAndLinked) {
  options.SaveComments = true;
  test::FakeMail& mail = store.AddMail(*archive, "100% & mehr");
  mail.Fields[store::tag::Comment] = std::string("Prüfen Ж");
  RunMail(mail);
  EXPECT_EQ(ReadTarget("Comments\\100% & mehr.txt"),
            "Pr\xFC"
            "fen ?");
  EXPECT_EQ(Part("100% & mehr.htm", "M"), "<a href=\"Comments/100%25 &amp; mehr.txt\">Kommentar</a><br>");
  EXPECT_EQ(files.GetEntry(Target("Comments\\100% & mehr.txt"))->Modified, mail.Date);
  EXPECT_EQ(files.GetEntry(Target("100% & mehr.htm"))->Modified, mail.Date);
  EXPECT_TRUE(HasTarget("Comments\\VelmoraDataArc.vla"));
}

TEST_F(MailPageTest, FailedCommentLeavesItsVariableInThePage) {
  // What could not be written can be told from what was not there.
  options.SaveComments = true;
  test::FakeMail& mail = store.AddMail(*archive, "x");
  mail.Fields[store::tag::Comment] = std::string("Text");
  faulty.FailingPart = "x.txt";
  RunMail(mail);
  EXPECT_EQ(Part("x.htm", "M"), "%VELMORA_MSGCOMMENT%");
  EXPECT_EQ(Value("x.add", "COMMENT"), "");
  EXPECT_EQ(Log(), " Fehler: 61 - Datentr\xE4ger voll -> " + Target("Comments\\x.txt") + "\r\n");
}

TEST_F(MailPageTest, OriginalIsCopiedByteForByteWithTheDateOfTheMessage) {
  options.SaveOriginals = true;
  options.SaveSmtpHeader = true;
  test::FakeMail& mail = store.AddMail(*archive, "x");
  mail.Source = std::string("From: a\n\0\xFF\r\n", 12);
  mail.Fields[store::tag::SmtpHeader] = std::string("Received: by host\r\n");
  RunMail(mail);
  EXPECT_EQ(ReadTarget("Eml\\x.eml"), mail.Source);
  EXPECT_EQ(ReadTarget("Eml\\x.smtp"), "Received: by host\r\n");
  EXPECT_EQ(files.GetEntry(Target("Eml\\x.eml"))->Modified, mail.Date);
  EXPECT_EQ(files.GetEntry(Target("Eml\\x.smtp"))->Modified, mail.Date);
  EXPECT_EQ(Part("x.htm", "E"), "<a  target=\"_blank\" href=\"Eml/x.eml\">Original Mail</a><br>");
  EXPECT_EQ(Value("x.add", "EML"), "Eml\\x.eml");
  EXPECT_EQ(Value("x.add", "SMTP"), "Eml\\x.smtp");
  EXPECT_EQ(run.counters.EmlFiles, 1);
}

TEST_F(MailPageTest, SmtpHeaderComesOnlyWithAnOriginal) {
  options.SaveSmtpHeader = true;
  test::FakeMail& mail = store.AddMail(*archive, "x");
  mail.Source = "Quelle";
  mail.Fields[store::tag::SmtpHeader] = std::string("Kopf");
  RunMail(mail);
  EXPECT_FALSE(HasTarget("Eml"));
  EXPECT_EQ(Part("x.htm", "E"), "");
}

TEST_F(MailPageTest, FailingConversionLeavesALinkThatLeadsNowhere) {
  // The page tells by it that the original was asked for and is missing; a copy does not log it.
  options.SaveOriginals = true;
  RunMail(store.AddMail(*archive, "x"));
  EXPECT_EQ(Value("x.add", "EML"), "");
  EXPECT_EQ(Part("x.htm", "E"), "<a  target=\"_blank\" href=\"\">Original Mail</a><br>");
  EXPECT_EQ(run.counters.EmlFiles, 0);
  EXPECT_EQ(run.counters.Mails, 1);
  EXPECT_EQ(Log(), "");
}

TEST_F(MailPageTest, OriginalThatCannotBeCopiedIsLogged) {
  options.SaveOriginals = true;
  test::FakeMail& mail = store.AddMail(*archive, "x");
  mail.Source = "Quelle";
  faulty.FailingPart = "x.eml";
  RunMail(mail);
  EXPECT_EQ(Value("x.add", "EML"), "");
  EXPECT_EQ(run.counters.Errors, 1);
}

TEST_F(MailPageTest, FormThatCannotBeOpenedSkipsTheEntry) {
  ASSERT_TRUE(files.DeleteFile(dir.Path("designs\\Mail.htm"), false));
  options.SaveComments = true;
  test::FakeMail& mail = store.AddMail(*archive, "x");
  mail.Fields[store::tag::Comment] = std::string("Text");
  RunMail(mail);
  EXPECT_EQ(Names(), Strings{});
  EXPECT_EQ(run.counters.Mails, 0);
  EXPECT_EQ(run.counters.Errors, 1);
  EXPECT_NE(Log().find(" Fehler: 53 - "), std::string::npos);
  EXPECT_NE(Log().find("-> " + dir.Path("designs\\Mail.htm")), std::string::npos);
}

TEST_F(MailPageTest, MissingFormIsLoggedOncePerMessage) {
  ASSERT_TRUE(files.DeleteFile(dir.Path("designs\\Mail.htm"), false));
  RunMails(
      {store.AddMail(*archive, "a").Key, store.AddMail(*archive, "b").Key, store.AddMail(*archive, "c").Key});
  EXPECT_EQ(run.counters.Errors, 3);
  EXPECT_EQ(run.counters.Mails, 0);
  EXPECT_EQ(run.counters.Entries, 3);
  EXPECT_EQ(Split(Log(), "\r\n").size(), 4U);  // three lines and what follows the last end
}

TEST_F(MailPageTest, FormThatLacksAVariableShowsNothingOfIt) {
  WriteForm("Mail.htm", "S[%VELMORA_SUBJECT%]");
  options.SaveAttachments = true;
  test::FakeMail& mail = store.AddMail(*archive, "x");
  mail.Text = "Text";
  mail.Attachments = {{"a.txt", "A"}};
  RunMail(mail);
  EXPECT_EQ(ReadTarget("x.htm"), "S[x]");
  EXPECT_EQ(ReadTarget("Attachments\\a.txt"), "A");
  EXPECT_EQ(Log(), "");
}

TEST_F(MailPageTest, FormEditedBetweenTwoRunsIsReadAnew) {
  RunMail(store.AddMail(*archive, "a"));
  WriteForm("Mail.htm", "neu");
  RunMail(store.AddMail(*archive, "b"));
  EXPECT_EQ(ReadTarget("b.htm"), "neu");
}

TEST_F(MailPageTest, PageThatCannotBeWrittenIsLoggedAndNotCounted) {
  faulty.FailingPart = "x.htm";
  RunMail(store.AddMail(*archive, "x"));
  EXPECT_EQ(Names(), Strings{});
  EXPECT_EQ(run.counters.Mails, 0);
  EXPECT_EQ(Log(), " Fehler: 61 - Datentr\xE4ger voll -> " + Target("x.htm") + "\r\n");
}

TEST_F(MailPageTest, FlagsNameExactlyOneKind) {
  test::FakeMail& document = store.AddMail(*archive, "72");
  document.Fields[store::tag::SendStatus] = std::int64_t{72};
  test::FakeMail& dfml = store.AddMail(*archive, "dfml");
  dfml.Fields[store::tag::SendStatus] = std::int64_t{72};
  dfml.Fields[store::tag::MailFlags] = std::int64_t{0x100001};
  test::FakeMail& note = store.AddMail(*archive, "note");
  note.Fields[store::tag::MailFlags] = std::int64_t{0x100000};
  note.Fields[store::tag::DisplayVariant] = 68.9;
  RunMails({document.Key, dfml.Key, note.Key});
  EXPECT_EQ(Value("72.add", "Flags"), "16");
  EXPECT_EQ(Value("dfml.add", "Flags"), "64");
  EXPECT_EQ(Value("note.add", "Flags"), "32");
}

TEST_F(MailPageTest, SubjectThatNamesALaterVariableGetsItFilledIn) {
  test::FakeMail& mail = store.AddMail(*archive, "an %VELMORA_TO%");
  mail.Recipients = "info";
  RunMail(mail);
  EXPECT_EQ(Part("an %VELMORA_TO%.htm", "T"), "an info");
  EXPECT_EQ(Value("an %VELMORA_TO%.add", "Subject"), "an %VELMORA_TO%");
}

TEST_F(MailPageTest, CharactersBeyondTheCodePageSurviveAsReferences) {
  test::FakeMail& mail = store.AddMail(*archive, "Привет ü");
  mail.Text = "Δ";
  RunMail(mail);
  EXPECT_EQ(Names(), (Strings{"______ ue.add", "______ ue.htm"}));
  EXPECT_EQ(Part("______ ue.htm", "C"), "&#916;");
  EXPECT_EQ(Value("______ ue.add", "Subject"), "&#1055;&#1088;&#1080;&#1074;&#1077;&#1090; \xFC");
}

TEST_F(MailPageTest, HeadTagsOfAMailDoNotReachThePage) {
  test::FakeMail& mail = store.AddMail(*archive, "x");
  mail.Text = "<META http-equiv=refresh content=0;url=http://evil/> <b>fett</b>";
  mail.Sender = "<base href=//evil/>";
  RunMail(mail);
  const std::string page = ReadTarget("x.htm");
  EXPECT_EQ(page.find("<META"), std::string::npos);
  EXPECT_EQ(page.find("<base"), std::string::npos);
  EXPECT_NE(page.find("<b>fett</b>"), std::string::npos);  // the text itself is not escaped
}

TEST_F(MailPageTest, ComponentFolderThatVanishesDuringTheRunIsMadeAnew) {
  options.SaveComments = true;
  std::vector<store::EntryKey> keys;
  for (const char* subject : {"a", "b"}) {
    test::FakeMail& mail = store.AddMail(*archive, subject);
    mail.Fields[store::tag::Comment] = std::string("Text");
    keys.push_back(mail.Key);
  }
  ExportContext context = Context();
  const auto opened = store.Open(archive->FullPath);
  ExportPlace place(context, *opened, dir.Path("target"));
  MessageExport messages(context);
  messages.ExportMessage(place, keys[0]);
  ASSERT_TRUE(files.DeleteFolder(Target("Comments"), true));
  messages.ExportMessage(place, keys[1]);
  EXPECT_EQ(Names("Comments"), Strings{"b.txt"});
  EXPECT_TRUE(HasTarget("Comments\\VelmoraDataArc.vla"));
  EXPECT_EQ(Log(), "");
}

TEST_F(MailPageTest, FolderThatCannotBeMadeLeavesComponentsBesideThePage) {
  options.SaveComments = true;
  test::FakeMail& mail = store.AddMail(*archive, "x");
  mail.Fields[store::tag::Comment] = std::string("Text");
  faulty.FailingPart = "\\Comments";
  RunMail(mail);
  EXPECT_EQ(Names(), (Strings{"x.add", "x.htm", "x.txt"}));
  EXPECT_EQ(Value("x.add", "COMMENT"), "x.txt");
}

}  // namespace
}  // namespace velmora::mailarchive
