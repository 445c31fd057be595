// SPDX-License-Identifier: GPL-3.0-or-later
#include "WithinMemory.h"

#include "ActFailure.h"
#include "Log.h"
#include "ToolHost.h"

bool WithinMemory(ToolHost& host, const std::function<void()>& act) {
    try {
        act();
        return true;
    } catch (const PictureTooLarge&) {
        host.Tell(QStringLiteral("ids_toolarge"));
    } catch (const std::bad_alloc&) {
        Log("[QUINCE]out of memory");
        host.Tell(QStringLiteral("ids_outofmemory"));
    }
    return false;
}
