// What the dialog "Einstellungen" offers: pages and fields, in their order. A field that stands for a setting
// names its member; the dialog is built from this table.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <variant>

#include "settings/options.h"

namespace velmora::panes {

enum class OptionPage { General, View, MailArchive, Addresses, TempDir, Rights };

struct OptionPageText {
  OptionPage Page;
  std::string_view Control, Caption;
};
std::span<const OptionPageText> OptionPages();

enum class OptionKind {
  Switch,
  Number,  // from Minimum to Maximum
  Choice,  // a number, one of Choices
  Text,
  MultiLine,   // a text of several lines
  FolderName,  // the name of a folder, without a path
  FileName,    // the name of a file, without a path
  Folder,      // a path, with a folder picker
  Program,     // a command line, with a file picker
  Design,      // one of OptionsDialog::DesignNames
  Separator,   // a character
  Forced,      // ForceStandardRights, which is the machine's
};

struct OptionChoice {
  std::int32_t Value;
  std::string_view Caption;
};

using OptionMember = std::variant<std::monostate, bool settings::Options::*,
                                  std::int32_t settings::Options::*, std::string settings::Options::*>;

struct OptionField {
  OptionPage Page;
  std::string_view Control;
  std::string_view Caption;
  OptionKind Kind;
  OptionMember Member;
  std::string_view Tip = {};
  std::string_view Frame = {};  // fields of one frame stand together
  std::span<const OptionChoice> Choices = {};
  std::int32_t Minimum = 0, Maximum = 0;
};

std::span<const OptionField> OptionFields();
std::span<const OptionField> FieldsOf(OptionPage page);
const OptionField* FindOptionField(std::string_view control);

}  // namespace velmora::panes
