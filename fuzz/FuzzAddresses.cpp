// SPDX-License-Identifier: GPL-3.0-or-later
// Reading of the addresses that an installation is given: any bytes may be the file. An address that is taken is a host
// that is secure or this machine, or a secure page.
#include <cstdlib>

#include "Addresses.h"
#include "HttpSend.h"
#include "HttpUrl.h"

namespace {

void Require(bool condition) {
    if (!condition) std::abort();
}

using Tamar::CHttpUrlAnalyzer;

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    for (const QByteArray& file : {bytes, "[Addresses]\nAnalytics=" + bytes + "\nWebsite=" + bytes}) {
        const Addresses addresses = AddressesFrom(file);
        for (const QString& host : {addresses.analytics, addresses.data, addresses.feedback}) {
            if (host.isEmpty()) continue;
            const CHttpUrlAnalyzer url = CHttpUrlAnalyzer::Analyze(host);
            Require(url.IsValid() && url.Path() == u"/" && (url.IsSecure() || IsLoopbackHost(url.Host())));
            Require(!host.endsWith(u'/'));
        }
        for (const QString& page : {addresses.website, addresses.update}) {
            if (page.isEmpty()) continue;
            const CHttpUrlAnalyzer url = CHttpUrlAnalyzer::Analyze(page);
            Require(url.IsValid() && url.IsSecure());
        }
    }
    return 0;
}
