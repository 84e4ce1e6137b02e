#include "exiftool/processes.h"

#include <chrono>
#include <thread>

#include "support/wait_until.h"

namespace test_support {

bool ends(unsigned long processId) {
    return waitUntil([&] { return !isProcessAlive(processId); });
}

bool endsInTime(unsigned long processId) {
    constexpr int kLooks = 2000;
    for (int look = 0; look < kLooks; ++look) {
        if (!isProcessAlive(processId)) {
            return true;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return false;
}

}  // namespace test_support
