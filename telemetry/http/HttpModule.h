// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

// The transfers live in a module of their own, quince_net: the network library beneath it and all that this one loads
// cost time at every start, and a program without an address never needs them. The module is loaded with the first
// request, and stays.

// One request. Texts are bytes as they go out; the URL holds only characters that a URL may hold.
struct HttpJob {
    std::string method = "GET";
    std::string url;
    std::string agent;
    std::vector<std::string> headers;  // "Name: value"
    std::string body;                  // of a POST
    bool loopback = false;             // the host is this machine: no proxy, and its certificate is not checked
    int timeoutMs = 10000;             // for the whole exchange
    std::size_t mostBytes = std::size_t{1} << 20;  // a longer reply is a failure
    // Asked several times a second; false gives the exchange up. May be empty.
    std::function<bool()> canContinue;
};

// What came back. A reply is there when error is 0, whatever its status says.
struct HttpAnswer {
    static constexpr int Cancelled = -1;
    static constexpr int NoModule = -2;
    static constexpr int Refused = -3;  // the address is none that may be asked

    int error = Refused;  // one of these, or the network library's number
    std::string errorText;
    int status = 0;
    std::string body;
};

// The module's one entry, found by name. Any thread.
extern "C" {
using QuinceHttpFunction = void (*)(const HttpJob* job, HttpAnswer* answer);
}
constexpr const char* HttpEntryName = "QuinceHttp";
