#pragma once

#include <string>

/// The smallest images that a tool accepts, without metadata: what an editor has just exported.
namespace test_support {

std::string freshJpeg();
std::string freshPng();
std::string freshTiff();

}  // namespace test_support
