// SPDX-License-Identifier: GPL-3.0-or-later
// Reading of a feedback server's reply: any bytes may be one. Only a sound object that says so is a success, and an
// error for the user is never longer than a box shows.
#include <cstdlib>

#include "Feedback.h"

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    const QByteArray reply(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const FeedbackResult result = ReadFeedbackReply(reply);
    if (result.sent && (!result.error.isEmpty() || !reply.contains("true"))) std::abort();
    if (result.error.size() > 500) std::abort();
    return 0;
}
