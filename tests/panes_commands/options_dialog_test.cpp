#include "panes/dialogs/options_dialog.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <set>

#include "platform/host_file_system.h"
#include "support/scripted_front_end.h"
#include "support/temp_dir.h"

namespace velmora::panes {
namespace {

class OptionsDialogTest : public testing::Test {
 protected:
  OptionsDialogTest() {
    std::filesystem::create_directory(directory.HostPath("Designs"));
    directory.WriteHostFile("Designs/Standard.ini", "");
    directory.WriteHostFile("Designs/Firma.ini", "");
    directory.WriteHostFile("Designs/Mail.htm", "");
    options.DesignPath = directory.Path("Designs");
    session.Trustees = session.ServerTrustees = 0x10 | 0x200 | 0x1000 | 0x2000;
  }
  OptionsDialog Dialog() { return {*files, options, session, isOsAdministrator}; }
  static const OptionField& Field(std::string_view control) {
    const OptionField* const field = FindOptionField(control);
    if (field == nullptr) throw std::runtime_error("no field " + std::string(control));
    return *field;
  }
  run::Prompts& prompts() { return set.prompts; }

  test::TempDir directory;
  std::unique_ptr<platform::FileSystem> files = platform::MakeHostFileSystem({{"Z:", "/"}});
  settings::Options options;
  store::Session session;
  bool isOsAdministrator = true;
  test::ScriptedFrontEnd front;
  run::FrontEnd set = front.Set();
};

TEST_F(OptionsDialogTest, EachFieldStandsOnceOnAPageThatExists) {
  std::set<std::string_view> controls;
  std::size_t count = 0;
  for (const OptionPageText& page : OptionPages()) {
    EXPECT_FALSE(FieldsOf(page.Page).empty()) << page.Caption;
    count += FieldsOf(page.Page).size();
  }
  EXPECT_EQ(count, OptionFields().size());
  for (const OptionField& field : OptionFields()) {
    EXPECT_TRUE(controls.insert(field.Control).second) << field.Control;
    EXPECT_EQ(field.Choices.empty(), field.Kind != OptionKind::Choice) << field.Control;
    if (field.Kind == OptionKind::Number) {
      EXPECT_LT(field.Minimum, field.Maximum) << field.Control;
    }
  }
}

TEST_F(OptionsDialogTest, SettingsChangeWithOkOnly) {
  OptionsDialog dialog = Dialog();
  EXPECT_TRUE(dialog.SwitchOf(Field("EnAutoSaveSettings")));
  dialog.SetSwitch(Field("EnAutoSaveSettings"), false);
  dialog.SetNumber(Field("InpSizeCheck"), 500);
  dialog.SetText(Field("InpExternalApplication"), "xdg-open %l");
  EXPECT_TRUE(options.AutoSaveSettings);
  const OptionsAnswer answer = dialog.Ok(prompts());
  EXPECT_TRUE(answer.Closes && answer.AnyChanged);
  EXPECT_FALSE(answer.Saves || answer.DesignChanged || answer.TextsChanged);
  EXPECT_FALSE(options.AutoSaveSettings);
  EXPECT_EQ(options.SizeCheck, 500);
  EXPECT_EQ(options.ExternalApplication, "xdg-open %l");
}

TEST_F(OptionsDialogTest, UnchangedSettingsNeedNoNewLists) {
  const settings::Options before = options;
  const OptionsAnswer answer = Dialog().Save(prompts());
  EXPECT_TRUE(answer.Closes && answer.Saves);
  EXPECT_FALSE(answer.AnyChanged);
  EXPECT_EQ(options, before);
}

TEST_F(OptionsDialogTest, TellsWhatFollowsAChange) {
  OptionsDialog dialog = Dialog();
  dialog.SetText(Field("InpArchiveDesign"), "Firma");
  dialog.SetText(Field("ArcFormComment"), "neu");
  dialog.SetText(Field("InpTempDirPath"), directory.HostPath("temp"));
  const OptionsAnswer answer = dialog.Ok(prompts());
  EXPECT_TRUE(answer.DesignChanged && answer.TextsChanged);
  EXPECT_EQ(options.TempDirPath, directory.Path("temp"));  // in the program's form
}

TEST_F(OptionsDialogTest, NumbersOutOfRangeShowWhatTheyWorkAs) {
  options.SizeCheck = -5;
  options.AddressExportFormat = 77;
  options.SaveCmdLineMode = 3;
  OptionsDialog dialog = Dialog();
  EXPECT_EQ(dialog.NumberOf(Field("InpSizeCheck")), 0);
  EXPECT_EQ(dialog.NumberOf(Field("InpAddressExportFormat")), 2);
  EXPECT_EQ(dialog.NumberOf(Field("InpSaveCmdLine")), 0);
  dialog.SetNumber(Field("InpSizeCheck"), -1);
  dialog.SetNumber(Field("InpAddressExportFormat"), 9);
  EXPECT_EQ(dialog.NumberOf(Field("InpSizeCheck")), 0);
  EXPECT_EQ(dialog.NumberOf(Field("InpAddressExportFormat")), 2);
  dialog.SetNumber(Field("InpAddressExportFormat"), 4);
  EXPECT_EQ(dialog.NumberOf(Field("InpAddressExportFormat")), 4);
}

TEST_F(OptionsDialogTest, NamesOfFoldersLeadNowhereElse) {
  for (const std::string_view name : {"", " ", "..", "a\\b", "a/b", "C:", "a*", "x."}) {
    OptionsDialog dialog = Dialog();
    dialog.SetText(Field("InpEMLFolder"), name);
    EXPECT_FALSE(dialog.Ok(prompts()).Closes) << name;
    EXPECT_EQ(options.EMLFolder, "Eml");
    EXPECT_EQ(front.Boxes.back().Title, "Einstellungen");
  }
  OptionsDialog dialog = Dialog();
  dialog.SetText(Field("InpEMLFolder"), "Originale\\");  // one backslash at the end is no part of the name
  EXPECT_TRUE(dialog.Ok(prompts()).Closes);
  EXPECT_EQ(options.EMLFolder, "Originale");
}

TEST_F(OptionsDialogTest, ASeparatorIsOneCharacter) {
  for (const std::string_view text : {"", ";;"}) {
    OptionsDialog dialog = Dialog();
    dialog.SetText(Field("InpCSVSeparator"), text);
    EXPECT_FALSE(dialog.Ok(prompts()).Closes) << text;
  }
  OptionsDialog dialog = Dialog();
  dialog.SetText(Field("InpCSVSeparator"), "\t");
  EXPECT_TRUE(dialog.Ok(prompts()).Closes);
}

TEST_F(OptionsDialogTest, TheDesignDirectoryMustExist) {
  OptionsDialog dialog = Dialog();
  dialog.SetText(Field("InpDesignPath"), directory.Path("fehlt"));
  EXPECT_FALSE(dialog.Ok(prompts()).Closes);
  EXPECT_EQ(options.DesignPath, directory.Path("Designs"));
}

TEST_F(OptionsDialogTest, DesignSetsAreTheFilesOfTheDirectory) {
  EXPECT_EQ(Dialog().DesignNames(), (std::vector<std::string>{"Firma", "Standard"}));
  OptionsDialog dialog = Dialog();
  dialog.SetText(Field("InpDesignPath"), directory.Path("fehlt"));
  EXPECT_TRUE(dialog.DesignNames().empty());
}

TEST_F(OptionsDialogTest, ForcedRightsNeedTheWorkstationAndTheConsoleRight) {
  const OptionField& field = Field("EnForceStandardRights");
  EXPECT_TRUE(Dialog().IsEnabled(field));
  isOsAdministrator = false;
  OptionsDialog other = Dialog();
  EXPECT_FALSE(other.IsEnabled(field));
  other.SetSwitch(field, true);
  EXPECT_FALSE(other.SwitchOf(field));
  isOsAdministrator = true;
  session.Trustees = 0x200;  // cut: what the server gives is what counts
  EXPECT_TRUE(Dialog().IsEnabled(field));
  session.ServerTrustees = 0x200;
  EXPECT_FALSE(Dialog().IsEnabled(field));
}

TEST_F(OptionsDialogTest, ForcedRightsTakeEffectWithOk) {
  OptionsDialog dialog = Dialog();
  dialog.SetSwitch(Field("EnForceStandardRights"), true);
  EXPECT_FALSE(session.ForcedRights);
  EXPECT_TRUE(dialog.Ok(prompts()).AnyChanged);
  EXPECT_TRUE(session.ForcedRights);
}

TEST_F(OptionsDialogTest, DeletingArchivesNeedsTheRight) {
  EXPECT_TRUE(Dialog().IsEnabled(Field("EnDeleteArchive")));
  session.Trustees = 0x10;
  EXPECT_FALSE(Dialog().IsEnabled(Field("EnDeleteArchive")));
}

TEST_F(OptionsDialogTest, FoldersHaveNamesOnlyWhereTheyAreApart) {
  OptionsDialog dialog = Dialog();
  EXPECT_TRUE(dialog.IsEnabled(Field("InpFaxFolder")));
  dialog.SetSwitch(Field("EnSeparateAttachmentsFolder"), false);
  EXPECT_FALSE(dialog.IsEnabled(Field("InpFaxFolder")));
}

TEST_F(OptionsDialogTest, PickersFillTheirFields) {
  OptionsDialog dialog = Dialog();
  front.Inputs = {R"(Z:\Pro gramme\x)", R"(Z:\ziel)", std::nullopt};
  dialog.Browse(Field("InpExternalApplication"), set.choosers);
  EXPECT_EQ(dialog.TextOf(Field("InpExternalApplication")), R"("Z:\Pro gramme\x")");
  dialog.Browse(Field("InpCSVAddressPath"), set.choosers);
  EXPECT_EQ(dialog.TextOf(Field("InpCSVAddressPath")), R"(Z:\ziel)");
  dialog.Browse(Field("InpCSVAddressPath"), set.choosers);
  EXPECT_EQ(dialog.TextOf(Field("InpCSVAddressPath")), R"(Z:\ziel)");
}

TEST_F(OptionsDialogTest, TextsThatArePromised) {
  EXPECT_EQ(Field("EnDisplayArcSize").Caption, "Archivgröße anzeigen (langsam)");
  EXPECT_EQ(Field("EnForceStandardRights").Tip,
            "Die Rechte des Benutzers werden, unabhängig von den David-Rechten, immer auf Standard-Benutzer "
            "begrenzt. Die Beschränkung kann nur geändert werden, wenn der Benutzer der Arbeitsstation "
            "Administratorrechte und David-Konsolenberechtigung hat.");
}

}  // namespace
}  // namespace velmora::panes
