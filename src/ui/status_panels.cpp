#include "ui/status_panels.h"

#include <QEvent>
#include <QLabel>
#include <QToolButton>

#include "panes/commands/filter_warning.h"
#include "ui/icons.h"
#include "ui/text.h"

namespace velmora::ui {
namespace {

constexpr int CountPanelCharacters = 22, ModePanelCharacters = 8;
constexpr int PictureSize = 16;

struct PanelNames {
  const char *Name, *AccessibleName;
  int Characters;                 // 0: takes what the others leave
  const char* Picture = nullptr;  // of a list that hides entries
};

constexpr PanelNames Names[] = {{"PanelState", "Status", 0},
                                {"PanelLeft", "Linke Liste", CountPanelCharacters, "HidingLeft"},
                                {"PanelRight", "Rechte Liste", CountPanelCharacters, "HidingRight"},
                                {"PanelMode", "Rechte des Benutzers", ModePanelCharacters}};

}  // namespace

StatusPanels::StatusPanels(QWidget* parent) : QStatusBar(parent), warning_(new QToolButton) {
  warning_->setObjectName("FilterWarning");
  warning_->setAccessibleName("Filter aktiv");
  warning_->setToolTip(ToQt(panes::FilterWarningTip));
  warning_->setIcon(IconOf("Warning"));
  warning_->setAutoRaise(true);
  warning_->setFocusPolicy(Qt::NoFocus);
  warning_->installEventFilter(this);
  for (std::size_t i = 0; i < panels_.size(); ++i) {
    auto* const panel = new QLabel;
    panel->setObjectName(Names[i].Name);
    panel->setAccessibleName(Names[i].AccessibleName);
    panel->setTextFormat(Qt::PlainText);
    panel->setMinimumWidth(panel->fontMetrics().averageCharWidth() * Names[i].Characters);
    panel->setMargin(2);
    panel->installEventFilter(this);
    panels_[i] = panel;
    if (Names[i].Picture != nullptr) {
      auto* const picture = new QLabel;
      picture->setObjectName(Names[i].Picture);
      picture->setAccessibleName("Nachrichtenausblendung");
      picture->setPixmap(IconOf("Warning").pixmap(PictureSize));
      picture->installEventFilter(this);
      picture->hide();
      pictures_[i] = picture;
      addPermanentWidget(picture);
    }
    addPermanentWidget(panel, Names[i].Characters == 0 ? 1 : 0);
    if (static_cast<StatusPanel>(i) == StatusPanel::State) addPermanentWidget(warning_);
  }
  // The picture keeps its place while it blinks.
  QSizePolicy policy = warning_->sizePolicy();
  policy.setRetainSizeWhenHidden(true);
  warning_->setSizePolicy(policy);
  warning_->hide();
}

QString StatusPanels::Text(StatusPanel panel) const { return At(panel).text(); }
void StatusPanels::SetText(StatusPanel panel, const QString& text) { At(panel).setText(text); }
void StatusPanels::ShowWarning(bool isShown) { warning_->setVisible(isShown); }

void StatusPanels::ShowHiding(StatusPanel panel, std::string_view tip) {
  QLabel& picture = *pictures_[static_cast<std::size_t>(panel)];
  At(panel).setToolTip(ToQt(tip));
  picture.setToolTip(ToQt(tip));
  picture.setVisible(!tip.empty());
}

bool StatusPanels::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::MouseButtonDblClick) return QStatusBar::eventFilter(watched, event);
  if (watched == warning_) {
    WarningChosen();
    return true;
  }
  for (const StatusPanel panel : {StatusPanel::Left, StatusPanel::Right}) {
    if (watched == &At(panel) || watched == pictures_[static_cast<std::size_t>(panel)]) {
      CountChosen(panel);
      return true;
    }
  }
  return QStatusBar::eventFilter(watched, event);
}

}  // namespace velmora::ui
