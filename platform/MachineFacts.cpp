// SPDX-License-Identifier: GPL-3.0-or-later
#include "MachineFacts.h"

#include <ifaddrs.h>
#include <netpacket/packet.h>
#include <sys/socket.h>

#include <algorithm>
#include <QtCore/QDir>
#include <QtCore/QFile>

#if defined(__x86_64__) || defined(__i386__)
#include <cpuid.h>
#endif

namespace {

constexpr std::size_t AddressBytes = 8;
constexpr std::size_t SerialBytes = 20;
constexpr std::size_t ModelBytes = 40;
constexpr std::size_t MostDiskBytes = 1024;
constexpr int MostDisks = 4;

QByteArray FileText(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

std::string WithoutBlanks(std::string text) {
    const auto isSpace = [](char c) { return c == ' ' || (c >= '\t' && c <= '\r'); };
    while (!text.empty() && isSpace(text.back())) text.pop_back();
    const auto first = std::find_if_not(text.begin(), text.end(), isSpace);
    text.erase(text.begin(), first);
    std::erase(text, ' ');
    return text;
}

std::string Field(std::string text, std::size_t length) {
    text.resize(std::min(text.size(), length));
    while (!text.empty() && text.back() == ' ') text.pop_back();
    return text;
}

// The file lists what the disk answers, in the places where the kinds of disks have it.
DiskFacts FactsOf(const QString& folder) {
    const auto line = [&](const char* name) { return FileText(folder + QLatin1String(name)).trimmed().toStdString(); };
    DiskFacts facts;
    facts.model = line("/device/model");
    facts.serial = line("/device/serial");
    if (facts.serial.empty()) facts.serial = line("/serial");
    if (facts.serial.empty()) {
        // A page of the disk's own: a head of four bytes, and the number behind it.
        const QByteArray page = FileText(folder + QStringLiteral("/device/vpd_pg80"));
        facts.serial = page.mid(4).trimmed().toStdString();
    }
    return facts;
}

}  // namespace

std::string NetworkTextFrom(const std::vector<AdapterAddress>& adapters) {
    std::string text;
    for (const AdapterAddress& adapter : adapters) {
        if (!adapter.ownDevice || adapter.bytes.empty() || adapter.bytes[0] == 0) continue;
        QByteArray bytes = QByteArray::fromStdString(adapter.bytes).left(AddressBytes);
        bytes.append(AddressBytes - static_cast<std::size_t>(bytes.size()), '\0');
        text = bytes.toHex().toUpper().toStdString();
    }
    return text;
}

std::string NetworkText() {
    ifaddrs* list = nullptr;
    if (::getifaddrs(&list) != 0) return {};
    std::vector<AdapterAddress> adapters;
    for (const ifaddrs* entry = list; entry; entry = entry->ifa_next) {
        if (!entry->ifa_addr || entry->ifa_addr->sa_family != AF_PACKET) continue;
        const auto* link = reinterpret_cast<const sockaddr_ll*>(entry->ifa_addr);
        AdapterAddress adapter;
        adapter.bytes.assign(reinterpret_cast<const char*>(link->sll_addr),
                             std::min<std::size_t>(link->sll_halen, AddressBytes));
        adapter.ownDevice =
            QFile::exists(QStringLiteral("/sys/class/net/%1/device").arg(QString::fromLocal8Bit(entry->ifa_name)));
        adapters.push_back(std::move(adapter));
    }
    ::freeifaddrs(list);
    return NetworkTextFrom(adapters);
}

std::string DiskTextFrom(const std::vector<DiskFacts>& disks) {
    std::string text;
    for (const DiskFacts& disk : disks) {
        const std::string more = Field(disk.serial, SerialBytes) + Field(disk.model, ModelBytes);
        if (text.size() + more.size() > MostDiskBytes) break;
        text += more;
    }
    return WithoutBlanks(text);
}

std::string DiskText() {
    const QDir blocks(QStringLiteral("/sys/block"));
    std::vector<DiskFacts> disks;
    for (const QString& name : blocks.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name)) {
        const QString folder = blocks.filePath(name);
        if (disks.size() == MostDisks) break;
        if (FileText(folder + QStringLiteral("/removable")).trimmed() == "1") continue;
        const DiskFacts facts = FactsOf(folder);
        if (!facts.serial.empty() || !facts.model.empty()) disks.push_back(facts);
    }
    return DiskTextFrom(disks);
}

// The letter behind the number has always been part of the text.
std::string ProcessorTextFrom(const std::string& vendor, unsigned flags) {
    return WithoutBlanks(vendor + std::to_string(flags) + 'd');
}

std::string ProcessorText() {
#if defined(__x86_64__) || defined(__i386__)
    unsigned a = 0, b = 0, c = 0, d = 0;
    if (!__get_cpuid(0, &a, &b, &c, &d)) return {};
    std::string vendor;
    for (const unsigned part : {b, d, c})
        for (int i = 0; i < 4; ++i) vendor += static_cast<char>(part >> (8 * i) & 0xFF);
    if (!__get_cpuid(1, &a, &b, &c, &d)) return {};
    return ProcessorTextFrom(vendor, d);
#else
    return {};
#endif
}

QString ProcessorNameFrom(const QByteArray& cpuTable) {
    constexpr qsizetype longest = 200;
    QByteArray found;
    for (const QByteArray& line : cpuTable.split('\n')) {
        const qsizetype colon = line.indexOf(':');
        if (colon < 0 || line.left(colon).trimmed() != "model name") continue;
        found = line.mid(colon + 1);
        if (found.startsWith(' ')) found.remove(0, 1);
        break;
    }
    if (found.isEmpty() || found.size() > longest) return QStringLiteral("未知CPU类型");
    QString name = QString::fromUtf8(found);
    for (qsizetype at = name.indexOf(QLatin1String("  "), 1); at > 0; at = name.indexOf(QLatin1String("  "), 1))
        name.remove(at, 1);
    return name;
}

QString ProcessorName() {
    return ProcessorNameFrom(FileText(QStringLiteral("/proc/cpuinfo")));
}

MemoryFacts MemoryFrom(const QByteArray& memoryTable) {
    const auto megabytes = [&](const char* key) {
        for (const QByteArray& line : memoryTable.split('\n')) {
            const QList<QByteArray> fields = line.simplified().split(' ');
            if (fields.size() >= 2 && fields[0] == key) return static_cast<int>(fields[1].toLongLong() / 1024);
        }
        return 0;
    };
    return {megabytes("MemTotal:"), megabytes("MemAvailable:") + megabytes("SwapFree:")};
}

MemoryFacts Memory() {
    return MemoryFrom(FileText(QStringLiteral("/proc/meminfo")));
}
