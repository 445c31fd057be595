// SPDX-License-Identifier: GPL-3.0-or-later
#include "CMidBottomEditTool.h"

#include <QtWidgets/QLabel>

#include "ShortName.h"

CMidBottomEditTool::CMidBottomEditTool(ToolHost&, QWidget* parent) : CXMLWnd(parent) {
    Create(QStringLiteral("MidBottomEditTool.xml"));
}

void CMidBottomEditTool::ShowFacts(const QString& name, const QString& size, const QString& fileSize) {
    SetText("TextPicName", ShortenName(name));
    if (auto* label = Find<QLabel>(QStringLiteral("TextPicName"))) label->setToolTip(name);
    SetText("TextPicSize", size);
    SetText("TextFileSize", fileSize);
}

QString CMidBottomEditTool::SizeText(int width, int height) {
    return QStringLiteral("%1 x %2").arg(width).arg(height);
}

void CMidBottomEditTool::SetText(const char* label, const QString& text) {
    if (auto* control = Find<QLabel>(QLatin1String(label))) control->setText(text);
}
