#pragma once
// One planned output tile: a language in one appearance. What the preview shows before a
// run, and the key under which a saved shot is composed.

#include <string>

#include "model/AppearanceMode.h"

namespace zd {

struct PlanEntry {
    std::string id;             // "{code or current}-{light|dark}"
    std::string languageCode;   // empty: the target's current language
    std::string languageLabel;  // the language's name on the tile
    AppearanceMode mode = AppearanceMode::light;

    friend bool operator==(const PlanEntry&, const PlanEntry&) = default;
};

}  // namespace zd
