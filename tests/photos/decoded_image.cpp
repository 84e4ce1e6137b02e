#include "photos/decoded_image.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <map>
#include <utility>
#include <vector>

#include "support/photo_list.h"

namespace test_support {

namespace {

std::optional<ImageSize> sizeOfJpeg(const std::filesystem::path& image) {
    const std::string command =
        std::string(DJPEG) + " -strict -pnm '" + image.string() + "' 2>/dev/null";
    std::FILE* const pipe = popen(command.c_str(), "r");
    std::string pixels;
    for (int c = 0; (c = std::fgetc(pipe)) != EOF;) {
        pixels += static_cast<char>(c);
    }
    ImageSize size;
    char kind = 0;
    int most = 0;
    int header = 0;
    // The number of fields that were read says it all.
    const int fields = std::sscanf(pixels.c_str(), "P%c %d %d %d%n", &kind, &size.width,
                                   &size.height, &most, &header);
    if (pclose(pipe) != 0 || fields != 4) {
        return std::nullopt;
    }
    const int samples = size.width * size.height * (kind == '6' ? 3 : 1);
    return pixels.size() == static_cast<std::size_t>(header + 1 + samples) ? std::optional(size)
                                                                           : std::nullopt;
}

// A TIFF's first image.
class Tiff {
public:
    explicit Tiff(std::string bytes) : bytes_(std::move(bytes)), isLittle_(bytes_[0] == 'I') {
        const std::size_t directory = number(4, 4);
        for (std::size_t i = 0; i < number(directory, 2); ++i) {
            const std::size_t entry = directory + 2 + 12 * i;
            fields_[number(entry, 2)] =
                values(number(entry + 2, 2), number(entry + 4, 4), entry + 8);
        }
    }

    [[nodiscard]] std::optional<ImageSize> size() {
        const std::uint64_t bits = first(256) * first(257) * sum(258, 1);
        const bool isWhole = first(259) == 1 && bits > 0 && sum(279, 0) * 8 >= bits &&
                             fields_[273].size() == fields_[279].size();
        for (std::size_t i = 0; isWhole && i < fields_[273].size(); ++i) {
            if (fields_[273][i] + fields_[279][i] > bytes_.size()) {
                return std::nullopt;
            }
        }
        return isWhole ? std::optional(
                             ImageSize{static_cast<int>(first(256)), static_cast<int>(first(257))})
                       : std::nullopt;
    }

private:
    [[nodiscard]] std::uint64_t number(std::size_t at, std::size_t length) const {
        std::uint64_t value = 0;
        for (std::size_t i = 0; i < length; ++i) {
            const std::size_t place = isLittle_ ? at + length - 1 - i : at + i;
            value = value * 256 + static_cast<unsigned char>(bytes_.at(place));
        }
        return value;
    }

    // Of shorts (type 3) and longs (type 4); four bytes or fewer stand in the entry itself.
    [[nodiscard]] std::vector<std::uint64_t> values(std::uint64_t type, std::uint64_t count,
                                                    std::size_t at) const {
        std::vector<std::uint64_t> read;
        const std::size_t length = type == 3 ? 2 : 4;
        const std::size_t begin = count * length > 4 ? number(at, 4) : at;
        for (std::size_t i = 0; (type == 3 || type == 4) && i < count; ++i) {
            read.push_back(number(begin + i * length, length));
        }
        return read;
    }

    [[nodiscard]] std::uint64_t first(std::uint64_t tag) {
        return fields_[tag].empty() ? 0 : fields_[tag].front();
    }

    [[nodiscard]] std::uint64_t sum(std::uint64_t tag, std::uint64_t fallback) {
        std::uint64_t total = fields_[tag].empty() ? fallback : 0;
        for (const std::uint64_t value : fields_[tag]) {
            total += value;
        }
        return total;
    }

    std::string bytes_;
    bool isLittle_;
    std::map<std::uint64_t, std::vector<std::uint64_t>> fields_;  // by tag
};

}  // namespace

std::optional<ImageSize> decodedSize(const std::filesystem::path& image) {
    const std::string bytes = readFile(image);
    if (bytes.starts_with("\xFF\xD8")) {
        return sizeOfJpeg(image);
    }
    if (bytes.starts_with("II*") || bytes.starts_with("MM")) {
        return Tiff(bytes).size();
    }
    return std::nullopt;
}

}  // namespace test_support
