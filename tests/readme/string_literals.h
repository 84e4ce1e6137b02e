#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace test_support {

/// A C++ source without its comments and include lines.
std::string withoutComments(std::string_view source);

/// The string literals of a piece of C++ without comments, in order, as they are written: escapes
/// stay as they are, and neighbours that the compiler joins are one. Raw literals aren't known.
std::vector<std::string> stringLiterals(std::string_view code);

/// What stands between the parentheses of each call of `function`.
std::vector<std::string> argumentsOfCalls(std::string_view code, std::string_view function);

}  // namespace test_support
