#pragma once
// How a face hears that state it shows has changed: it subscribes with a callback and is told
// what changed, after the change. The subscription ends when its handle is destroyed, so a
// widget that holds the handle as a member can't be called after it has gone; the handle may
// also outlive the notifier it came from. The main window's state announces coarse groups
// (ViewChange); the progress model announces its fields the same way.

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <utility>
#include <vector>

namespace zd {

// What changed in the main window's state, coarsely; a face re-reads the group's fields.
enum class ViewChange {
    lists,        // targets, availableSpaces, compositeWindows (rows, ticks, order)
    selection,    // selectedTargetID, selectedSpaceID, targetCurrentLangCode
    settings,     // every persisted setting (the save folder too), the menu bar, variantName,
                  // showingWindowsPopover
    runState,     // isWorking, captureTask
    lastRun,      // lastRunRoot, destinationMode, detectedMenuTitles, capturedMenuBarImage
    revealPulse,  // pulseRevealButton
    progress,     // a write to any published field of the progress model
};

// Ends its subscription on destruction or reset(); movable, not copyable.
class Subscription {
  public:
    Subscription() = default;
    explicit Subscription(std::function<void()> end) : end_(std::move(end)) {}
    Subscription(Subscription&& other) noexcept : end_(std::exchange(other.end_, nullptr)) {}
    Subscription& operator=(Subscription&& other) noexcept {
        if (this != &other) {
            reset();
            end_ = std::exchange(other.end_, nullptr);
        }
        return *this;
    }
    Subscription(const Subscription&) = delete;
    Subscription& operator=(const Subscription&) = delete;
    ~Subscription() { reset(); }

    void reset() {
        if (auto end = std::exchange(end_, nullptr))
            end();
    }

  private:
    std::function<void()> end_;
};

template <class Event>
class Notifier {
  public:
    // Told of every event.
    [[nodiscard]] Subscription subscribe(std::function<void(Event)> onChange) {
        const std::uint64_t id = registry_->nextId++;
        registry_->callbacks.emplace(id, std::move(onChange));
        return Subscription([registry = std::weak_ptr<Registry>(registry_), id] {
            if (auto alive = registry.lock())
                alive->callbacks.erase(id);
        });
    }
    // Told of one event only.
    [[nodiscard]] Subscription subscribe(Event which, std::function<void()> onChange) {
        return subscribe([which, onChange = std::move(onChange)](Event event) {
            if (event == which)
                onChange();
        });
    }

    // Tells every subscriber, in the order they subscribed. A subscriber may subscribe, or
    // end any subscription, while being told; one that has ended isn't called afterwards.
    void announce(Event event) const {
        const auto registry = registry_;  // a callback may destroy this notifier's owner
        std::vector<std::uint64_t> ids;
        ids.reserve(registry->callbacks.size());
        for (const auto& entry : registry->callbacks)
            ids.push_back(entry.first);
        for (auto id : ids) {
            auto found = registry->callbacks.find(id);
            if (found == registry->callbacks.end())
                continue;
            auto callback = found->second;  // it may end its own subscription meanwhile
            callback(event);
        }
    }

  private:
    struct Registry {
        std::uint64_t nextId = 1;
        std::map<std::uint64_t, std::function<void(Event)>> callbacks;
    };
    std::shared_ptr<Registry> registry_ = std::make_shared<Registry>();
};

using ChangeNotices = Notifier<ViewChange>;

}  // namespace zd
