#include "window/PreviewPane.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPainterPath>
#include <QTimer>
#include <QVBoxLayout>

#include "ImageConversion.h"
#include "composition/Compositor.h"
#include "composition/Placeholders.h"
#include "composition/TileRenderer.h"
#include "controls/AppPalette.h"
#include "env/Clock.h"
#include "ui/WindowTexts.h"
#include "window/FlowLayout.h"
#include "window/SectionStyle.h"

namespace zd::app {

namespace {
constexpr int captionHeight = 20;
}

ManifestTile::ManifestTile(const PlanEntry& entry, QSize canvas, QWidget* parent)
    : QWidget(parent), entry_(entry), canvas_(canvas) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
}

void ManifestTile::setImage(const QImage& image) {
    image_ = image;
    update();
}

int ManifestTile::heightForWidth(int width) const {
    const double aspect = canvas_.isEmpty() ? 1.6 : double(canvas_.width()) / canvas_.height();
    return static_cast<int>(width / aspect) + 4 + captionHeight;
}

void ManifestTile::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    const QRectF picture(0.5, 0.5, width() - 1.0,
                         heightForWidth(width()) - 4 - captionHeight - 1.0);
    QPainterPath rounded;
    rounded.addRoundedRect(picture, 8, 8);
    painter.save();
    painter.setClipPath(rounded);
    if (image_.isNull())
        painter.fillRect(picture, withOpacity(secondaryColor(palette()), 0.1));
    else
        painter.drawImage(picture, image_);
    painter.restore();
    painter.setPen(QPen(withOpacity(secondaryColor(palette()), 0.15), 1));
    painter.drawPath(rounded);

    // The badge: every preview tile is a placeholder.
    const QFont badgeFont = uiFont(9, true);
    const QString badge = "placeholder";
    const QFontMetrics badgeMetrics(badgeFont);
    const QRectF capsule(picture.right() - 8 - badgeMetrics.horizontalAdvance(badge) - 12,
                         picture.top() + 8, badgeMetrics.horizontalAdvance(badge) + 12,
                         badgeMetrics.height() + 4);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0, 0, 0, 140));
    painter.drawRoundedRect(capsule, capsule.height() / 2, capsule.height() / 2);
    painter.setFont(badgeFont);
    painter.setPen(Qt::white);
    painter.drawText(capsule, Qt::AlignCenter, badge);

    const QRectF caption(0, picture.bottom() + 4, width(), captionHeight);
    QFont labelFont = uiFont(11);
    labelFont.setWeight(QFont::Medium);
    painter.setFont(labelFont);
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(caption, Qt::AlignLeft | Qt::AlignVCenter, qs(entry_.languageLabel));
    const QColor secondary = secondaryColor(palette());
    if (!entry_.languageCode.empty()) {
        const double x = QFontMetricsF(labelFont).horizontalAdvance(qs(entry_.languageLabel)) + 4;
        painter.setFont(uiFont(10));
        painter.setPen(withOpacity(secondary, 0.6));
        painter.drawText(caption.adjusted(x, 0, 0, 0), Qt::AlignLeft | Qt::AlignVCenter,
                         "(" + qs(entry_.languageCode) + ")");
    }
    painter.setFont(uiFont(10));
    painter.setPen(secondary);
    painter.drawText(caption, Qt::AlignRight | Qt::AlignVCenter, qs(title(entry_.mode)).toLower());
}

PreviewPane::PreviewPane(ContentView& view, Environment& env, QWidget* parent)
    : QScrollArea(parent),
      view_(view),
      env_(env),
      count_(new QLabel),
      renderSoon_(new QTimer(this)) {
    setWidgetResizable(true);
    setFrameShape(QFrame::NoFrame);
    setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    auto* content = new QWidget;
    content->setAutoFillBackground(true);
    content->setBackgroundRole(QPalette::Window);
    auto* column = new QVBoxLayout(content);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    auto* header = new QHBoxLayout;
    header->setContentsMargins(16, 14, 16, 0);
    header->setSpacing(6);
    count_->setFont(uiFont(12, true));
    header->addWidget(count_);
    header->addWidget(secondaryText(QString::fromUtf8("\u00b7 representational"), 11));
    header->addStretch(1);
    column->addLayout(header);
    auto* gridHolder = new QWidget;
    grid_ = new FlowLayout(260, 14, gridHolder);
    gridHolder->setContentsMargins(16, 16, 16, 16);
    column->addWidget(gridHolder);
    column->addStretch(1);
    setWidget(content);

    renderSoon_->setSingleShot(true);
    renderSoon_->setInterval(30);
    connect(renderSoon_, &QTimer::timeout, this, [this] { render(); });
    // The tiles read the settings and what the last run found of the menu bar.
    for (ViewChange group : {ViewChange::settings, ViewChange::lastRun})
        subscriptions_.push_back(view_.subscribe(group, [this] {
            rebuildTiles();
            scheduleRender();
        }));
    rebuildTiles();
    render();
}

PreviewPane::~PreviewPane() = default;

void PreviewPane::rebuildTiles() {
    count_->setText(qs(WindowTexts::plannedOutputsText(view_.plannedShotCount())));
    const Size canvas = previewTileCanvas(view_.canvasSize());
    const QSize tileCanvas(static_cast<int>(canvas.width), static_cast<int>(canvas.height));
    auto entries = view_.planEntries();
    if (entries == shownEntries_ && tileCanvas == shownCanvas_)
        return;
    shownEntries_ = entries;
    shownCanvas_ = tileCanvas;
    clearLayout(grid_);
    tiles_.clear();
    for (const PlanEntry& entry : entries) {
        auto* tile = new ManifestTile(entry, tileCanvas);
        if (auto found = pictures_.find(entry.mode); found != pictures_.end())
            tile->setImage(found->second);
        tiles_.push_back(tile);
        grid_->addWidget(tile);
    }
}

void PreviewPane::scheduleRender() {
    ++generation_;  // answers to earlier settings are stale from now on
    renderSoon_->start();
}

void PreviewPane::render() {
    const std::optional<Compositor::Platform> platform = Compositor::platformOf(env_);
    if (!platform || env_.workers == nullptr)
        return;
    const std::uint64_t generation = ++generation_;
    const Size canvas = previewTileCanvas(view_.canvasSize());
    const TileState state = view_.tileState();
    for (AppearanceMode mode : view_.enabledAppearances) {
        auto picture = std::make_shared<QImage>();
        ++pending_;
        env_.workers->run(
            [picture, mode, canvas, state, platform = *platform] {
                Placeholders placeholders(platform.canvases);
                *picture =
                    toQImage(zd::renderTile(mode, nullptr, canvas, state, placeholders, platform));
            },
            [this, alive = std::weak_ptr<int>(alive_), picture, mode, generation] {
                if (alive.expired())
                    return;
                --pending_;
                if (generation != generation_)
                    return;  // the settings changed meanwhile; a newer answer follows
                pictures_[mode] = *picture;
                for (std::size_t index = 0; index < tiles_.size(); ++index)
                    if (shownEntries_[index].mode == mode)
                        tiles_[index]->setImage(*picture);
            });
    }
}

}  // namespace zd::app
