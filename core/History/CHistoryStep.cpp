// SPDX-License-Identifier: GPL-3.0-or-later
#include "CHistoryStep.h"

#include <algorithm>

#include "ImageParams.h"
#include "Language.h"
#include "PC_File.h"

void CHistoryStep::AddParams(std::unique_ptr<CUndoRedoParams> record) {
    if (!record) return;
    const auto after = std::upper_bound(m_params.begin(), m_params.end(), record->order,
                                        [](int order, const auto& other) { return order < other->order; });
    m_params.insert(after, std::move(record));
}

void CHistoryStep::SetNameFromKey(const QString& key) {
    m_name = LanguageText(key);
}

std::unique_ptr<CHistoryStep> CHistoryStep::Clone() const {
    auto clone = std::make_unique<CHistoryStep>();
    clone->m_name = m_name;
    clone->m_params.reserve(m_params.size());
    for (const auto& record : m_params) clone->m_params.push_back(record->Clone());
    return clone;
}

const ImageParams* CHistoryStep::Image() const {
    return m_params.empty() ? nullptr : RecordAs<ImageParams>(*m_params.front());
}

ImageParams* CHistoryStep::Image() {
    return const_cast<ImageParams*>(std::as_const(*this).Image());
}

Bitmap CHistoryStep::ReadImage() const {
    const ImageParams* image = Image();
    return image ? PC_File::ImageReadFrombinary(image->path.toStdWString()) : Bitmap();
}

QString CHistoryStep::GetImagePath() const {
    const ImageParams* image = Image();
    return image ? image->path : QString();
}

bool CHistoryStep::SaveImage(const QString& path) {
    const ImageParams* image = Image();
    if (!image || !PC_File::ImageSaveTobinary(image->image, path.toStdWString())) return false;
    SetImagePath(path);
    return true;
}

void CHistoryStep::SetImagePath(const QString& path) {
    if (ImageParams* image = Image()) image->path = path;
    DropImages();
}

void CHistoryStep::DropImages() {
    for (const auto& record : m_params)
        if (record->GetType() == ImageParams::Type) static_cast<ImageParams&>(*record).image = Bitmap();
}
