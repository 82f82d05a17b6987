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
  const std::string help = HelpText();
  EXPECT_TRUE(help.starts_with("Kommandozeile:\r\n-b:<Steuerdatei> Batchfähiger Start"));
  EXPECT_NE(help.find("\r\n-c <Archiv>  Aufruf aus VJQ Archiv-Kontextmenü\r\n"), std::string::npos);
  EXPECT_TRUE(help.ends_with("-w? Status Kommandozeilenspeicherung abfragen\r\n"));
}

}  // namespace
}  // namespace velmora::startup
