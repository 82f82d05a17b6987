#include "startup/command_line.h"

#include <gtest/gtest.h>

namespace velmora::startup {
namespace {

TEST(CommandLine, MigrationIsTheWholeLineWhateverCaseAndBlanks) {
  EXPECT_TRUE(IsMigration("-migrate"));
  EXPECT_TRUE(IsMigration("  -MIGRATE \t"));
  EXPECT_FALSE(IsMigration("-migrate now"));
  EXPECT_FALSE(IsMigration(""));
}

TEST(CommandLine, AnUnattendedRunNeedsTheColon) {
  EXPECT_TRUE(IsUnattended("-b:x.txt"));
  EXPECT_TRUE(IsUnattended(" -B:"));
  EXPECT_FALSE(IsUnattended("-b"));
  EXPECT_FALSE(IsUnattended("-b x.txt"));
}

TEST(CommandLine, SaveOptionsAreThreeCharacters) {
  EXPECT_EQ(DecodeSaveOption("-w0"), LineOption::SaveOff);
  EXPECT_EQ(DecodeSaveOption("-W1 rest"), LineOption::SaveOnce);
  EXPECT_EQ(DecodeSaveOption("-w2"), LineOption::SaveAlways);
  EXPECT_EQ(DecodeSaveOption("-w?"), LineOption::SaveStatus);
  EXPECT_EQ(DecodeSaveOption("-wi"), LineOption::IgnoreSaved);
  EXPECT_EQ(DecodeSaveOption("-wA"), LineOption::UseSaved);
  EXPECT_EQ(DecodeSaveOption("-w3"), LineOption::None);
  EXPECT_EQ(DecodeSaveOption("-w"), LineOption::None);
  EXPECT_EQ(DecodeSaveOption(""), LineOption::None);
}

TEST(CommandLine, StartOptionsAreTwoCharacters) {
  EXPECT_EQ(DecodeStartOption("-c x"), LineOption::Archive);
  EXPECT_EQ(DecodeStartOption("-E x"), LineOption::Message);
  EXPECT_EQ(DecodeStartOption("-i"), LineOption::Integrate);
  EXPECT_EQ(DecodeStartOption("-u"), LineOption::Disintegrate);
  EXPECT_EQ(DecodeStartOption("-r"), LineOption::ForgetArchives);
  EXPECT_EQ(DecodeStartOption("-b:x"), LineOption::Batch);
  EXPECT_EQ(DecodeStartOption("-?"), LineOption::Help);
  EXPECT_EQ(DecodeStartOption("-h"), LineOption::Help);
  EXPECT_EQ(DecodeStartOption("Z:\\x"), LineOption::Path);
  EXPECT_EQ(DecodeStartOption("-"), LineOption::Path);
  EXPECT_EQ(DecodeStartOption(""), LineOption::None);
}

TEST(CommandLine, ExactlyOneCharacterSeparatesTheArgument) {
  EXPECT_EQ(ArgumentOf("-c /Archive/A"), "/Archive/A");
  EXPECT_EQ(ArgumentOf("-c:/Archive/A"), "/Archive/A");
  EXPECT_EQ(ArgumentOf("-cö/Archive/A"), "/Archive/A");
  EXPECT_EQ(ArgumentOf("-c  /Archive/A "), "/Archive/A");
  EXPECT_EQ(ArgumentOf("-c/Archive/A"), "Archive/A");
  EXPECT_EQ(ArgumentOf("-c"), "");
}

TEST(CommandLine, TheControlFileFollowsTheFirstColon) {
  EXPECT_EQ(ControlFileOf("-b:Z:\\x.txt"), "Z:\\x.txt");
  EXPECT_EQ(ControlFileOf("-b:"), "");
  EXPECT_EQ(ControlFileOf("-b"), std::nullopt);
}

TEST(CommandLine, HelpListsEveryOption) {
  EXPECT_EQ(HelpText(),
            "Kommandozeile:\r\n"
            "-b:<Steuerdatei> Batchfähiger Start, Parameterübergabe mit Steuerdatei\r\n"
            "-c <Archiv>  Aufruf aus VJQ Archiv-Kontextmenü\r\n"
            "-e <Message>  Aufruf aus VJQ Message-Kontextmenü\r\n"
            "-i  VJQ Integration aktivieren\r\n"
            "-u  VJQ Integration deaktivieren\r\n"
            "-r  Zuletzt gespeicherte Archive ignorieren\r\n"
            "-w0 Speichern der Kommandozeile in Datei deaktivieren\r\n"
            "-w1 Einmaliges Speichern der Kommandozeile in Datei beim nächsten Start aktivieren\r\n"
            "-w2 Speichern der Kommandozeile in Datei aktivieren bis zum Abschalten mit \"-w0\"\r\n"
            "-wi Gespeicherte Kommandozeile beim Start ignorieren\r\n"
            "-wa Gespeicherte Kommandozeile ohne Nachfragen benutzen\r\n"
            "-w? Status Kommandozeilenspeicherung abfragen\r\n");
}

}  // namespace
}  // namespace velmora::startup
