// SPDX-License-Identifier: GPL-2.0-or-later
#include "dispatcher/call_kind.h"
#include "dispatcher/reader_program.h"
#include "dispatcher/real_tool.h"

// Most calls are only passed on, and each of them waits for this program first. So it is small,
// linked statically and without libexiv2: it looks at its arguments and becomes another program.
int main(int count, char** arguments) {
    using namespace exiv2_companion;
    switch (kindOf({arguments, static_cast<std::size_t>(count)})) {
        case CallKind::preview:
            return becomePreviewReader(arguments);
        case CallKind::summary:
            if (!isCalledBack()) {  // else the caller has written the line already
                writeLensLine(arguments[2]);
            }
            break;
        case CallKind::passOn:
            break;
    }
    return becomeRealTool(arguments);
}
