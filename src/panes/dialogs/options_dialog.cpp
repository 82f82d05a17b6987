#include "panes/dialogs/options_dialog.h"

#include <fmt/format.h>

#include <algorithm>

#include "base/paths.h"
#include "base/text.h"

namespace velmora::panes {
namespace {

using settings::Options;

constexpr std::string_view DesignMask = "*.ini";

template <typename T>
T Options::*MemberOf(const OptionField& field) {
  const auto* member = std::get_if<T Options::*>(&field.Member);
  return member == nullptr ? nullptr : *member;
}

bool IsChoice(const OptionField& field, std::int32_t number) {
  return std::ranges::find(field.Choices, number, &OptionChoice::Value) != field.Choices.end();
}

// A name without any part of a path, which every file system takes.
bool IsPlainName(std::string_view name) {
  return !Trim(name).empty() && name.find_first_of("\\/:*?\"<>|") == std::string_view::npos &&
         IsSafeRelativePath(name) && !name.ends_with('.') && !name.ends_with(' ');
}

}  // namespace

OptionsDialog::OptionsDialog(platform::FileSystem& fileSystem, settings::Options& options,
                             store::Session& session, bool isOsAdministrator)
    : fileSystem_(fileSystem),
      options_(options),
      session_(session),
      isOsAdministrator_(isOsAdministrator),
      edited_(options),
      forcedRights_(session.ForcedRights) {}

bool OptionsDialog::IsEnabled(const OptionField& field) const {
  if (field.Kind == OptionKind::Forced) return session_.WasAdministrator() && isOsAdministrator_;
  if (MemberOf<bool>(field) == &Options::DeleteArchive) return session_.MayDeleteArchives();
  if (field.Kind == OptionKind::FolderName) return edited_.SeparateAttachmentsFolder;
  return true;
}

bool OptionsDialog::SwitchOf(const OptionField& field) const {
  if (field.Kind == OptionKind::Forced) return forcedRights_;
  const auto member = MemberOf<bool>(field);
  return member != nullptr && edited_.*member;
}

std::int32_t OptionsDialog::NumberOf(const OptionField& field) const {
  const auto member = MemberOf<std::int32_t>(field);
  if (member == nullptr) return 0;
  const std::int32_t number = edited_.*member;
  // A setting far out of range shows what it works as.
  if (!field.Choices.empty()) return IsChoice(field, number) ? number : Options().*member;
  return std::clamp(number, field.Minimum, field.Maximum);
}

std::string OptionsDialog::TextOf(const OptionField& field) const {
  const auto member = MemberOf<std::string>(field);
  return member == nullptr ? "" : edited_.*member;
}

std::vector<std::string> OptionsDialog::DesignNames() const {
  std::vector<std::string> names;
  const auto files =
      fileSystem_.List(StripBackslash(edited_.DesignPath), DesignMask, platform::ListWhat::Files);
  if (files) {
    for (const platform::FileEntry& file : *files) {
      names.push_back(file.Name.substr(0, file.Name.size() - DesignMask.size() + 1));
    }
  }
  return names;
}

void OptionsDialog::SetSwitch(const OptionField& field, bool on) {
  if (!IsEnabled(field)) return;
  if (field.Kind == OptionKind::Forced) {
    forcedRights_ = on;
  } else if (const auto member = MemberOf<bool>(field)) {
    edited_.*member = on;
  }
}

void OptionsDialog::SetNumber(const OptionField& field, std::int32_t number) {
  const auto member = MemberOf<std::int32_t>(field);
  if (member == nullptr) return;
  if (field.Choices.empty()) {
    edited_.*member = std::clamp(number, field.Minimum, field.Maximum);
  } else if (IsChoice(field, number)) {
    edited_.*member = number;
  }
}

void OptionsDialog::SetText(const OptionField& field, std::string_view text) {
  if (const auto member = MemberOf<std::string>(field)) edited_.*member = text;
}

void OptionsDialog::Browse(const OptionField& field, run::Choosers& choosers) {
  if (field.Kind == OptionKind::Folder) {
    if (const auto folder = choosers.ChooseFolder(field.Caption, TextOf(field))) SetText(field, *folder);
  } else if (field.Kind == OptionKind::Program) {
    const auto file =
        choosers.ChooseFile(field.Caption, "", {{"Alle Dateien (*.*)", "*.*"}}, run::FileUse::Read);
    if (file) SetText(field, fmt::format("\"{}\"", *file));  // blanks in a path separate no arguments
  }
}

void OptionsDialog::CleanTexts() {
  for (const OptionField& field : OptionFields()) {
    const auto member = MemberOf<std::string>(field);
    if (member == nullptr) continue;
    std::string& text = edited_.*member;
    switch (field.Kind) {
      case OptionKind::Folder:
        text = NormalizePath(fileSystem_.FromUserPath(Trim(text)));
        break;
      case OptionKind::FolderName:
        text = StripBackslash(Trim(text));
        break;
      case OptionKind::FileName:
        text = Trim(text);
        break;
      default:
        break;
    }
  }
}

std::string OptionsDialog::ReasonToRefuse(const OptionField& field) const {
  const std::string text = TextOf(field);
  const std::string_view caption = Trim(field.Caption.substr(0, field.Caption.find(" :")));
  switch (field.Kind) {
    case OptionKind::FolderName:
    case OptionKind::FileName:
      if (IsPlainName(text)) return "";
      return fmt::format("\"{}\" ist als Name unzulässig ({}).", text, caption);
    case OptionKind::Separator:
      if (CountCharacters(text) == 1) return "";
      return fmt::format("{}: Bitte genau ein Zeichen angeben.", caption);
    case OptionKind::Folder: {
      const bool mayBeMissing = MemberOf<std::string>(field) != &Options::DesignPath;
      // A directory of addresses is made when it is needed, so is the temporary one.
      if (mayBeMissing || fileSystem_.FolderExists(StripBackslash(text))) return "";
      return fmt::format("Das Verzeichnis {} existiert nicht oder es bestehen keine Zugriffsrechte.", text);
    }
    default:
      return "";
  }
}

OptionsAnswer OptionsDialog::Take(run::Prompts& prompts, bool saves) {
  CleanTexts();
  for (const OptionField& field : OptionFields()) {
    if (const std::string reason = ReasonToRefuse(field); !reason.empty()) {
      prompts.Message(options_text::Title, reason, run::Icon::Exclamation);
      return {};
    }
  }
  OptionsAnswer answer;
  answer.Closes = true;
  answer.Saves = saves;
  answer.DesignChanged =
      edited_.DesignPath != options_.DesignPath || edited_.ArchiveDesign != options_.ArchiveDesign;
  answer.TextsChanged = edited_.ArchiveFormCopyRight != options_.ArchiveFormCopyRight ||
                        edited_.ArchiveFormComment != options_.ArchiveFormComment;
  answer.AnyChanged = !(edited_ == options_) || forcedRights_ != session_.ForcedRights;
  options_ = edited_;
  session_.ForcedRights = forcedRights_;
  return answer;
}

}  // namespace velmora::panes
