// SPDX-License-Identifier: GPL-3.0-or-later
#include "CImageInfoWnd.h"

#include <array>
#include <QtGui/QClipboard>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>

#include "ImageInfo.h"
#include "ShortName.h"

namespace {

// The stem of a field's two controls, "Label..." and "Text...", and the field.
struct Row {
    const char* stem;
    std::wstring tag_ImageInfo::*field;
};

constexpr std::array<Row, 15> Rows{{{"TuPianMingCheng", &tag_ImageInfo::FileName},
                                    {"TuPianChiCun", &tag_ImageInfo::Dimensions},
                                    {"TuPianDaXiao", &tag_ImageInfo::FileSize},
                                    {"ZhiZaoChangShang", &tag_ImageInfo::Maker},
                                    {"SeBeiXingHao", &tag_ImageInfo::Model},
                                    {"PaiSeShiJian", &tag_ImageInfo::DateTaken},
                                    {"GuangQuan", &tag_ImageInfo::Aperture},
                                    {"KuaiMenSuDu", &tag_ImageInfo::ShutterSpeed},
                                    {"GanGuangDu", &tag_ImageInfo::Sensitivity},
                                    {"PaiSeMoShi", &tag_ImageInfo::ExposureProgramme},
                                    {"CeGuangMoShi", &tag_ImageInfo::MeteringMode},
                                    {"BaoGuangBuChang", &tag_ImageInfo::ExposureCompensation},
                                    {"JiaoJu", &tag_ImageInfo::FocalLength},
                                    {"ShanGuangDeng", &tag_ImageInfo::Flash},
                                    {"ChuLiRuanJian", &tag_ImageInfo::Software}}};

QString Named(const char* prefix, const Row& row) {
    return QLatin1String(prefix) + QLatin1String(row.stem);
}

const QString NameControl = QStringLiteral("TextTuPianMingCheng");

}  // namespace

CImageInfoWnd::CImageInfoWnd(QAbstractButton* option) : CPopupWnd(option) {
    setObjectName(QStringLiteral("ImageInfoWnd"));
    Create(QStringLiteral("ImageInfo.xml"));
}

void CImageInfoWnd::SetInfo(const tag_ImageInfo& info, const QString& path) {
    m_name = QString::fromStdWString(info.FileName);
    m_path = path;
    for (const Row& row : Rows) {
        auto* value = Find<QLineEdit>(Named("Text", row));
        if (!value) continue;
        const QString text = QString::fromStdWString(info.*row.field);
        const bool name = value->objectName() == NameControl;
        value->setText(name ? ShortenName(text) : text);
        // A text that is longer than its place begins at its beginning.
        value->setCursorPosition(0);
        if (name && !path.isEmpty()) value->setToolTip(path);
    }
}

void CImageInfoWnd::Open() {
    OpenAbove({Width, Height}, FromRight);
    if (auto* copy = Find<QWidget>(QStringLiteral("BtnCopyAll"))) copy->setFocus();
}

QString CImageInfoWnd::AllText() const {
    QString all;
    for (const Row& row : Rows) {
        const auto* label = Find<QLabel>(Named("Label", row));
        const auto* value = Find<QLineEdit>(Named("Text", row));
        if (!label || !value || value->text().isEmpty()) continue;
        const bool name = value->objectName() == NameControl;
        all += label->text() + QStringLiteral(": ") + (name ? m_name : value->text()) + u'\n';
    }
    return m_path.isEmpty() ? all : all + m_path + u'\n';
}

void CImageInfoWnd::OnNotify(const Notify& notify) {
    if (notify.Is(u"click", u"BtnCopyAll")) QApplication::clipboard()->setText(AllText());
}

void CImageInfoWnd::hideEvent(QHideEvent* event) {
    CPopupWnd::hideEvent(event);
    deleteLater();
}

bool ShowImageInfo(QAbstractButton* option, const tag_ImageInfo* info, const QString& path) {
    if (!info) {
        option->setChecked(false);
        return false;
    }
    auto* window = new CImageInfoWnd(option);
    window->SetInfo(*info, path);
    window->Open();
    return true;
}
