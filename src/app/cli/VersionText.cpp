// SPDX-License-Identifier: MIT
// The only source that is compiled anew for each commit.
#include "app/cli/VersionText.h"

#include "base/Identity.h"

#include <LumenvaleCommit.h>

namespace lumenvale {

std::string versionText()
{
    std::string text = applicationName;
    text += " " LUMENVALE_VERSION " (" LUMENVALE_BUILD_NUMBER ")" LUMENVALE_COMMIT;
    return text;
}

} // namespace lumenvale
