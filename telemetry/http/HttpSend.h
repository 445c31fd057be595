// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "HttpModule.h"

class QString;

// True for a host that is this machine: "localhost", an address of 127.0.0.0/8, or ::1 (with or without brackets).
bool IsLoopbackHost(const QString& host);

// The one door to the network: carries out a request and gives what came back. Only http and https, and plain http to
// this machine alone; certificates are checked unless the host is this machine. Redirections are not followed. Blocks
// up to the job's time; any thread.
HttpAnswer HttpSend(HttpJob job);
