#include "support/shared_file.h"

#include <fstream>
#include <iterator>
#include <system_error>

#include "support/wait_until.h"

namespace test_support {

std::string readSharedFile(const std::filesystem::path& file) {
    std::ifstream stream;
    const bool isOpen = waitUntil([&] {
        stream.open(file, std::ios::binary);
        return stream.is_open();
    });
    if (!isOpen) {
        throw std::filesystem::filesystem_error(
            "can't be opened", file, std::make_error_code(std::errc::device_or_resource_busy));
    }
    return {std::istreambuf_iterator<char>(stream), {}};
}

void renameSharedFile(const std::filesystem::path& from, const std::filesystem::path& to) {
    std::error_code error;
    const bool isRenamed = waitUntil([&] {
        std::filesystem::rename(from, to, error);
        return !error;
    });
    if (!isRenamed) {
        throw std::filesystem::filesystem_error("can't be renamed", from, to, error);
    }
}

}  // namespace test_support
