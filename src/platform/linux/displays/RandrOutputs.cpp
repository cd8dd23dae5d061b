// SPDX-License-Identifier: MIT
#include "platform/linux/displays/RandrOutputs.h"

#include "platform/linux/displays/Edid.h"
#include "platform/linux/displays/ModeLine.h"

#include <algorithm>
#include <cstdlib>
#include <dlfcn.h>
#include <memory>
#include <span>
#include <utility>
#include <xcb/randr.h>
#include <xcb/xcb.h>

namespace lumenvale {

namespace {

/// A shared library that need not be there. It stays loaded: X libraries do not take well to going.
class Library {
public:
    explicit Library(const char* name) : handle(::dlopen(name, RTLD_LAZY | RTLD_LOCAL)) {}

    template <typename Function>
    Function find(const char* name)
    {
        void* const symbol = handle ? ::dlsym(handle, name) : nullptr;
        isWhole = isWhole && symbol;
        return reinterpret_cast<Function>(symbol);
    }

    bool isWhole = true; ///< all that was looked for was found

private:
    void* handle;
};

// NOLINTBEGIN(bugprone-macro-parentheses): `name` becomes part of other names
#define LUMENVALE_FUNCTION(library, name)                                                                         \
    decltype(&xcb_##name) name = library.find<decltype(&xcb_##name)>("xcb_" #name)
// NOLINTEND(bugprone-macro-parentheses)

struct Xcb {
    Library core{"libxcb.so.1"};
    Library randr{"libxcb-randr.so.0"};
    LUMENVALE_FUNCTION(core, connect);
    LUMENVALE_FUNCTION(core, connection_has_error);
    LUMENVALE_FUNCTION(core, disconnect);
    LUMENVALE_FUNCTION(core, get_setup);
    LUMENVALE_FUNCTION(core, setup_roots_iterator);
    LUMENVALE_FUNCTION(core, screen_next);
    LUMENVALE_FUNCTION(core, intern_atom);
    LUMENVALE_FUNCTION(core, intern_atom_reply);
    LUMENVALE_FUNCTION(randr, randr_query_version);
    LUMENVALE_FUNCTION(randr, randr_query_version_reply);
    LUMENVALE_FUNCTION(randr, randr_get_screen_resources_current);
    LUMENVALE_FUNCTION(randr, randr_get_screen_resources_current_reply);
    LUMENVALE_FUNCTION(randr, randr_get_screen_resources_current_outputs);
    LUMENVALE_FUNCTION(randr, randr_get_screen_resources_current_modes);
    LUMENVALE_FUNCTION(randr, randr_get_output_primary);
    LUMENVALE_FUNCTION(randr, randr_get_output_primary_reply);
    LUMENVALE_FUNCTION(randr, randr_get_output_info);
    LUMENVALE_FUNCTION(randr, randr_get_output_info_reply);
    LUMENVALE_FUNCTION(randr, randr_get_output_info_name);
    LUMENVALE_FUNCTION(randr, randr_get_crtc_info);
    LUMENVALE_FUNCTION(randr, randr_get_crtc_info_reply);
    LUMENVALE_FUNCTION(randr, randr_get_output_property);
    LUMENVALE_FUNCTION(randr, randr_get_output_property_reply);
    LUMENVALE_FUNCTION(randr, randr_get_output_property_data);

    bool isWhole() const { return core.isWhole && randr.isWhole; }
};

#undef LUMENVALE_FUNCTION

struct Free {
    void operator()(void* reply) const { std::free(reply); }
};

template <typename Reply>
std::unique_ptr<Reply, Free> owned(Reply* reply)
{
    return std::unique_ptr<Reply, Free>(reply);
}

ModeLine modeLine(const xcb_randr_mode_info_t& mode)
{
    return {static_cast<double>(mode.dot_clock), static_cast<double>(mode.htotal),
            static_cast<double>(mode.vtotal), (mode.mode_flags & XCB_RANDR_MODE_FLAG_DOUBLE_SCAN) != 0,
            (mode.mode_flags & XCB_RANDR_MODE_FLAG_INTERLACE) != 0};
}

/// One look at the server's outputs.
class Server {
public:
    explicit Server(const Xcb& xcb) : xcb(xcb), connection(xcb.connect(nullptr, &screenNumber)) {}
    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;
    ~Server() { xcb.disconnect(connection); }

    std::vector<WindowScreen> outputs()
    {
        if (xcb.connection_has_error(connection) != 0)
            return {};
        xcb_screen_iterator_t screen = xcb.setup_roots_iterator(xcb.get_setup(connection));
        for (int skipped = 0; skipped < screenNumber && screen.rem > 1; ++skipped)
            xcb.screen_next(&screen);
        const xcb_window_t root = screen.data->root;
        const auto version =
            owned(xcb.randr_query_version_reply(connection, xcb.randr_query_version(connection, 1, 3), nullptr));
        if (!version || std::pair(version->major_version, version->minor_version) < std::pair(1U, 3U))
            return {};
        resources = owned(xcb.randr_get_screen_resources_current_reply(
            connection, xcb.randr_get_screen_resources_current(connection, root), nullptr));
        const auto primary = owned(xcb.randr_get_output_primary_reply(
            connection, xcb.randr_get_output_primary(connection, root), nullptr));
        if (!resources)
            return {};
        std::vector<WindowScreen> found;
        const std::span outputs(xcb.randr_get_screen_resources_current_outputs(resources.get()),
                                resources->num_outputs);
        for (const xcb_randr_output_t output : outputs) {
            if (auto screenOfOutput = read(output)) {
                screenOfOutput->isPrimary = primary && primary->output == output;
                found.push_back(std::move(*screenOfOutput));
            }
        }
        const bool hasPrimary = std::ranges::any_of(found, &WindowScreen::isPrimary);
        if (!hasPrimary && !found.empty())
            found.front().isPrimary = true; // none was chosen; Qt takes the first, too
        return found;
    }

private:
    std::optional<WindowScreen> read(xcb_randr_output_t output) const
    {
        const auto info = owned(xcb.randr_get_output_info_reply(
            connection, xcb.randr_get_output_info(connection, output, resources->config_timestamp), nullptr));
        if (!info || info->crtc == XCB_NONE)
            return std::nullopt;
        const auto crtc = owned(xcb.randr_get_crtc_info_reply(
            connection, xcb.randr_get_crtc_info(connection, info->crtc, resources->config_timestamp), nullptr));
        if (!crtc || crtc->mode == XCB_NONE)
            return std::nullopt;
        WindowScreen screen;
        screen.name.assign(reinterpret_cast<const char*>(xcb.randr_get_output_info_name(info.get())),
                           info->name_len);
        screen.x = crtc->x;
        screen.y = crtc->y;
        screen.width = crtc->width;
        screen.height = crtc->height;
        screen.mode = mode(*crtc);
        screen.refreshRate = screen.mode ? screen.mode->refreshRate : 0.0;
        if (const std::optional<Edid> edid = readEdid(output)) {
            screen.model = edid->productName;
            screen.serialNumber = edid->serialText.empty() ? std::to_string(edid->serial) : edid->serialText;
        }
        return screen;
    }

    std::optional<ScreenMode> mode(const xcb_randr_get_crtc_info_reply_t& crtc) const
    {
        const std::span modes(xcb.randr_get_screen_resources_current_modes(resources.get()), resources->num_modes);
        for (const xcb_randr_mode_info_t& each : modes) {
            if (each.id != crtc.mode)
                continue;
            ScreenMode found{each.width, each.height, refreshRate(modeLine(each))};
            if ((crtc.rotation & (XCB_RANDR_ROTATION_ROTATE_90 | XCB_RANDR_ROTATION_ROTATE_270)) != 0)
                std::swap(found.pixelWidth, found.pixelHeight);
            return found;
        }
        return std::nullopt;
    }

    std::optional<Edid> readEdid(xcb_randr_output_t output) const
    {
        constexpr std::string_view name = "EDID";
        constexpr std::uint32_t baseBlock = 32; // in words of four bytes
        const auto atom = owned(xcb.intern_atom_reply(
            connection, xcb.intern_atom(connection, 1, static_cast<std::uint16_t>(name.size()), name.data()),
            nullptr));
        if (!atom || atom->atom == XCB_NONE)
            return std::nullopt;
        const auto property = owned(xcb.randr_get_output_property_reply(
            connection,
            xcb.randr_get_output_property(connection, output, atom->atom, XCB_ATOM_ANY, 0, baseBlock, 0, 0),
            nullptr));
        if (!property || property->format != 8)
            return std::nullopt;
        return parseEdid({xcb.randr_get_output_property_data(property.get()), property->num_items});
    }

    const Xcb& xcb;
    int screenNumber = 0;
    xcb_connection_t* connection;
    std::unique_ptr<xcb_randr_get_screen_resources_current_reply_t, Free> resources;
};

} // namespace

std::vector<WindowScreen> randrOutputs()
{
    static Xcb xcb;
    return xcb.isWhole() ? Server(xcb).outputs() : std::vector<WindowScreen>();
}

} // namespace lumenvale
