#pragma once
// The texts and small values the main window's controls show, computed from its state so the
// widgets only place them. Progress panel values live in ProgressPanelRules.

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "model/BackgroundKind.h"
#include "model/CaptureScope.h"
#include "model/CaptureTarget.h"
#include "model/CompositeEntry.h"
#include "model/Geometry.h"
#include "model/LanguageSelection.h"
#include "model/SpacesInfo.h"

namespace zd::WindowTexts {

// --- Source and scope sections
// The source picker's first item, the one without a target.
std::string noTargetItem(CaptureScope scope);
// The source picker's current text: the selected target's text, or the first item's when
// nothing is selected or the selected window has gone from `targets`.
std::string targetSelectionLabel(const std::vector<CaptureTarget>& targets,
                                 std::optional<std::uint32_t> selectedTargetID, CaptureScope scope);
// "No windows visible", else "k of n window(s)" (plural unless n is 1).
std::string compositeWindowsButtonLabel(const std::vector<CompositeEntry>& rows);
// The Space picker's current text: the selected desktop's text, or "—".
std::string spacePickerLabel(const std::vector<Spaces::Info>& spaces, std::uint64_t selectedID);
// Height of the windows list in the popover: 36 per row, at most 252 (seven rows).
double compositeListHeight(std::size_t rows);

// --- Output sections
// The catalog's languages not yet chosen, in catalog order; empty once all are added.
std::vector<LanguageSelection> addableLanguages(const std::vector<LanguageSelection>& chosen);
// A menu item of the language menu: "German (de)".
std::string languageMenuItem(const LanguageSelection& language);
inline constexpr const char* allLanguagesAdded = "All languages added";
// The canvas of the `current` preset: "2880 × 1800 pixels".
std::string canvasSizeText(Size canvas);
// "Transparent", "Color" or "Image".
std::string backgroundKindWord(BackgroundKind kind);
// A picture button's title: the file's name, or "Choose image…".
std::string imageButtonTitle(const std::optional<std::string>& path);
// The battery chip's symbol for a charge in percent.
std::string batterySymbol(int percent);

// --- Preview pane and actions bar
// "N planned output(s)" (plural unless N is 1).
std::string plannedOutputsText(int count);
// "Take N shot(s)" (plural unless N is 1).
std::string takeButtonText(int count);
// "5s", or "Off" for 0.
std::string countdownLabel(int seconds);
// The save folder button: the folder's name, or "Choose save folder…".
std::string saveFolderButtonTitle(const std::optional<std::string>& path);

// --- Drops
// The first entry of a drop (URLs as texts, in the drop's order) as a local path, if it is a
// file URL; the others are ignored, and anything else gives nothing.
std::optional<std::string> firstLocalFile(const std::vector<std::string>& urls);

}  // namespace zd::WindowTexts
