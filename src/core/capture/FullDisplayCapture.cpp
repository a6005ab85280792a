#include "capture/FullDisplayCapture.h"

#include <algorithm>
#include <set>

#include "capture/CaptureEngine.h"
#include "capture/WindowRecord.h"
#include "composition/Canvas.h"
#include "env/CanvasFactory.h"
#include "env/Environment.h"
#include "env/ProcessBackend.h"
#include "env/WindowListBackend.h"

namespace zd::CaptureEngine {

namespace {

const Shadow kStackShadow{Point{0, -16.0}, 56.0, Color::black(0.4)};

std::map<std::uint32_t, const ShareableWindow*> indexById(
    const std::vector<ShareableWindow>& windows) {
    std::map<std::uint32_t, const ShareableWindow*> index;
    for (const auto& w : windows)
        index.emplace(w.windowID, &w);
    return index;
}

FullDisplayLayout layoutOf(const ShareableDisplay& display, std::vector<ShareableWindow> windows) {
    FullDisplayLayout layout{display, std::move(windows), {}};
    for (const auto& w : layout.windows)
        layout.frames.emplace(w.windowID, w.frame);
    return layout;
}

}  // namespace

std::string label(const std::string& applicationName, const std::string& title) {
    if (title.empty())
        return applicationName;
    return applicationName + " \u2014 " + title;
}

std::string applicationName(const ShareableWindow& window) {
    if (window.owningApplication)
        return window.owningApplication->applicationName;
    if (window.title)
        return *window.title;
    return "window";
}

std::string label(const ShareableWindow& window) {
    return label(applicationName(window), window.title.value_or(""));
}

WindowCaptureConfiguration stackConfiguration(const Rect& frame, double density) {
    WindowCaptureConfiguration config = windowConfiguration(frame, density);
    config.backgroundColor = Color::clear();
    config.ignoresShadowsSingleWindow = true;
    return config;
}

Expected<FullDisplayLayout, CaptureFailure> layoutFromSnapshot(const ShareableContent& content,
                                                               const Value& windowList,
                                                               std::int32_t ownPid) {
    if (content.displays.empty())
        return unexpected(CaptureFailure::of(CaptureError::noDisplay));
    std::vector<ShareableWindow> kept;
    for (const auto& w : content.windows) {
        if (!w.owningApplication || w.owningApplication->processID == ownPid)
            continue;
        if (!WindowRecord::isOrdinaryLayer(w.windowLayer))
            continue;
        kept.push_back(w);
    }
    auto index = indexById(kept);
    std::vector<ShareableWindow> ordered;
    if (const ValueArray* entries = windowList.asArray()) {
        for (const Value& entry : *entries) {
            auto number = WindowRecord::number(entry);
            if (!number)
                continue;
            if (auto it = index.find(*number); it != index.end())
                ordered.push_back(*it->second);
        }
    }
    std::reverse(ordered.begin(), ordered.end());
    return layoutOf(content.displays.front(), std::move(ordered));
}

Expected<FullDisplayLayout, CaptureFailure> layoutFromRows(
    const ShareableContent& content, const std::vector<CompositeEntry>& compositeWindows,
    CaptureRecords& records) {
    if (content.displays.empty())
        return unexpected(CaptureFailure::of(CaptureError::noDisplay));
    auto index = indexById(content.windows);
    std::vector<EnabledRow> enabled;
    std::vector<const CompositeEntry*> rows;
    for (const auto& row : compositeWindows) {
        if (!row.enabled)
            continue;
        rows.push_back(&row);
        enabled.push_back(EnabledRow{row.id, label(row.appName, row.title)});
    }
    records.lastEnabledSnapshot = enabled;

    std::set<std::uint32_t> used;
    std::vector<ShareableWindow> matched;
    std::vector<std::string> missing;
    for (const CompositeEntry* row : rows) {
        const ShareableWindow* match = nullptr;
        if (auto it = index.find(row->id); it != index.end()) {
            match = it->second;
        } else {
            // A window that got a new number since the list was read is found by its names.
            auto found = std::find_if(
                content.windows.begin(), content.windows.end(), [&](const ShareableWindow& w) {
                    return !used.contains(w.windowID) && w.owningApplication &&
                           w.owningApplication->applicationName == row->appName &&
                           w.title.value_or("") == row->title;
                });
            if (found != content.windows.end())
                match = &*found;
        }
        if (match) {
            used.insert(match->windowID);
            matched.push_back(*match);
        } else {
            missing.push_back(label(row->appName, row->title));
        }
    }
    records.lastMissingFromLayout = std::move(missing);
    std::reverse(matched.begin(), matched.end());
    return layoutOf(content.displays.front(), std::move(matched));
}

Task<Expected<FullDisplayLayout, CaptureFailure>> snapshotFullDisplayLayout(
    const Environment& env) {
    if (!env.capture || !env.workers) {
        co_return unexpected(CaptureFailure::of(CaptureError::permissionDenied));
    }
    CaptureBackend& backend = *env.capture;
    auto content = co_await onWorker(*env.workers, [&] { return backend.shareableContent(); });
    if (!content)
        co_return unexpected(CaptureFailure::of(CaptureError::permissionDenied));
    if (content->displays.empty())
        co_return unexpected(CaptureFailure::of(CaptureError::noDisplay));
    Value list = env.windowList
                     ? env.windowList->windowList(WindowListOption::excludeDesktopElements)
                     : Value();
    const std::int32_t ownPid = env.processes ? env.processes->currentProcessId() : 0;
    co_return layoutFromSnapshot(*content, list, ownPid);
}

Task<Expected<FullDisplayLayout, CaptureFailure>> buildLayoutFromCompositeWindows(
    const Environment& env, std::vector<CompositeEntry> compositeWindows, CaptureRecords& records) {
    if (!env.capture || !env.workers) {
        co_return unexpected(CaptureFailure::system("No capture interface"));
    }
    CaptureBackend& backend = *env.capture;
    auto content = co_await onWorker(*env.workers, [&] { return backend.shareableContent(); });
    if (!content)
        co_return unexpected(CaptureFailure::system(content.error()));
    co_return layoutFromRows(*content, compositeWindows, records);
}

Image paintStack(const CanvasFactory& canvases, const ShareableDisplay& display,
                 const std::vector<StackedWindow>& stack) {
    const double d = display.pixelDensity > 0 ? display.pixelDensity : 2.0;
    auto canvas = canvases.makeCanvas(pixelsFor(display.width, d), pixelsFor(display.height, d));
    if (!canvas)
        return Image();
    const double H = display.height;
    for (const auto& [image, global] : stack) {
        // Frames are global; the canvas shows the display alone, from its own corner.
        const Rect frame{global.x - display.origin.x, global.y - display.origin.y, global.width,
                         global.height};
        // The frame counts y down from the top; the canvas counts it up from the bottom.
        Rect destination{frame.x * d, (H - frame.y - frame.height) * d, frame.width * d,
                         frame.height * d};
        canvas->save();
        canvas->setShadow(kStackShadow);
        canvas->drawImage(image, Rect{}, destination, CompositeOp::sourceOver);
        canvas->restore();
    }
    Image painted = canvas->finish();
    painted.setPixelsPerPoint(d);
    return painted;
}

Task<Expected<Image, CaptureFailure>> captureFullDisplay(const Environment& env,
                                                         std::optional<FullDisplayLayout> layout,
                                                         CaptureRecords& records) {
    if (!layout) {
        auto snapshot = co_await snapshotFullDisplayLayout(env);
        if (!snapshot)
            co_return unexpected(snapshot.error());
        layout = std::move(*snapshot);
    }
    std::vector<std::string> skipped;
    std::vector<CaptureOutcome> outcomes;
    std::vector<StackedWindow> stack;
    for (const ShareableWindow& window : layout->windows) {
        auto known = layout->frames.find(window.windowID);
        const Rect frame = known != layout->frames.end() ? known->second : window.frame;
        const WindowCaptureConfiguration config = stackConfiguration(frame, window.pixelDensity);
        Expected<Image, CaptureFailure> picture =
            unexpected(CaptureFailure::system("No capture interface"));
        if (env.capture && env.workers) {
            CaptureBackend& backend = *env.capture;
            picture = co_await onWorker(*env.workers,
                                        [&] { return backend.captureWindow(window, config); });
        }
        if (!picture) {
            skipped.push_back(applicationName(window));
            outcomes.push_back(CaptureOutcome{label(window), frame, false, false});
        } else if (isCGImageBlank(*picture)) {
            skipped.push_back(applicationName(window));
            outcomes.push_back(CaptureOutcome{label(window), frame, false, true});
        } else {
            stack.push_back(StackedWindow{std::move(*picture), frame});
            outcomes.push_back(CaptureOutcome{label(window), frame, true, false});
        }
    }
    Image image = env.canvases ? paintStack(*env.canvases, layout->display, stack) : Image();
    records.lastSkippedWindowNames = std::move(skipped);
    records.lastCaptureOutcomes = std::move(outcomes);
    co_return image;
}

}  // namespace zd::CaptureEngine
