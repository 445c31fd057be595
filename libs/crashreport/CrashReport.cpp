// SPDX-License-Identifier: GPL-3.0-or-later
#include "CrashReport.h"

#include <execinfo.h>
#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cstddef>
#include <cstring>
#include <ctime>
#include <memory>

namespace {

constexpr std::array<int, 5> Signals = {SIGSEGV, SIGABRT, SIGFPE, SIGILL, SIGBUS};
// Room for the handler and the unwinder, which needs more than the least that the system asks for.
constexpr std::size_t StackBytes = 256 * 1024;

// All that the handler reads is set up before, in memory that is never freed.
char g_version[256];
char g_folder[3072];
std::atomic<int> g_on{0};
std::atomic<int> g_reporting{0};
bool g_installed = false;

// Appends without any library that might hold a lock.
struct Line {
    char text[4096];
    std::size_t length = 0;

    void Add(const char* more) {
        while (*more && length + 1 < sizeof text) text[length++] = *more++;
        text[length] = 0;
    }
    void Add(unsigned long long number, unsigned base = 10) {
        char digits[32];
        std::size_t at = sizeof digits - 1;
        digits[at] = 0;
        do {
            digits[--at] = "0123456789abcdef"[number % base];
            number /= base;
        } while (number > 0);
        Add(digits + at);
    }
    void WriteTo(int file) const {
        for (std::size_t done = 0; done < length;) {
            const ssize_t written = ::write(file, text + done, length - done);
            if (written <= 0) return;
            done += static_cast<std::size_t>(written);
        }
    }
};

const char* NameOf(int signal) {
    switch (signal) {
        case SIGSEGV:
            return "SIGSEGV";
        case SIGABRT:
            return "SIGABRT";
        case SIGFPE:
            return "SIGFPE";
        case SIGILL:
            return "SIGILL";
        case SIGBUS:
            return "SIGBUS";
        default:
            return "signal";
    }
}

int OpenReport() {
    if (g_folder[0] == 0) return -1;
    Line path;
    path.Add(g_folder);
    path.Add("/crash-");
    path.Add(static_cast<unsigned long long>(::time(nullptr)));
    path.Add("-");
    path.Add(static_cast<unsigned long long>(::getpid()));
    path.Add(".txt");
    return ::open(path.text, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, 0600);
}

void WriteReport(int file, int signal, const siginfo_t* info) {
    Line head;
    head.Add("version ");
    head.Add(g_version);
    head.Add("\n");
    head.Add(NameOf(signal));
    head.Add(" at address 0x");
    head.Add(static_cast<unsigned long long>(reinterpret_cast<std::size_t>(info->si_addr)), 16);
    head.Add("\n");
    head.WriteTo(file);
    void* frames[64];
    ::backtrace_symbols_fd(frames, ::backtrace(frames, 64), file);
}

void Handle(int signal, siginfo_t* info, void*) {
    // A fault inside the report, or of a second thread during it, is not reported again.
    if (g_on.load() && g_reporting.exchange(1) == 0) {
        const int file = OpenReport();
        if (file >= 0) {
            WriteReport(file, signal, info);
            ::fsync(file);
            ::close(file);
        }
        WriteReport(STDERR_FILENO, signal, info);
    }
    struct sigaction usual = {};
    usual.sa_handler = SIG_DFL;
    ::sigaction(signal, &usual, nullptr);
    ::raise(signal);
}

void Copy(const char* from, char* to, std::size_t room) {
    std::memset(to, 0, room);
    if (from) std::strncpy(to, from, room - 1);
}

// The main thread's alternate stack: an overflow of the ordinary one is a crash too.
bool ProvideStack() {
    static const std::unique_ptr<char[]> memory(new char[StackBytes]);
    stack_t stack = {};
    stack.ss_sp = memory.get();
    stack.ss_size = StackBytes;
    return ::sigaltstack(&stack, nullptr) == 0;
}

}  // namespace

bool Install(const char* version, const char* folder) {
    g_on = 0;
    Copy(version, g_version, sizeof g_version);
    Copy(folder, g_folder, sizeof g_folder);
    // The unwinder is loaded by its first use, which must not happen inside a handler.
    void* frame = nullptr;
    ::backtrace(&frame, 1);
    if (!ProvideStack()) return false;
    bool installed = true;
    for (const int signal : Signals) {
        struct sigaction action = {};
        action.sa_sigaction = Handle;
        action.sa_flags = SA_SIGINFO | SA_ONSTACK;
        ::sigemptyset(&action.sa_mask);
        installed = ::sigaction(signal, &action, nullptr) == 0 && installed;
    }
    g_installed = true;
    g_on = 1;
    return installed;
}

void TrySwitch(int on) {
    if (g_installed) g_on = on != 0;
}
