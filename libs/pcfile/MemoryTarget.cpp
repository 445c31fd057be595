// SPDX-License-Identifier: GPL-3.0-or-later
#include "MemoryTarget.h"

#include "ExifOrientation.h"
#include "Readers.h"

std::uint8_t* MemoryTarget::Begin(std::int64_t width, std::int64_t height) {
    if (!Bitmap::Allowed(width, height)) return nullptr;
    m_deep.reset();
    m_picture = Bitmap::Uninitialised(static_cast<int>(width), static_cast<int>(height));
    return m_picture.MutablePixels();
}

std::uint16_t* MemoryTarget::BeginDeep(std::int64_t width, std::int64_t height) {
    if (!Bitmap::Allowed(width, height)) return nullptr;
    m_picture = Bitmap();
    m_deepWidth = static_cast<int>(width);
    m_deepHeight = static_cast<int>(height);
    m_deep.reset(new std::uint16_t[std::size_t{4} * m_deepWidth * m_deepHeight]);
    return m_deep.get();
}

void MemoryTarget::SetProfile(const void* bytes, std::size_t size) {
    const auto* first = static_cast<const std::uint8_t*>(bytes);
    m_colours.profile.assign(first, first + size);
}

void MemoryTarget::SetChromaticities(const double (&xy)[8], double gamma) {
    m_colours.profile = MakeProfile(xy, gamma);
}

void MemoryTarget::SetExif(const std::uint8_t* bytes, std::size_t size) {
    m_orientation = ExifOrientation(bytes, size);
}

bool MemoryTarget::Report(double done) {
    m_span.Report(done, 1);
    return m_span.CanContinue();
}

bool MemoryTarget::DecodeEmbeddedJpeg(const std::uint8_t* data, std::size_t size) {
    // What the outer file says of orientation stands; a preview's own word would turn it twice.
    const int orientation = m_orientation;
    const bool read = ReadJpeg(data, size, *this);
    m_orientation = orientation;
    return read;
}

Bitmap MemoryTarget::Finish() {
    if (m_deep) {
        m_picture = DeepToSrgb(m_deep.get(), m_deepWidth, m_deepHeight, m_colours);
        m_deep.reset();
    } else {
        ConvertToSrgb(m_picture, m_colours);
    }
    return ApplyOrientation(m_picture, m_orientation);
}
