// SPDX-License-Identifier: MIT
// Owners of what xcb allocates.
#pragma once

#include <cstdlib>
#include <memory>
#include <xcb/xcb.h>

namespace lumenvale {

struct XcbFree {
    void operator()(void* memory) const { std::free(memory); }
};
/// A reply, an event or an error; null where the server sent none.
template <typename Reply>
using XcbOwned = std::unique_ptr<Reply, XcbFree>;

template <typename Reply>
XcbOwned<Reply> owned(Reply* reply)
{
    return XcbOwned<Reply>(reply);
}

struct XcbDisconnect {
    void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
};
using XcbConnection = std::unique_ptr<xcb_connection_t, XcbDisconnect>;

} // namespace lumenvale
