#pragma once
// A fresh folder under the system's temporary folder, removed with everything in it at the end
// of the test.

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace zd::test {

class TemporaryFolder {
  public:
    TemporaryFolder() {
        std::string pattern = (std::filesystem::temp_directory_path() / "zd-test-XXXXXX").string();
        if (char* made = ::mkdtemp(pattern.data()))
            path_ = made;
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& path() const { return path_; }

    // Writes a small file (making its folders) and returns its path.
    std::string file(const std::string& relative, const std::string& contents = "x") const {
        auto file = path_ / relative;
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file) << contents;
        return file.string();
    }

  private:
    std::filesystem::path path_;
};

}  // namespace zd::test
