#include "photoinfo/files/output_file.h"

#include <fstream>
#include <random>
#include <string>
#include <system_error>

namespace photoinfo {

namespace {

namespace fs = std::filesystem;

// In the same folder, so that renaming it is one step. It is removed unless it was renamed.
class DraftFile {
public:
    explicit DraftFile(const fs::path& file)
        : path_(file.parent_path() / (".photoinfo-" + std::to_string(std::random_device{}()))) {}
    DraftFile(const DraftFile&) = delete;
    DraftFile& operator=(const DraftFile&) = delete;
    ~DraftFile() {
        std::error_code ignored;
        fs::remove(path_, ignored);
    }

    bool write(std::span<const unsigned char> bytes) const {
        std::ofstream stream(path_, std::ios::binary);
        const void* const data = bytes.data();
        stream.write(static_cast<const char*>(data), static_cast<std::streamsize>(bytes.size()));
        stream.close();
        return stream.good();
    }

    bool become(const fs::path& file) const {
        std::error_code error;
        fs::rename(path_, file, error);
        return !error;
    }

private:
    fs::path path_;
};

}  // namespace

bool writeWhole(const fs::path& file, std::span<const unsigned char> bytes) {
    const DraftFile draft(file);
    return draft.write(bytes) && draft.become(file);
}

}  // namespace photoinfo
