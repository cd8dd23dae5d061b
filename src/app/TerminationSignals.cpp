// SPDX-License-Identifier: MIT
#include "app/TerminationSignals.h"

#include <QCoreApplication>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace lumenvale {

namespace {

constexpr int terminationSignals[] = {SIGTERM, SIGINT, SIGHUP};

std::array<int, 2> selfPipe = {-1, -1}; // a signal handler reaches nothing but globals

void wakeMainLoop(int)
{
    const int error = errno;
    (void)!::write(selfPipe[1], "", 1); // full: the loop is about to wake anyway
    errno = error;
}

} // namespace

TerminationSignals::TerminationSignals()
{
    if (::pipe(selfPipe.data()) != 0)
        return; // the signals keep their usual meaning
    for (const int end : selfPipe) {
        ::fcntl(end, F_SETFD, FD_CLOEXEC);
        ::fcntl(end, F_SETFL, O_NONBLOCK);
    }
    notifier = std::make_unique<QSocketNotifier>(selfPipe[0], QSocketNotifier::Read);
    QObject::connect(notifier.get(), &QSocketNotifier::activated, qApp, [] {
        char signal = 0;
        while (::read(selfPipe[0], &signal, 1) > 0) {
        }
        QCoreApplication::quit();
    });
    for (const int signal : terminationSignals)
        std::signal(signal, wakeMainLoop);
}

TerminationSignals::~TerminationSignals()
{
    if (!notifier)
        return;
    for (const int signal : terminationSignals)
        std::signal(signal, SIG_DFL);
    notifier.reset();
    for (int& end : selfPipe) {
        ::close(end);
        end = -1;
    }
}

} // namespace lumenvale
