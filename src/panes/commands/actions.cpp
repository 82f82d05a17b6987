#include "panes/commands/actions.h"

#include <algorithm>
#include <array>

namespace velmora::panes {
namespace {

constexpr std::array NotBuilt = {
    Action::SaveViewAsList,
    Action::ChangeItemProperties,
    Action::CleanMessages,
    Action::CleanTrash,
    Action::CopyTreeToStore,
    Action::AddToStore,
    Action::ImportMailArchive,
    Action::ShowMailArchiveInStore,
    Action::DocumentSystem,
    Action::DocumentMarked,
    Action::DocumentArchiveTree,
    Action::DocumentSite,
    Action::DocumentUsers,
    Action::DocumentFileRights,
    Action::DocumentCurrentUser,
    Action::ArchiveStatistics,
    Action::MessageStatistics,
    Action::Properties,
    Action::MakeLinks,
    Action::CreateShortCut,
    Action::UserInformation,
    Action::UserList,
    Action::ShowServerLogs,
    Action::BroadcastLists,
    Action::ConfigureNotifier,
    Action::EditRemoteAccess,
    Action::CleanAllTrash,
    Action::SiteInformation,
    Action::Migration,
    Action::ExpertTools,
    Action::ExportArchiveTree,
    Action::ImportArchiveTree,
    Action::ImportAddresses,
    Action::ToggleTabs,
    Action::SaveViewToTab,
    Action::AddTab,
    Action::DeleteTab,
    Action::DeleteAllTabs,
    Action::TabProperties,
    Action::SetStandardTabs,
    Action::ToggleTabDisplayMode,
    Action::ActivateTab1,
    Action::ActivateTab2,
    Action::ActivateTab3,
    Action::ActivateTab4,
    Action::ActivateTab5,
    Action::TogglePropertyView,
    Action::ShowListItem,
    Action::FileProperties,
    Action::ImportMailFile,
    Action::OpenWebSite,
};

}  // namespace

bool IsBuilt(Action action) {
  return action != Action::None && std::ranges::find(NotBuilt, action) == NotBuilt.end();
}

}  // namespace velmora::panes
