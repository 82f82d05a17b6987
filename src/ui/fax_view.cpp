#include "ui/fax_view.h"

#include <QFileInfo>
#include <QHBoxLayout>
#include <QImageReader>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>
#include <algorithm>

namespace velmora::ui {
namespace {

constexpr double SmallestZoom = 0.1, LargestZoom = 4.0, ZoomStep = 1.25;
constexpr qint64 MaxPixels = qint64{120} * 1000 * 1000;  // no fax has more: A1 at 300 dpi is 70 million dots
constexpr int MaxPages = 2000;

QPushButton* MakeButton(const char* name, const QString& caption, const QString& tip) {
  auto* const button = new QPushButton(caption);
  button->setObjectName(name);
  button->setToolTip(tip);
  button->setAutoDefault(false);
  button->setFocusPolicy(Qt::TabFocus);
  return button;
}

}  // namespace

FaxView::FaxView(QWidget* parent)
    : QWidget(parent),
      picture_(new QLabel),
      area_(new QScrollArea),
      pageText_(new QLabel),
      previous_(MakeButton("PrevPage", "&Zurück", "Vorherige Seite [Bild auf]")),
      next_(MakeButton("NextPage", "&Vor", "Nächste Seite [Bild ab]")) {
  setObjectName("FaxBody");
  setAccessibleName("Faxseiten");
  setFocusPolicy(Qt::StrongFocus);
  picture_->setAlignment(Qt::AlignCenter);
  picture_->setObjectName("FaxPage");
  area_->setWidget(picture_);
  area_->setAlignment(Qt::AlignCenter);
  area_->setWidgetResizable(false);
  area_->setFocusProxy(this);
  pageText_->setObjectName("L_Page");
  auto* const larger = MakeButton("ZoomIn", "&Größer", "Vergrößern [+]");
  auto* const smaller = MakeButton("ZoomOut", "&Kleiner", "Verkleinern [-]");
  auto* const fit = MakeButton("ZoomFit", "Seiten&breite", "An die Breite des Fensters anpassen [*]");
  auto* const bar = new QHBoxLayout;
  for (QWidget* const widget :
       {static_cast<QWidget*>(previous_), static_cast<QWidget*>(pageText_), static_cast<QWidget*>(next_)}) {
    bar->addWidget(widget);
  }
  bar->addStretch(1);
  for (QPushButton* const button : {smaller, larger, fit}) bar->addWidget(button);
  auto* const layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addLayout(bar);
  layout->addWidget(area_, 1);
  connect(previous_, &QPushButton::clicked, this, [this] { ShowPage(page_ - 1); });
  connect(next_, &QPushButton::clicked, this, [this] { ShowPage(page_ + 1); });
  connect(larger, &QPushButton::clicked, this, [this] { SetZoom(zoom_ * ZoomStep); });
  connect(smaller, &QPushButton::clicked, this, [this] { SetZoom(zoom_ / ZoomStep); });
  connect(fit, &QPushButton::clicked, this, &FaxView::FitWidth);
}

void FaxView::Fail(const QString& problem) {
  problem_ = problem;
  image_ = {};
  pageCount_ = 0;
  picture_->setText(problem);
  picture_->setMargin(24);
  picture_->adjustSize();
  for (QPushButton* const button : findChildren<QPushButton*>()) button->setEnabled(false);
  pageText_->clear();
}

bool FaxView::Load(const QString& hostPath) {
  hostPath_ = hostPath;
  if (hostPath.isEmpty() || !QFileInfo::exists(hostPath)) {
    Fail("Die Faxdatei ist nicht mehr vorhanden.");
    return false;
  }
  QImageReader reader(hostPath_);
  if (!reader.canRead()) {
    Fail("Die Faxdatei ist beschädigt oder keine Bilddatei.");
    return false;
  }
  pageCount_ = std::clamp(reader.imageCount(), 1, MaxPages);
  page_ = -1;
  ShowPage(0);
  return problem_.isEmpty();
}

void FaxView::ShowPage(int page) {
  if (page < 0 || page >= pageCount_ || page == page_) return;
  QImageReader reader(hostPath_);
  if (page > 0 && !reader.jumpToImage(page)) {
    Fail("Die Seite kann nicht gelesen werden.");
    return;
  }
  const QSize size = reader.size();
  if (size.isValid() && qint64{size.width()} * size.height() > MaxPixels) {
    Fail("Die Seite ist zu groß, um angezeigt zu werden.");
    return;
  }
  image_ = reader.read().convertToFormat(QImage::Format_Grayscale8);  // dots alone cannot be smoothed
  if (image_.isNull()) {
    Fail("Die Faxdatei ist beschädigt oder keine Bilddatei.");
    return;
  }
  // A fax of low resolution has dots that are twice as high as wide.
  const double across = image_.dotsPerMeterX(), down = image_.dotsPerMeterY();
  if (across > 0 && down > 0 && across / down > 1.5 && across / down < 3) {
    image_ = image_.scaled(image_.width(), static_cast<int>(image_.height() * across / down));
  }
  page_ = page;
  pageText_->setText(QString("Seite %1 von %2").arg(page_ + 1).arg(pageCount_));
  previous_->setEnabled(page_ > 0);
  next_->setEnabled(page_ + 1 < pageCount_);
  area_->verticalScrollBar()->setValue(0);
  Paint();
}

void FaxView::SetZoom(double zoom) {
  fitsWidth_ = false;
  zoom_ = std::clamp(zoom, SmallestZoom, LargestZoom);
  Paint();
}

void FaxView::FitWidth() {
  fitsWidth_ = true;
  Paint();
}

void FaxView::Paint() {
  if (image_.isNull()) return;
  const double dots = devicePixelRatioF();
  if (fitsWidth_) {
    const int room = area_->width() - area_->verticalScrollBar()->sizeHint().width() - 4;
    zoom_ = std::clamp(room * dots / image_.width(), SmallestZoom, LargestZoom);
  }
  const QSize shown = (QSizeF(image_.size()) * zoom_).toSize().expandedTo(QSize(1, 1));
  QPixmap pixmap = QPixmap::fromImage(image_.scaled(shown, Qt::KeepAspectRatio, Qt::SmoothTransformation));
  pixmap.setDevicePixelRatio(dots);
  picture_->setPixmap(pixmap);
  picture_->adjustSize();
}

void FaxView::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_PageUp:
      ShowPage(page_ - 1);
      return;
    case Qt::Key_PageDown:
      ShowPage(page_ + 1);
      return;
    case Qt::Key_Home:
      ShowPage(0);
      return;
    case Qt::Key_End:
      ShowPage(pageCount_ - 1);
      return;
    case Qt::Key_Plus:
      SetZoom(zoom_ * ZoomStep);
      return;
    case Qt::Key_Minus:
      SetZoom(zoom_ / ZoomStep);
      return;
    case Qt::Key_Asterisk:
      FitWidth();
      return;
    case Qt::Key_Down:
      area_->verticalScrollBar()->triggerAction(QScrollBar::SliderSingleStepAdd);
      return;
    case Qt::Key_Up:
      area_->verticalScrollBar()->triggerAction(QScrollBar::SliderSingleStepSub);
      return;
    default:
      QWidget::keyPressEvent(event);
  }
}

void FaxView::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  if (fitsWidth_) Paint();
}

}  // namespace velmora::ui
