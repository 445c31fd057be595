// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <QtCore/QCoreApplication>

#include "TestHome.h"

int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    TestHome::Create();
    const int result = RUN_ALL_TESTS();
    TestHome::Remove();
    return result;
}
