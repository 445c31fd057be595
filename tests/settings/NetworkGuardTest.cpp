// SPDX-License-Identifier: GPL-3.0-or-later
#include "NetworkGuard.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

// Every test of windows runs under the guard; this is how one ends that is not silent.
TEST(NetworkGuard, ASocketOfTheInternetEndsTheProgram) {
    for (const int family : {AF_INET, AF_INET6})
        for (const int type : {SOCK_STREAM, SOCK_DGRAM})
            EXPECT_EXIT(::socket(family, type, 0), testing::ExitedWithCode(NetworkGuard::ExitCode), "network guard");
}

TEST(NetworkGuard, LocalSocketsAreAllowed) {
    const int socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
    EXPECT_GE(socket, 0);
    ::close(socket);
}
