#include <span>
#include <stdexcept>
#include <string>
#include <utility>

#include "exiv2_wrapper/exiv2_wrapper.h"
#include "exiv2_wrapper/model/cache_key.h"
#include "exiv2_wrapper/model/record_reader.h"
#include "exiv2_wrapper/model/record_table.h"
#include "exiv2_wrapper/runner/process_runner.h"
#include "exiv2_wrapper/runner/read_call.h"

namespace exiv2_wp {

namespace {

namespace fs = std::filesystem;

using internal::computationGuard;
using internal::FilePart;

// A file that this call has to read.
struct Claim {
    const fs::path* file;
    computationGuard guard;
};

// The files at the front of a list, as far as the cache keeps them side by side.
class Front {
public:
    explicit Front(const std::vector<fs::path>& files) : files_(files) {}

    // Goes on along the list and claims files that nobody has read or is reading. None: all that
    // can be had has been claimed. As long as nothing is gained by reading files together, one is
    // claimed at a time, so that no other thread has to wait for the rest of the list.
    std::vector<Claim> claimNext() {
        std::vector<Claim> claims;
        while (keys_.size() < files_.size() && (claims.empty() || !internal::isReadCallRefused())) {
            if (!claimFile(files_[keys_.size()], claims)) {
                break;
            }
        }
        return claims;
    }

    // To be called when all claims are settled: two lists that wait for each other's files before
    // could wait for ever.
    void awaitOthers() {
        for (const internal::SharedRecord& reading : othersReadings_) {
            reading.wait();
        }
    }

    [[nodiscard]] std::size_t countKnown() const { return internal::countKnown(keys_); }

private:
    // False when the cache would lose a file of this front.
    bool claimFile(const fs::path& file, std::vector<Claim>& claims) {
        std::string key = internal::makeCacheKey(file);
        std::optional<internal::CacheEntry> entry = internal::getOrCreateEntryBeside(keySet_, key);
        if (!entry) {
            return false;
        }
        if (entry->guard) {
            claims.push_back({&file, *std::move(entry->guard)});
        } else if (!internal::isSettled(entry->record)) {
            othersReadings_.push_back(entry->record);
        }
        keySet_.insert(key);
        keys_.push_back(std::move(key));
        return true;
    }

    const std::vector<fs::path>& files_;
    std::vector<std::string> keys_;  // of the front's files, in their order
    internal::KeySet keySet_;        // the same
    std::vector<internal::SharedRecord> othersReadings_;
};

// What the summary's parser raises is the next question's to tell: the file isn't remembered.
template <typename Read>
void settle(Claim& claim, const Read& read) {
    computationGuard guard = std::move(claim.guard);
    try {
        guard.deliver(read(*claim.file, guard.key()));
    } catch (const std::out_of_range&) {
    }
}

// Reads files from the front on by one run, and returns how many; `asked` is how many it was told.
internal::ReadCallResult readTogether(std::span<Claim> claims) {
    std::vector<const fs::path*> files;
    for (const Claim& claim : claims) {
        files.push_back(claim.file);
    }
    Claim* next = claims.data();
    return internal::runReadCall(files, [&next](const FilePart& part) {
        settle(*next++, [&part](const fs::path& file, const std::string& key) {
            return internal::makeRecord(file, key, part);
        });
    });
}

// The file at which a run stops is read by runs of its own, the rest by a new one of the kind.
void readAll(std::span<Claim> claims) {
    while (!claims.empty()) {
        const auto [asked, answered] = readTogether(claims);
        claims = claims.subspan(answered);
        if (asked == 0 || answered < asked) {
            settle(claims.front(), internal::readRecord);
            claims = claims.subspan(1);
        }
    }
}

}  // namespace

std::size_t readAhead(const std::vector<fs::path>& files) {
    if (files.empty() || !internal::isExiv2Known()) {
        return 0;
    }
    Front front(files);
    for (std::vector<Claim> claims = front.claimNext(); !claims.empty();
         claims = front.claimNext()) {
        readAll(claims);
    }
    front.awaitOthers();
    return front.countKnown();
}

}  // namespace exiv2_wp
