// The message viewer: HTML without content from outside, attachments, fax pages, voice mails.

#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>

#include "store/vocabulary.h"
#include "ui/fax_view.h"
#include "ui/html_view.h"
#include "ui/message_viewer.h"
#include "ui_fixture.h"

namespace velmora::ui {
namespace {

constexpr const char* Pixel =
    "iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAYAAAAfFcSJAAAADUlEQVR42mNk+M9QDwADhgGAWjR9awAAAABJRU5ErkJggg==";

class ViewerTest : public startup::ProgramTest {
 protected:
  MessageViewer& OpenMail(const std::string& source) {
    StartSession();
    directory.WriteHostFile("mail.eml", source);
    archive = MakeArchive("Inhalt");
    const auto made = context().session.Account->DVMailItemFromEml(directory.Path("mail.eml"), *archive);
    EXPECT_TRUE(made.has_value()) << made.error().Text;
    return OpenEntry((*made)->Key());
  }
  MessageViewer& OpenEntry(store::EntryKey key) {
    const MessageViewer::Parts parts = {*files, front.Set(), context().process.TempDir};
    viewer = MessageViewer::Open(parts, {archive, key}, nullptr);
    if (viewer == nullptr) throw std::runtime_error("no viewer");
    return *viewer;
  }
  static std::string Html(const std::string& body) {
    return "From: max@example.org\r\nTo: anna@example.org\r\nSubject: Html\r\nMIME-Version: 1.0\r\n"
           "Content-Type: multipart/related; boundary=\"b\"\r\n\r\n--b\r\n"
           "Content-Type: text/html; charset=utf-8\r\n\r\n" +
           body +
           "\r\n--b\r\nContent-Type: image/png; name=\"punkt.png\"\r\nContent-ID: <punkt>\r\n"
           "Content-Disposition: inline; filename=\"punkt.png\"\r\nContent-Transfer-Encoding: "
           "base64\r\n\r\n" +
           Pixel + "\r\n--b--\r\n";
  }
  static std::string WithAttachments(const std::vector<std::string>& names) {
    std::string mail =
        "From: max@example.org\r\nTo: anna@example.org\r\nSubject: Anhang\r\nMIME-Version: 1.0\r\n"
        "Content-Type: multipart/mixed; boundary=\"b\"\r\n\r\n--b\r\nContent-Type: "
        "text/plain\r\n\r\nText\r\n";
    for (const std::string& name : names) {
      mail +=
          "--b\r\nContent-Type: application/octet-stream\r\nContent-Disposition: attachment; filename=\"" +
          name + "\"\r\n\r\nInhalt\r\n";
    }
    return mail + "--b--\r\n";
  }
  static std::string WithAttachment(const std::string& name) { return WithAttachments({name}); }

  std::shared_ptr<store::DvArchive> archive;
  std::unique_ptr<MessageViewer> viewer;
};

TEST_F(ViewerTest, InlinePartsAreShownAndNothingElseIsLoaded) {
  MessageViewer& shown = OpenMail(
      Html("<p>Text</p><img src=\"cid:punkt\"><img src=\"http://example.org/x.png\">"
           "<img src=\"file:///etc/hostname\"><link rel=stylesheet href=\"http://example.org/x.css\">"));
  ASSERT_EQ(shown.Content().Kind, ContentKind::Html);
  auto& html = Find<HtmlView>(shown, "HtmlBody");
  const QVariant part = html.loadResource(QTextDocument::ImageResource, QUrl("velmora-part:01"));
  EXPECT_EQ(part.value<QImage>().size(), QSize(1, 1));
  EXPECT_GT(qAlpha(part.value<QImage>().pixel(0, 0)), 0);
  for (const char* outside :
       {"http://example.org/x.png", "file:///etc/hostname", "velmora-part:02", "x.png"}) {
    const QVariant refused = html.loadResource(QTextDocument::ImageResource, QUrl(outside));
    EXPECT_EQ(qAlpha(refused.value<QImage>().pixel(0, 0)), 0) << outside;
  }
  EXPECT_TRUE(html.toPlainText().contains("Text"));
  shown.show();
  QCoreApplication::processEvents();
  EXPECT_TRUE(Find<QLabel>(shown, "L_Notice").text().contains("nicht geladen"));
}

// Dark letters of a mail on the dark paper of the desktop would be lost.
TEST_F(ViewerTest, AMailIsShownOnWhitePaper) {
  MessageViewer& shown = OpenMail(Html("<p>Text</p>"));
  EXPECT_EQ(Find<HtmlView>(shown, "HtmlBody").palette().color(QPalette::Base), QColor(Qt::white));
}

TEST_F(ViewerTest, ScriptIsNoText) {
  MessageViewer& shown = OpenMail(Html("<p>Hallo</p><script>alert('x')</script>"));
  EXPECT_FALSE(Find<HtmlView>(shown, "HtmlBody").toPlainText().contains("alert"));
}

TEST(LinksTest, OnlyPagesAndMailAddressesMayBeOpened) {
  for (const char* link : {"http://example.org", "https://example.org/a?b=c", "mailto:a@example.org"}) {
    EXPECT_TRUE(MayOpenLink(QUrl(link))) << link;
  }
  for (const char* link : {"file:///etc/passwd", "javascript:alert(1)", "smb://host/x", "", "velmora-part:01",
                           "data:text/html,x", "/etc/passwd"}) {
    EXPECT_FALSE(MayOpenLink(QUrl(link))) << link;
  }
}

TEST_F(ViewerTest, HugeSpansDoNotEatTheMemory) {
  QElapsedTimer elapsed;
  elapsed.start();
  HtmlView view;
  view.ShowHtml("<table><tr><td colspan=2000000000 rowspan=2000000000>x</td></tr></table>", {});
  EXPECT_TRUE(view.toPlainText().contains("x"));
  EXPECT_LT(elapsed.elapsed(), 5000);
}

TEST_F(ViewerTest, AnAttachmentIsOpenedFromAPrivateReadOnlyCopy) {
  MessageViewer& shown = OpenMail(WithAttachment("Beleg.pdf"));
  Press(shown, "OpenAttachment");
  ASSERT_EQ(front.Documents.size(), 1U);
  const std::string path = front.Documents[0];
  EXPECT_TRUE(path.ends_with("\\Beleg.pdf")) << path;
  EXPECT_TRUE(path.starts_with(context().process.TempDir)) << path;
  const auto host = files->HostPath(path);
  ASSERT_TRUE(host.has_value());
  const auto permissions = std::filesystem::status(*host).permissions();
  using std::filesystem::perms;
  EXPECT_EQ(permissions & (perms::owner_exec | perms::owner_write | perms::group_exec | perms::others_exec),
            perms::none);
  const auto folder = std::filesystem::status(std::filesystem::path(*host).parent_path()).permissions();
  EXPECT_EQ(folder & (perms::group_all | perms::others_all), perms::none);
}

TEST_F(ViewerTest, TwiceOpenedIsTwiceThere) {
  MessageViewer& shown = OpenMail(WithAttachment("Beleg.pdf"));
  Press(shown, "OpenAttachment");
  Press(shown, "OpenAttachment");
  ASSERT_EQ(front.Documents.size(), 2U);
  EXPECT_NE(front.Documents[0], front.Documents[1]);
}

TEST_F(ViewerTest, AProgramIsNeverOpened) {
  MessageViewer& shown = OpenMail(WithAttachment("Rechnung.pdf.exe"));
  Press(shown, "OpenAttachment");
  EXPECT_TRUE(front.Documents.empty());
  ASSERT_EQ(front.Boxes.size(), 1U);
  EXPECT_NE(front.Boxes[0].Text.find("nicht ausgeführt"), std::string::npos);
}

TEST_F(ViewerTest, AnAttachmentIsSavedWhereThePersonSays) {
  MessageViewer& shown = OpenMail(WithAttachment("Beleg.pdf"));
  front.Inputs = {directory.Path("target\\Gespeichert.pdf")};
  Press(shown, "SaveAttachment");
  EXPECT_EQ(directory.ReadHostFile("target/Gespeichert.pdf"), "Inhalt");
}

TEST_F(ViewerTest, AllAttachmentsAreSavedAndNoFileIsWrittenOver) {
  MessageViewer& shown = OpenMail(WithAttachments({"Beleg.pdf", "Beleg.pdf", "Foto.jpg"}));
  directory.WriteHostFile("target/Foto.jpg", "vorher");
  ASSERT_TRUE(Find<QPushButton>(shown, "SaveAllAttachments").isVisibleTo(&shown));
  front.Inputs = {directory.Path("target")};
  Press(shown, "SaveAllAttachments");
  EXPECT_TRUE(front.Boxes.empty());
  for (const std::string name : {"Beleg.pdf", "Beleg1.pdf", "Foto1.jpg"}) {
    EXPECT_EQ(directory.ReadHostFile("target/" + name), "Inhalt") << name;
  }
  EXPECT_EQ(directory.ReadHostFile("target/Foto.jpg"), "vorher");
}

TEST_F(ViewerTest, AFolderThatTakesNothingIsToldOnce) {
  MessageViewer& shown = OpenMail(WithAttachments({"Beleg.pdf", "Foto.jpg"}));
  front.Inputs = {directory.Path("nirgends")};
  Press(shown, "SaveAllAttachments");
  EXPECT_EQ(front.Boxes.size(), 1U);
}

TEST_F(ViewerTest, OneAttachmentNeedsNoButtonForAll) {
  MessageViewer& shown = OpenMail(WithAttachment("Beleg.pdf"));
  EXPECT_FALSE(Find<QPushButton>(shown, "SaveAllAttachments").isVisibleTo(&shown));
}

TEST_F(ViewerTest, ASourceThatHasVanishedIsTold) {
  MessageViewer& shown = OpenMail(WithAttachment("Beleg.pdf"));
  for (const auto& entry : std::filesystem::recursive_directory_iterator(directory.HostPath("store"))) {
    if (entry.path().extension() == ".001") std::filesystem::remove(entry.path());
  }
  Press(shown, "OpenAttachment");
  EXPECT_TRUE(front.Documents.empty());
  ASSERT_EQ(front.Boxes.size(), 1U);
  EXPECT_EQ(front.Boxes[0].Title, "Fehler");
}

TEST_F(ViewerTest, AMessageThatHasVanishedIsTold) {
  StartSession();
  archive = MakeArchive("Leer");
  const MessageViewer::Parts parts = {*files, front.Set(), context().process.TempDir};
  EXPECT_EQ(MessageViewer::Open(parts, {archive, 4711}, nullptr), nullptr);
  ASSERT_EQ(front.Boxes.size(), 1U);
  EXPECT_NE(front.Boxes[0].Text.find("kann nicht gelesen werden"), std::string::npos);
}

TEST_F(ViewerTest, AVoiceMailWithoutItsFileSaysSo) {
  StartSession();
  archive = MakeArchive("Anrufe");
  directory.WriteHostFile("ruf.wav", "RIFF");
  auto made = archive->CreateItem(store::item_type::Voice);
  ASSERT_TRUE(made.has_value());
  ASSERT_TRUE((*made)->AsVoice()->SetWave(directory.Path("ruf.wav")).has_value());
  ASSERT_TRUE((*made)->Item().Update().has_value());
  const store::EntryKey key = (*made)->Item().Key();
  EXPECT_TRUE(Find<QPushButton>(OpenEntry(key), "PlayButton").isEnabled());
  Press(*viewer, "PlayButton");
  EXPECT_EQ(front.Documents.size(), 1U);
  ASSERT_TRUE(files->DeleteFile((*made)->AsVoice()->WavePath(), true).has_value());
  EXPECT_FALSE(Find<QPushButton>(OpenEntry(key), "PlayButton").isEnabled());
  EXPECT_TRUE(Find<QLabel>(*viewer, "L_Voice").text().contains("nicht mehr vorhanden"));
}

class FaxViewTest : public testing::Test {
 protected:
  QString File(const std::string& name, const QByteArray& bytes) {
    directory.WriteHostFile(name, std::string_view(bytes.data(), static_cast<std::size_t>(bytes.size())));
    return ToQt(directory.HostPath(name));
  }
  QString Tiff(int width, int height) {
    QImage image(width, height, QImage::Format_Mono);
    image.fill(1);
    const QString path = ToQt(directory.HostPath("fax.tif"));
    EXPECT_TRUE(image.save(path, "TIFF"));
    return path;
  }
  test::TempDir directory;
  FaxView view;
};

TEST_F(FaxViewTest, AMissingFileIsTold) {
  EXPECT_FALSE(view.Load(ToQt(directory.HostPath("fehlt.tif"))));
  EXPECT_EQ(view.Problem(), "Die Faxdatei ist nicht mehr vorhanden.");
  EXPECT_FALSE(view.Load(""));
}

TEST_F(FaxViewTest, AFileThatIsNoPictureIsTold) {
  EXPECT_FALSE(view.Load(File("a.tif", "das ist kein Bild")));
  EXPECT_EQ(view.Problem(), "Die Faxdatei ist beschädigt oder keine Bilddatei.");
  FaxView cut;
  QFile whole(Tiff(200, 200));
  ASSERT_TRUE(whole.open(QIODevice::ReadOnly));
  EXPECT_FALSE(cut.Load(File("b.tif", whole.read(20))));
  EXPECT_FALSE(cut.Problem().isEmpty());
}

TEST_F(FaxViewTest, APageOfAnAbsurdSizeIsNotRead) {
  EXPECT_FALSE(view.Load(Tiff(16000, 16000)));
  EXPECT_EQ(view.Problem(), "Die Seite ist zu groß, um angezeigt zu werden.");
}

TEST_F(FaxViewTest, KeysZoom) {
  view.resize(500, 400);
  ASSERT_TRUE(view.Load(Tiff(1728, 2200)));
  EXPECT_EQ(view.PageCount(), 1);
  const double before = view.Zoom();
  QTest::keyClick(&view, Qt::Key_Plus);
  EXPECT_GT(view.Zoom(), before);
  QTest::keyClick(&view, Qt::Key_Minus);
  QTest::keyClick(&view, Qt::Key_Minus);
  EXPECT_LT(view.Zoom(), before);
  QTest::keyClick(&view, Qt::Key_Asterisk);
  EXPECT_NEAR(view.Zoom(), before, 0.01);
  view.SetZoom(1e9);
  EXPECT_LE(view.Zoom(), 4.0);
}

}  // namespace
}  // namespace velmora::ui
