#include "panel/CaptureProgressView.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include "controls/ElidedLabel.h"
#include "panel/BusySpinner.h"
#include "panel/ManualProgressBar.h"
#include "panel/NewsreelCountdown.h"
#include "ui/ProgressPanelRules.h"

namespace zd::app {

namespace {

QFont systemFont(int pixelSize, QFont::Weight weight) {
    QFont font;
    font.setPixelSize(pixelSize);
    font.setWeight(weight);
    return font;
}

void paintText(QWidget* widget, const QColor& color) {
    QPalette palette = widget->palette();
    palette.setColor(QPalette::WindowText, color);
    widget->setPalette(palette);
}

}  // namespace

CaptureProgressView::CaptureProgressView(QWidget* parent, std::function<double()> wallClock)
    : QWidget(parent),
      countdown_(new NewsreelCountdown(this, std::move(wallClock))),
      spinner_(new BusySpinner(this)),
      headline_(new ElidedLabel(this)),
      progressRow_(new QWidget(this)),
      bar_(new ManualProgressBar(progressRow_)),
      count_(new QLabel(progressRow_)),
      stop_(new QPushButton(QStringLiteral("Stop"), this)) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(18, 12, 18, 12);
    row->setSpacing(14);
    countdown_->setFixedSize(40, 40);
    spinner_->setFixedSize(40, 40);
    row->addWidget(countdown_);
    row->addWidget(spinner_);

    auto* column = new QVBoxLayout;
    column->setSpacing(4);
    headline_->setFont(systemFont(13, QFont::Medium));
    paintText(headline_, Qt::white);
    column->addWidget(headline_);
    auto* counts = new QHBoxLayout(progressRow_);
    counts->setContentsMargins(0, 0, 0, 0);
    counts->setSpacing(8);
    counts->addWidget(bar_, 1, Qt::AlignVCenter);
    QFont countFont = systemFont(11, QFont::Normal);
    count_->setFont(countFont);
    paintText(count_, QColor(255, 255, 255, 191));
    counts->addWidget(count_);
    column->addWidget(progressRow_);
    row->addLayout(column, 1);

    // Never takes the focus: the target being posed keeps it.
    stop_->setFocusPolicy(Qt::NoFocus);
    stop_->setCursor(Qt::PointingHandCursor);
    stop_->setFont(systemFont(12, QFont::DemiBold));
    stop_->setStyleSheet(QStringLiteral(
        "QPushButton { color: white; background: rgba(255, 59, 48, 217); border: none;"
        " border-radius: 13px; padding: 6px 12px; }"
        "QPushButton:pressed { background: rgba(215, 40, 32, 230); }"));
    row->addWidget(stop_);
    connect(stop_, &QPushButton::clicked, this, [this] {
        if (model_ && model_->onCancel)
            model_->onCancel();
    });
    refresh();
}

CaptureProgressView::~CaptureProgressView() {
    setModel(nullptr);
}

void CaptureProgressView::setModel(CaptureProgressModel* model) {
    subscription_.reset();
    model_ = model;
    if (model_)
        subscription_ = model_->subscribe([this](CaptureProgressModel::Field) { refresh(); });
    refresh();
}

void CaptureProgressView::refresh() {
    if (!model_) {
        countdown_->hide();
        progressRow_->hide();
        return;
    }
    const bool counting = model_->countdownRemaining() >= 1;
    countdown_->setValue(model_->countdownRemaining());
    countdown_->setVisible(counting);
    spinner_->setVisible(!counting);
    headline_->setText(QString::fromStdString(ProgressPanelRules::headline(*model_)));
    const bool hasTotal = model_->shotsTotal() >= 1;
    progressRow_->setVisible(hasTotal);
    bar_->setProgress(model_->shotsCompleted(), model_->shotsTotal());
    count_->setText(
        QStringLiteral("%1/%2").arg(model_->shotsCompleted()).arg(model_->shotsTotal()));
}

}  // namespace zd::app
