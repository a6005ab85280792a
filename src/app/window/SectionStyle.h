#pragma once
// What the main window's sections share: the heading above each, the helper line under a
// control, and small conversions between the core's texts and Qt's.

#include <QIcon>
#include <QLabel>
#include <QString>

#include <string>
#include <string_view>

class QLayout;

namespace zd::app {

inline QString qs(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

// A section's heading: upper case, small, semibold, secondary, slightly spaced.
QLabel* sectionLabel(const QString& text, QWidget* parent = nullptr);
// A helper line below a control: small, the text colour at three quarters, wrapping.
QLabel* helperLine(const QString& text, QWidget* parent = nullptr);
// A small text in the secondary colour.
QLabel* secondaryText(const QString& text, int pixelSize, QWidget* parent = nullptr);
// A font of the window's text at `pixelSize`, semibold when asked.
QFont uiFont(int pixelSize, bool semibold = false);
// Deletes every item and widget of `layout`, leaving it empty.
void clearLayout(QLayout* layout);
// One of our symbols as an icon of `pixels` square, in `color`.
QIcon symbolIcon(std::string_view name, int pixels, const QColor& color);
// A thin horizontal line between sections.
QWidget* divider(QWidget* parent = nullptr);

}  // namespace zd::app
