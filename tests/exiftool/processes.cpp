#include "exiftool/processes.h"

#include <chrono>
#include <thread>

namespace test_support {

namespace {

bool endsWithin(std::chrono::milliseconds time, unsigned long processId) {
    for (auto look = time.count(); look > 0; --look) {
        if (!isProcessAlive(processId)) {
            return true;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return false;
}

}  // namespace

bool ends(unsigned long processId) {
    return endsWithin(std::chrono::minutes(2), processId);
}

bool endsInTime(unsigned long processId) {
    return endsWithin(std::chrono::seconds(2), processId);
}

}  // namespace test_support
