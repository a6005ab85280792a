#pragma once
// The program's resource bundle, the folder "Zephyrdock_Zephyrdock.bundle" that holds the
// first-run background pictures "Light.jpg" and "Dark.jpg". The platform names the folders
// that may hold it (beside the executable, the installed data folder, …); the first that does
// is the bundle, found once, on first use. A program without its bundle is a packaging fault:
// the first use stops the process with "unable to find bundle named Zephyrdock_Zephyrdock".

#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zd {

class ResourceBundle {
  public:
    static constexpr std::string_view name = "Zephyrdock_Zephyrdock";
    static constexpr std::string_view folderName = "Zephyrdock_Zephyrdock.bundle";

    // Candidate base folders in the order they are tried; empty entries are skipped.
    explicit ResourceBundle(std::vector<std::string> candidateBaseFolders);

    // The bundle's folder. Looked up on the first call; stops the program if there is none.
    const std::string& path();

    // The file "<resource>.<extension>" in the bundle, or nothing if it isn't there.
    std::optional<std::string> url(std::string_view resource, std::string_view extension);

    // The first candidate that holds the bundle folder, as "<base>/Zephyrdock_Zephyrdock.bundle".
    static std::optional<std::string> locate(const std::vector<std::string>& candidateBaseFolders);

  private:
    std::vector<std::string> candidates_;
    std::once_flag once_;
    std::string path_;
};

}  // namespace zd
