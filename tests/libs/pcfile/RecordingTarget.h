// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <vector>

#include "PictureTarget.h"

// A target that gives memory to small pictures only and remembers the largest that was asked for, so that tests see
// what a reader believes of a lying file.
class RecordingTarget final : public PictureTarget {
  public:
    std::int64_t most = 0;  // pixels

    std::uint8_t* Begin(std::int64_t width, std::int64_t height) override {
        if (!Remember(width, height)) return nullptr;
        m_bytes.resize(static_cast<std::size_t>(4 * width * height));
        return m_bytes.data();
    }
    std::uint16_t* BeginDeep(std::int64_t width, std::int64_t height) override {
        if (!Remember(width, height)) return nullptr;
        m_words.resize(static_cast<std::size_t>(4 * width * height));
        return m_words.data();
    }
    void SetModel(Model) override {}
    void SetProfile(const void*, std::size_t) override {}
    void SetChromaticities(const double (&)[8], double) override {}
    void SetOrientation(int) override {}
    void SetExif(const std::uint8_t*, std::size_t) override {}
    bool Report(double) override { return true; }
    bool DecodeEmbeddedJpeg(const std::uint8_t*, std::size_t) override { return false; }

  private:
    bool Remember(std::int64_t width, std::int64_t height) {
        most = std::max(most, width * height);
        return width > 0 && height > 0 && width * height <= 1 << 22;
    }

    std::vector<std::uint8_t> m_bytes;
    std::vector<std::uint16_t> m_words;
};
