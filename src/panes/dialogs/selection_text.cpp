#include "panes/dialogs/selection_text.h"

#include <fmt/format.h>

#include <initializer_list>
#include <utility>
#include <vector>

#include "base/text.h"

namespace velmora::panes {
namespace {

using operations::CopyMode;
using ObjectKind = store::Selection::Object::Kind;

std::string JoinCounts(std::initializer_list<std::pair<std::size_t, std::string_view>> counts) {
  std::vector<std::string> texts;
  for (const auto& [count, label] : counts) {
    if (count > 0) texts.push_back(fmt::format("{} {}", count, label));
  }
  return Join(texts, ", ");
}

}  // namespace

std::string CountText(const store::Selection& selection) {
  std::size_t archives = 0, links = 0, messages = 0;
  for (const store::Selection::Object& object : selection.Objects)
    ++(object.kind == ObjectKind::Message ? messages : object.IsLink ? links : archives);
  return JoinCounts({{archives, "Archiv(e)"}, {links, "Link(s)"}, {messages, "Message(s)"}});
}

std::string CountText(const operations::RuleSelection& selection) {
  return JoinCounts({{selection.Rules.size(), "Regel(n)"}});
}

std::string CountText(const operations::FileSelection& selection) {
  std::size_t folders = 0, files = 0;
  for (const operations::FileSelection::Item& item : selection.Items) ++(item.IsFolder ? folders : files);
  return JoinCounts({{folders, "Verzeichniss(e)"}, {files, "Datei(en)"}});
}

std::string_view TitleOf(CopyMode mode) { return mode == CopyMode::Move ? "Verschieben" : "Kopieren"; }

std::string TransferText(std::string_view counts, CopyMode mode, std::string_view path) {
  return fmt::format("{} {} von\r\n{}\r\n nach", counts, ToLower(TitleOf(mode)), path);
}

std::string DeletionText(std::string_view counts, std::string_view path) {
  return fmt::format("{} löschen aus\r\n{}", counts, path);
}

std::string NothingToTransfer(CopyMode mode) {
  return fmt::format("Es sind keine Objekte zum {} markiert", TitleOf(mode));
}

}  // namespace velmora::panes
