// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <new>

// A result beyond the pixels that a picture may have: no memory would be enough for it.
class PictureTooLarge : public std::bad_alloc {
  public:
    const char* what() const noexcept override { return "picture too large"; }
};
