#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace benchmarks {

/// A program that was started with pipes as standard input and standard output, driven by the plain
/// system calls. It is ended when this object dies.
class PipeProgram {
public:
    /// `arguments` begin with the program's full path.
    explicit PipeProgram(const std::vector<std::string>& arguments);
    PipeProgram(const PipeProgram&) = delete;
    PipeProgram& operator=(const PipeProgram&) = delete;
    ~PipeProgram();

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
