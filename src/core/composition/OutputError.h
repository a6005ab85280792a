#pragma once
// Why a picture couldn't be written: the failure that saving raises and the run turns into
// "Save failed: {localizedDescription}". Encoding failures carry the system's own domain and
// code; file-system failures carry the platform's category, code and message.

#include <string>
#include <system_error>

namespace zd {

struct OutputError {
    std::string domain;
    int code = 0;
    std::string localizedDescription;

    static OutputError couldNotEncodePNG() { return {"Zephyrdock", 1, "Could not encode PNG"}; }
    static OutputError fromErrorCode(const std::error_code& ec) {
        return {ec.category().name(), ec.value(), ec.message()};
    }

    friend bool operator==(const OutputError&, const OutputError&) = default;
};

}  // namespace zd
