#pragma once
// Makes the native window of the progress panel (a Qt widget) behave as the panel must: a
// non-activating floating panel, on every desktop and beside full-screen windows, that comes
// up without this program becoming active, so the target stays the front application.

#include <cstdint>

namespace zd::mac::FloatingPanelWindow {

// `nativeView` is the widget's NSView (QWidget::winId()). Harmless on a window that is no
// panel: then only the level and the desktop behaviour are set.
void configure(std::uintptr_t nativeView);
// Brings the panel up without activating this program.
void orderFrontRegardless(std::uintptr_t nativeView);

}  // namespace zd::mac::FloatingPanelWindow
