// SPDX-License-Identifier: GPL-3.0-or-later
#include "CClickRepairWnd.h"

// The result is on the screen before its step is written.
bool CClickRepairWnd::BeginStroke(const StrokePoint& at) {
    const QPoint client = PixelOf(at);
    const std::optional<QRect> place = m_clicks.Aim(client);
    if (!place) return false;
    const bool repaired =
        RunRepair(m_clicks.IsQuick(*place), [&](CObjProgress* progress) { return m_clicks.Repair(*place, progress); });
    if (repaired) {
        RedrawPart(m_clicks.Changed() | OnRepaired(client));
        Record();
    }
    Replay();
    return false;
}
