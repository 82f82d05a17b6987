#include "panes/commands/external_program.h"

#include <gtest/gtest.h>

namespace velmora::panes {
namespace {

using Arguments = std::vector<std::string>;
const PanePaths Paths = {R"(\\S\DAVID\in)", R"(Z:\x y)", R"(Z:\aktiv)"};

TEST(ExternalProgram, PathsStandQuotedForTheirLetters) {
  EXPECT_EQ(ExternalCommandLine("diff %l %r", Paths), R"(diff "\\S\DAVID\in" "Z:\x y")");
}

TEST(ExternalProgram, TheCaseOfTheLettersDoesNotCount) {
  EXPECT_EQ(ExternalCommandLine("diff %L", Paths), ExternalCommandLine("diff %l", Paths));
  EXPECT_EQ(ExternalCommandLine("diff %R", Paths), R"(diff "Z:\x y")");
}

TEST(ExternalProgram, WithoutALetterTheActivePathFollows) {
  EXPECT_EQ(ExternalCommandLine(R"(c:\windows\explorer.exe)", Paths),
            R"(c:\windows\explorer.exe "Z:\aktiv")");
  EXPECT_EQ(ExternalArguments("xdg-open", Paths), (Arguments{"xdg-open", R"(Z:\aktiv)"}));
}

TEST(ExternalProgram, OtherPercentSignsStay) {
  EXPECT_EQ(ExternalCommandLine("a 50% %x %", Paths), R"(a 50% %x % "Z:\aktiv")");
}

TEST(ExternalProgram, QuotedTextIsOneArgument) {
  EXPECT_EQ(ExternalArguments(R"("C:\Pro gramme\a.exe" -x "b c" %r)", Paths),
            (Arguments{R"(C:\Pro gramme\a.exe)", "-x", "b c", R"(Z:\x y)"}));
  EXPECT_EQ(ExternalArguments(R"(a --pfad=%r --leer="")", Paths),
            (Arguments{"a", R"(--pfad=Z:\x y)", "--leer="}));
}

TEST(ExternalProgram, LettersInQuotesOfTheirOwnAreOneArgumentToo) {
  EXPECT_EQ(ExternalArguments(R"(a "%r")", Paths), (Arguments{"a", R"(Z:\x y)"}));
}

TEST(ExternalProgram, APathCannotEndItsArgument) {
  const PanePaths hostile = {R"(Z:\a" -rf "b %r; rm)", "", ""};
  EXPECT_EQ(ExternalArguments("a %l", hostile), (Arguments{"a", R"(Z:\a" -rf "b %r; rm)"}));
}

TEST(ExternalProgram, TheProgramIsTheFirstArgument) {
  EXPECT_EQ(ProgramOf(R"("C:\Pro gramme\a.exe" %l)"), R"(C:\Pro gramme\a.exe)");
  EXPECT_EQ(ProgramOf("  a b"), "a");
  EXPECT_EQ(ProgramOf(""), "");
}

TEST(ExternalProgram, AnEmptySettingNamesNoProgramButThePath) {
  EXPECT_EQ(ExternalCommandLine("", Paths), R"( "Z:\aktiv")");
}

}  // namespace
}  // namespace velmora::panes
