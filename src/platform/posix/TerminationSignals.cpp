// SPDX-License-Identifier: MIT
#include "platform/posix/TerminationSignals.h"

#include <QCoreApplication>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace lumenvale {

namespace {

constexpr int terminationSignals[] = {SIGTERM, SIGINT, SIGHUP};

int selfPipe = -1; // the end to write to; a signal handler reaches nothing but globals

void wakeMainLoop(int)
{
    const int error = errno;
    (void)!::write(selfPipe, "", 1); // full: the loop is about to wake anyway
    errno = error;
}

} // namespace

TerminationSignals::TerminationSignals()
{
    int ends[2];
    if (::pipe(ends) != 0)
        return; // the signals keep their usual meaning
    readEnd = FileDescriptor(ends[0]);
    writeEnd = FileDescriptor(ends[1]);
    selfPipe = ends[1];
    for (const int end : ends) {
        ::fcntl(end, F_SETFD, FD_CLOEXEC);
        ::fcntl(end, F_SETFL, O_NONBLOCK);
    }
    notifier = std::make_unique<QSocketNotifier>(readEnd.get(), QSocketNotifier::Read);
    QObject::connect(notifier.get(), &QSocketNotifier::activated, qApp, [this] {
        char signal = 0;
        while (::read(readEnd.get(), &signal, 1) > 0) {
        }
        QCoreApplication::quit();
    });
    for (const int signal : terminationSignals) {
        if (std::signal(signal, wakeMainLoop) == SIG_IGN)
            std::signal(signal, SIG_IGN); // as nohup(1) wants it
    }
}

TerminationSignals::~TerminationSignals()
{
    if (!notifier)
        return;
    for (const int signal : terminationSignals) {
        if (std::signal(signal, SIG_DFL) == SIG_IGN)
            std::signal(signal, SIG_IGN);
    }
    notifier.reset();
    selfPipe = -1;
}

} // namespace lumenvale
