#pragma once
// One captured frame before saving.

#include <string>

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
};

// A new random (version 4) UUID in its usual upper-case text form.
std::string makeUUID();

}  // namespace zd
