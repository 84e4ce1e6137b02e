#include "support/run_program.h"

#include <ostream>

#include "support/read_file.h"

namespace test_support {

void PrintTo(const ProgramResult& result, std::ostream* stream) {
    *stream << "exit code " << result.exitCode << "\nstandard output:\n"
            << result.output << "\nstandard error:\n"
            << result.error;
}

ProgramResult runProgram(const std::filesystem::path& program,
                         const std::vector<NativeString>& arguments,
                         const std::filesystem::path& folder) {
    const std::filesystem::path output = folder / "standard-output";
    const std::filesystem::path error = folder / "standard-error";
    const int exitCode = runIntoFiles(program, arguments, output, error);
    return {exitCode, readFile(output), readFile(error)};
}

}  // namespace test_support
