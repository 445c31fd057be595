// SPDX-License-Identifier: GPL-3.0-or-later
#include "CMidBottomEditTool.h"

#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QLabel>

#include "ClickCount.h"
#include "ShortName.h"

CMidBottomEditTool::CMidBottomEditTool(ToolHost&, QWidget* parent) : CXMLWnd(parent) {
    Create(QStringLiteral("MidBottomEditTool.xml"));
}

// The click counts whether or not there is anything to show.
void CMidBottomEditTool::OnNotify(const Notify& notify) {
    auto* option = qobject_cast<QAbstractButton*>(notify.sender);
    if (!notify.Is(u"click", u"OptExif") || !option || !option->isChecked()) return;
    CountClick(QStringLiteral("8880508"));
    emit InfoAsked(option);
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
