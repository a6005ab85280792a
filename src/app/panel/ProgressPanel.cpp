#include "panel/ProgressPanel.h"

#include <QGuiApplication>
#include <QPainter>
#include <QPainterPath>
#include <QScreen>
#include <QVBoxLayout>

#include "common/PanelWindowBackend.h"
#include "panel/CaptureProgressView.h"
#include "ui/ProgressPanelRules.h"

namespace zd::app {

namespace {

const int kWidth = static_cast<int>(ProgressPanelRules::panelSize.width);
const int kHeight = static_cast<int>(ProgressPanelRules::panelSize.height);

std::optional<Rect> primaryScreenFrame() {
    const QScreen* screen = QGuiApplication::primaryScreen();
    if (!screen)
        return std::nullopt;
    const QRect g = screen->geometry();
    return Rect{static_cast<double>(g.x()), static_cast<double>(g.y()),
                static_cast<double>(g.width()), static_cast<double>(g.height())};
}

// The capsule as a region, for window systems that show a translucent window's corners black.
QRegion capsuleRegion() {
    const int d = kHeight;
    return QRegion(0, 0, d, d, QRegion::Ellipse) + QRegion(kWidth - d, 0, d, d, QRegion::Ellipse) +
           QRegion(d / 2, 0, kWidth - d, d);
}

}  // namespace

ProgressPanel::ProgressPanel(PanelWindowBackend* windows, ScreenFrame screenFrame,
                             std::function<double()> wallClock)
    : QWidget(nullptr, Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
                           Qt::WindowDoesNotAcceptFocus),
      windows_(windows),
      screenFrame_(screenFrame ? std::move(screenFrame) : ScreenFrame(primaryScreenFrame)),
      view_(new CaptureProgressView(this, std::move(wallClock))) {
    setWindowTitle(QStringLiteral("Zephyrdock progress"));
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_TranslucentBackground);
    setAttribute(Qt::WA_QuitOnClose, false);  // closing the main window still ends the program
    setFocusPolicy(Qt::NoFocus);
    setFixedSize(kWidth, kHeight);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(view_);
}

void ProgressPanel::setModel(CaptureProgressModel* model) {
    model_ = model;
    view_->setModel(model);
}

void ProgressPanel::setWorking(bool working) {
    if (working)
        present();
    else
        hide();
}

void ProgressPanel::present() {
    if (!model_)
        return;
    const std::optional<Rect> screen = screenFrame_();
    if (!screen)
        return;  // the run goes on without the panel
    const Point origin = ProgressPanelRules::panelOrigin(*screen, false);
    move(static_cast<int>(origin.x), static_cast<int>(origin.y));
    if (windows_) {
        windows_->floatOnAllDesktops(winId());
        if (windows_->compositing())
            clearMask();
        else
            setMask(capsuleRegion());
    }
    show();
    raise();
    if (windows_)
        windows_->floatOnAllDesktops(winId());
}

void ProgressPanel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.fillRect(rect(), Qt::transparent);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    QPainterPath capsule;
    capsule.addRoundedRect(QRectF(rect()), kHeight / 2.0, kHeight / 2.0);
    painter.fillPath(capsule, QColor(31, 31, 31, 235));  // white 0.12 at 92 %
}

}  // namespace zd::app
