// Faxes: the image with its page, descriptor and comment, or parts of them alone.
#include "mailarchive/export_fixture.h"
#include "store/vocabulary.h"

namespace velmora::mailarchive {
namespace {

class FaxExportTest : public ExportTest {
 protected:
  test::FakeMail& AddFax(const std::string& subject, const std::string& image = "II*TIFF") {
    test::FakeMail& fax = AddContentEntry(store::item_type::Fax, subject, image);
    fax.Fields[store::tag::SenderAddress] = "04131 55270";
    fax.Fields[store::tag::RecipientAddress] = "040 4711";
    return fax;
  }
};

TEST_F(FaxExportTest, PageDescriptorAndImage) {
  test::FakeMail& fax = AddFax(" Bestellung 4711/a ");
  RunMail(fax);
  EXPECT_EQ(Names(), (Strings{"Fax_Bestellung 4711-a.add", "Fax_Bestellung 4711-a.htm", "FaxImages"}));
  EXPECT_EQ(ReadTarget("FaxImages\\Fax_Bestellung 4711-a.tif"), "II*TIFF");
  EXPECT_TRUE(HasTarget("FaxImages\\VelmoraDataArc.vla"));
  EXPECT_EQ(files.GetEntry(Target("FaxImages\\Fax_Bestellung 4711-a.tif"))->Modified, fax.Date);
  EXPECT_EQ(files.GetEntry(Target("Fax_Bestellung 4711-a.htm"))->Modified, fax.Date);
  const std::string page = "Fax_Bestellung 4711-a.htm";
  EXPECT_EQ(Part(page, "T"), "Bestellung 4711/a");
  EXPECT_EQ(Part(page, "S"), "Bestellung 4711/a");
  EXPECT_EQ(Part(page, "F"), "04131 55270");
  EXPECT_EQ(Part(page, "TO"), "040 4711");
  EXPECT_EQ(Part(page, "D"), "29.02.2024 13:14:15");
  EXPECT_EQ(Part(page, "X"),
            "<a  target=\"_blank\" href=\"FaxImages/Fax_Bestellung 4711-a.tif\">Faximage</a><br>");
  EXPECT_EQ(Part(page, "M"), "");
  EXPECT_EQ(
      ReadTarget("Fax_Bestellung 4711-a.add"),
      "Sortaddr=04131 55270\r\nSubject=Bestellung 4711/a\r\nDate=29.02.2024 13:14:15\r\n"
      "From=04131 55270\r\nTo=040 4711\r\nFlags=4\r\nMailArcEntry=Fax_Bestellung 4711-a.htm\r\n"
      "MailArcAdd=Fax_Bestellung 4711-a.add\r\nFAX=FaxImages\\Fax_Bestellung 4711-a.tif\r\nCOMMENT=\r\n");
  EXPECT_EQ(Log(), "");
}

// Once for the image and once for the page: those who compare the figures of two runs count on it.
TEST_F(FaxExportTest, FaxWithAPageCountsTwice) {
  RunMail(AddFax("x"));
  EXPECT_EQ(run.counters.Faxes, 2);
  EXPECT_EQ(run.counters.Entries, 1);
  EXPECT_EQ(run.counters.Attachments, 0);
}

TEST_F(FaxExportTest, OutgoingFaxIsSortedByItsRecipient) {
  archive->DisplayType = 2;
  RunMail(AddFax("x"));
  EXPECT_EQ(Value("Fax_x.add", "Sortaddr"), "040 4711");
  EXPECT_EQ(Value("Fax_x.add", "Flags"), "5");
}

TEST_F(FaxExportTest, EmptySubjectTakesTheRecipientThenTheSender) {
  test::FakeMail& both = AddFax("  ");
  test::FakeMail& sender = AddFax("");
  sender.Fields[store::tag::RecipientAddress] = "";
  RunMails({both.Key, sender.Key});
  EXPECT_EQ(Value("Fax_040 4711.add", "Subject"), "040 4711");
  EXPECT_EQ(Value("Fax_04131 55270.add", "Subject"), "04131 55270");
}

TEST_F(FaxExportTest, RecipientFallsBackToTheRecipientText) {
  test::FakeMail& fax = AddFax("x");
  fax.Fields[store::tag::RecipientAddress] = "";
  fax.Fields[store::tag::RecipientText] = "Fleischerei Lütjens";
  RunMail(fax);
  EXPECT_EQ(Value("Fax_x.add", "To"), "Fleischerei L\xFCtjens");
}

TEST_F(FaxExportTest, SenderFallsBackToTheNameOfTheCreator) {
  test::FakeMail& known = AddFax("x");
  known.Fields[store::tag::SenderAddress] = "";
  known.Fields[store::tag::Creator] = std::int64_t{-1};
  test::FakeMail& unknown = AddFax("y");
  unknown.Fields[store::tag::SenderAddress] = "";
  unknown.Fields[store::tag::Creator] = std::int64_t{4711};
  RunMails({known.Key, unknown.Key});
  EXPECT_EQ(Value("Fax_x.add", "From"), "DvISE Archive");
  EXPECT_EQ(Value("Fax_y.add", "From"), "unknown");
}

TEST_F(FaxExportTest, FaxesOfOneSubjectAreNumbered) {
  options.SaveComments = true;
  test::FakeMail& first = AddFax("x", "1");
  test::FakeMail& second = AddFax("x", "2");
  first.Fields[store::tag::Comment] = "eins";
  second.Fields[store::tag::Comment] = "zwei";
  RunMails({first.Key, second.Key});
  EXPECT_EQ(Names(),
            (Strings{"Comments", "Fax_x.add", "Fax_x.htm", "Fax_x1.add", "Fax_x1.htm", "FaxImages"}));
  EXPECT_EQ(ReadTarget("FaxImages\\Fax_x.tif"), "1");
  EXPECT_EQ(ReadTarget("FaxImages\\Fax_x1.tif"), "2");
  EXPECT_EQ(Value("Fax_x1.add", "FAX"), "FaxImages\\Fax_x1.tif");
  // The comment's name comes without the page's number, so the second is numbered for itself.
  EXPECT_EQ(ReadTarget("Comments\\Fax_x.txt"), "eins");
  EXPECT_EQ(ReadTarget("Comments\\Fax_x1.txt"), "zwei");
  EXPECT_EQ(Value("Fax_x1.add", "COMMENT"), "Comments\\Fax_x1.txt");
  EXPECT_EQ(Part("Fax_x1.htm", "M"), "<a href=\"Comments/Fax_x1.txt\">Kommentar</a><br>");
}

// The first page is gone, its comment is still there: the comment of the new page does not take its number.
TEST_F(FaxExportTest, CommentIsNamedWithoutThePagesNumber) {
  options.SaveComments = true;
  ASSERT_TRUE(files.WriteFile(Target("Fax_x.htm"), "old"));
  test::FakeMail& fax = AddFax("x");
  fax.Fields[store::tag::Comment] = "neu";
  RunMail(fax);
  EXPECT_EQ(Value("Fax_x1.add", "COMMENT"), "Comments\\Fax_x.txt");
}

TEST_F(FaxExportTest, WithoutNumbersTheSecondFaxReplacesTheFirst) {
  options.NoDuplicates = false;
  RunMails({AddFax("x", "1").Key, AddFax("x", "2").Key});
  EXPECT_EQ(Names(), (Strings{"Fax_x.add", "Fax_x.htm", "FaxImages"}));
  EXPECT_EQ(ReadTarget("FaxImages\\Fax_x.tif"), "2");
}

TEST_F(FaxExportTest, WithoutSeparateFoldersTheImageLiesBesideThePage) {
  options.SeparateAttachmentsFolder = false;
  RunMail(AddFax("x"));
  EXPECT_EQ(Names(), (Strings{"Fax_x.add", "Fax_x.htm", "Fax_x.tif"}));
  EXPECT_EQ(Part("Fax_x.htm", "X"), "<a  target=\"_blank\" href=\"Fax_x.tif\">Faximage</a><br>");
}

TEST_F(FaxExportTest, VanishedImageIsLoggedAndThePageWritten) {
  test::FakeMail& fax = AddFax("x");
  ASSERT_TRUE(files.DeleteFile(fax.ContentPath, false));
  RunMail(fax);
  EXPECT_EQ(Names(), (Strings{"Fax_x.add", "Fax_x.htm", "FaxImages"}));
  EXPECT_EQ(run.counters.Faxes, 1);
  EXPECT_EQ(run.counters.Errors, 1);
  EXPECT_EQ(Log(), " Fehler: 53 - Datei nicht gefunden -> " + Target("FaxImages\\Fax_x.tif") + "\r\n");
  EXPECT_EQ(Value("Fax_x.add", "FAX"), "FaxImages\\Fax_x.tif");
}

TEST_F(FaxExportTest, MissingFormSkipsTheFax) {
  ASSERT_TRUE(files.DeleteFile(dir.Path("designs\\Fax.htm"), false));
  RunMail(AddFax("x"));
  EXPECT_EQ(Names(), Strings{});
  EXPECT_EQ(run.counters.Faxes, 0);
  EXPECT_EQ(run.counters.Errors, 1);
}

TEST_F(FaxExportTest, OnlyOriginalsSaveTheImageInTheDirectoryItself) {
  options.OnlyOriginals = true;
  RunMails({AddFax("x", "1").Key, AddFax("x", "2").Key});
  EXPECT_EQ(Names(), (Strings{"x.tif", "x1.tif"}));
  EXPECT_EQ(ReadTarget("x1.tif"), "2");
  EXPECT_EQ(run.counters.Faxes, 2);
}

TEST_F(FaxExportTest, OnlyCommentsCountAsFaxes) {
  options.OnlyComments = true;
  test::FakeMail& with = AddFax("x");
  with.Fields[store::tag::Comment] = "Kommentar";
  test::FakeMail& without = AddFax("y");
  RunMails({with.Key, without.Key});
  EXPECT_EQ(Names(), Strings{"x.txt"});
  EXPECT_EQ(run.counters.Faxes, 1);
}

TEST_F(FaxExportTest, OnlyOriginalsAndOnlyCommentsGoTogether) {
  options.OnlyOriginals = options.OnlyComments = true;
  test::FakeMail& fax = AddFax("x");
  fax.Fields[store::tag::Comment] = "Kommentar";
  RunMail(fax);
  EXPECT_EQ(Names(), (Strings{"x.tif", "x.txt"}));
}

TEST_F(FaxExportTest, OnlyAttachmentsPassFaxesOver) {
  options.OnlyAttachments = options.OnlyOriginals = true;
  RunMail(AddFax("x"));
  EXPECT_EQ(Names(), Strings{});
  EXPECT_EQ(run.counters.Entries, 0);
}

TEST_F(FaxExportTest, FailedFaxIsLeftOutAndLogged) {
  test::FakeMail& fax = AddFax("x");
  fax.Fields[store::tag::SendStatus] = std::int64_t{21};
  RunMail(fax);
  EXPECT_EQ(Names(), Strings{});
  EXPECT_EQ(Log(), " Fehler: belegt - DvISE Mailstatus Error (nicht archiviert) -> /Archive/x\r\n");
}

TEST_F(FaxExportTest, WithErrorsTheFailedFaxIsExportedAndTheAdministratorWarned) {
  options.WithErrors = true;
  test::FakeMail& fax = AddFax("x");
  fax.Fields[store::tag::SendStatus] = std::int64_t{21};
  RunMail(fax);
  EXPECT_TRUE(HasTarget("Fax_x.htm"));
  EXPECT_EQ(Log(), " Warnung: belegt - DvISE Mailstatus Error (trotzdem archiviert) -> /Archive/x\r\n");
}

TEST_F(FaxExportTest, MoveDeletesTheFaxOnceItsFilesStand) {
  options.Mode = CopyMode::Move;
  RunMail(AddFax("x"));
  EXPECT_EQ(store.Deletions, Strings{"mail 1"});
}

TEST_F(FaxExportTest, MoveKeepsAFaxWhoseImageHasVanished) {
  options.Mode = CopyMode::Move;
  test::FakeMail& fax = AddFax("x");
  ASSERT_TRUE(files.DeleteFile(fax.ContentPath, false));
  RunMail(fax);
  EXPECT_EQ(store.Deletions, Strings{});
}

TEST_F(FaxExportTest, MoveOfOnlyOriginalsKeepsWhatCouldNotBeCopied) {
  options.Mode = CopyMode::Move;
  options.OnlyOriginals = true;
  faulty.FailingPart = "x.tif";
  RunMails({AddFax("x").Key, AddFax("y").Key});
  EXPECT_EQ(store.Deletions, Strings{"mail 2"});
}

// A fax goes when its comment is saved alone, other kinds stay; one without a comment has nothing saved.
TEST_F(FaxExportTest, MoveOfOnlyCommentsDeletesFaxesWithOne) {
  options.Mode = CopyMode::Move;
  options.OnlyComments = true;
  test::FakeMail& with = AddFax("x");
  with.Fields[store::tag::Comment] = "Kommentar";
  test::FakeMail& without = AddFax("y");
  RunMails({with.Key, without.Key});
  EXPECT_EQ(store.Deletions, Strings{"mail 1"});
}

TEST_F(FaxExportTest, StatusLineShowsAllCounters) {
  RunMail(AddFax("x"));
  EXPECT_EQ(StatusLine(), "Mail:0/Att:0/Fax:2/Voice:0/Addr:0/Err:0");
}

}  // namespace
}  // namespace velmora::mailarchive
