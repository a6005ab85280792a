#pragma once
// What a floating, non-activating panel needs from the window system beyond the toolkit's
// own window flags: to stand on every desktop, and to know whether a compositor blends its
// translucent edges (where none does, the panel cuts its own shape). Each platform supplies
// `create`; windows are named by the toolkit's native id.

#include <cstdint>
#include <memory>

namespace zd {

class PanelWindowBackend {
  public:
    virtual ~PanelWindowBackend() = default;

    // The platform's backend for the running toolkit session; none where the window system
    // has nothing to add (an offscreen session, another windowing system).
    static std::unique_ptr<PanelWindowBackend> create();

    // Makes the window a floating panel on every desktop, where the toolkit's flags don't
    // already. Call before it is first shown (a window manager reads it when it takes the
    // window) and again after each show.
    virtual void floatOnAllDesktops(std::uintptr_t window) = 0;
    // Whether a compositing manager blends translucent windows over what lies below.
    virtual bool compositing() const = 0;
};

}  // namespace zd
