// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

// The font families of this machine. Needs a QGuiApplication; any thread.

// The families that a text may be written in, sorted, without the system's private ones and the three generic names. A
// well-known family that is not installed stands in the list when another of the same metrics is, since texts are then
// as wide as in the family itself.
QStringList TextFamilies();

// The family that stands for `name`: itself, or one of the same metrics. Empty when this machine has neither.
QString InstalledFamily(const QString& name);

// InstalledFamily, or else the first of the generic serif, monospace and sans-serif families that there is.
QString FamilyFor(const QString& name);

// The family of coloured emoji; empty when there is none.
QString EmojiFamily();
