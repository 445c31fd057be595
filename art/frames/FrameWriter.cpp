// SPDX-License-Identifier: GPL-3.0-or-later
#include "FrameWriter.h"

#include <QtCore/QBuffer>

namespace {

// A header of zeros in which fields are set.
class Header {
  public:
    explicit Header(int size) : m_bytes(size, '\0') {}
    void Text(int at, const char* text) {
        for (; *text; ++text) m_bytes[at++] = *text;
    }
    void Byte(int at, int value) { m_bytes[at] = static_cast<char>(value); }
    void Int(int at, int value) {
        for (int i = 0; i < 4; ++i) m_bytes[at + i] = static_cast<char>(static_cast<unsigned>(value) >> (8 * i));
    }
    const QByteArray& Bytes() const { return m_bytes; }

  private:
    QByteArray m_bytes;
};

QByteArray IntBytes(int value) {
    Header bytes(4);
    bytes.Int(0, value);
    return bytes.Bytes();
}

QByteArray Encoded(const QImage& image, const char* format, int quality) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, format, quality);
    return bytes;
}

}  // namespace

QByteArray PngOf(const QImage& image) {
    return Encoded(image.convertToFormat(QImage::Format_ARGB32), "PNG", -1);
}

QByteArray JpegOf(const QImage& image, int quality) {
    return Encoded(image.convertToFormat(QImage::Format_RGB32), "JPG", quality);
}

QByteArray StripFile(const MiniFrame& f) {
    Header header(117);
    header.Text(12, "LUXUS");
    header.Byte(36, 1);  // the picture lies under the frame
    header.Int(37, f.pictureLeft);
    header.Int(41, f.pictureTop);
    header.Int(45, f.pictureLeft + f.pictureRight);
    header.Int(49, f.pictureTop + f.pictureBottom);
    const std::array<QSize, 8> pieces{QSize(f.left, f.top),         QSize(f.tileWidth, f.top),
                                      QSize(f.right, f.top),        QSize(f.left, f.tileHeight),
                                      QSize(f.right, f.tileHeight), QSize(f.left, f.bottom),
                                      QSize(f.tileWidth, f.bottom), QSize(f.right, f.bottom)};
    int at = 53;
    for (const QSize& piece : pieces) {
        header.Int(at, piece.width());
        header.Int(at + 4, piece.height());
        at += 8;
    }
    return header.Bytes() + PngOf(f.image);
}

QByteArray NinePartFile(const MiniFrame& f) {
    Header header(96);
    header.Text(0, "VNBK");
    header.Int(40, f.pictureLeft);
    header.Int(44, f.pictureTop);
    header.Int(48, f.pictureLeft + f.pictureRight);
    header.Int(52, f.pictureTop + f.pictureBottom);
    QByteArray bytes = header.Bytes();
    const int xs[] = {0, f.left, f.left + f.tileWidth}, widths[] = {f.left, f.tileWidth, f.right};
    const int ys[] = {0, f.top, f.top + f.tileHeight}, heights[] = {f.top, f.tileHeight, f.bottom};
    for (int row = 0; row < 3; ++row)
        for (int column = 0; column < 3; ++column) {
            const bool centre = row == 1 && column == 1;
            const QByteArray part =
                centre ? QByteArray() : PngOf(f.image.copy(xs[column], ys[row], widths[column], heights[row]));
            bytes += IntBytes(static_cast<int>(part.size())) + part;
        }
    return bytes;
}

QByteArray OverlayFile::Bytes() const {
    Header header(174);
    header.Text(12, "XCBK1");
    header.Byte(138, mayRotate ? '1' : '0');
    header.Byte(139, keepRatio ? '1' : '0');
    header.Byte(140, stretch ? '1' : '0');
    header.Byte(141, blendMode);
    header.Text(158, extension.constData());
    header.Int(166, static_cast<int>(data.size()));
    return header.Bytes() + data;
}
