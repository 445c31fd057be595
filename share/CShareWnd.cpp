// SPDX-License-Identifier: GPL-3.0-or-later
#include "CShareWnd.h"

#include <QtCore/QMimeData>
#include <QtCore/QUrl>
#include <QtGui/QClipboard>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>

#include "AppPaths.h"
#include "Language.h"
#include "Shell.h"

namespace {

QString Word(const char* key) {
    return LanguageText(QLatin1String(key), QStringLiteral("Share"));
}

}  // namespace

CShareWnd::CShareWnd(const QString& path, const QString& title) : m_picture(path) {
    setObjectName(QStringLiteral("ShareWnd"));
    setWindowTitle(title);
    setWindowIcon(QIcon(ResourcePath(QStringLiteral("Images/Icons/quince.svg"))));
    Create(QStringLiteral("ShareWnd.xml"));
    for (const char* name : {"BtnCopy", "BtnOpenWith", "BtnMail", "BtnShowFolder"})
        if (auto* button = Find<QWidget>(QLatin1String(name))) button->setEnabled(m_picture.IsThere());
    if (auto* text = Find<QLabel>(QStringLiteral("TextShare")))
        text->setText(Word(m_picture.IsThere() ? "ids_share_picture" : "ids_share_nopicture"));
}

// Only now is it known how fine the screen is.
void CShareWnd::showEvent(QShowEvent* event) {
    auto* preview = Find<QLabel>(QStringLiteral("ConShowImage"));
    if (preview && m_picture.IsThere() && !event->spontaneous()) {
        const qreal ratio = devicePixelRatioF();
        QImage picture = m_picture.Within(preview->minimumSize() * ratio);
        picture.setDevicePixelRatio(ratio);
        preview->setPixmap(QPixmap::fromImage(picture));
    }
    CXMLWnd::showEvent(event);
}

void CShareWnd::OnNotify(const Notify& notify) {
    if (notify.type != u"click") return;
    if (notify.name == u"BtnCopy") Copy();
    if (notify.name == u"BtnOpenWith") Report(OpenFile(m_picture.File()), "ids_share_opened");
    if (notify.name == u"BtnMail") Report(WriteMail(QStringLiteral("QUINCE"), m_picture.File()), "ids_share_opened");
    if (notify.name == u"BtnShowFolder") Report(OpenFolder(m_picture.Folder()), "ids_share_opened");
}

// As pixels for picture programs, and as a file for those that take files.
void CShareWnd::Copy() {
    const QImage picture = m_picture.Read();
    if (picture.isNull()) return Report(false, "");
    auto* data = new QMimeData;
    data->setImageData(picture);
    data->setUrls({QUrl::fromLocalFile(m_picture.File())});
    QApplication::clipboard()->setMimeData(data);
    Report(true, "ids_share_copied");
}

void CShareWnd::Report(bool done, const char* key) {
    if (auto* state = Find<QLabel>(QStringLiteral("TextShareState")))
        state->setText(Word(done ? key : "ids_share_failed"));
}

void CShareWnd::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Copy) && m_picture.IsThere()) return Copy();
    if (event->key() == Qt::Key_Escape) {
        close();
        return;
    }
    CXMLWnd::keyPressEvent(event);
}
