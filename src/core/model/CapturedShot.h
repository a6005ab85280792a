#pragma once
// One captured frame before saving.

#include <optional>
#include <string>
#include <vector>

#include "model/AppearanceMode.h"
#include "model/Image.h"

namespace zd {

struct CapturedShot {
    std::string id;  // a new UUID for every shot
    std::string languageCode;
    std::string languageLabel;
    AppearanceMode mode = AppearanceMode::light;
    Image image;
    bool isFullDisplay = false;
    // The target's own menu titles in this language, read through the accessibility interface:
    // empty when it has no menu bar, none when they couldn't be read.
    std::optional<std::vector<std::string>> menuTitles;
};

// A new random (version 4) UUID in its usual upper-case text form.
std::string makeUUID();

}  // namespace zd
