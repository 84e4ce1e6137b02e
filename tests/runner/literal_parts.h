#pragma once

#include <cstddef>
#include <string>
#include <vector>

/// A second version of what reads the output of the call for many files, slow and word by word.
namespace test_support {

struct LiteralPart {
    bool isPrintAllSuccess = false;
    std::string printAll;
    bool isSummarySuccess = false;
    std::string summary;

    bool operator==(const LiteralPart&) const = default;
};

struct LiteralParts {
    std::vector<LiteralPart> parts;
    bool isMalformed = false;  ///< what follows can't become a part, whatever comes

    bool operator==(const LiteralParts&) const = default;
};

/// The whole parts of `output`, which is all that was printed so far about at most `files` files.
LiteralParts literalTakeParts(std::string output, std::size_t files);

/// What the call prints about the file at a position.
std::string printPart(std::size_t position, const LiteralPart& part);

}  // namespace test_support
