// The dialogs on what is marked, and the runs that follow their OK.

#include <memory>
#include <variant>

#include "base/overloaded.h"
#include "ui/dialogs.h"
#include "ui/main_window.h"

namespace velmora::ui {
namespace {

template <typename Dialog>
using Model = std::shared_ptr<Dialog>;

}  // namespace

void MainWindow::ShowPrepared(const panes::PreparedDialog& prepared) {
  const run::FrontEnd front = context_.run.frontEnd();
  const auto follow = [this](const auto& request, auto run) {
    if (request) Apply(run(commands_, *request));
  };
  std::visit(Overloaded{[](std::monostate) {},
                        [&](const Model<panes::ZEBCopyMoveDialog>& model) {
                          follow(ShowStoreTransferDialog(*model, front, this), panes::RunStoreTransfer);
                        },
                        [&](const Model<panes::RoutCopyMoveDialog>& model) {
                          follow(ShowRuleTransferDialog(*model, front, this), panes::RunRuleTransfer);
                        },
                        [&](const Model<panes::DelZEBDialog>& model) {
                          follow(ShowStoreDeletionDialog(*model, front.prompts, this),
                                 panes::RunStoreDeletion);
                        },
                        [&](const Model<panes::DelRoutDialog>& model) {
                          follow(ShowRuleDeletionDialog(*model, front.prompts, this), panes::RunRuleDeletion);
                        },
                        [&](const Model<panes::DelFSDialog>& model) {
                          follow(ShowFileDeletionDialog(*model, front.prompts, this), panes::RunFileDeletion);
                        },
                        [&](const Model<panes::DelDblArcEntriesDialog>& model) {
                          if (ShowDoubleEntriesDialog(*model, this)) {
                            Apply(panes::RunDoubleEntriesOk(commands_, *model));
                          }
                        },
                        [&](const Model<panes::DelCircArcEntriesDialog>& model) {
                          std::optional<panes::Outcome> left;
                          const auto ok = [&] {
                            left = panes::RunCircularEntriesOk(commands_, *model);
                            return left.has_value();
                          };
                          ShowCircularEntriesDialog(*model, ok, this);
                          if (left) Apply(*std::move(left));
                        }},
             prepared);
}

}  // namespace velmora::ui
