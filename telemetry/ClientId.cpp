// SPDX-License-Identifier: GPL-3.0-or-later
#include "ClientId.h"

#include <QtCore/QCryptographicHash>

#include "MachineFacts.h"

namespace {

// The buffers that the check value's text has always gone through, without their terminators.
constexpr qsizetype JoinedBytes = 1023;
constexpr qsizetype HashedBytes = 258;
constexpr int IdModulus = 13;

QByteArray Md5(const std::string& bytes) {
    return QCryptographicHash::hash(QByteArray::fromStdString(bytes), QCryptographicHash::Md5).toHex();
}

// The halves of each byte exchanged; a byte above 127 gets ones where its sign moves in.
std::string Exchanged(std::string text) {
    for (char& c : text) {
        const auto byte = static_cast<signed char>(c);
        c = static_cast<char>((byte >> 4) | ((byte & 0x0F) << 4));
    }
    return text;
}

}  // namespace

std::string Md5Upper(const std::string& bytes) {
    return Md5(bytes).toUpper().toStdString();
}

std::string Md5Lower(const std::string& bytes) {
    return Md5(bytes).toStdString();
}

std::string ClientIdFrom(const std::string& network, const std::string& disk, const std::string& processor) {
    const std::string digits = Md5Upper(network + disk + processor) + Md5Upper(Exchanged(network));
    int sum = 0;
    for (const char c : digits) sum += static_cast<unsigned char>(c);
    return QByteArray::number(sum % IdModulus, 16).toUpper().toStdString() + digits;
}

QString GetClientId() {
    static const QString id = QString::fromStdString(ClientIdFrom(NetworkText(), DiskText(), ProcessorText()));
    return id;
}

QString GetClientCheckValue(const QString& partner, const QString& client) {
    QByteArray joined = (partner + client).toLocal8Bit().left(JoinedBytes).left(HashedBytes);
    // The text ends where a zero stands.
    joined = QByteArray(joined.constData());
    return QString::fromStdString(Md5Lower(joined.toStdString()));
}
