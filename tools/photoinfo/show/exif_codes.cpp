#include "photoinfo/show/exif_codes.h"

#include <algorithm>
#include <array>
#include <span>

namespace photoinfo {

namespace {

struct Code {
    std::int32_t code;
    const char* name;
};

// The codes of Exif 2.32, in its order.
constexpr std::array<Code, 8> kMeteringModes = {{
    {0, "not known to the camera"},
    {1, "average"},
    {2, "centre-weighted average"},
    {3, "spot"},
    {4, "multi-spot"},
    {5, "multi-segment"},
    {6, "partial"},
    {255, "other"},
}};

constexpr std::array<Code, 22> kLightSources = {{
    {0, "not known to the camera"},
    {1, "daylight"},
    {2, "fluorescent"},
    {3, "tungsten"},
    {4, "flash"},
    {9, "fine weather"},
    {10, "cloudy weather"},
    {11, "shade"},
    {12, "daylight fluorescent"},
    {13, "day white fluorescent"},
    {14, "cool white fluorescent"},
    {15, "white fluorescent"},
    {16, "warm white fluorescent"},
    {17, "standard light A"},
    {18, "standard light B"},
    {19, "standard light C"},
    {20, "D55"},
    {21, "D65"},
    {22, "D75"},
    {23, "D50"},
    {24, "ISO studio tungsten"},
    {255, "other"},
}};

constexpr std::array<Code, 2> kWhiteBalances = {{
    {0, "automatic"},
    {1, "manual"},
}};

constexpr std::array<Code, 9> kExposurePrograms = {{
    {0, "not known to the camera"},
    {1, "manual"},
    {2, "normal program"},
    {3, "aperture priority"},
    {4, "shutter priority"},
    {5, "creative program"},
    {6, "action program"},
    {7, "portrait"},
    {8, "landscape"},
}};

constexpr std::array<Code, 8> kOrientations = {{
    {1, "upright"},
    {2, "mirror left to right"},
    {3, "turn by 180 degrees"},
    {4, "mirror top to bottom"},
    {5, "mirror left to right, then turn left by 90 degrees"},
    {6, "turn right by 90 degrees"},
    {7, "mirror left to right, then turn right by 90 degrees"},
    {8, "turn left by 90 degrees"},
}};

std::string nameOf(std::span<const Code> codes, std::int32_t code) {
    const auto* const found =
        std::find_if(codes.data(), codes.data() + codes.size(),
                     [code](const Code& candidate) { return candidate.code == code; });
    return found == codes.data() + codes.size() ? "code " + std::to_string(code) : found->name;
}

}  // namespace

std::string meteringModeName(std::int32_t code) {
    return nameOf(kMeteringModes, code);
}

std::string lightSourceName(std::int32_t code) {
    return nameOf(kLightSources, code);
}

std::string whiteBalanceName(std::int32_t code) {
    return nameOf(kWhiteBalances, code);
}

std::string exposureProgramName(std::int32_t code) {
    return nameOf(kExposurePrograms, code);
}

std::string orientationName(std::int32_t code) {
    return nameOf(kOrientations, code);
}

}  // namespace photoinfo
