// SPDX-License-Identifier: MIT
#include "platform/posix/RequestChannel.h"

#include "app/cli/DesktopRequest.h"

#include <QCoreApplication>
#include <QTemporaryDir>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace lumenvale {
namespace {

using Action = DesktopRequest::Action;
constexpr auto noPatience = std::chrono::milliseconds(0);

struct Receiver {
    explicit Receiver(const std::string& folder)
        : channel(folder, [this](std::string_view line) {
              if (const auto request = decodeRequest(line))
                  received.push_back(*request);
          })
    {
    }
    std::vector<DesktopRequest> received;
    RequestReceiver channel;
};

TEST(RequestChannel, RequestsArriveWholeAndInOrder)
{
    const QTemporaryDir directory;
    const std::string folder =
        directory.path().toStdString() + "/" + std::string(150, 'x'); // longer than a socket's
    ASSERT_EQ(::mkdir(folder.c_str(), 0700), 0);
    Receiver receiver(folder);
    const std::vector<DesktopRequest> requests = {
        {Action::showPanel, "", ""},
        {Action::applyPreset, "Evening, \"late\"\n\t\\ ☾", "token"},
        {Action::openSettings, "", ""},
    };
    for (const DesktopRequest& each : requests)
        EXPECT_TRUE(sendRequest(folder, encodeRequest(each), noPatience));
    QCoreApplication::processEvents();
    EXPECT_EQ(receiver.received, requests);
}

TEST(RequestChannel, NobodyTakesARequestWhenNoCopyRuns)
{
    const QTemporaryDir directory;
    const std::string folder = directory.path().toStdString();
    EXPECT_FALSE(sendRequest(folder, encodeRequest({}), noPatience));
    {
        const Receiver gone(folder);
    }
    EXPECT_FALSE(sendRequest(folder, encodeRequest({}), noPatience)); // its pipe is still there
    Receiver next(folder);
    EXPECT_TRUE(sendRequest(folder, encodeRequest({}), noPatience));
    QCoreApplication::processEvents();
    EXPECT_EQ(next.received.size(), 1u);
}

TEST(RequestChannel, AnythingElseInThePipeIsIgnored)
{
    const QTemporaryDir directory;
    const std::string folder = directory.path().toStdString();
    Receiver receiver(folder);
    const int pipe = ::open((folder + "/requests").c_str(), O_WRONLY | O_NONBLOCK);
    const std::string rubbish = "\n{}\n[1]\n{\"action\": 7}\n{\"action\": \"explode\"}\n" + std::string(9000, 'z');
    ASSERT_EQ(::write(pipe, rubbish.data(), rubbish.size()), ssize_t(rubbish.size()));
    QCoreApplication::processEvents();
    EXPECT_TRUE(sendRequest(folder, encodeRequest({Action::openSettings, "", ""}), noPatience));
    QCoreApplication::processEvents();
    ::close(pipe);
    ASSERT_EQ(receiver.received.size(), 1u);
    EXPECT_EQ(receiver.received.front().action, Action::openSettings);
}

} // namespace
} // namespace lumenvale
