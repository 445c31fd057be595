// SPDX-License-Identifier: GPL-3.0-or-later
#include "Network.h"

#include <gtest/gtest.h>

namespace {

const QByteArray Heading = "Iface\tDestination\tGateway \tFlags\tRefCnt\tUse\tMetric\tMask\t\tMTU\tWindow\tIRTT\n";

}  // namespace

TEST(Network, InterfaceWithARouteCounts) {
    const QByteArray table = Heading + "eth0\t00000000\t0101A8C0\t0003\t0\t0\t100\t00000000\t0\t0\t0\n";
    EXPECT_EQ(RoutedInterfaces(table, {}), QSet<QByteArray>{"eth0"});
}

TEST(Network, RoutesThatAreDownRejectedOrLinkLocalDoNotCount) {
    const QByteArray table = Heading +
                             "eth0\t00000000\t0101A8C0\t0002\t0\t0\t100\t00000000\t0\t0\t0\n"
                             "eth1\t00000000\t0101A8C0\t0203\t0\t0\t100\t00000000\t0\t0\t0\n"
                             "eth2\t0000FEA9\t00000000\t0001\t0\t0\t1000\t0000FFFF\t0\t0\t0\n";
    EXPECT_TRUE(RoutedInterfaces(table, {}).isEmpty());
}

TEST(Network, LoopbackDoesNotCount) {
    EXPECT_TRUE(RoutedInterfaces(Heading + "lo\t0000007F\t0\t0001\t0\t0\t0\t000000FF\t0\t0\t0\n", {}).isEmpty());
}

TEST(Network, SixthVersionsTableIsReadToo) {
    const QByteArray zero(32, '0');
    const QByteArray table = zero + " 00 " + zero +
                             " 00 fe800000000000000000000000000001 00000064 00000001 00000000 00000003 " +
                             "   wlan0\nfe800000000000000000000000000000 40 " + zero + " 00 " + zero +
                             " 00000100 00000001 00000000 00000001     eth7\n" + zero + " 00 " + zero + " 00 " + zero +
                             " ffffffff 00000001 00000000 00200200       lo\n";
    EXPECT_EQ(RoutedInterfaces({}, table), QSet<QByteArray>{"wlan0"});
}

TEST(Network, EmptyOrBrokenTablesHaveNoInterface) {
    EXPECT_TRUE(RoutedInterfaces({}, {}).isEmpty());
    EXPECT_TRUE(RoutedInterfaces("eth0\nx y\n\n\t\t", "ff\nzz 1 2 3 4 5 6 7 q eth0\n").isEmpty());
}
