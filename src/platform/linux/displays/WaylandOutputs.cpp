// SPDX-License-Identifier: MIT
#include "platform/linux/displays/WaylandOutputs.h"

#include "platform/posix/FileDescriptor.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <map>
#include <optional>
#include <poll.h>
#include <string_view>
#include <sys/socket.h>
#include <sys/un.h>
#include <utility>

namespace lumenvale {

namespace {

using Time = std::chrono::steady_clock;
using Object = std::uint32_t;

constexpr Object displayObject = 1; // wl_display, which every connection begins with

/// The body of a message: words in the machine's byte order, strings with their length and a zero, padded.
class Body {
public:
    void add(std::uint32_t word)
    {
        const auto* first = reinterpret_cast<const std::uint8_t*>(&word);
        bytes.insert(bytes.end(), first, first + sizeof word);
    }
    void add(std::string_view text)
    {
        add(static_cast<std::uint32_t>(text.size() + 1));
        bytes.insert(bytes.end(), text.begin(), text.end());
        bytes.resize((bytes.size() + sizeof(std::uint32_t)) / sizeof(std::uint32_t) * sizeof(std::uint32_t));
    }

    std::vector<std::uint8_t> bytes;
};

/// What the compositor sent. Reading past the end gives zeros and empty texts.
class Event {
public:
    Object object = 0;
    std::uint32_t opcode = 0;
    std::vector<std::uint8_t> bytes;

    std::uint32_t word()
    {
        std::uint32_t value = 0;
        if (position + sizeof value <= bytes.size())
            std::memcpy(&value, bytes.data() + position, sizeof value);
        position += sizeof value;
        return value;
    }
    std::int32_t number() { return static_cast<std::int32_t>(word()); }
    std::string text()
    {
        const std::size_t length = word(); // the zero included
        const std::size_t begin = position;
        position += (length + 3) / 4 * 4;
        const bool isWhole = length > 0 && begin + length <= bytes.size();
        return isWhole ? std::string(bytes.begin() + static_cast<std::ptrdiff_t>(begin),
                                     bytes.begin() + static_cast<std::ptrdiff_t>(begin + length - 1))
                       : std::string();
    }

private:
    std::size_t position = 0;
};

class Connection {
public:
    Connection(const std::string& path, Time::time_point deadline)
        : socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0)), deadline(deadline)
    {
        sockaddr_un address = {};
        address.sun_family = AF_UNIX;
        isGood = socket.isOpen() && path.size() < sizeof address.sun_path;
        if (!isGood)
            return;
        path.copy(address.sun_path, path.size());
        isGood = ::connect(socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
    }

    Object newObject() { return ++lastObject; }

    void send(Object object, std::uint32_t opcode, const Body& body)
    {
        Body message;
        message.add(object);
        message.add(static_cast<std::uint32_t>((body.bytes.size() + 8) << 16) | opcode);
        message.bytes.insert(message.bytes.end(), body.bytes.begin(), body.bytes.end());
        const ssize_t sent = ::send(socket.get(), message.bytes.data(), message.bytes.size(), MSG_NOSIGNAL);
        isGood = isGood && sent == static_cast<ssize_t>(message.bytes.size());
    }

    /// Hands over all events up to the answer to a request that is made now. False when none came in time.
    bool roundTrip(const std::function<void(Event&)>& receive)
    {
        const Object callback = newObject();
        Body sync;
        sync.add(callback);
        send(displayObject, 0, sync);
        while (isGood) {
            Event event;
            if (!takeEvent(event)) {
                isGood = receiveMore();
                continue;
            }
            if (event.object == callback)
                return true;
            if (event.object == displayObject && event.opcode == 0)
                return isGood = false; // an error: the compositor closes the connection
            receive(event);
        }
        return false;
    }

private:
    bool takeEvent(Event& event)
    {
        constexpr std::size_t header = 8;
        Event whole;
        whole.bytes = received;
        event.object = whole.word();
        const std::uint32_t second = whole.word();
        event.opcode = second & 0xFFFF;
        const std::size_t size = second >> 16;
        if (received.size() < header || received.size() < size)
            return false;
        const auto end = received.begin() + static_cast<std::ptrdiff_t>(std::max(size, header));
        event.bytes.assign(received.begin() + header, end);
        received.erase(received.begin(), end);
        return true;
    }

    bool receiveMore()
    {
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Time::now());
        pollfd state = {socket.get(), POLLIN, 0};
        if (left.count() <= 0 || ::poll(&state, 1, static_cast<int>(left.count())) <= 0)
            return false;
        std::uint8_t buffer[4096];
        const ssize_t count = ::recv(socket.get(), buffer, sizeof buffer, 0);
        if (count > 0)
            received.insert(received.end(), buffer, buffer + count);
        return count > 0;
    }

    FileDescriptor socket;
    Time::time_point deadline;
    bool isGood = false;
    Object lastObject = displayObject;
    std::vector<std::uint8_t> received;
};

struct Output {
    WindowScreen screen;
    std::int32_t transform = 0; ///< odd: turned by 90 or 270 degrees
    std::int32_t scale = 1;
};

struct Global {
    std::uint32_t name = 0;
    std::uint32_t version = 0;
};

void receiveOutput(Output& output, Event& event)
{
    WindowScreen& screen = output.screen;
    switch (event.opcode) {
    case 0: // geometry
        screen.x = event.number();
        screen.y = event.number();
        for (int skipped = 0; skipped < 3; ++skipped)
            event.word(); // millimetres, subpixels
        event.text();     // the maker
        screen.model = event.text();
        output.transform = event.number();
        break;
    case 1:                            // mode
        if ((event.word() & 1) != 0) { // the current one
            const std::int64_t width = event.number();
            const std::int64_t height = event.number();
            screen.mode = ScreenMode{width, height, event.number() / 1000.0};
        }
        break;
    case 3:
        output.scale = std::max(event.number(), 1);
        break;
    case 4:
        screen.name = event.text();
        break;
    default:
        break;
    }
}

void receiveLogical(WindowScreen& screen, Event& event)
{
    switch (event.opcode) {
    case 0:
        screen.x = event.number();
        screen.y = event.number();
        break;
    case 1:
        screen.width = event.number();
        screen.height = event.number();
        break;
    case 3:
        screen.name = event.text();
        break;
    default:
        break;
    }
}

WindowScreen finished(Output output)
{
    WindowScreen& screen = output.screen;
    if (!screen.mode)
        return screen;
    if (output.transform % 2 != 0)
        std::swap(screen.mode->pixelWidth, screen.mode->pixelHeight);
    screen.refreshRate = screen.mode->refreshRate;
    if (screen.width <= 0.0) { // without xdg-output: whole scales only
        screen.width = static_cast<double>(screen.mode->pixelWidth) / output.scale;
        screen.height = static_cast<double>(screen.mode->pixelHeight) / output.scale;
    }
    return screen;
}

Object bindGlobal(Connection& connection, Object registry, const Global& global, std::string_view interface,
                  std::uint32_t version)
{
    const Object bound = connection.newObject();
    Body request;
    request.add(global.name);
    request.add(interface);
    request.add(std::min(global.version, version));
    request.add(bound);
    connection.send(registry, 0, request);
    return bound;
}

/// What the compositor offers.
struct Globals {
    std::vector<Global> outputs;
    Global manager; ///< of the outputs' logical places; version 0: none
};

constexpr std::string_view wlOutput = "wl_output";
constexpr std::string_view xdgOutputManager = "zxdg_output_manager_v1";

std::optional<Globals> listGlobals(Connection& connection, Object registry)
{
    Body request;
    request.add(registry);
    connection.send(displayObject, 1, request);
    Globals globals;
    const bool isAnswered = connection.roundTrip([&](Event& event) {
        if (event.object != registry || event.opcode != 0)
            return;
        Global global{event.word(), 0};
        const std::string interface = event.text();
        global.version = event.word();
        if (interface == wlOutput)
            globals.outputs.push_back(global);
        else if (interface == xdgOutputManager)
            globals.manager = global;
    });
    return isAnswered ? std::optional(std::move(globals)) : std::nullopt;
}

std::vector<Output> readOutputs(Connection& connection, Object registry, const Globals& globals)
{
    std::vector<Output> outputs(globals.outputs.size());
    std::map<Object, Output*> ofOutput, ofLogical;
    const Object manager = globals.manager.version > 0
                               ? bindGlobal(connection, registry, globals.manager, xdgOutputManager, 3)
                               : Object(0);
    for (std::size_t i = 0; i < outputs.size(); ++i) {
        const Object output = bindGlobal(connection, registry, globals.outputs[i], wlOutput, 4);
        ofOutput.emplace(output, &outputs[i]);
        if (manager == 0)
            continue;
        const Object logical = connection.newObject();
        ofLogical.emplace(logical, &outputs[i]);
        Body request;
        request.add(logical);
        request.add(output);
        connection.send(manager, 1, request);
    }
    const bool isTold = connection.roundTrip([&](Event& event) {
        if (const auto output = ofOutput.find(event.object); output != ofOutput.end())
            receiveOutput(*output->second, event);
        else if (const auto logical = ofLogical.find(event.object); logical != ofLogical.end())
            receiveLogical(logical->second->screen, event);
    });
    return isTold ? outputs : std::vector<Output>();
}

} // namespace

std::vector<WindowScreen> waylandOutputs(const std::string& path, std::chrono::milliseconds patience)
{
    Connection connection(path, Time::now() + patience);
    const Object registry = connection.newObject();
    const std::optional<Globals> globals = listGlobals(connection, registry);
    std::vector<WindowScreen> screens;
    if (globals) {
        for (const Output& output : readOutputs(connection, registry, *globals))
            screens.push_back(finished(output));
    }
    if (!screens.empty())
        screens.front().isPrimary = true; // the protocol names none; Qt takes the first, too
    return screens;
}

std::string waylandSocket()
{
    const char* name = std::getenv("WAYLAND_DISPLAY");
    const char* folder = std::getenv("XDG_RUNTIME_DIR");
    if (!name || *name == '\0')
        return {};
    if (*name == '/')
        return name;
    return folder ? std::string(folder) + '/' + name : std::string();
}

} // namespace lumenvale
