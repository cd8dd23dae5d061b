// SPDX-License-Identifier: MIT
#include "platform/posix/RequestChannel.h"

#include <array>
#include <climits>
#include <csignal>
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

RequestReceiver::RequestReceiver(const std::string& folder, Handler receive) : handler(std::move(receive))
{
    const std::string path = pipePath(folder);
    struct stat old = {};
    if (::lstat(path.c_str(), &old) == 0 && S_ISFIFO(old.st_mode))
        ::unlink(path.c_str()); // an earlier copy's
    if (::mkfifo(path.c_str(), 0600) != 0)
        return;
    // Open for writing too, so that the end of one sender is not the end of the pipe.
    pipe = FileDescriptor(::open(path.c_str(), O_RDWR | O_NONBLOCK | O_CLOEXEC));
    if (!pipe.isOpen())
        return;
    notifier = std::make_unique<QSocketNotifier>(pipe.get(), QSocketNotifier::Read);
    QObject::connect(notifier.get(), &QSocketNotifier::activated, notifier.get(), [this] { readPending(); });
}

RequestReceiver::~RequestReceiver() = default;

void RequestReceiver::readPending()
{
    std::array<char, PIPE_BUF> buffer;
    for (ssize_t count; (count = ::read(pipe.get(), buffer.data(), buffer.size())) > 0;)
        received.append(buffer.data(), static_cast<std::size_t>(count));
    for (std::size_t end; (end = received.find('\n')) != std::string::npos;) {
        const std::string line = received.substr(0, end);
        received.erase(0, end + 1);
        handler(line);
    }
    if (received.size() > PIPE_BUF) // not one of ours: requests are written whole
        received.clear();
}

bool sendRequest(const std::string& folder, std::string_view line, std::chrono::milliseconds patience)
{
    constexpr auto pauseBetweenAttempts = std::chrono::milliseconds(20);
    const std::string message = std::string(line) + "\n";
    if (message.size() > PIPE_BUF) // longer ones could be torn apart by another sender's
        return false;
    std::signal(SIGPIPE, SIG_IGN); // the receiver may end at this very moment
    const auto deadline = std::chrono::steady_clock::now() + patience;
    for (;;) {
        const FileDescriptor pipe(::open(pipePath(folder).c_str(), O_WRONLY | O_NONBLOCK | O_CLOEXEC));
        if (pipe.isOpen() && isPipe(pipe.get()) &&
            ::write(pipe.get(), message.data(), message.size()) == ssize_t(message.size()))
            return true;
        if (std::chrono::steady_clock::now() >= deadline) // no reader, no pipe, or a full one
            return false;
        std::this_thread::sleep_for(pauseBetweenAttempts);
    }
}

} // namespace lumenvale
