// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QList>
#include <QtCore/QString>
#include <string>
#include <vector>

// Facts about this machine, read without privileges from the system's own tables. A fact that cannot be had is empty or
// 0. Any thread; nothing is sent.

// The eight address bytes of the last network adapter of this machine's own whose first byte is not 0, as 16 upper-case
// hexadecimal digits; the last two bytes of the usual six-byte address are 00. Adapters that software made (bridges,
// tunnels, containers) do not count: their addresses change from start to start.
std::string NetworkText();
// Serial number and model of the first four fixed disks that tell one, without blanks.
std::string DiskText();
// Vendor and feature flags of the processor, "GenuineIntel529267711d"; empty where the processor does not tell.
std::string ProcessorText();

// How the texts are made of what the system gives.
struct AdapterAddress {
    bool ownDevice = false;
    std::string bytes;  // up to eight
};
std::string NetworkTextFrom(const std::vector<AdapterAddress>& adapters);
struct DiskFacts {
    std::string serial;  // the first 20 bytes count
    std::string model;   // the first 40
};
std::string DiskTextFrom(const std::vector<DiskFacts>& disks);
std::string ProcessorTextFrom(const std::string& vendor, unsigned flags);

// The processor's name, "未知CPU类型" when it is unknown or longer than 200 bytes.
QString ProcessorName();
QString ProcessorNameFrom(const QByteArray& cpuTable);

struct MemoryFacts {
    int totalMb = 0;
    int availableVirtualMb = 0;  // memory and swap that are free for new work
};
MemoryFacts Memory();
MemoryFacts MemoryFrom(const QByteArray& memoryTable);
