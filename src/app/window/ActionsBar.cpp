#include "window/ActionsBar.h"

#include <QActionGroup>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QMenu>
#include <QPainter>
#include <QPushButton>
#include <QShortcut>
#include <QToolButton>
#include <QVariantAnimation>

#include <filesystem>

#include "controls/AppPalette.h"
#include "controls/SymbolPainter.h"
#include "model/Preferences.h"
#include "ui/WindowTexts.h"
#include "window/SectionStyle.h"

namespace zd::app {

RevealButton::RevealButton(QWidget* parent)
    : QAbstractButton(parent), pulse_(new QVariantAnimation(this)) {
    setToolTip("Reveal latest capture in Finder");
    setFixedSize(sizeHint());
    setCursor(Qt::PointingHandCursor);
    pulse_->setDuration(900);
    pulse_->setStartValue(1.0);
    pulse_->setKeyValueAt(0.5, 1.18);
    pulse_->setEndValue(1.0);
    pulse_->setEasingCurve(QEasingCurve::InOutSine);
    connect(pulse_, &QVariantAnimation::valueChanged, this, [this](const QVariant& value) {
        scale_ = value.toDouble();
        update();
    });
}

void RevealButton::setPulsing(bool on) {
    if (on) {
        pulse_->setLoopCount(3);
        pulse_->start();
    } else {
        pulse_->stop();
        scale_ = 1.0;
        update();
    }
}

void RevealButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QPointF centre = QRectF(rect()).center();
    painter.translate(centre);
    painter.scale(scale_, scale_);
    painter.translate(-centre);
    const QRectF square(centre.x() - 18, centre.y() - 18, 36, 36);
    painter.setPen(Qt::NoPen);
    painter.setBrush(withOpacity(accentColor(palette()), isEnabled() ? 1.0 : 0.25));
    painter.drawRoundedRect(square, 8, 8);
    paintSymbol(painter, "folder.fill", 15, centre, Qt::white);
}

ActionsBar::ActionsBar(ContentView& view, Environment& env, QWidget* parent)
    : QFrame(parent),
      view_(view),
      env_(env),
      destination_(new QToolButton(this)),
      saveFolder_(new QPushButton(this)),
      variant_(new QLineEdit(this)),
      countdown_(new QToolButton(this)),
      repeat_(nullptr),
      take_(new QPushButton(this)),
      takeShortcut_(nullptr),
      reveal_(new RevealButton(this)) {
    setAutoFillBackground(true);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(16, 10, 16, 10);
    row->setSpacing(12);

    auto* destinations = new QMenu(destination_);
    destinations->addAction("Group with previous capture", this,
                            [this] { view_.setDestinationMode(DestinationMode::group); });
    destinations->addAction("New destination", this,
                            [this] { view_.setDestinationMode(DestinationMode::newDestination); });
    destination_->setMenu(destinations);
    destination_->setPopupMode(QToolButton::InstantPopup);
    destination_->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    destination_->setAutoRaise(true);
    destination_->setFont(uiFont(12));
    row->addWidget(destination_);

    saveFolder_->setFlat(true);
    saveFolder_->setFont(uiFont(12));
    connect(saveFolder_, &QPushButton::clicked, this, [this] { view_.chooseSaveFolder(); });
    row->addWidget(saveFolder_);

    variant_->setPlaceholderText("Name of feature, state, etc. (optional)");
    variant_->setFont(uiFont(12));
    variant_->setFixedWidth(240);
    connect(variant_, &QLineEdit::textEdited, this,
            [this](const QString& text) { view_.setVariantName(text.toStdString()); });
    row->addWidget(variant_);
    row->addStretch(1);

    auto* countdownMenu = new QMenu(countdown_);
    auto* choices = new QActionGroup(countdownMenu);
    for (auto [seconds, text] : {std::pair{0, "Off"}, std::pair{3, "3 seconds"},
                                 std::pair{5, "5 seconds"}, std::pair{10, "10 seconds"}}) {
        QAction* action = countdownMenu->addAction(
            text, this, [this, seconds = seconds] { view_.setCountdownSeconds(seconds); });
        action->setCheckable(true);
        choices->addAction(action);
        countdownChoices_.emplace_back(seconds, action);
    }
    countdownMenu->addSeparator();
    repeat_ = countdownMenu->addAction("Repeat after each language switch");
    repeat_->setCheckable(true);
    connect(repeat_, &QAction::triggered, this,
            [this](bool on) { view_.setCountdownAfterRelaunch(on); });
    countdown_->setMenu(countdownMenu);
    countdown_->setPopupMode(QToolButton::InstantPopup);
    countdown_->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    countdown_->setAutoRaise(true);
    countdown_->setToolTip("Countdown before capture");
    QFont countdownFont = uiFont(11);
    countdownFont.setWeight(QFont::Medium);
    countdown_->setFont(countdownFont);
    row->addWidget(countdown_);

    takeShortcut_ = new QShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_C), this);
    takeShortcut_->setContext(Qt::WindowShortcut);
    connect(takeShortcut_, &QShortcut::activated, this, [this] {
        if (take_->isEnabled())
            take_->click();
    });
    take_->setIcon(symbolIcon("camera.viewfinder", 18, Qt::white));
    take_->setFont(uiFont(15, true));
    take_->setMinimumSize(200, 36);
    take_->setCursor(Qt::PointingHandCursor);
    const QColor accent = accentColor(palette());
    take_->setStyleSheet(
        QString("QPushButton { color: white; background: %1; border: none; border-radius: 8px;"
                " padding: 0 14px; } QPushButton:disabled { background: %2;"
                " color: rgba(255, 255, 255, 150); }")
            .arg(accent.name(), withOpacity(accent, 0.4).name(QColor::HexArgb)));
    connect(take_, &QPushButton::clicked, this, [this] { view_.takeShots(); });
    row->addWidget(take_);

    connect(reveal_, &QAbstractButton::clicked, this, [this] {
        if (view_.lastRunRoot)
            view_.revealInFinder(*view_.lastRunRoot);
    });
    row->addWidget(reveal_);

    for (ViewChange group : {ViewChange::settings, ViewChange::lastRun, ViewChange::runState,
                             ViewChange::selection, ViewChange::lists})
        subscriptions_.push_back(view_.subscribe(group, [this] { refresh(); }));
    subscriptions_.push_back(view_.subscribe(
        ViewChange::revealPulse, [this] { reveal_->setPulsing(view_.pulseRevealButton); }));
    refresh();
}

QAction* ActionsBar::countdownChoice(int seconds) const {
    for (const auto& [value, action] : countdownChoices_)
        if (value == seconds)
            return action;
    return nullptr;
}

void ActionsBar::refresh() {
    const bool hasRun = view_.lastRunRoot.has_value() && !view_.lastRunRoot->empty();
    const bool group = view_.destinationMode == DestinationMode::group;
    destination_->setVisible(hasRun);
    destination_->setText(group ? "Group with previous capture" : "New destination");
    destination_->setIcon(symbolIcon(group ? "square.stack.3d.up" : "folder.badge.plus", 14,
                                     palette().color(QPalette::ButtonText)));
    destination_->setToolTip(group && hasRun
                                 ? qs(std::filesystem::path(*view_.lastRunRoot).filename().string())
                                 : QString("Start a fresh run folder"));
    saveFolder_->setVisible(!hasRun || !group);
    const auto folder = env_.settings != nullptr
                            ? Preferences::url(*env_.settings, Preferences::Keys::saveFolderURL)
                            : std::nullopt;
    saveFolder_->setText(qs(WindowTexts::saveFolderButtonTitle(folder)));
    if (!variant_->hasFocus())
        variant_->setText(qs(view_.variantName));
    countdown_->setText(qs(WindowTexts::countdownLabel(view_.countdownSeconds)));
    countdown_->setIcon(symbolIcon("timer", 14, palette().color(QPalette::ButtonText)));
    for (const auto& [seconds, action] : countdownChoices_)
        action->setChecked(seconds == view_.countdownSeconds);
    repeat_->setChecked(view_.countdownAfterRelaunch);
    repeat_->setEnabled(view_.canRepeatAfterLanguage());
    take_->setText(qs(WindowTexts::takeButtonText(view_.plannedShotCount())));
    take_->setEnabled(!view_.captureDisabled());
    reveal_->setEnabled(hasRun);
}

}  // namespace zd::app
