#include "window/MainWindow.h"

#include <QApplication>
#include <QEvent>
#include <QPropertyAnimation>
#include <QScrollArea>
#include <QScrollBar>
#include <QSplitter>
#include <QTimer>
#include <QVBoxLayout>

#include "panel/ProgressPanel.h"
#include "window/ActionsBar.h"
#include "window/BackgroundsSection.h"
#include "window/CaptureSection.h"
#include "window/CompositeWindowsSection.h"
#include "window/GeometrySection.h"
#include "window/LanguageSection.h"
#include "window/MenuBarSection.h"
#include "window/PreviewPane.h"
#include "window/ScopeSection.h"
#include "window/SectionStyle.h"
#include "window/SizePresetSection.h"
#include "window/SourceSection.h"

namespace zd::app {

MainWindow::MainWindow(ContentView& view, Environment& env, RunServices& services,
                       ProgressPanel* panel, QWidget* parent)
    : QMainWindow(parent),
      view_(view),
      panel_(panel),
      left_(new QScrollArea),
      scope_(new ScopeSection(view)),
      source_(new SourceSection(view)),
      sourceDivider_(divider()),
      sizePreset_(new SizePresetSection(view, services)),
      composite_(new CompositeWindowsSection(view)),
      geometry_(new GeometrySection(view)),
      languages_(new LanguageSection(view)),
      capture_(new CaptureSection(view)),
      backgrounds_(new BackgroundsSection(view)),
      menuBar_(new MenuBarSection(view)),
      preview_(new PreviewPane(view, env)),
      actions_(new ActionsBar(view, env)),
      replaceAccessories_(view.menuBar.replaceAccessories) {
    setWindowTitle("Zephyrdock");
    setMinimumSize(980, 640);
    resize(1180, 780);

    auto* sections = new QWidget;
    auto* stack = new QVBoxLayout(sections);
    stack->setContentsMargins(20, 20, 20, 20);
    stack->setSpacing(18);
    const std::vector<QWidget*> order{scope_,      divider(),    source_,   sourceDivider_,
                                      sizePreset_, composite_,   divider(), geometry_,
                                      divider(),   languages_,   divider(), capture_,
                                      divider(),   backgrounds_, divider(), menuBar_};
    for (QWidget* section : order)
        stack->addWidget(section);
    stack->addStretch(1);
    left_->setWidget(sections);
    left_->setWidgetResizable(true);
    left_->setFrameShape(QFrame::NoFrame);
    left_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    left_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    left_->setMinimumWidth(420);
    left_->setMaximumWidth(540);

    auto* split = new QSplitter(Qt::Horizontal);
    split->addWidget(left_);
    split->addWidget(preview_);
    split->setChildrenCollapsible(false);
    split->setStretchFactor(0, 0);
    split->setStretchFactor(1, 1);
    split->setSizes({460, 720});

    auto* central = new QWidget;
    auto* column = new QVBoxLayout(central);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(split, 1);
    column->addWidget(divider());
    column->addWidget(actions_);
    setCentralWidget(central);

    subscriptions_.push_back(view_.subscribe(ViewChange::settings, [this] {
        applyScope();
        const bool replace = view_.menuBar.replaceAccessories;
        if (replace && !replaceAccessories_)
            scrollToMenuBarSection();  // the choice opens further controls down there
        replaceAccessories_ = replace;
    }));
    subscriptions_.push_back(view_.subscribe(ViewChange::runState, [this] {
        if (panel_ != nullptr)
            panel_->setWorking(view_.isWorking);
    }));
    if (panel_ != nullptr)
        panel_->setModel(&view_.progress);
    applyScope();
    view_.startIdleTimer(
        [] { return QGuiApplication::applicationState() == Qt::ApplicationActive; });
}

MainWindow::~MainWindow() {
    view_.stopIdleTimer();
}

void MainWindow::applyScope() {
    // The sections that leave keep their values; only what shows changes.
    const bool single = view_.captureScope == CaptureScope::singleWindow;
    source_->setVisible(single);
    sourceDivider_->setVisible(single);
    sizePreset_->setVisible(single);
    composite_->setVisible(!single);
}

void MainWindow::scrollToMenuBarSection() {
    // After the new controls have been laid out: the section's bottom at the pane's bottom.
    QTimer::singleShot(0, this, [this] {
        QScrollBar* bar = left_->verticalScrollBar();
        const int bottom = menuBar_->mapTo(left_->widget(), QPoint(0, menuBar_->height())).y();
        const int target =
            std::clamp(bottom + 20 - left_->viewport()->height(), bar->minimum(), bar->maximum());
        auto* scroll = new QPropertyAnimation(bar, "value", this);
        scroll->setDuration(300);
        scroll->setEasingCurve(QEasingCurve::OutCubic);
        scroll->setEndValue(target);
        scroll->start(QAbstractAnimation::DeleteWhenStopped);
    });
}

void MainWindow::showEvent(QShowEvent* event) {
    QMainWindow::showEvent(event);
    if (!appeared_) {
        appeared_ = true;
        view_.onAppear();
    }
}

void MainWindow::changeEvent(QEvent* event) {
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && isActiveWindow())
        view_.onActivated();
}

}  // namespace zd::app
