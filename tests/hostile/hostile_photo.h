#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "exiv2_wrapper/exiv2_wrapper.h"
#include "support/log_capture.h"
#include "support/photo_list.h"
#include "support/tool_directory.h"

namespace test_support {

/// Photos made for the test with the installed tools, and these tools in a folder of their own.
class HostilePhoto : public ::testing::Test {
protected:
    void SetUp() override;

    /// A copy of the sample whose metadata is changed by these arguments of exiftool.
    std::filesystem::path makePhoto(const std::string& name,
                                    const std::vector<std::string>& changes = {}) const;
    /// Changes the metadata of photos by these arguments of exiftool, in one run.
    void change(const std::vector<std::filesystem::path>& photos,
                const std::vector<std::string>& changes) const;
    /// A file of XMP alone that holds these properties of the namespace "urn:hostile" or "exifEX",
    /// written as XML attributes.
    std::filesystem::path makeSidecar(const std::string& name, const std::string& properties) const;
    /// What exiftool prints of one tag.
    std::string printedTag(const std::filesystem::path& file, const std::string& tag) const;

    /// The names of all files of the photos' folder, with their bytes.
    std::map<std::string, std::string> snapshot() const;

    /// The value of a tag, read through the library; "none" without it.
    static std::string readTag(const std::filesystem::path& file, const char* key);
    static exiv2_wp::SExivMetadataInfo summarize(const std::filesystem::path& file);

    const std::filesystem::path& tools() const { return tools_.path(); }
    const std::filesystem::path& folder() const { return photos_.path(); }

    LogCapture log;

private:
    TemporaryDirectory tools_{"hostile-tools-"};
    TemporaryDirectory photos_{"hostile-photos-"};
};

}  // namespace test_support
