// The run of an address export: the walk through the archives, the folders, the log, the counters, a cancel.
#include "addresses/address_export.h"

#include <algorithm>

#include "addresses/address_fixture.h"
#include "addresses/delimited_text.h"
#include "base/text.h"
#include "mailarchive/format/marker.h"
#include "store/vocabulary.h"
#include "support/fake_store.h"
#include "support/manual_clock.h"
#include "support/scripted_front_end.h"
#include "tables/sheet_table.h"
#include "tables/workbook.h"

namespace velmora::addresses {
namespace {

using store::AddressProperty;
using test::Fault;

class AddressExportTest : public AddressFilesTest {
 protected:
  AddressExportTest() {
    EXPECT_TRUE(host->CreateFolder(dir.Path("log")));
    EXPECT_TRUE(host->CreateFolder(dir.Path("ziel")));
    session.Account = store.MakeAccount();
    session.ServerName = "SERVER";
    options.Format = AddressFormat::Delimited;
    options.Target = {dir.Path("ziel\\"), "Adressbuch.csv"};
    root = &store.AddArchive(nullptr, "Kontakte", R"(\\SERVER\DAVID\ARCHIVE\K)");
  }

  test::FakeMail& AddAddress(test::FakeArchiveData& archive, const std::string& name) {
    test::FakeMail& entry = store.AddEntry(archive, store::item_type::Address, name);
    entry.Address[AddressProperty::DisplayName] = name;
    return entry;
  }
  test::FakeArchiveData& AddSub(test::FakeArchiveData& parent, const std::string& name,
                                const std::string& directory) {
    return store.AddArchive(&parent, name, parent.ID + "\\" + directory);
  }
  void Run(AddressSource source = AddressSource::CurrentArchive) {
    RunAddressExport(run, session, {source, root->FullPath, options});
  }
  // The display names in a delimited file.
  Strings Addresses(std::string_view file) {
    const auto bytes = host->ReadFile(dir.Path("ziel\\" + std::string(file)));
    if (!bytes) return {"no file"};
    Strings names;
    for (const std::string& line : Split(FromCodePage(*bytes), "\r\n")) {
      names.push_back(std::string(LeftCharacters(line, line.find(';'))));
    }
    EXPECT_EQ(names.front(), "\"Anzeigename\"");
    EXPECT_EQ(names.back(), "");
    names.erase(names.begin());
    names.pop_back();
    for (std::string& name : names) name = ReplaceAll(name, "\"", "");
    return names;
  }
  Strings TargetNames(std::string_view folder = "") {
    Strings names = Names(folder.empty() ? "ziel" : "ziel\\" + std::string(folder));
    std::erase(names, "VelmoraAddrArc.vla");
    return names;
  }
  std::string Log() {
    const auto bytes = host->ReadFile(run.ErrorLogPath());
    if (!bytes) return "";
    return FromCodePage(bytes->substr(bytes->find("\r\n") + 2));  // without the line that says when it began
  }
  int ErrorBoxes() {
    return static_cast<int>(std::ranges::count(
        frontEnd.Boxes, test::ScriptedFrontEnd::Box{"Fehler", "Fehler beim Adressenexport", false}));
  }

  test::ManualClock clock;
  test::ScriptedFrontEnd frontEnd;
  run::Run run{files, clock, frontEnd.Set(), dir.Path("log")};
  test::FakeStore store{files};
  store::Session session;
  AddressExportOptions options;
  test::FakeArchiveData* root = nullptr;
};

TEST_F(AddressExportTest, AnArchiveGoesIntoTheFileOfTheTarget) {
  AddAddress(*root, "A");
  AddAddress(*root, "B");
  AddAddress(AddSub(*root, "Unter", "U"), "C");
  Run();
  EXPECT_EQ(TargetNames(), Strings{"Adressbuch.csv"});
  EXPECT_EQ(Addresses("Adressbuch.csv"), (Strings{"A", "B"}));
  EXPECT_EQ(run.counters.Addresses, 2);
  EXPECT_EQ(run.counters.Archives, 1);
  EXPECT_EQ(frontEnd.ProgressTitles, Strings{"Adressen exportieren"});
  EXPECT_EQ(frontEnd.ArchiveTexts, Strings{"/Kontakte"});
  EXPECT_EQ(frontEnd.ItemTexts, (Strings{"A", "B"}));
  EXPECT_EQ(frontEnd.ProgressClosed, 1);
  ASSERT_EQ(frontEnd.Boxes.size(), 1u);
  EXPECT_EQ(frontEnd.Boxes[0].Title, "Beendet");
  EXPECT_NE(frontEnd.Boxes[0].Text.find("2 Adresse(n)\r\n"), std::string::npos);
  EXPECT_NE(frontEnd.Boxes[0].Text.find("mit 0 Fehler(n)"), std::string::npos);
  EXPECT_EQ(Log(), "");
}

TEST_F(AddressExportTest, TheSummaryMayBeSuppressed) {
  options.ShowSummary = false;
  AddAddress(*root, "A");
  Run();
  EXPECT_TRUE(frontEnd.Boxes.empty());
}

TEST_F(AddressExportTest, CountersStartAnewAndTheLogIsClearedWhenWanted) {
  run.LogError("alt", 1, "alt", run::Severity::Error);
  run.counters.Addresses = 7;
  AddAddress(*root, "A");
  Run();
  EXPECT_EQ(run.counters.Addresses, 1);
  EXPECT_EQ(run.counters.Errors, 0);
  EXPECT_NE(Log(), "");
  options.ClearErrorLog = true;
  Run();
  EXPECT_EQ(Log(), "");
}

TEST_F(AddressExportTest, ASecondRunAppendsAndOverwritingBeginsAnew) {
  AddAddress(*root, "A");
  Run();
  Run();
  EXPECT_EQ(Addresses("Adressbuch.csv"), (Strings{"A", "A"}));
  options.Overwrite = true;
  Run();
  EXPECT_EQ(Addresses("Adressbuch.csv"), Strings{"A"});
}

TEST_F(AddressExportTest, OnlyWhatOpensAsAnAddressIsExportedAndTheRestLeftOutSilently) {
  store.AddMail(*root, "Mail");
  AddAddress(*root, "kaputt").ViewFails = true;
  AddAddress(*root, "A");
  Run();
  EXPECT_EQ(Addresses("Adressbuch.csv"), Strings{"A"});
  EXPECT_EQ(Log(), "");
}

TEST_F(AddressExportTest, AnAddressThatCannotBeReadIsLoggedAndTheRunGoesOn) {
  AddAddress(*root, "kaputt").FailingField = store::tag::Subject;
  AddAddress(*root, "A");
  Run();
  EXPECT_EQ(Addresses("Adressbuch.csv"), Strings{"A"});
  EXPECT_EQ(run.counters.Addresses, 1);
  EXPECT_EQ(Log(), " Fehler: 1006 - DvISE-Error Adresse nicht lesbar -> /Kontakte\r\n");
}

TEST_F(AddressExportTest, EntriesThatAUserHidHaveToBeWanted) {
  AddAddress(*root, "versteckt").Fields[store::tag::Flags] = std::int64_t{store::item_flag::UserInhibited};
  AddAddress(*root, "A");
  options.InhibitItems = false;
  Run();
  EXPECT_EQ(Addresses("Adressbuch.csv"), Strings{"A"});
  options.InhibitItems = options.Overwrite = true;
  Run();
  EXPECT_EQ(Addresses("Adressbuch.csv"), (Strings{"versteckt", "A"}));
}

TEST_F(AddressExportTest, AnArchiveWithoutAddressesProducesNothing) {
  store.AddMail(*root, "Mail");
  AddSub(*root, "Unter", "U");
  for (const bool withSubArchives : {false, true}) {
    options.WithSubArchives = withSubArchives;
    Run();
    EXPECT_EQ(TargetNames(), Strings{});
    EXPECT_EQ(run.counters.Archives, 0);
  }
}

class AddressTreeTest : public AddressExportTest {
 protected:
  AddressTreeTest() {
    options.WithSubArchives = true;
    AddAddress(*root, "A");
  }
  std::string Marker(std::string_view folder) {
    const auto bytes = host->ReadFile(dir.Path("ziel\\" + std::string(folder) + "\\VelmoraAddrArc.vla"));
    return bytes ? FromCodePage(*bytes) : "no marker";
  }
};

TEST_F(AddressTreeTest, EachArchiveGetsAMarkedFolder) {
  options.CopyRight = "(c)";
  options.Comment = "Anmerkung";
  AddAddress(AddSub(*root, "Käufer: A/B #1", "KAEUFER"), "B");
  Run();
  EXPECT_EQ(TargetNames(), Strings{"Kontakte"});
  EXPECT_EQ(TargetNames("Kontakte"), (Strings{"Adressbuch.csv", "Kaeufer- A-B #1"}));
  EXPECT_EQ(Addresses("Kontakte\\Kaeufer- A-B #1\\Adressbuch.csv"), Strings{"B"});
  EXPECT_EQ(Marker("Kontakte\\Kaeufer- A-B #1"),
            ";Velmora Address Archive\r\nArchiveDisplayName=Käufer: A/B #1\r\n"
            "ArchiveFullPath=/Kontakte/Käufer: A/B #1\r\nArchiveDirName=KAEUFER\r\n"
            "ArchiveComment=Anmerkung\r\nArchiveCopyRight=(c)\r\n\r\n");
  EXPECT_EQ(run.counters.Archives, 2);
  EXPECT_EQ(run.counters.Addresses, 2);
}

TEST_F(AddressTreeTest, ASecondRunMakesFoldersOfNewNamesAndOverwritingReusesThem) {
  Run();
  Run();
  Run();
  EXPECT_EQ(TargetNames(), (Strings{"Kontakte", "Kontakte1", "Kontakte2"}));
  options.Overwrite = true;
  Run();
  EXPECT_EQ(TargetNames(), (Strings{"Kontakte", "Kontakte1", "Kontakte2"}));
  EXPECT_EQ(Addresses("Kontakte\\Adressbuch.csv"), Strings{"A"});
}

TEST_F(AddressTreeTest, AFolderUsedAgainIsMarkedForItsArchiveButAMailArchiveKeepsItsMarker) {
  options.Overwrite = true;
  ASSERT_TRUE(host->CreateFolder(dir.Path("ziel\\Kontakte")));
  mailarchive::MarkerTexts other;
  other.DisplayName = "Anderes";
  const auto mark = [&](mailarchive::MailArcKind kind) {
    ASSERT_TRUE(mailarchive::WriteArchiveMarker(*host, dir.Path("ziel\\Kontakte"), kind, other, true));
  };
  mark(mailarchive::MailArcKind::Address);
  Run();
  EXPECT_NE(Marker("Kontakte").find("ArchiveDisplayName=Kontakte\r\n"), std::string::npos);
  mark(mailarchive::MailArcKind::Sub);
  Run();
  EXPECT_EQ(Marker("Kontakte"), "no marker");
  EXPECT_EQ(mailarchive::GetMailArcKind(*host, dir.Path("ziel\\Kontakte")), mailarchive::MailArcKind::Sub);
}

// Overwriting reuses folders, but never one that the same run has just filled.
TEST_F(AddressTreeTest, ArchivesOfOneNameNeverShareAFolder) {
  AddAddress(AddSub(*root, "Kunden", "K1"), "B");
  AddAddress(AddSub(*root, "Kunden", "K2"), "C");
  AddAddress(AddSub(*root, "KUNDEN", "K3"), "D");
  for (const bool overwrite : {false, true, true}) {
    options.Overwrite = overwrite;
    Run();
    EXPECT_EQ(TargetNames("Kontakte"), (Strings{"Adressbuch.csv", "Kunden", "Kunden1", "KUNDEN2"}));
    EXPECT_EQ(Addresses("Kontakte\\Kunden\\Adressbuch.csv"), Strings{"B"});
    EXPECT_EQ(Addresses("Kontakte\\Kunden1\\Adressbuch.csv"), Strings{"C"});
    EXPECT_EQ(Addresses("Kontakte\\KUNDEN2\\Adressbuch.csv"), Strings{"D"});
  }
}

TEST_F(AddressTreeTest, AnArchiveWithoutAddressesGetsAFolderOnlyForThoseBelowIt) {
  test::FakeArchiveData& middle = AddSub(*root, "Mitte", "M");
  AddSub(*root, "Leer", "L");
  AddAddress(AddSub(middle, "Tief", "T"), "B");
  Run();
  EXPECT_EQ(TargetNames("Kontakte"), (Strings{"Adressbuch.csv", "Mitte"}));
  EXPECT_EQ(TargetNames("Kontakte\\Mitte"), Strings{"Tief"});
  EXPECT_NE(Marker("Kontakte\\Mitte").find("ArchiveFullPath=/Kontakte/Mitte\r\n"), std::string::npos);
  EXPECT_EQ(Addresses("Kontakte\\Mitte\\Tief\\Adressbuch.csv"), Strings{"B"});
  EXPECT_EQ(run.counters.Archives, 2);
}

TEST_F(AddressTreeTest, AnArchiveWithoutANameIsKnownByItsDirectory) {
  test::FakeArchiveData& sub = AddSub(*root, "x", "NAMENLOS");
  sub.DisplayName = " ";
  AddAddress(sub, "B");
  Run();
  EXPECT_EQ(Addresses("Kontakte\\NAMENLOS\\Adressbuch.csv"), Strings{"B"});
}

TEST_F(AddressTreeTest, ANameOfForbiddenCharactersIsMadeSafe) {
  root->DisplayName = "..\\..\\/:*<>|";
  Run();
  EXPECT_EQ(TargetNames(), Strings{"__-__---+()-"});
}

TEST_F(AddressTreeTest, AFileInTheWayGivesTheFolderANumber) {
  dir.WriteHostFile("ziel/Kontakte", "Datei");
  options.Overwrite = true;
  Run();
  EXPECT_EQ(TargetNames(), (Strings{"Kontakte", "Kontakte1"}));
}

TEST_F(AddressTreeTest, ShortCutsAreNotFollowed) {
  test::FakeArchiveData& other = store.AddArchive(nullptr, "Andere", R"(\\SERVER\DAVID\ARCHIVE\A)");
  AddAddress(other, "fremd");
  store.AddLink(*root, other);
  Run();
  EXPECT_EQ(TargetNames("Kontakte"), Strings{"Adressbuch.csv"});
}

TEST_F(AddressTreeTest, AnArchiveThatRefersBackToAParentIsLeftOutAndTheWalkEnds) {
  test::FakeArchiveData& sub = AddSub(*root, "Unter", "U");
  AddAddress(sub, "B");
  // Two records that name their own ancestors, in another spelling.
  for (const test::FakeArchiveData* ancestor : {root, &sub}) {
    auto circular = std::make_shared<test::FakeArchiveData>(*ancestor);
    circular->ID = ToLower(circular->ID) + "\\";
    sub.SubArchives.push_back(circular);
  }
  Run();
  EXPECT_EQ(TargetNames("Kontakte\\Unter"), Strings{"Adressbuch.csv"});
  EXPECT_EQ(run.counters.Addresses, 2);
  EXPECT_EQ(Log(), "");
}

TEST_F(AddressTreeTest, AFolderThatCannotBeMadeIsToldAndTheNextArchiveFollows) {
  AddAddress(AddSub(*root, "Eins", "E"), "B");
  AddAddress(AddSub(*root, "Zwei", "Z"), "C");
  files.FailOn(Fault::CreateFolder, 2, platform::file_error::AccessDenied);
  Run();
  EXPECT_EQ(TargetNames("Kontakte"), (Strings{"Adressbuch.csv", "Zwei"}));
  EXPECT_NE(Log().find(" Fehler: 70 - "), std::string::npos);
  EXPECT_NE(Log().find("Kontakte\\Eins"), std::string::npos);
  EXPECT_EQ(ErrorBoxes(), 1);
  EXPECT_EQ(run.counters.Addresses, 2);
}

TEST_F(AddressExportTest, AFileThatCannotBeOpenedIsLoggedWithItsPathAndABoxTells) {
  AddAddress(*root, "A");
  ASSERT_TRUE(host->CreateFolder(dir.Path("ziel\\Adressbuch.csv")));
  Run();
  EXPECT_EQ(Log(), " Fehler: 70 - " + platform::FileErrorText(70) + " -> " +
                       dir.Path("ziel\\Adressbuch.csv") + "\r\n");
  EXPECT_EQ(ErrorBoxes(), 1);
  EXPECT_EQ(run.counters.Addresses, 0);
  EXPECT_EQ(run.counters.Archives, 1);
}

TEST_F(AddressExportTest, AnUnattendedRunShowsNoBox) {
  run.BatchMode = true;
  AddAddress(*root, "A");
  options.Target.Directory = dir.Path("fehlt\\");
  Run();
  EXPECT_TRUE(frontEnd.Boxes.empty());
  EXPECT_EQ(run.counters.Errors, 1);
}

TEST_F(AddressExportTest, AFullDiskIsToldOnceAndCountsNothingThatIsNotInTheFile) {
  dir.WriteHostFile("ziel/Adressbuch.csv", "Kopf\r\n");
  for (int i = 0; i < 10; ++i) AddAddress(*root, "A");
  files.FailOn(Fault::ShortWrite, 1, platform::file_error::DiskFull);
  Run();
  EXPECT_EQ(run.counters.Addresses, 0);
  EXPECT_EQ(run.counters.Errors, 1);
  EXPECT_EQ(ErrorBoxes(), 1);
  EXPECT_EQ(Read("ziel/Adressbuch.csv"), "Kopf\r\n");
}

TEST_F(AddressExportTest, CharactersThatTheFileCannotHoldAreAWarning) {
  AddAddress(*root, "Привет");
  Run();
  const std::string warning = "1 Adresse(n) mit Zeichen, die es in Textdateien nicht gibt: dort steht \"?\"";
  EXPECT_EQ(Log(), " Warnung: 0 - " + warning + " -> " + dir.Path("ziel\\Adressbuch.csv") + "\r\n");
  EXPECT_EQ(ErrorBoxes(), 0);
  options.Format = AddressFormat::VCard;
  options.Target = {dir.Path("ziel\\"), ""};
  options.ClearErrorLog = true;
  Run();
  EXPECT_EQ(Log(), " Warnung: 0 - " + warning + " -> " + dir.Path("ziel\\") + "\r\n");
}

TEST_F(AddressExportTest, ACancelledRunKeepsWhatItHas) {
  for (int i = 0; i < 5; ++i) AddAddress(*root, "A" + std::to_string(i));
  frontEnd.CancelAtPump = 8;  // five pumps gather the keys
  Run();
  EXPECT_EQ(Addresses("Adressbuch.csv"), (Strings{"A0", "A1"}));
  EXPECT_EQ(run.counters.Addresses, 2);
  EXPECT_EQ(Log(), " Fehler: -1 - CancelReq -> Abbruch durch Benutzer\r\n");
}

TEST_F(AddressExportTest, ACancelBeforeTheFirstAddressLeavesNothing) {
  AddAddress(*root, "A");
  frontEnd.CancelAtPump = 1;
  Run();
  EXPECT_EQ(TargetNames(), Strings{});
}

TEST_F(AddressExportTest, AnArchiveThatCannotBeFoundOrListedIsTold) {
  root->EntriesFail = true;
  Run();
  EXPECT_EQ(Log(), " Fehler: 1006 - DvISE-Error Archiv beschädigt -> /Kontakte\r\n");
  EXPECT_EQ(ErrorBoxes(), 1);
  RunAddressExport(run, session, {AddressSource::CurrentArchive, "/Weg", options});
  EXPECT_NE(Log().find("DvISE-Error Archiv nicht gefunden -> /Weg\r\n"), std::string::npos);
  RunAddressExport(run, session, {AddressSource::PublicAddresses, "", options});
  EXPECT_NE(Log().find("DvISE-Error Archiv nicht gefunden -> SERVER\r\n"), std::string::npos);
  EXPECT_EQ(ErrorBoxes(), 3);
}

TEST_F(AddressExportTest, AFailureInASheetNamesFileAndSheetAndKeepsWhatItHas) {
  tables::Workbook workbook;
  workbook.Sheets.push_back({"Adressen", {{tables::Cell("Anzeigename")}}, 1});
  ASSERT_TRUE(tables::WriteWorkbook(*host, dir.Path("ziel\\Adressbuch.xls"), workbook));
  options.Format = AddressFormat::Excel;
  options.Target.FileName = "Adressbuch.xls";
  AddAddress(*root, "A");
  AddAddress(*root, "B");
  Run();
  EXPECT_NE(Log().find(" Fehler: 3265 - "), std::string::npos);
  EXPECT_NE(Log().find(" -> " + dir.Path("ziel\\Adressbuch.xls") + ":Adressen\r\n"), std::string::npos);
  EXPECT_EQ(run.counters.Errors, 1);  // the loop ends with the first one
  EXPECT_EQ(run.counters.Addresses, 0);
}

TEST_F(AddressExportTest, ATemplateThatIsMissingIsLoggedAndTheWorkbookMade) {
  options.Format = AddressFormat::Excel;
  options.Target.FileName = "Adressbuch.xls";
  options.Files.WorkbookTemplate = dir.Path("fehlt.xls");
  AddAddress(*root, "A");
  Run();
  EXPECT_NE(Log().find(" -> " + dir.Path("fehlt.xls") + "\r\n"), std::string::npos);
  EXPECT_EQ(ErrorBoxes(), 0);
  EXPECT_EQ(run.counters.Addresses, 1);
  EXPECT_TRUE(tables::OpenAddressSheet(*host, dir.Path("ziel\\Adressbuch.xls"), "Adressen"));
}

class VCardExportTest : public AddressExportTest {
 protected:
  VCardExportTest() {
    options.Format = AddressFormat::VCard;
    options.Target.FileName.clear();
  }
};

TEST_F(VCardExportTest, EachAddressIsAFileNamedForItsSubject) {
  AddAddress(*root, "Müller #1. & Söhne");
  AddAddress(*root, std::string(58, 'x') + "yz");
  Run();
  EXPECT_EQ(TargetNames(), (Strings{"Mueller _1_ & Soehne.vcf", std::string(58, 'x') + "y.vcf"}));
  EXPECT_NE(Read("ziel/Mueller _1_ & Soehne.vcf").find("\r\nFN:Müller #1. & Söhne\r\n"), std::string::npos);
  EXPECT_NE(Read("ziel/Mueller _1_ & Soehne.vcf").find("\r\nREV:20261231T235900Z\r\n"), std::string::npos);
  EXPECT_EQ(run.counters.Addresses, 2);
}

TEST_F(VCardExportTest, ATakenNameGetsANumberAlsoWhenOverwriting) {
  AddAddress(*root, "Anna");
  AddAddress(*root, "Anna");
  AddAddress(*root, std::string(70, 'x'));
  AddAddress(*root, std::string(71, 'x'));
  const std::string longName(59, 'x');
  Run();
  EXPECT_EQ(TargetNames(), (Strings{"Anna.vcf", "Anna1.vcf", longName + ".vcf", longName + "1.vcf"}));
  options.Overwrite = true;
  Run();
  EXPECT_EQ(TargetNames().size(), 8u);
}

TEST_F(VCardExportTest, AnAddressWithoutASubjectIsNamedForItsDisplayName) {
  AddAddress(*root, "Anna").Fields[store::tag::Subject] = " ";
  Run();
  EXPECT_EQ(TargetNames(), Strings{"Anna.vcf"});
}

TEST_F(VCardExportTest, NamesOfForbiddenCharactersOrNoneAreFilesAllTheSame) {
  AddAddress(*root, "/\\:*?");
  AddAddress(*root, "..");
  AddAddress(*root, "");
  AddAddress(*root, "");
  Run();
  EXPECT_EQ(TargetNames(), (Strings{"---+ .vcf", ".vcf", "1.vcf", "__.vcf"}));
  EXPECT_EQ(run.counters.Addresses, 4);
  EXPECT_EQ(Log(), "");
}

TEST_F(VCardExportTest, ACardThatCannotBeWrittenIsLoggedAndTheNextOneFollows) {
  AddAddress(*root, "A");
  AddAddress(*root, "B");
  files.FailOn(Fault::Write, 1, platform::file_error::DiskFull);
  Run();
  EXPECT_EQ(TargetNames(), Strings{"B.vcf"});
  EXPECT_EQ(Log(),
            " Fehler: 61 - " + platform::FileErrorText(61) + " -> " + dir.Path("ziel\\A.vcf") + "\r\n");
  EXPECT_EQ(run.counters.Addresses, 1);
  EXPECT_EQ(ErrorBoxes(), 0);
}

TEST_F(VCardExportTest, SubArchivesAreFoldersOfCards) {
  options.WithSubArchives = true;
  AddAddress(*root, "A");
  AddAddress(AddSub(*root, "Unter", "U"), "B");
  Run();
  EXPECT_EQ(TargetNames("Kontakte"), (Strings{"A.vcf", "Unter"}));
  EXPECT_EQ(TargetNames("Kontakte\\Unter"), Strings{"B.vcf"});
}

}  // namespace
}  // namespace velmora::addresses
