// SPDX-License-Identifier: GPL-2.0-or-later
#include <cstdlib>
#include <vector>

#include "exiv2/application.h"

int main(int count, char** arguments) {
    std::vector<exiv2_tool::Argument> texts;
    for (int i = 1; i < count; ++i) {
        texts.push_back({arguments[i], arguments[i]});
    }
    // Everything is written; what is left to tidy up ends with the process.
    std::_Exit(exiv2_tool::runApplication(texts));
}
