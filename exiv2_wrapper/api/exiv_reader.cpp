#include <cstddef>
#include <cstdint>
#include <cstring>
#include <exception>
#include <limits>
#include <locale>
#include <memory>
#include <new>
#include <optional>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "exiv2_wrapper/api/tag_elements.h"
#include "exiv2_wrapper/api/xmp_properties.h"
#include "exiv2_wrapper/exiv2_wrapper.h"
#include "exiv2_wrapper/log/log.h"
#include "exiv2_wrapper/model/hex_dump.h"
#include "exiv2_wrapper/model/metadata_cache.h"
#include "exiv2_wrapper/model/single_tag_reader.h"
#include "exiv2_wrapper/text/path_text.h"

namespace exiv2_wp {

using internal::CliExifMetadata;
using internal::CliExifTag;
using internal::Pair;

struct ExivReader::State {
    std::filesystem::path path;
    std::shared_ptr<const CliExifMetadata> metadata;  // null: no getter of the table finds anything

    void read(const std::string& file) {
        path = internal::pathFromNarrow(file);
        metadata = internal::readExifMetadataFromCliCached(path);
    }

    [[nodiscard]] const CliExifTag* find(const char* key) const {
        return key == nullptr || metadata == nullptr ? nullptr : metadata->find(key);
    }

    // The value of one tag as the tool prints it with these flags, read anew.
    [[nodiscard]] bool readAnew(const char* key, const char* printFlags, std::string& value) const {
        return key != nullptr && *key != '\0' &&
               internal::readCliTagValueByPrintFlags(path, key, printFlags, value);
    }
};

namespace {

constexpr auto kConstructorSignature =
    "__cdecl exiv2_wp::ExivReader::ExivReader(const class std::basic_string<char,struct "
    "std::char_traits<char>,class std::allocator<char> > &)";

// The tool's flags: the key, which is cut off again, and the value as a dump or as for a reader.
constexpr auto kDumpFlags = "kh";
constexpr auto kInterpretedFlags = "kt";

void logError(const std::exception& error) {
    vesk::logstream line = vesk::__vesklog();
    internal::beginLine(line, internal::LogType::failure);
    line << kConstructorSignature << ": "
         << "ExivReader error: " << error.what();
    vesk::LOG(line);
}

template <typename Value>
bool assign(Value& out, const std::optional<Value>& value) {
    if (value) {
        out = *value;
    }
    return value.has_value();
}

// The pair at an index; false where there is none in range.
template <typename Number>
bool readPair(const CliExifTag* tag, int index, Pair<Number>& out) {
    return tag != nullptr && index >= 0 &&
           assign(out, internal::pairAt<Number>(*tag, static_cast<std::size_t>(index)));
}

// Fills `out` with the first elements of `elements` until one is out of range.
template <typename Element, typename Value, typename Convert>
int fillFrom(const internal::NumberList<Element>& elements, Value* out, int count,
             Convert convert) {
    int written = 0;
    for (const Element& element : elements) {
        if (written >= count || !assign(out[written], convert(element))) {
            break;
        }
        ++written;
    }
    return written;
}

template <typename Number>
int fillNumbers(const CliExifTag* tag, Number* out, int count) {
    if (tag == nullptr || out == nullptr) {
        return 0;
    }
    const auto convert = [](const auto& element) { return internal::toNumber<Number>(element); };
    return tag->integers.empty() ? fillFrom(tag->rationals, out, count, convert)
                                 : fillFrom(tag->integers, out, count, convert);
}

template <typename Number>
int fillPairs(const CliExifTag* tag, Pair<Number>* out, int count) {
    if (tag == nullptr || out == nullptr) {
        return 0;
    }
    const auto convert = [](const auto& element) { return internal::toPair<Number>(element); };
    return tag->rationals.empty() ? fillFrom(tag->integers, out, count, convert)
                                  : fillFrom(tag->rationals, out, count, convert);
}

// Copies the bytes, of which there are some, into a buffer that the caller owns from then on.
bool handOver(const std::vector<std::uint8_t>& bytes, std::int32_t& size, unsigned char*& data) {
    if (!std::in_range<std::int32_t>(bytes.size())) {
        return false;
    }
    data = static_cast<unsigned char*>(::operator new(bytes.size()));
    std::memcpy(data, bytes.data(), bytes.size());
    size = static_cast<std::int32_t>(bytes.size());
    return true;
}

}  // namespace

ExivReader::ExivReader(const std::string& file) {
    auto state = std::make_unique<State>();
    try {
        state->read(file);
    } catch (const std::exception& error) {
        logError(error);
    } catch (...) {
        internal::logFailure(kConstructorSignature, "ExivReader error: Unknown Error");
    }
    state_ = state.release();
}

ExivReader::~ExivReader() {
    delete state_;
}

bool ExivReader::getRawExifTag(const char* key, std::string& out) const {
    const CliExifTag* const tag = state_->find(key);
    if (tag == nullptr) {
        return false;
    }
    out = tag->value;
    return true;
}

bool ExivReader::getRawExifTag(const char* key, int index,
                               std::pair<std::uint32_t, std::uint32_t>& out) const {
    return readPair(state_->find(key), index, out);
}

bool ExivReader::getRawExifTag(const char* key, int index,
                               std::pair<std::int32_t, std::int32_t>& out) const {
    return readPair(state_->find(key), index, out);
}

bool ExivReader::getRawExifTag(const char* key, int index, std::uint32_t* out) const {
    const CliExifTag* const tag = state_->find(key);
    return tag != nullptr && index >= 0 && out != nullptr &&
           assign(*out, internal::numberAt<std::uint32_t>(*tag, static_cast<std::size_t>(index)));
}

bool ExivReader::getRawExifTag(const char* key, std::int32_t* size, unsigned char** data) const {
    if (size == nullptr || data == nullptr) {
        return false;
    }
    *size = 0;
    *data = nullptr;
    std::string dump;
    std::vector<std::uint8_t> bytes;
    return state_->readAnew(key, kDumpFlags, dump) && internal::decodeHexDump(dump, bytes) &&
           handOver(bytes, *size, *data);
}

int ExivReader::getRawExifTag(const char* key, std::uint32_t* out, int count) const {
    return fillNumbers(state_->find(key), out, count);
}

int ExivReader::getRawExifTag(const char* key, std::int16_t* out, int count) const {
    return fillNumbers(state_->find(key), out, count);
}

int ExivReader::getRawExifTag(const char* key, std::pair<std::uint32_t, std::uint32_t>* out,
                              int count) const {
    return fillPairs(state_->find(key), out, count);
}

bool ExivReader::getInterpretedRawExifTag(const char* key, int index, std::uint32_t* out) const {
    // The tool is asked before the index is looked at, so a failed run is logged whatever that is.
    std::string text;
    if (out == nullptr || !state_->readAnew(key, kInterpretedFlags, text) || index < 0) {
        return false;
    }
    std::istringstream words(text);
    words.imbue(std::locale::classic());
    std::uint64_t number = 0;
    for (std::int64_t i = 0; i <= index; ++i) {
        if (!(words >> number)) {
            return false;
        }
    }
    return number <= std::numeric_limits<std::uint32_t>::max() &&
           assign(*out, std::optional(static_cast<std::uint32_t>(number)));
}

std::vector<ExivReader::XMPData> ExivReader::getXMPData() const {
    return state_->metadata == nullptr ? std::vector<XMPData>()
                                       : internal::xmpPropertiesOf(*state_->metadata);
}

}  // namespace exiv2_wp
