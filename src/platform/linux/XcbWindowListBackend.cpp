#include "XcbWindowListBackend.h"

namespace zd::x11 {

Value XcbWindowListBackend::windowList(WindowListOption option) const {
    ValueArray records;
    for (const auto& client : clients_.clients()) {
        if (option == WindowListOption::excludeDesktopElements && client.layer == Layer::desktop) {
            continue;
        }
        records.push_back(EwmhClients::record(client));
    }
    return records;
}

}  // namespace zd::x11
