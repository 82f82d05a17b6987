// The export from a real store: messages are delivered as they come from outside, exported, and compared with
// what was delivered.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "mailarchive/content_index.h"
#include "mailarchive/export_run.h"
#include "platform/host_file_system.h"
#include "run/run.h"
#include "run/silent_front_end.h"
#include "store/embedded/store_fixture.h"

namespace velmora::mailarchive {
namespace {

using store::embedded::MappingOf;
using store::embedded::StoreFixture;

constexpr std::string_view HtmlMessage =
    "From: Dora <dora@example.net>\r\nTo: anna@example.org\r\nSubject: =?utf-8?q?=C3=9Cbersicht?=\r\n"
    "Date: Tue, 3 Nov 2026 11:12:13 +0100\r\nMIME-Version: 1.0\r\n"
    "Content-Type: multipart/mixed; boundary=\"out\"\r\n\r\n"
    "--out\r\nContent-Type: multipart/related; boundary=\"in\"\r\n\r\n"
    "--in\r\nContent-Type: text/html; charset=utf-8\r\n\r\n<p>Gr\xC3\xBC\xC3\x9F"
    "e <img src=\"cid:logo@x\"></p>\r\n"
    "--in\r\nContent-Type: image/png; name=\"logo.png\"\r\nContent-ID: <logo@x>\r\n"
    "Content-Disposition: inline; filename=\"logo.png\"\r\nContent-Transfer-Encoding: "
    "base64\r\n\r\niVBORw0K\r\n"
    "--in--\r\n"
    "--out\r\nContent-Type: application/pdf; name=\"a.pdf\"\r\n"
    "Content-Disposition: attachment; filename=\"a.pdf\"\r\nContent-Transfer-Encoding: "
    "base64\r\n\r\nJVBERg==\r\n"
    "--out--\r\n";

class ExportStoreTest : public StoreFixture {
 protected:
  ExportStoreTest() {
    for (const char* folder : {"log", "temp", "target", "designs"}) {
      EXPECT_TRUE(files_->CreateFolder(directory_.Path(folder)));
    }
    WriteForm("Mail.htm",
              "<h1>%VELMORA_TITLE%</h1>%VELMORA_FROM%|%VELMORA_CONTENT%|%VELMORA_EML%|%VELMORA_ATTLINKS%");
    WriteForm("Index.htm", "<h1>%VELMORA_TITLE%</h1>%VELMORA_IDXLINKS%");
    WriteForm("Bare.ini",
              "[TreeIndex]\r\nform=Index.htm\r\n[MessageIndexByDate]\r\nform=Index.htm\r\n"
              "[MessageIndexBySubject]\r\nform=Index.htm\r\n[MessageIndexByAddress]\r\nform=Index.htm\r\n"
              "[Messages]\r\nform=Mail.htm\r\n");
    session_.Account = SignOnHere();
    session_.Trustees = session_.Account->User().Trustees();
    options_.SaveAttachments = options_.SaveOriginals = options_.SaveComments = true;
    project_ = Create(*Archive(*session_.Account, "/Archive/Gemeinsam"), "Projekt");
  }

  // The fixture's own file system knows no drives, and an export writes to one.
  std::unique_ptr<store::DvAccount> SignOnHere() {
    auto account =
        store::embedded::OpenEmbeddedApi(*files_, platform::SystemClock(), {location_}, "anna")->Logon("");
    if (!account) throw std::runtime_error(account.error().Text);
    return std::move(*account);
  }
  void WriteForm(std::string_view name, std::string_view text) {
    EXPECT_TRUE(files_->WriteFile(directory_.Path("designs\\" + std::string(name)), text));
  }
  void Deliver(store::DvArchive& archive, std::string_view message) {
    EXPECT_TRUE(store::embedded::DeliverMessage(*session_.Account, archive, message, {}));
  }
  void Export() {
    designs_.LoadDesignSet();
    ExportContext context{
        run_, session_, designs_, options_, directory_.Path("temp") + "\\", directory_.Path()};
    RunExport(context,
              {Archive(*session_.Account, "/Archive/Gemeinsam"),
               {{ExportSelection::Object::Kind::Archive, 0, project_->FullPath(), false}}},
              directory_.Path("target"));
  }
  std::string Read(std::string_view relative) {
    auto bytes = files_->ReadFile(directory_.Path("target\\" + std::string(relative)));
    return bytes ? *bytes : "no file " + std::string(relative);
  }

  std::unique_ptr<platform::FileSystem> files_ =
      platform::MakeHostFileSystem({{"Z:", "/"}, MappingOf(location_)});
  store::Session session_;
  run::SilentFrontEnd frontEnd_;
  ExportOptions options_;
  std::shared_ptr<store::DvArchive> project_;
  DesignSet designs_{*files_, directory_.Path("designs"), "Bare"};
  run::Run run_{*files_, platform::SystemClock(), frontEnd_.Set(), directory_.Path("log")};
};

TEST_F(ExportStoreTest, DeliveredMailsComeOutAsPagesWithTheirBytes) {
  Deliver(*project_, store::embedded::PlainMessage);
  Deliver(*project_, HtmlMessage);
  Export();
  EXPECT_EQ(run_.counters.Mails, 2);
  EXPECT_EQ(run_.counters.EmlFiles, 2);
  EXPECT_EQ(run_.counters.Attachments, 2);
  EXPECT_EQ(run_.counters.Errors, 0);
  EXPECT_NE(Read("Projekt\\Angebot.htm").find("<h1>Angebot</h1>carl@example.net|Guten Tag"),
            std::string::npos);
  EXPECT_EQ(Read("Projekt\\Eml\\Angebot.eml"), store::embedded::PlainMessage);
  EXPECT_EQ(Read("Projekt\\Eml\\UEbersicht.eml"), HtmlMessage);
  EXPECT_EQ(Read("Projekt\\Attachments\\a.pdf"), "%PDF");
  const std::string body = Read("Projekt\\HTMLMails\\UEbersicht.htm");
  EXPECT_NE(body.find("Gr&uuml;&szlig;e"), std::string::npos) << body;
  EXPECT_NE(body.find("src=\"../Attachments/logo.png\""), std::string::npos) << body;
  EXPECT_NE(Read("Projekt\\index.html").find("<a href=\"UEbersicht_inf.htm\">&Uuml;bersicht</a>"),
            std::string::npos);
  EXPECT_NE(Read("index.html").find("<a href=\"Projekt/index.html\">Projekt</a>"), std::string::npos);
  EXPECT_EQ(project_->MessageCount().value_or(-1), 2);
}

TEST_F(ExportStoreTest, MoveEmptiesTheArchivesAndDeletesThem) {
  const auto sub = Create(*project_, "Alt");
  for (int i = 0; i < 3; ++i) Deliver(*project_, store::embedded::PlainMessage);
  for (int i = 0; i < 3; ++i) Deliver(*sub, HtmlMessage);
  options_.Mode = CopyMode::Move;
  options_.DeleteArchives = true;
  Export();
  EXPECT_EQ(run_.counters.Mails, 6);
  EXPECT_EQ(run_.counters.Errors, 0);
  EXPECT_EQ(Read("Projekt\\Eml\\Angebot2.eml"), store::embedded::PlainMessage);
  EXPECT_EQ(Read("Projekt\\Alt\\Eml\\UEbersicht2.eml"), HtmlMessage);
  session_.Account = SignOnHere();  // as another process sees it
  EXPECT_FALSE(session_.Account->GetArchive("/Archive/Gemeinsam/Projekt/Alt"));
  const auto left = session_.Account->GetArchive("/Archive/Gemeinsam/Projekt");
  if (left) {
    EXPECT_EQ((*left)->MessageCount().value_or(-1), 0);
  }
  EXPECT_TRUE(session_.Account->GetArchive("/Archive/Gemeinsam"));
}

}  // namespace
}  // namespace velmora::mailarchive
