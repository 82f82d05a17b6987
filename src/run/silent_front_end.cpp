#include "run/silent_front_end.h"

namespace velmora::run {

void SilentFrontEnd::Message(std::string_view, std::string_view, Icon) {}
Answer SilentFrontEnd::Question(std::string_view, std::string_view, Buttons, Answer defaultAnswer) {
  return defaultAnswer;
}
std::optional<std::string> SilentFrontEnd::InputLine(std::string_view, std::string_view, std::string_view) {
  return std::nullopt;
}

std::optional<std::string> SilentFrontEnd::ChooseFolder(std::string_view, std::string_view) {
  return std::nullopt;
}
std::optional<std::string> SilentFrontEnd::ChooseFile(std::string_view, std::string_view,
                                                      const std::vector<FileFilter>&, FileUse) {
  return std::nullopt;
}
std::optional<std::string> SilentFrontEnd::ChooseArchive(std::string_view, std::string_view) {
  return std::nullopt;
}
std::optional<std::string> SilentFrontEnd::ChooseUser(std::string_view) { return std::nullopt; }

void SilentFrontEnd::Show(std::string_view) {}
void SilentFrontEnd::SetArchiveText(std::string_view) {}
void SilentFrontEnd::SetItemText(std::string_view) {}
void SilentFrontEnd::SetBar(std::int64_t, std::int64_t) {}
void SilentFrontEnd::Close() {}
bool SilentFrontEnd::Pump() { return false; }

void SilentFrontEnd::SetStatusText(std::string_view) {}
void SilentFrontEnd::ShowWait(std::string_view) {}
void SilentFrontEnd::EndWait() {}

void SilentFrontEnd::ShowText(std::string_view, std::string_view, const TextUses&) {}
void SilentFrontEnd::OpenDocument(std::string_view) {}

}  // namespace velmora::run
