// Entries of every kind from the command line, and back as JSON.
#include <chrono>
#include <filesystem>

#include "store_commands_fixture.h"

namespace velmora::cli {
namespace {

const std::string Tiff("II*\0\x08\0\0\0\x01\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0", 26);
const std::string Wave("RIFF\0\0\0\0WAVE", 12);

class PutCommandsTest : public StoreCommandsFixture {
 protected:
  void SetUp() override { Init(); }
};

TEST_F(PutCommandsTest, AFaxKeepsItsFileAndItsFields) {
  const auto put = Run({"put-fax",
                        "--archive",
                        "Gemeinsam/Fax",
                        "--subject",
                        "Bestellung",
                        "--from",
                        "0221 4711",
                        "--from-name",
                        "Werk Süd",
                        "--to",
                        "0221 1",
                        "--date",
                        "31.12.2026 23:59",
                        "--comment",
                        "Zeile 1\nZeile 2",
                        "--status",
                        "21",
                        "--priority",
                        "2",
                        "--distribution-id",
                        "V7",
                        "--viewed",
                        "--received",
                        WriteFile("a.tif", Tiff)});
  EXPECT_EQ(put.Status, 0) << put.Output;
  EXPECT_EQ(put.Output, "1 Eintrag abgelegt, 0 Fehler\n");
  EXPECT_EQ(Json("Gemeinsam/Fax",
                 "[e[0][k] for k in ('key', 'type', 'subject', 'from', 'fromName', 'to', 'date', 'comment', "
                 "'status', 'priority', 'flags', 'pages', 'distributionId')]"),
            "[1, 3, 'Bestellung', '0221 4711', 'Werk Süd', '0221 1', '2026-12-31T23:59:00', "
            "'Zeile 1\\r\\nZeile 2', 21, 2, 264, 1, 'V7']");
  EXPECT_EQ(Json("Gemeinsam/Fax", "e[0]['content']['size'], e[0]['content']['path'][-13:]"),
            "(26, '\\\\00000001.001')");
  EXPECT_EQ(directory_.ReadHostFile("store/archive/common/FAX/00000001.001"), Tiff);
  EXPECT_EQ(Run({"check"}).Status, 0);
}

TEST_F(PutCommandsTest, AVanishedImageIsToldByListAndCheck) {
  ASSERT_EQ(Run({"put-fax", "--archive", "Gemeinsam/Fax", WriteFile("a.tif", Tiff)}).Status, 0);
  std::filesystem::remove(directory_.HostPath("store/archive/common/FAX/00000001.001"));
  EXPECT_EQ(Json("Gemeinsam/Fax", "e[0]['content']['size'], e[0]['pages']"), "(None, 1)");
  const auto checked = Run({"check"});
  EXPECT_EQ(checked.Status, 1);
  EXPECT_NE(checked.Output.find("Eintrag ohne Inhaltsdatei"), std::string::npos) << checked.Output;
}

TEST_F(PutCommandsTest, WhatIsNoFaxIsRefusedAndTheOthersGoOn) {
  const auto put = Run({"put-fax", "--archive", "Gemeinsam/Fax", directory_.HostPath("fehlt.tif"),
                        WriteFile("leer.tif", ""), WriteFile("a.wav", Wave), WriteFile("a.tif", Tiff)});
  EXPECT_EQ(put.Status, 1);
  EXPECT_NE(put.Output.find("leer.tif: Die Datei ist kein TIFF-Bild\n"), std::string::npos) << put.Output;
  EXPECT_NE(put.Output.find("a.wav: Die Datei ist kein TIFF-Bild\n"), std::string::npos) << put.Output;
  EXPECT_TRUE(put.Output.ends_with("1 Eintrag abgelegt, 3 Fehler\n")) << put.Output;
  EXPECT_EQ(Json("Gemeinsam/Fax", "len(e)"), "1") << "what was refused left nothing";
}

TEST_F(PutCommandsTest, AnImageWithoutAPageIsKeptWithAWarning) {
  const auto put = Run({"put-fax", "--archive", "Gemeinsam/Fax", WriteFile("a.tif", Tiff.substr(0, 8))});
  EXPECT_EQ(put.Status, 0) << put.Output;
  EXPECT_NE(put.Output.find("Warnung: "), std::string::npos) << put.Output;
  EXPECT_EQ(Json("Gemeinsam/Fax", "e[0]['pages'], e[0]['content']['size']"), "(0, 8)");
}

TEST_F(PutCommandsTest, VoiceMessagesAndShortMessagesAreMessages) {
  ASSERT_EQ(Run({"put-voice", "--archive", "Gemeinsam/Ton", "--subject", "Anruf", "--from", "0171 1", "--to",
                 "200", WriteFile("a.wav", Wave), WriteFile("b.wav", Wave)})
                .Status,
            0);
  EXPECT_EQ(Json("Gemeinsam/Ton", "[(x['type'], x['from'], x['to'], x['content']['size']) for x in e]"),
            "[(5, '0171 1', '200', 12), (5, '0171 1', '200', 12)]");
  EXPECT_EQ(Run({"put-voice", "--archive", "Gemeinsam/Ton", WriteFile("a.tif", Tiff)}).Status, 1);
  ASSERT_EQ(
      Run({"put-sms", "--archive", "Gemeinsam/SMS", "--from", "0171 2", "--to", "0171 3", "--text", "Hallo"})
          .Status,
      0);
  EXPECT_EQ(Json("Gemeinsam/SMS", "e[0]['type'], e[0]['to'], 'content' in e[0]"), "(4, '0171 3', False)");
}

TEST_F(PutCommandsTest, EveryPropertyOfATableIsAnOptionAndAKey) {
  ASSERT_EQ(Run({"put-event", "--archive", "Gemeinsam/Termine", "--subject", "Feier", "--start-time",
                 "2026-12-01T18:00", "--all-day-event", "--days-of-week", "62", "--comment", "K"})
                .Status,
            0);
  EXPECT_EQ(
      Json("Gemeinsam/Termine",
           "[e[0]['type'], e[0]['subject'], e[0]['comment']] + [e[0]['properties'][k] for k in ('subject', "
           "'startTime', 'allDayEvent', 'daysOfWeek', 'stopTime')] + [len(e[0]['properties'])]"),
      "[7, 'Feier', 'K', 'Feier', '2026-12-01T18:00:00', True, 62, None, 23]");
  ASSERT_EQ(
      Run({"put-task", "--archive", "Gemeinsam/Aufgaben", "--subject", "Angebot", "--due-time", "24.12.2026",
           "--percent-complete", "50", "--keep-updated-copy", "--priority", "2", "--content", "a\nb"})
          .Status,
      0);
  EXPECT_EQ(Json("Gemeinsam/Aufgaben",
                 "[e[0]['type'], e[0]['priority']] + [e[0]['properties'][k] for k in ('dueTime', "
                 "'percentComplete', 'keepUpdatedCopy', 'statusReportOnCompletion', 'content')]"),
            "[12, 2, '2026-12-24T00:00:00', 50, True, None, 'a\\r\\nb']");
  ASSERT_EQ(
      Run({"put-link", "--archive", "Gemeinsam/Links", "--subject", "Preise", "--link", "Z:\\preise.pdf"})
          .Status,
      0);
  EXPECT_EQ(Json("Gemeinsam/Links", "e[0]['type'], e[0]['properties']"),
            "(8, {'subject': 'Preise', 'link': 'Z:\\\\preise.pdf'})");
  ASSERT_EQ(
      Run({"put-tv-program", "--archive", "Gemeinsam/TV", "--subject", "Tatort", "--age-limit", "12"}).Status,
      0);
  EXPECT_EQ(Json("Gemeinsam/TV", "e[0]['type'], e[0]['properties']['ageLimit']"), "(11, '12')");
}

TEST_F(PutCommandsTest, AddressesComeFromCardsAndOptions) {
  const auto cards = WriteFile("a.vcf",
                               "BEGIN:VCARD\nVERSION:3.0\nFN:Anna \xC4hre\nTEL;TYPE=cell:0171 1\nEND:VCARD\n"
                               "BEGIN:VCARD\nVERSION:3.0\nEND:VCARD\nBEGIN:VCARD\nFN:Bert\n");
  const auto put = Run({"put-address", "--archive", "Gemeinsam/Adressen", "--company", "Werk", cards,
                        WriteFile("keine.vcf", "Guten Tag\n"), directory_.HostPath("fehlt.vcf")});
  EXPECT_EQ(put.Status, 1);
  EXPECT_NE(put.Output.find("a.vcf, Zeile 6: Die Karte ist leer\n"), std::string::npos) << put.Output;
  EXPECT_NE(put.Output.find("keine.vcf: Die Datei enthält keine vCard\n"), std::string::npos) << put.Output;
  EXPECT_TRUE(put.Output.ends_with("2 Einträge abgelegt, 3 Fehler\n")) << put.Output;
  ASSERT_EQ(
      Run({"put-address", "--archive", "Gemeinsam/Adressen", "--display-name", "Carl", "--categories", "3"})
          .Status,
      0);
  EXPECT_EQ(Json("Gemeinsam/Adressen",
                 "[(x['subject'], x['properties']['mobilePhone'], x['properties']['company'], "
                 "x['properties']['categories']) for x in e]"),
            "[('Anna Ähre', '0171 1', 'Werk', None), ('Bert', None, 'Werk', None), ('Carl', None, None, 3)]");
}

TEST_F(PutCommandsTest, WrongUsageMakesNothing) {
  const std::string tiff = WriteFile("a.tif", Tiff);
  const std::vector<std::vector<std::string>> wrong{
      {"put-fax", tiff},
      {"put-fax", "--archive", "Gemeinsam/X"},
      {"put-fax", "--archive", " ", tiff},
      {"put-fax", "--archive", "Gemeinsam/X", "--date", "gestern", tiff},
      {"put-fax", "--archive", "Gemeinsam/X", "--status", "besetzt", tiff},
      {"put-fax", "--archive", "Gemeinsam/X", "--display-name", "A", tiff},
      {"put-task", "--archive", "Gemeinsam/X"},
      {"put-task", "--archive", "Gemeinsam/X", "--due-time", "31.2.2026"},
      {"put-address", "--archive", "Gemeinsam/X"},
      {"put-link", "--archive", "Gemeinsam/X", "--link", "a", tiff},
  };
  for (const auto& arguments : wrong) {
    const auto put = Run(arguments);
    EXPECT_EQ(put.Status, 2) << put.Output;
  }
  EXPECT_EQ(Run({"list"}).Output.find("/X\n"), std::string::npos) << "no archive was made";
  const auto told = Run(wrong[3]);
  EXPECT_NE(told.Output.find("--date: \"gestern\" ist kein Datum"), std::string::npos) << told.Output;
}

// As a script passes a variable that is empty.
TEST_F(PutCommandsTest, AnOptionWithNothingBehindItsEqualsSignIsEmpty) {
  const auto put = Run({"put-sms", "--archive", "Gemeinsam/X", "--subject=", "--from=0171", "--to=a=b"});
  EXPECT_EQ(put.Status, 0) << put.Output;
  EXPECT_EQ(Json("Gemeinsam/X", "[e[0][k] for k in ('subject', 'from', 'to')]"), "['', '0171', 'a=b']");
}

TEST_F(PutCommandsTest, HostileValuesAreStoredAsText) {
  const std::string longText(60'000, 'x');
  ASSERT_EQ(
      Run({"put-link", "--archive", "Gemeinsam/Links", "--subject", "a\nb\x1B[2J\xFF\"", "--link", longText})
          .Status,
      0);
  EXPECT_EQ(
      Json("Gemeinsam/Links", "e[0]['subject'] == 'a  b [2J\\ufffd\"', len(e[0]['properties']['link'])"),
      "(True, 60000)");
  const auto listed = Run({"list", "--archive", "Gemeinsam/Links"});
  EXPECT_EQ(listed.Output.find('\x1B'), std::string::npos);
}

TEST_F(PutCommandsTest, ManyAddressesTakeSeconds) {
  constexpr int count = 10'000;
  std::string cards;
  for (int i = 0; i < count; ++i) {
    const auto number = std::to_string(i);
    cards += "BEGIN:VCARD\nVERSION:3.0\nFN:Person " + number + "\nN:Nach" + number +
             ";Vor\nTEL;TYPE=work:" + number + "\nEMAIL:p" + number +
             "@example.org\nADR:;;Ring 1;Ort;;12345;Land\nNOTE:Notiz\nEND:VCARD\n";
  }
  const auto begin = std::chrono::steady_clock::now();
  const auto put = Run({"put-address", "--archive", "Gemeinsam/Adressen", WriteFile("a.vcf", cards)});
  EXPECT_EQ(put.Status, 0);
  EXPECT_EQ(put.Output, "10000 Einträge abgelegt, 0 Fehler\n");
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(60));
  EXPECT_EQ(Json("Gemeinsam/Adressen", "len(e), e[9999]['properties']['eMail']"),
            "(10000, 'p9999@example.org')");
}

TEST_F(PutCommandsTest, AUserGetsHisCard) {
  const auto card = WriteFile("bert.vcf", "BEGIN:VCARD\nVERSION:3.0\nFN:Bert Berg\nEND:VCARD\n");
  EXPECT_EQ(Run({"add-user", "Bert", "--login", "bert", "--vcard", card}).Status, 0);
  const auto bad = Run({"add-user", "Carl", "--login", "carl", "--vcard", WriteFile("leer.vcf", "")});
  EXPECT_EQ(bad.Status, 1);
  EXPECT_NE(bad.Output.find("Die Datei enthält keine vCard"), std::string::npos) << bad.Output;
  EXPECT_EQ(Run({"list"}).Output.find("/Carl"), std::string::npos) << "nothing half was made";
}

}  // namespace
}  // namespace velmora::cli
