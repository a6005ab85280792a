#pragma once
// The store that a run's pictures are made for. The Mac App Store takes the composed canvas
// (background, menu bar, window) at one of its sizes and without alpha; Flathub takes the
// window alone with its shadow on transparency (see FlathubExport).

#include <string_view>

#include "model/EnumTraits.h"

namespace zd {

enum class Store { macAppStore, flathub };

template <>
struct EnumTraits<Store> {
    static constexpr std::array cases{Store::macAppStore, Store::flathub};
    static constexpr std::array<std::string_view, 2> rawValues{"mac-app-store", "flathub"};
};

constexpr std::string_view title(Store store) {
    return store == Store::flathub ? "Flathub" : "Mac App Store";
}

}  // namespace zd
