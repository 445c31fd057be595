// SPDX-License-Identifier: GPL-3.0-or-later
#include "NetworkGuard.h"

#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstddef>
#include <cstdio>
#include <cstdlib>

namespace NetworkGuard {
namespace {

constexpr unsigned Family = offsetof(seccomp_data, args[0]);

void OnForbiddenCall(int) {
    constexpr char text[] = "network guard: a socket of the internet was asked for\n";
    [[maybe_unused]] const ssize_t written = ::write(STDERR_FILENO, text, sizeof(text) - 1);
    ::_exit(ExitCode);
}

}  // namespace

void Install() {
    struct sigaction action = {};
    action.sa_handler = OnForbiddenCall;
    ::sigaction(SIGSYS, &action, nullptr);
    std::array<sock_filter, 7> filter{{
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, __NR_socket, 0, 3),
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, Family),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, AF_INET, 2, 0),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, AF_INET6, 1, 0),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_TRAP),
    }};
    const sock_fprog program{static_cast<unsigned short>(filter.size()), filter.data()};
    if (::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 && ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) == 0)
        return;
    std::perror("network guard");
    std::exit(ExitCode);
}

}  // namespace NetworkGuard
