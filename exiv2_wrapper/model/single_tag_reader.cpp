#include "exiv2_wrapper/model/single_tag_reader.h"

#include <string_view>

#include "exiv2_wrapper/log/log.h"
#include "exiv2_wrapper/runner/process_runner.h"
#include "exiv2_wrapper/text/native_text.h"
#include "exiv2_wrapper/text/text.h"

namespace exiv2_wp::internal {

namespace {

constexpr auto kTagSignature =
    "bool __cdecl exiv2_wp::`anonymous-namespace'::readCliTagValueByPrintFlags(const class "
    "std::filesystem::path &,const char *,const class std::basic_string<char,struct "
    "std::char_traits<char>,class std::allocator<char> > &,class std::basic_string<char,struct "
    "std::char_traits<char>,class std::allocator<char> > &)";

}  // namespace

bool readCliTagValueByPrintFlags(const std::filesystem::path& file, const char* key,
                                 const std::string& printFlags, std::string& value) {
    std::string output;
    if (!runExiv2Cli({asciiArgument("--key"), nativeText(key), asciiArgument("--Print"),
                      nativeText(printFlags), file.native()},
                     output)) {
        logFailure(kTagSignature, "Exiv2 failed run --key cli command for ", file);
        return false;
    }
    std::string_view text = trimmed(output);
    if (text.empty()) {
        logFailure(kTagSignature, "Exiv2 empty output.");
        return false;
    }
    if (text.starts_with(key)) {
        text.remove_prefix(std::string_view(key).size());
    }
    value = trimmed(text);
    return !value.empty();
}

}  // namespace exiv2_wp::internal
