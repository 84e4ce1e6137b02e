#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "exiv2_wrapper/exiftool/tool_channel.h"

namespace exiftool::internal {

/// What a scripted channel has seen, readable after the channel is gone.
struct ChannelRecord {
    std::string written;
    std::size_t livenessQueries = 0;
    std::size_t closes = 0;
};

/// A channel whose reads and liveness a test has written beforehand.
class ScriptedChannel final : public ToolChannel {
public:
    /// Each of `chunks` answers one read, cut where the reader takes less; then the end.
    explicit ScriptedChannel(std::vector<std::string> chunks, ChannelRecord* record = nullptr)
        : chunks_(chunks.begin(), chunks.end()), record_(record) {}

    std::uint32_t active = 1;
    exiv2_wp::internal::ErrorCode livenessError = 0;

    void write(std::string_view bytes) override {
        if (record_ != nullptr) {
            record_->written += bytes;
        }
    }

    std::size_t read(std::span<char> buffer) override {
        if (chunks_.empty()) {
            return 0;
        }
        std::string& chunk = chunks_.front();
        const std::size_t count = std::min(chunk.size(), buffer.size());
        std::copy_n(chunk.begin(), count, buffer.begin());
        chunk.erase(0, count);
        if (chunk.empty()) {
            chunks_.pop_front();
        }
        return count;
    }

    exiv2_wp::internal::ErrorCode countActiveProcesses(std::uint32_t& count) override {
        if (record_ != nullptr) {
            ++record_->livenessQueries;
        }
        count = active;
        return livenessError;
    }

    void close() override {
        if (record_ != nullptr) {
            ++record_->closes;
        }
    }

    /// What hasn't been read yet.
    [[nodiscard]] std::string rest() const {
        std::string rest;
        for (const std::string& chunk : chunks_) {
            rest += chunk;
        }
        return rest;
    }

private:
    std::deque<std::string> chunks_;
    ChannelRecord* record_;
};

}  // namespace exiftool::internal
