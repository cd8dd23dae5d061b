// SPDX-License-Identifier: MIT
#include "app/RequestChannel.h"

#include <array>
#include <cerrno>
#include <climits>
#include <fcntl.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace lumenvale {

namespace {

std::string pipePath(const std::string& folder) { return folder + "/requests"; }

bool isPipe(int file)
{
    struct stat status = {};
    return ::fstat(file, &status) == 0 && S_ISFIFO(status.st_mode);
}

} // namespace

RequestReceiver::RequestReceiver(const std::string& folder, Handler called) : handler(std::move(called))
{
    const std::string path = pipePath(folder);
    ::unlink(path.c_str()); // an earlier copy's, or no pipe at all
    if (::mkfifo(path.c_str(), 0600) != 0)
        return;
    // Open for writing too, so that the end of one sender is not the end of the pipe.
    pipe = ::open(path.c_str(), O_RDWR | O_NONBLOCK | O_CLOEXEC);
    if (pipe < 0)
        return;
    notifier = std::make_unique<QSocketNotifier>(pipe, QSocketNotifier::Read);
    QObject::connect(notifier.get(), &QSocketNotifier::activated, notifier.get(), [this] { readPending(); });
}

RequestReceiver::~RequestReceiver()
{
    notifier.reset();
    if (pipe >= 0)
        ::close(pipe);
}

void RequestReceiver::readPending()
{
    std::array<char, PIPE_BUF> buffer;
    for (ssize_t count; (count = ::read(pipe, buffer.data(), buffer.size())) > 0;)
        received.append(buffer.data(), static_cast<std::size_t>(count));
    for (std::size_t end; (end = received.find('\n')) != std::string::npos;) {
        const auto request = decodeRequest(std::string_view(received).substr(0, end));
        received.erase(0, end + 1);
        if (request)
            handler(*request);
    }
    if (received.size() > PIPE_BUF) // not one of ours: requests are written whole
        received.clear();
}

bool sendRequest(const std::string& folder, const DesktopRequest& request, std::chrono::milliseconds patience)
{
    constexpr auto pauseBetweenAttempts = std::chrono::milliseconds(20);
    const std::string line = encodeRequest(request);
    if (line.size() > PIPE_BUF) // longer ones could be torn apart by another sender's
        return false;
    const auto deadline = std::chrono::steady_clock::now() + patience;
    for (;;) {
        const int pipe = ::open(pipePath(folder).c_str(), O_WRONLY | O_NONBLOCK | O_CLOEXEC);
        if (pipe >= 0) {
            const bool sent = isPipe(pipe) && ::write(pipe, line.data(), line.size()) == ssize_t(line.size());
            ::close(pipe);
            return sent;
        }
        const bool isStarting = errno == ENXIO || errno == ENOENT; // no reader, or no pipe, as yet
        if (!isStarting || std::chrono::steady_clock::now() >= deadline)
            return false;
        std::this_thread::sleep_for(pauseBetweenAttempts);
    }
}

} // namespace lumenvale
