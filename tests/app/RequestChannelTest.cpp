// SPDX-License-Identifier: MIT
#include "platform/posix/RequestChannel.h"

#include "app/cli/DesktopRequest.h"

#include <QCoreApplication>
#include <QTemporaryDir>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

namespace lumenvale {
namespace {

using Action = DesktopRequest::Action;

TEST(RequestChannel, RequestsArriveWholeAndInOrderWhateverElseIsInThePipe)
{
    const QTemporaryDir directory;
    const std::string folder = directory.path().toStdString() + "/" + std::string(150, 'x'); // no socket's
    std::filesystem::create_directory(folder);
    const auto send = [&](const DesktopRequest& request) {
        return sendRequest(folder, encodeRequest(request), std::chrono::milliseconds(0));
    };
    EXPECT_FALSE(send({})) << "no copy runs";
    std::vector<DesktopRequest> received;
    const auto receive = [&](std::string_view line) {
        if (const auto request = decodeRequest(line))
            received.push_back(*request);
    };
    RequestReceiver(folder, receive);
    EXPECT_FALSE(send({})) << "its pipe is still there";
    const RequestReceiver receiver(folder, receive);
    std::ofstream(folder + "/requests") << "\n{}\n[1]\n{\"action\": 7}\n{\"action\": \"explode\"}\n"
                                        << std::string(7000, 'z');
    QCoreApplication::processEvents();
    EXPECT_FALSE(send({Action::applyPreset, std::string(5000, 'x'), ""})) << "could be torn apart";
    const std::vector<DesktopRequest> requests = {{Action::showPanel, "", ""},
                                                  {Action::applyPreset, "Evening, \"late\"\n\t\\ ☾", "token"},
                                                  {Action::openSettings, "", ""}};
    for (const DesktopRequest& each : requests)
        EXPECT_TRUE(send(each));
    QCoreApplication::processEvents();
    EXPECT_EQ(received, requests);
}

} // namespace
} // namespace lumenvale
