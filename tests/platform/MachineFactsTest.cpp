// SPDX-License-Identifier: GPL-3.0-or-later
#include "MachineFacts.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace std::string_literals;

TEST(MachineFacts, TheLastSuitableAdapterCounts) {
    const AdapterAddress first{true, "\x0A\x1B\x2C\x3D\x4E\x5F"s};
    const AdapterAddress second{true, "\xF0\x01\x02\x03\x04\x05"s};
    EXPECT_EQ(NetworkTextFrom({first}), "0A1B2C3D4E5F0000");
    EXPECT_EQ(NetworkTextFrom({first, second}), "F001020304050000");
    EXPECT_EQ(NetworkTextFrom({second, first}), "0A1B2C3D4E5F0000");
    EXPECT_EQ(NetworkTextFrom({{true, "\x02\x03\x04\x05\x06\x07\x08\x09\x0A"s}}), "0203040506070809");
}

TEST(MachineFacts, AnAddressThatBeginsWithZeroIsSkipped) {
    EXPECT_EQ(NetworkTextFrom({{true, "\x0A\x01\x01\x01\x01\x01"s}, {true, "\x00\x1B\x2C\x3D\x4E\x5F"s}}),
              "0A01010101010000");
    EXPECT_EQ(NetworkTextFrom({{true, "\x00\x1B\x2C\x3D\x4E\x5F"s}}), "");
    EXPECT_EQ(NetworkTextFrom({{true, ""}}), "");
    EXPECT_EQ(NetworkTextFrom({}), "");
}

TEST(MachineFacts, AdaptersOfSoftwareDoNotCount) {
    EXPECT_EQ(NetworkTextFrom({{true, "\x0A\x01\x01\x01\x01\x01"s}, {false, "\x0A\x02\x02\x02\x02\x02"s}}),
              "0A01010101010000");
}

TEST(MachineFacts, DisksAreSerialAndModelWithoutBlanks) {
    EXPECT_EQ(DiskTextFrom({{"S3Z9 NX0M123456", "Samsung SSD 970"}}), "S3Z9NX0M123456SamsungSSD970");
    EXPECT_EQ(DiskTextFrom({{"A  ", "B "}, {"C", "D"}}), "ABCD");
    EXPECT_EQ(DiskTextFrom({{"", ""}}), "");
    EXPECT_EQ(DiskTextFrom({}), "");
    EXPECT_EQ(DiskTextFrom({{"\tS", "M\n"}}), "SM");
}

TEST(MachineFacts, FieldsOfDisksHaveTheirLength) {
    EXPECT_EQ(DiskTextFrom({{std::string(30, 's'), std::string(50, 'm')}}),
              std::string(20, 's') + std::string(40, 'm'));
    const std::vector<DiskFacts> many(20, {std::string(20, 's'), std::string(40, 'm')});
    EXPECT_EQ(DiskTextFrom(many).size(), 17u * 60u) << "as many whole disks as fit into 1024";
}

TEST(MachineFacts, ProcessorIsVendorFlagsAndALetter) {
    EXPECT_EQ(ProcessorTextFrom("GenuineIntel", 529267711), "GenuineIntel529267711d");
    EXPECT_EQ(ProcessorTextFrom("Centaur Hauls", 4294967295u), "CentaurHauls4294967295d");
}

TEST(MachineFacts, ProcessorsNameIsTheTablesFirst) {
    EXPECT_EQ(ProcessorNameFrom("processor\t: 0\nmodel name\t: Some  CPU   @ 3.00GHz\nmodel name\t: other\n"),
              u"Some CPU @ 3.00GHz");
    EXPECT_EQ(ProcessorNameFrom("model name\t:   two\n"), u"  two") << "blanks at the first position stay";
}

TEST(MachineFacts, AnUnknownProcessorHasAWord) {
    EXPECT_EQ(ProcessorNameFrom(""), u"未知CPU类型");
    EXPECT_EQ(ProcessorNameFrom("model name\t: \n"), u"未知CPU类型");
    EXPECT_EQ(ProcessorNameFrom("model name\t: " + QByteArray(201, 'x')), u"未知CPU类型");
    EXPECT_EQ(ProcessorNameFrom("model name\t: " + QByteArray(200, 'x')), QString(200, u'x'));
}

TEST(MachineFacts, MemoryIsInMegabytes) {
    const MemoryFacts memory =
        MemoryFrom("MemTotal:       16384000 kB\nMemFree: 1 kB\nMemAvailable:    2048000 kB\nSwapFree:  1024000 kB\n");
    EXPECT_EQ(memory.totalMb, 16000);
    EXPECT_EQ(memory.availableVirtualMb, 3000);
    EXPECT_EQ(MemoryFrom("").totalMb, 0);
}

TEST(MachineFacts, ThisMachineAnswersTheSameTwice) {
    EXPECT_EQ(NetworkText(), NetworkText());
    EXPECT_EQ(DiskText(), DiskText());
    EXPECT_EQ(ProcessorText(), ProcessorText());
    EXPECT_FALSE(ProcessorName().isEmpty());
    EXPECT_GT(Memory().totalMb, 0);
}
