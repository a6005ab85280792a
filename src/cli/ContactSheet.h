#pragma once
// An index.html beside a set of pictures: each picture in order with its label, so a run or a
// preview can be looked over in a browser at once.

#include <filesystem>
#include <string>
#include <vector>

#include "model/LanguageSelection.h"

namespace zd::cli {

struct SheetPicture {
    std::string file;  // relative to the sheet's folder
    std::string label;
};

// Writes `folder`/`fileName`; false when it can't be written.
bool writeContactSheet(const std::filesystem::path& folder, const std::string& title,
                       const std::vector<SheetPicture>& pictures,
                       const std::string& fileName = "index.html");

// The PNG files under a run folder, in the order of the run: language folders in the order
// of `languages` (others after them, by name), Light before Dark; labelled with the language's
// name and code and the file's name.
std::vector<SheetPicture> runPictures(const std::filesystem::path& runRoot,
                                      const std::vector<LanguageSelection>& languages);

}  // namespace zd::cli
