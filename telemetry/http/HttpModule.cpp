// SPDX-License-Identifier: GPL-3.0-or-later
#include "HttpModule.h"

#include <curl/curl.h>

#include <memory>
#include <mutex>

namespace {

// How long a cancelled exchange may go on.
constexpr int StepMs = 50;

struct CloseEasy {
    void operator()(CURL* easy) const { curl_easy_cleanup(easy); }
};
struct CloseMulti {
    void operator()(CURLM* multi) const { curl_multi_cleanup(multi); }
};
struct FreeList {
    void operator()(curl_slist* list) const { curl_slist_free_all(list); }
};
using Easy = std::unique_ptr<CURL, CloseEasy>;
using Multi = std::unique_ptr<CURLM, CloseMulti>;
using List = std::unique_ptr<curl_slist, FreeList>;

struct Received {
    std::string* body;
    std::size_t most;
};

// Taking fewer bytes than were given ends the exchange as a failure.
std::size_t Take(const char* bytes, std::size_t size, std::size_t count, void* context) {
    auto* received = static_cast<Received*>(context);
    const std::size_t length = size * count;
    if (length > received->most - received->body->size()) return 0;
    received->body->append(bytes, length);
    return length;
}

void Prepare() {
    static std::once_flag once;
    std::call_once(once, [] { curl_global_init(CURL_GLOBAL_DEFAULT); });
}

void SetUp(CURL* easy, const HttpJob& job, const curl_slist* headers, Received* received) {
    curl_easy_setopt(easy, CURLOPT_URL, job.url.c_str());
    curl_easy_setopt(easy, CURLOPT_PROTOCOLS_STR, "http,https");
    // A redirection would lead to another host than the one that was set up.
    curl_easy_setopt(easy, CURLOPT_FOLLOWLOCATION, 0L);
    curl_easy_setopt(easy, CURLOPT_USERAGENT, job.agent.c_str());
    curl_easy_setopt(easy, CURLOPT_HTTPHEADER, headers);
    curl_easy_setopt(easy, CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(easy, CURLOPT_TIMEOUT_MS, static_cast<long>(job.timeoutMs));
    curl_easy_setopt(easy, CURLOPT_QUICK_EXIT, 1L);
    curl_easy_setopt(easy, CURLOPT_FORBID_REUSE, 1L);
    curl_easy_setopt(easy, CURLOPT_SSLVERSION, static_cast<long>(CURL_SSLVERSION_TLSv1_2));
    curl_easy_setopt(easy, CURLOPT_SSL_VERIFYPEER, job.loopback ? 0L : 1L);
    curl_easy_setopt(easy, CURLOPT_SSL_VERIFYHOST, job.loopback ? 0L : 2L);
    if (job.loopback) curl_easy_setopt(easy, CURLOPT_NOPROXY, "*");
    if (job.method == "POST") {
        curl_easy_setopt(easy, CURLOPT_POST, 1L);
        curl_easy_setopt(easy, CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(job.body.size()));
        curl_easy_setopt(easy, CURLOPT_POSTFIELDS, job.body.c_str());
    }
    curl_easy_setopt(easy, CURLOPT_WRITEFUNCTION, Take);
    curl_easy_setopt(easy, CURLOPT_WRITEDATA, received);
}

List Headers(const HttpJob& job) {
    List list;
    const auto add = [&](const char* line) { list.reset(curl_slist_append(list.release(), line)); };
    // What the library would add of its own.
    add("Accept:");
    add("Expect:");
    for (const std::string& header : job.headers) add(header.c_str());
    return list;
}

// The exchange step by step, since a cancel must not wait for the other side.
int Run(CURLM* multi, const HttpJob& job) {
    for (int running = 1; running > 0;) {
        if (job.canContinue && !job.canContinue()) return HttpAnswer::Cancelled;
        if (curl_multi_perform(multi, &running) != CURLM_OK) return CURLE_FAILED_INIT;
        if (running > 0 && curl_multi_poll(multi, nullptr, 0, StepMs, nullptr) != CURLM_OK) return CURLE_FAILED_INIT;
    }
    int left = 0;
    const CURLMsg* message = curl_multi_info_read(multi, &left);
    return message && message->msg == CURLMSG_DONE ? message->data.result : CURLE_FAILED_INIT;
}

}  // namespace

extern "C" __attribute__((visibility("default"))) void QuinceHttp(const HttpJob* job, HttpAnswer* answer) {
    Prepare();
    const List headers = Headers(*job);
    const Easy easy(curl_easy_init());
    const Multi multi(curl_multi_init());
    *answer = {};
    answer->error = CURLE_FAILED_INIT;
    if (!easy || !multi) return;
    Received received{&answer->body, job->mostBytes};
    SetUp(easy.get(), *job, headers.get(), &received);
    if (curl_multi_add_handle(multi.get(), easy.get()) != CURLM_OK) return;
    answer->error = Run(multi.get(), *job);
    curl_multi_remove_handle(multi.get(), easy.get());
    long status = 0;
    curl_easy_getinfo(easy.get(), CURLINFO_RESPONSE_CODE, &status);
    answer->status = static_cast<int>(status);
    if (answer->error > 0) answer->errorText = curl_easy_strerror(static_cast<CURLcode>(answer->error));
}
