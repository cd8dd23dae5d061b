// SPDX-License-Identifier: MIT
#include "app/cli/Verb.h"

namespace lumenvale {

// Each is defined in the file of its name.
#define LUMENVALE_VERBS(VERB)                                                                                     \
    VERB(listVerb)                                                                                                \
    VERB(namesVerb)                                                                                               \
    VERB(getVerb)                                                                                                 \
    VERB(watchVerb)                                                                                               \
    VERB(setVerb)                                                                                                 \
    VERB(presetsVerb)                                                                                             \
    VERB(applyVerb)                                                                                               \
    VERB(doctorVerb)

#define LUMENVALE_DECLARE(verb) Verb verb();
LUMENVALE_VERBS(LUMENVALE_DECLARE)

const std::vector<Verb>& verbs()
{
#define LUMENVALE_CALL(verb) verb(),
    static const std::vector<Verb> list = {LUMENVALE_VERBS(LUMENVALE_CALL)};
    return list;
}

} // namespace lumenvale
