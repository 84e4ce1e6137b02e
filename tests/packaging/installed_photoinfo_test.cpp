#include <gtest/gtest.h>

#include "support/run_program.h"
#include "support/tool_directory.h"

namespace test_support {
namespace {

TEST(InstalledPhotoinfo, FindsItsLibrariesAfterItWasMoved) {
    const TemporaryDirectory scratch;

    const ProgramResult result = runProgram(PHOTOINFO, {native("--version")}, scratch.path());

    EXPECT_EQ(result.exitCode, 0) << result.error;
    EXPECT_EQ(result.output.find("photoinfo " PHOTOINFO_VERSION), 0U) << result.output;
}

}  // namespace
}  // namespace test_support
