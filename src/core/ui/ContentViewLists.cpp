// ContentView: the three live lists of the window, refreshed from the system.

#include "capture/Spaces.h"
#include "capture/TargetLists.h"
#include "ui/ContentView.h"

namespace zd {

void ContentView::reloadSpaces() {
    Spaces::reloadSpaces(env_.spaces, availableSpaces, selectedSpaceID);
}

void ContentView::reloadTargets() {
    TargetLists::reloadTargets(env_, selectedSpaceID, targets, selectedTargetID);
}

void ContentView::reloadCompositeWindows() {
    TargetLists::reloadCompositeWindows(env_, selectedSpaceID, compositeWindows);
}

}  // namespace zd
