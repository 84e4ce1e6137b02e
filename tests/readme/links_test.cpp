#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "readme/read_text.h"

namespace test_support {
namespace {

// What isn't code: the text outside of fenced blocks.
std::string proseOf(std::string_view document) {
    constexpr std::string_view kFence = "\n```";
    std::string prose;
    bool isCode = false;
    while (!document.empty()) {
        const std::size_t end = std::min(document.find(kFence), document.size());
        prose += isCode ? "" : std::string(document.substr(0, end));
        document.remove_prefix(std::min(end + kFence.size(), document.size()));
        isCode = !isCode;
    }
    return prose;
}

// The targets of a document's links.
std::vector<std::string> linksIn(const std::filesystem::path& file) {
    const std::string document = proseOf(readText(file));
    std::vector<std::string> links;
    for (std::size_t at = document.find("]("); at != std::string::npos;
         at = document.find("](", at + 1)) {
        const std::size_t end = document.find(')', at);
        links.emplace_back(document.substr(at + 2, end - at - 2));
    }
    return links;
}

// The headings of a document as a link names them: in lower case, with hyphens for blanks.
std::set<std::string> anchorsOf(const std::string& document) {
    std::set<std::string> anchors;
    for (std::size_t at = document.find("\n#"); at != std::string::npos;
         at = document.find("\n#", at + 1)) {
        const std::size_t begin = document.find(' ', at) + 1;
        std::string anchor;
        for (const char c : document.substr(begin, document.find('\n', begin) - begin)) {
            if (c == ' ' || c == '-') {
                anchor += '-';
            } else if (c >= 'A' && c <= 'Z') {
                anchor += static_cast<char>(c - 'A' + 'a');
            } else if ((c >= 'a' && c <= 'z') || (c >= '0' && c <= '9')) {
                anchor += c;
            }
        }
        anchors.insert(anchor);
    }
    return anchors;
}

TEST(DocumentLinks, LeadToFilesAndHeadingsThatExist) {
    for (const std::filesystem::path& document : documents()) {
        for (const std::string& link : linksIn(document)) {
            if (link.find("://") != std::string::npos) {
                continue;
            }
            const std::size_t hash = std::min(link.find('#'), link.size());
            const std::filesystem::path target =
                hash == 0 ? document : document.parent_path() / link.substr(0, hash);
            EXPECT_TRUE(std::filesystem::exists(target)) << document.filename() << ": " << link;
            if (hash < link.size()) {
                EXPECT_EQ(anchorsOf(readText(target)).count(link.substr(hash + 1)), 1U)
                    << document.filename() << ": " << link;
            }
        }
    }
}

TEST(DocumentLinks, LeadFromTheReadmeToEveryPage) {
    std::vector<std::filesystem::path> reached = {sourcePath("README.md")};
    for (std::size_t i = 0; i < reached.size(); ++i) {
        for (const std::string& link : linksIn(reached[i])) {
            const std::filesystem::path target =
                (reached[i].parent_path() / link.substr(0, link.find('#'))).lexically_normal();
            if (target.extension() == ".md" &&
                std::find(reached.begin(), reached.end(), target) == reached.end()) {
                reached.push_back(target);
            }
        }
    }
    for (const std::filesystem::path& document : documents()) {
        EXPECT_NE(std::find(reached.begin(), reached.end(), document.lexically_normal()),
                  reached.end())
            << "No way leads from the README to " << document;
    }
}

}  // namespace
}  // namespace test_support
