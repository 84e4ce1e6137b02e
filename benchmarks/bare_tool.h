#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// Tools driven by the plain system calls: the least that they can cost.
namespace benchmarks {

/// The output of one run: spawns `arguments` (the program's path first) with a pipe as standard
/// output, reads that to its end, and waits. The exit code doesn't count.
std::string runBare(const std::vector<std::string>& arguments);

/// A program that was started with pipes as standard input and standard output. It is ended when
/// this object dies.
class BareTool {
public:
    explicit BareTool(const std::vector<std::string>& arguments);
    BareTool(const BareTool&) = delete;
    BareTool& operator=(const BareTool&) = delete;
    ~BareTool();

    void write(std::string_view bytes) const;
    /// At most buffer.size() bytes, but one at least; 0 at the end.
    [[nodiscard]] std::size_t read(std::span<char> buffer) const;
    /// The next line, without its line feed.
    [[nodiscard]] std::string readLine() const;

private:
    int input_ = -1;
    int output_ = -1;
    int process_ = -1;
};

}  // namespace benchmarks
