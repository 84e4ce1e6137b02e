#pragma once

#include <string>
#include <vector>

/// What a host does to itself, in each platform's way.
namespace exiftool_host {

/// The program's arguments as UTF-8, its name not among them.
std::vector<std::string> utf8Arguments(int count, char** values);

/// Ends this process at once: nothing is unloaded, nobody is asked.
[[noreturn]] void dieAtOnce();

/// Lets a copy of this process end in the ordinary way. Does nothing where there is no fork.
void forkAndExit();

}  // namespace exiftool_host
