// SPDX-License-Identifier: GPL-3.0-or-later
// What nearly every window source needs; changing it rebuilds them all.
#pragma once
#include <QtCore/QEvent>
#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtGui/QImage>
#include <QtGui/QPainter>
#include <QtWidgets/QApplication>
#include <QtWidgets/QWidget>

#include <functional>
#include <memory>
#include <vector>
