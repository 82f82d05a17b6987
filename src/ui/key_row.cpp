#include "ui/key_row.h"

#include <QHBoxLayout>
#include <algorithm>

#include "panes/commands/command_table.h"
#include "panes/commands/key_table.h"
#include "ui/text.h"

namespace velmora::ui {
namespace {

using panes::Action;

constexpr double TightFont = 0.85;
constexpr int Padding = 8;  // of a button, on both sides together

// What stands on a button: short, so that twelve stand side by side.
struct ShortCaption {
  Action Runs;
  const char* Caption;
};
constexpr ShortCaption ShortCaptions[] = {
    {Action::Help, "Hilfe"},
    {Action::Rename, "Umben."},
    {Action::ShowMessage, "Zeigen"},
    {Action::OpenFile, "Öffnen"},
    {Action::ArcDirSync, "Verz."},
    {Action::DirArcSync, "Archiv"},
    {Action::Copy, "Kopieren"},
    {Action::Move, "Versch."},
    {Action::Create, "Neu"},
    {Action::Delete, "Löschen"},
    {Action::ShowIndex, "Inhalt"},
    {Action::Properties, "Eigen."},
    {Action::UserArchives, "Benutzer"},
};

QString CaptionOf(Action action) {
  for (const ShortCaption& caption : ShortCaptions) {
    if (caption.Runs == action) return caption.Caption;
  }
  return {};
}

QString TipOf(Action action, const panes::Situation& situation) {
  for (const panes::Command& command : panes::Commands()) {
    if (command.Runs == action) return ToQt(panes::ToolTipOf(command, situation));
  }
  return {};
}

}  // namespace

KeyRow::KeyRow(QWidget* parent) : QWidget(parent) {
  setObjectName("KeyRow");
  setAccessibleName("Funktionstasten");
  auto* const layout = new QHBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(2);
  for (int key = 0; key < KeyCount; ++key) {
    auto* const button = new QPushButton;
    button->setObjectName(QString("KeyF%1").arg(key + 1));
    button->setFocusPolicy(Qt::NoFocus);
    // Twelve of equal width, whatever stands on them.
    button->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    button->setStyleSheet("padding: 2px 1px");
    connect(button, &QPushButton::clicked, this,
            [this, key] { Pressed(actions_[static_cast<std::size_t>(key)]); });
    layout->addWidget(button, 1);
    buttons_[static_cast<std::size_t>(key)] = button;
  }
}

void KeyRow::Update(const panes::Situation& situation) {
  for (std::size_t i = 0; i < buttons_.size(); ++i) {
    const QString key = QString("F%1").arg(i + 1);
    actions_[i] = panes::ActionOfKey(FromQt(key), situation.ActiveView);
    QPushButton& button = *buttons_[i];
    const QString caption = CaptionOf(actions_[i]);
    captions_[i] = caption.isEmpty() ? key : key + " " + caption;
    button.setAccessibleName(captions_[i]);
    button.setToolTip(actions_[i] == Action::None ? QString() : TipOf(actions_[i], situation));
    button.setEnabled(actions_[i] != Action::None && panes::MayRunFromKey(actions_[i], situation));
  }
  ShowCaptions();
}

void KeyRow::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  ShowCaptions();
}

// Where there is little room, "F5 Kopieren" becomes a smaller "5 Kopieren"; what does not fit even so ends in
// dots, and the tool tip has it all.
void KeyRow::ShowCaptions() {
  const int room = width() / KeyCount - Padding;
  const QFontMetrics usual = fontMetrics();
  const bool isTight = std::any_of(captions_.begin(), captions_.end(), [&](const QString& caption) {
    return usual.horizontalAdvance(caption) > room;
  });
  QFont shown = font();
  if (isTight) shown.setPointSizeF(shown.pointSizeF() * TightFont);
  const QFontMetrics metrics(shown);
  for (std::size_t i = 0; i < buttons_.size(); ++i) {
    const QString caption = isTight ? captions_[i].mid(1) : captions_[i];
    buttons_[i]->setFont(shown);
    buttons_[i]->setText(metrics.elidedText(caption, Qt::ElideRight, room));
  }
}

}  // namespace velmora::ui
