// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <QtWidgets/QApplication>

#include "NetworkGuard.h"
#include "TestHome.h"

int main(int argc, char** argv) {
#ifndef QUINCE_TEST_ONLINE
    // No window of the program opens a connection unless it was told an address.
    NetworkGuard::Install();
#endif
    QApplication application(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    TestHome::Create();
    const int result = RUN_ALL_TESTS();
    TestHome::Remove();
    return result;
}
