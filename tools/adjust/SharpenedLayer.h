// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "AdjustChain.h"

// What a drag of a slider need not do again with every event: sharpening comes first in the chain, so while another
// value changes it gives the same pixels. They are kept from the second time on that the same is asked for, which a
// drag of the sharpness itself never does. A value for one thread at a time.
class SharpenedLayer {
  public:
    // What the chain starts from: `layer` itself, or, without the sharpening in `calls`, the layer sharpened. May throw
    // std::bad_alloc; nothing has changed then.
    Bitmap Start(const Bitmap& layer, std::vector<AdjustCall>& calls);

  private:
    Bitmap m_layer;
    AdjustCall m_sharpening{};
    Bitmap m_sharpened;  // null until it is asked for again
};
