#include "ui/progress_box.h"

#include <QCoreApplication>
#include <QGridLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <algorithm>

#include "run/progress_text.h"
#include "ui/prompts.h"
#include "ui/text.h"

namespace velmora::ui {
namespace {

constexpr qint64 PumpIntervalMilliseconds = 50;
constexpr int BoxWidth = 480;
constexpr int BarSteps = 1000;

QLabel* MakeLine(const char* name, const char* accessibleName) {
  auto* const label = new QLabel;
  label->setObjectName(name);
  label->setAccessibleName(accessibleName);
  label->setTextFormat(Qt::PlainText);  // names of archives and subjects are no markup
  // A long text is cut, and never makes the box grow while it is watched.
  label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
  return label;
}

void SetElided(QLabel& label, const QString& text) {
  const QString shown = label.fontMetrics().elidedText(text, Qt::ElideMiddle, label.width());
  if (label.text() != shown) {
    label.setText(shown);
    label.setToolTip(shown == text ? QString() : PlainTip(text));
  }
}

}  // namespace

ProgressBox::ProgressBox(const QString& title, QWidget* parent)
    : QDialog(parent),
      arcStr_(MakeLine("ArcStr", "Archiv")),
      progStr_(MakeLine("ProgStr", "Eintrag")),
      remaining_(MakeLine("RemainStr", "Restzeit")),
      progBar_(new QProgressBar),
      cancel_(new QPushButton("Abbrechen")) {
  setObjectName("ProgressBox");
  setWindowTitle(title);
  setModal(true);
  progBar_->setObjectName("ProgBar");
  progBar_->setAccessibleName("Fortschritt");
  progBar_->setTextVisible(false);  // the line below tells the share
  cancel_->setObjectName("CancelButton");
  auto* const layout = new QGridLayout(this);
  layout->addWidget(arcStr_, 0, 0, 1, 2);
  layout->addWidget(progStr_, 1, 0, 1, 2);
  layout->addWidget(progBar_, 2, 0, 1, 2);
  layout->addWidget(remaining_, 3, 0);
  layout->addWidget(cancel_, 3, 1, Qt::AlignRight);
  layout->setColumnStretch(0, 1);
  setMinimumWidth(BoxWidth);
  connect(cancel_, &QPushButton::clicked, this, &ProgressBox::reject);
  shownFor_.start();
}

void ProgressBox::reject() {
  cancelRequested_ = true;
  cancel_->setEnabled(false);
  remaining_->setText("Wird abgebrochen ...");
}

void ProgressBox::ShowState(const QString& archive, const QString& item, std::int64_t done,
                            std::int64_t total) {
  SetElided(*arcStr_, archive);
  SetElided(*progStr_, item);
  if (total > 0) {
    const double share =
        static_cast<double>(std::clamp<std::int64_t>(done, 0, total)) / static_cast<double>(total);
    progBar_->setRange(0, BarSteps);
    progBar_->setValue(static_cast<int>(share * BarSteps));
  } else {
    progBar_->setRange(0, 0);  // moves without an end
  }
  if (!cancelRequested_) {
    const std::string left = run::RemainingTimeText(shownFor_.elapsed() / 1000, done, total);
    const QString count = total > 0 ? ToQt(run::ProgressText(done, total)) : QString();
    remaining_->setText(left.empty() ? count : count + "   noch " + ToQt(left));
  }
}

void QtProgress::Show(std::string_view title) {
  archiveText_.clear();
  itemText_.clear();
  done_ = total_ = 0;
  box_ = std::make_unique<ProgressBox>(ToQt(title), BoxParent());
  box_->show();
  Breathe();
}

void QtProgress::SetArchiveText(std::string_view text) { archiveText_ = ToQt(text); }
void QtProgress::SetItemText(std::string_view text) { itemText_ = ToQt(text); }
void QtProgress::SetBar(std::int64_t done, std::int64_t total) {
  done_ = done;
  total_ = total;
}
void QtProgress::Close() { box_.reset(); }

bool QtProgress::Pump() {
  if (!sincePump_.isValid() || sincePump_.elapsed() >= PumpIntervalMilliseconds) {
    Breathe();
  }
  return box_ != nullptr && box_->CancelRequested();
}

// What runs within the pump must not pump again: a paint could otherwise nest without end.
void QtProgress::Breathe() {
  if (pumping_) {
    return;
  }
  pumping_ = true;
  if (box_ != nullptr) {
    box_->ShowState(archiveText_, itemText_, done_, total_);
    QCoreApplication::processEvents();
  } else {
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);  // a listing: no command may start
  }
  pumping_ = false;
  sincePump_.start();
}

}  // namespace velmora::ui
