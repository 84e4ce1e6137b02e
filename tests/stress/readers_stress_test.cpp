#include <gtest/gtest.h>

#include <atomic>
#include <iterator>
#include <mutex>
#include <random>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <variant>
#include <vector>

#include "exiv2_wrapper/exiv2_wrapper.h"
#include "model/cache_filler.h"
#include "stress/quick_tools.h"
#include "support/this_process.h"

/// Every exported reader at once, on many threads and more files than the cache holds.
namespace exiv2_wp {
namespace {

using test_support::countOpenHandles;
using test_support::hasChildren;
using test_support::kHandlesKeptForThreads;
using test_support::QuickTools;
using test_support::stressCalls;

constexpr int kThreads = 16;
constexpr int kFiles = 400;
constexpr int kWindow = 100;  // files that are asked for more often at a time

struct Photo {
    std::filesystem::path file;
    std::string name;
    bool isReadable;
    bool isRaising;  ///< its reading ends in an exception
    int number;
};

Photo makePhoto(const std::filesystem::path& folder, int number) {
    constexpr const char* kKinds[] = {"failing", "raising", "slow"};
    const int kind = number % 10;
    const std::string name =
        "photo-" + std::to_string(number) + "-" + (kind < 3 ? kKinds[kind] : "readable") + ".nef";
    return {folder / name, name, kind > 1, kind == 1, number};
}

/// One call about one photo: false when its result is impossible.
using Call = bool (*)(const Photo& photo);

bool summarizes(const Photo& photo) {
    int calls = 0;
    std::string model;
    createImageMetadata(photo.file, [&](const SExivMetadataInfo& info) {
        ++calls;
        model = info.cameraModel;
    });
    return photo.isReadable ? calls == 1 && model == photo.name : calls == 0;
}

bool readsOrientation(const Photo& photo) {
    int orientation = 0;
    readExiv2Orientation(photo.file, [&](int value) { orientation = value; });
    return orientation == (photo.isReadable ? 6 : 0);
}

bool readsLens(const Photo& photo) {
    std::string lens;
    int tags = 0;
    readExiv2Info(
        photo.file, "Canon", "EOS 5D", [&](const SLensInfo& info) { lens = info.lensName; },
        [](const SMetadataExiv&) {}, [&] { ++tags; });
    return photo.isReadable ? lens == "lens of " + photo.name && tags == 6 : tags == 0;
}

bool readsBatch(const Photo& photo) {
    const exivBatchValue batch = readExiv2Win(photo.file);
    return photo.isReadable ? batch.dateTime && *batch.dateTime == "2021:07:04 18:30:05"
                            : batch.dateTime == nullptr;
}

bool knowsNoTiffRaw(const Photo& photo) {
    return !isTiffRaw(photo.file);
}

bool readsTags(const Photo& photo) {
    const ExivReader reader(photo.file.string());
    std::string model;
    const bool isFound = reader.getRawExifTag("Exif.Image.Model", model);
    const auto xmp = reader.getXMPData();
    return photo.isReadable ? isFound && model == photo.name && xmp.size() == 1
                            : !isFound && xmp.empty();
}

bool readsBytes(const Photo& photo) {
    const ExivReader reader(photo.file.string());
    std::int32_t size = 0;
    unsigned char* data = nullptr;
    const bool isFound = reader.getRawExifTag("Exif.Image.Make", &size, &data);
    ::operator delete(data);
    return photo.isReadable || photo.isRaising ? isFound && size == 3 : !isFound && size == 0;
}

bool readsPreview(const Photo& photo) {
    TopBottomOffset offset{};
    std::string payload;
    const bool isTaken = readExiv2Thumbnail(
        photo.file, "", 640, 480, offset, [](int, int, int) {}, nullptr,
        [&](const unsigned char* bytes, std::uint64_t count, const TopBottomOffset&) {
            payload.assign(bytes, bytes + count);
            return true;
        },
        nullptr);
    return photo.isReadable || photo.isRaising ? isTaken && payload == photo.name : !isTaken;
}

// A list of neighbours, forwards or backwards.
bool readsAhead(const Photo& photo) {
    constexpr int kLongest = 60;
    std::vector<std::filesystem::path> files;
    for (int i = 0; i < photo.number % kLongest; ++i) {
        const int number = photo.number + (photo.number % 2 == 0 ? i : kFiles - i);
        files.push_back(makePhoto(photo.file.parent_path(), number % kFiles).file);
    }
    return readAhead(files) <= files.size();
}

bool knowsCropFactor(const Photo&) {
    return getCropFactor("Canon ", "PowerShot S100") == 6.44F;
}

struct NamedCall {
    const char* name;
    Call call;
};

// Those that always start the tool come once each, those that ask the cache more often.
constexpr NamedCall kCalls[] = {
    {"summary", summarizes},
    {"summary", summarizes},
    {"summary", summarizes},
    {"orientation", readsOrientation},
    {"lens", readsLens},
    {"lens", readsLens},
    {"batch", readsBatch},
    {"batch", readsBatch},
    {"no TIFF raw", knowsNoTiffRaw},
    {"tags", readsTags},
    {"tags", readsTags},
    {"reading ahead", readsAhead},
    {"bytes", readsBytes},
    {"preview", readsPreview},
    {"crop factor", knowsCropFactor},
};

/// What must not have happened, from any thread.
class Surprises {
public:
    void add(const std::string& what) {
        const std::lock_guard lock(mutex_);
        all_.push_back(what);
    }
    std::vector<std::string> take() {
        const std::lock_guard lock(mutex_);
        return std::exchange(all_, {});
    }

private:
    std::mutex mutex_;
    std::vector<std::string> all_;  // guarded by mutex_
};

// A reading that raises does so for one caller; those who wait for it get nothing.
bool isPossible(Call call, const Photo& photo) {
    try {
        return call(photo);
    } catch (const std::out_of_range&) {
        return photo.isRaising;
    }
}

class Readers : public ::testing::Test {
protected:
    void SetUp() override {
        for (int i = 0; i < kFiles; ++i) {
            photos.push_back(makePhoto(tools.path(), i));
        }
        ASSERT_TRUE(initialize(tools.path()));
        vesk::setLogSink([this](const std::vector<vesk::LogItem>& line) {
            const auto* const file = std::get_if<std::string>(&line.back());
            if (line.size() == 5 && file != nullptr && file->ends_with("-readable.nef")) {
                surprises.add(std::get<vesk::LogLiteral>(line[3]).text + *file);
            }
        });
    }

    // A photo of the window that moves through all of them with the calls' number, or any.
    const Photo& choose(std::mt19937& random, int number) const {
        const auto begin = static_cast<unsigned long>(number) / 10;
        const auto offset = random() % (random() % 4 == 0 ? kFiles : kWindow);
        return photos[(begin + offset) % kFiles];
    }

    // Makes so many calls on all threads; tells of impossible results, and of what was logged about
    // photos that can be read.
    std::vector<std::string> call(int count) {
        std::atomic<int> next = 0;
        std::vector<std::thread> threads;
        for (unsigned thread = 0; thread < kThreads; ++thread) {
            threads.emplace_back([&, thread] {
                std::mt19937 random(thread);
                for (int number = next++; number < count; number = next++) {
                    const auto& [name, reader] = kCalls[random() % std::size(kCalls)];
                    const Photo& photo = choose(random, number);
                    if (!isPossible(reader, photo)) {
                        surprises.add(std::string(name) + " of " + photo.name);
                    }
                }
            });
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
        return surprises.take();
    }

    QuickTools tools;
    std::vector<Photo> photos;
    Surprises surprises;
};

using NoSurprises = std::vector<std::string>;

// Each thread may leave a handle to the threads library for later ones; a leak would be thousands.
TEST_F(Readers, AnswerRightOnManyThreadsAndLeaveNothing) {
    EXPECT_EQ(call(100), NoSurprises{});  // brings to life what the system makes once for threads
    test_support::fillCache();            // an entry that was waited for may hold handles
    const std::size_t before = countOpenHandles();
    EXPECT_EQ(call(stressCalls()), NoSurprises{});
    test_support::fillCache();
    EXPECT_LE(countOpenHandles(), before + kHandlesKeptForThreads * kThreads);
    EXPECT_FALSE(hasChildren());
}

}  // namespace
}  // namespace exiv2_wp
