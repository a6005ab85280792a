// Linux has no updater of the system's own for this program: the application's checker serves.

#include "common/SystemUpdater.h"

namespace zd::SystemUpdater {

bool start() {
    return false;
}

bool checkForUpdates() {
    return false;
}

}  // namespace zd::SystemUpdater
