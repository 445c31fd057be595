// SPDX-License-Identifier: GPL-3.0-or-later
#include "ClientId.h"

#include <gtest/gtest.h>

#include <QtCore/QRegularExpression>

using namespace Qt::Literals::StringLiterals;

namespace {

const std::string EmptyHash = "D41D8CD98F00B204E9800998ECF8427E";
const std::string Network = "0A1B2C3D4E5F0000";
const std::string Disk = "S3Z9NX0M123456SamsungSSD970";
const std::string Processor = "GenuineIntel529267711d";
// Worked out apart from the program.
const std::string Id = "3A7CABE73DA146830DF0CFA107F7A63EBDE7593976AB825440A6D0A6C55B6A879";

}  // namespace

// The vectors of RFC 1321.
TEST(ClientId, HashIsMd5) {
    EXPECT_EQ(Md5Upper(""), EmptyHash);
    EXPECT_EQ(Md5Upper("a"), "0CC175B9C0F1B6A831C399E269772661");
    EXPECT_EQ(Md5Upper("abc"), "900150983CD24FB0D6963F7D28E17F72");
    EXPECT_EQ(Md5Lower("message digest"), "f96b697d7cb7938d525a2f31aaf161d0");
    EXPECT_EQ(Md5Lower("abcdefghijklmnopqrstuvwxyz"), "c3fcd3d76192e4007dfb496cca67e13b");
    EXPECT_EQ(Md5Upper("12345678901234567890123456789012345678901234567890123456789012345678901234567890"),
              "57EDF4A22BE3C955AC49DA2E2107B67A");
}

TEST(ClientId, IdOfGivenMachineTexts) {
    EXPECT_EQ(ClientIdFrom(Network, Disk, Processor), Id);
}

TEST(ClientId, WithNothingKnownItIsStillWellFormed) {
    EXPECT_EQ(ClientIdFrom("", "", ""), "0" + EmptyHash + EmptyHash);
}

TEST(ClientId, TheSecondHashIsOfTheNetworkTextWithItsHalvesExchanged) {
    // "0A" is 30 41 hexadecimal, exchanged 03 14.
    EXPECT_EQ(ClientIdFrom("0A", "", "").substr(33), Md5Upper("\x03\x14"));
    // Above 127 the sign fills the upper half.
    EXPECT_EQ(ClientIdFrom("\xA5", "", "").substr(33), Md5Upper("\xFA"));
}

TEST(ClientId, TheOrderOfTheTextsCounts) {
    EXPECT_EQ(ClientIdFrom("a", "b", "c").substr(1, 32), Md5Upper("abc"));
}

TEST(ClientId, ThisMachinesIdIsWellFormedAndStable) {
    const QString id = GetClientId();
    EXPECT_TRUE(QRegularExpression(u"^[0-9A-C][0-9A-F]{64}$"_s).match(id).hasMatch()) << id.toStdString();
    EXPECT_EQ(GetClientId(), id);
}

TEST(ClientId, CheckValueOfPartnerAndId) {
    EXPECT_EQ(GetClientCheckValue(u"web"_s, QString::fromStdString(Id)), u"00c2e94b01887e873407912e7fbb5f04");
    EXPECT_EQ(GetClientCheckValue({}, {}), u"d41d8cd98f00b204e9800998ecf8427e");
}

TEST(ClientId, CheckValueTakesAsMuchAsItsBufferHolds) {
    const QString cut = u"b53fb5e097ce58fa2e4ca1ddd9cb4c17"_s;
    EXPECT_EQ(GetClientCheckValue(QString(258, u'x'), {}), cut);
    EXPECT_EQ(GetClientCheckValue(QString(300, u'x'), QString(2000, u'x')), cut);
    EXPECT_NE(GetClientCheckValue(QString(257, u'x'), {}), cut);
}
