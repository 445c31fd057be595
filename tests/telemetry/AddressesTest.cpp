// SPDX-License-Identifier: GPL-3.0-or-later
#include "Addresses.h"

#include "FreshHome.h"
#include "IniFile.h"

using namespace Qt::Literals::StringLiterals;

namespace {

QString HostOf(const QByteArray& text) {
    return AddressesFrom("[Addresses]\nAnalytics=" + text + "\n").analytics;
}

QString PageOf(const QByteArray& text) {
    return AddressesFrom("[Addresses]\nWebsite=" + text + "\n").website;
}

}  // namespace

class AddressSettings : public FreshHome {};

TEST_F(AddressSettings, WithoutAFileThereIsNoAddress) {
    const Addresses addresses = ReadAddresses();
    for (const QString& address :
         {addresses.analytics, addresses.data, addresses.feedback, addresses.website, addresses.update})
        EXPECT_TRUE(address.isEmpty());
    EXPECT_FALSE(addresses.HasStatistics());
}

TEST_F(AddressSettings, TheFileThatShipsNamesNone) {
    QFile file(QStringLiteral(QUINCE_RESOURCES "/Addresses.ini"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    EXPECT_EQ(ProfileStringFromBytes(bytes, u"Addresses"_s, u"Analytics"_s, u"none"_s), QString())
        << "the section is there";
    const Addresses addresses = AddressesFrom(bytes);
    for (const QString& address :
         {addresses.analytics, addresses.data, addresses.feedback, addresses.website, addresses.update})
        EXPECT_TRUE(address.isEmpty());
}

TEST_F(AddressSettings, EachAddressIsItsOwn) {
    Put(u"Addresses.ini"_s,
        "[Addresses]\nAnalytics=a.example\nData=d.example\nFeedback=f.example\nWebsite=https://w.example/q\n"
        "Update=https://u.example/\n");
    const Addresses addresses = ReadAddresses();
    EXPECT_EQ(addresses.analytics, u"https://a.example:443");
    EXPECT_EQ(addresses.data, u"https://d.example:443");
    EXPECT_EQ(addresses.feedback, u"https://f.example:443");
    EXPECT_EQ(addresses.website, u"https://w.example/q");
    EXPECT_EQ(addresses.update, u"https://u.example/");
}

TEST_F(AddressSettings, AHostIsSecureUnlessItIsThisMachine) {
    EXPECT_EQ(HostOf("example.org"), u"https://example.org:443");
    EXPECT_EQ(HostOf("HTTPS://example.org:8443/"), u"https://example.org:8443");
    EXPECT_EQ(HostOf("http://127.0.0.1:8080"), u"http://127.0.0.1:8080");
    EXPECT_EQ(HostOf("http://localhost"), u"http://localhost:80");
    EXPECT_EQ(HostOf("http://[::1]:81"), u"http://[::1]:81");
    for (const char* plain : {"http://example.org", "http://127.0.0.1.example.org", "http://localhost.example.org",
                              "http://10.0.0.1", "http://127.0.0.256", "http://[::2]"})
        EXPECT_EQ(HostOf(plain), QString()) << plain;
}

TEST_F(AddressSettings, WhatIsNoHostCountsAsEmpty) {
    for (const char* text : {"ftp://example.org", "https://", "https://user@example.org", "https://example.org/path",
                             "https://example.org?x=1", "https://exa mple.org", "https://example.org:0",
                             "https://example.org:65536", "https://example.org:12a", "https://-x", "https://a..b",
                             "https://example.org#f", "file:///etc/passwd", "//example.org", "https://\xC3\xA9.org"})
        EXPECT_EQ(HostOf(text), QString()) << text;
}

TEST_F(AddressSettings, PagesAreSecure) {
    EXPECT_EQ(PageOf("https://example.org/quince/?a=1"), u"https://example.org/quince/?a=1");
    for (const char* text :
         {"http://example.org/", "example.org", "javascript:alert(1)", "file:///x", "http://127.0.0.1/"})
        EXPECT_EQ(PageOf(text), QString()) << text;
}

TEST_F(AddressSettings, StatisticsAreOnUntilTheUserTurnsThemOff) {
    EXPECT_TRUE(StatisticsAllowed());
    EXPECT_FALSE(Has(u"Config.ini"_s));
    AllowStatistics(false);
    EXPECT_FALSE(StatisticsAllowed());
    AllowStatistics(true);
    EXPECT_TRUE(StatisticsAllowed());
}
