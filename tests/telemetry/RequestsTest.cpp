// SPDX-License-Identifier: GPL-3.0-or-later
#include "Requests.h"

#include <gtest/gtest.h>

#include "HttpUrl.h"
#include "Version.h"

using namespace Qt::Literals::StringLiterals;

namespace {

const QString Host = u"https://a.example:443"_s;

QString Head(const QString& path) {
    return Host + path + u"?software=QUINCE_PC&version="_s + GetVersionText();
}

}  // namespace

TEST(Requests, OpenTellsThePictureAndNothingElse) {
    OpenFacts facts;
    facts.width = 6000;
    facts.height = 4000;
    facts.format = u"jpg"_s;
    facts.size = 8402;
    facts.resize = 1;
    facts.name = 1;
    EXPECT_EQ(OpenRequest(Host, facts),
              Head(u"/open.json"_s) + u"&width=6000&height=4000&format=jpg&size=8402&resize=1&position=0&name=1"_s);
}

TEST(Requests, RunUpdateActiveAndInstallWordForWord) {
    EXPECT_EQ(RunRequest(Host, u"web"_s, u"3AB"_s, {1920, 1080}, 0, u"61"_s),
              Head(u"/run.json"_s) + u"&partner=web&client=3AB&os=&resolution=1920*1080&last_visit=0&time=61"_s);
    EXPECT_EQ(UpdateRequest(Host, u"web"_s, u"3AB"_s), Head(u"/update.json"_s) + u"&partner=web&client=3AB"_s);
    EXPECT_EQ(ActiveRequest(Host, u"web"_s, u"3AB"_s, u"setup_qweb_n1"_s),
              Head(u"/active.json"_s) + u"&partner=web&client=3AB&startup=&fullname=setup_qweb_n1"_s);
    // The check value is MD5 of "web3AB".
    EXPECT_EQ(
        InstallRequest(Host, u"web"_s, u"3AB"_s, u"setup"_s),
        Head(u"/install.json"_s) +
            u"&partner=web&client=3AB&os=&browser=&homepage=&v=c3df45735ad1b0ef3e1bdc774fc79c0d&fullname=setup"_s);
}

TEST(Requests, OnlyIllegalCharactersAreWrittenAsPercentSigns) {
    EXPECT_EQ(UpdateRequest(Host, u"a b&c=\"d\"#%<é榅😀>"_s, {}),
              Head(u"/update.json"_s) + u"&partner=a%20b&c=%22d%22%23%25%3C%C3%A9%E6%A6%85%F0%9F%98%80%3E&client="_s);
    EXPECT_EQ(Tamar::WithLegalCharacters(u"%41%4g%"_s), u"%41%254g%25");
    EXPECT_EQ(Tamar::WithLegalCharacters(QString(QChar(0xD800))), u"%EF%BF%BD");
}

TEST(Requests, ClicksAreListedInTheOrderOfTheirCodes) {
    EXPECT_EQ(ClickRequest(Host), Host + u"/action.php"_s);
    EXPECT_EQ(ClickBody({{u"8880601"_s, 3}, {u"88802"_s, 1}}),
              "software=QUINCE_PC&version=" + GetVersionText().toUtf8() + "&content=88802!1|8880601!3|");
}

// The length that is announced counts characters.
TEST(Requests, ABodyIsCutToItsCharacters) {
    const QByteArray body = ClickBody({{u"8880é"_s, 1}});
    EXPECT_TRUE(body.endsWith("8880\xC3\xA9!1")) << body.toStdString();
}
