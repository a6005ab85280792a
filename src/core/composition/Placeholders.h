#pragma once
// Invented pictures that stand in for captures in the preview: an empty application window, or
// a desktop with two such windows. They go through the real compositor, so a tile shows the
// real background and menu bar. Each picture is drawn once per appearance and size and then
// shared from a cache that lives as long as this object (the state owner holds one).

#include <map>
#include <string>

#include "model/AppearanceMode.h"
#include "model/Geometry.h"
#include "model/Image.h"

namespace zd {

class Canvas;
class CanvasFactory;

class Placeholders {
  public:
    explicit Placeholders(const CanvasFactory& canvases) : canvases_(canvases) {}

    // An empty window of `size` pixels; an empty image when the size can't be a bitmap.
    Image window(AppearanceMode mode, Size size);
    // A transparent desktop with two windows on it.
    Image fullDisplay(AppearanceMode mode, Size size);

    // "light-1440x900": the mode's word and the truncated size.
    static std::string cacheKey(AppearanceMode mode, Size size);

    // The drawings themselves, on a canvas of (at least) the given size.
    static void drawWindow(Canvas& canvas, AppearanceMode mode, Size size);
    void drawFullDisplay(Canvas& canvas, AppearanceMode mode, Size size) const;

  private:
    Image makeWindow(AppearanceMode mode, Size size) const;

    const CanvasFactory& canvases_;
    std::map<std::string, Image> windowCache_;
    std::map<std::string, Image> fullDisplayCache_;
};

}  // namespace zd
