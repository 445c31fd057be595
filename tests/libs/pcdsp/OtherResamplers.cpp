// SPDX-License-Identifier: GPL-3.0-or-later
#include "OtherResamplers.h"

#include <algorithm>
#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>
#include <QtGui/QImage>

namespace {

Bitmap ByOpenCv(const Bitmap& source, int width, int height, int method) {
    const Bitmap pixels = source.Clone();
    Bitmap result = Bitmap::Uninitialised(width, height);
    const cv::Mat from(source.Height(), source.Width(), CV_8UC4, const_cast<std::uint8_t*>(pixels.Pixels()));
    cv::Mat to(height, width, CV_8UC4, result.MutablePixels());
    cv::resize(from, to, to.size(), 0, 0, method);
    return result;
}

Bitmap ByQt(const Bitmap& source, int width, int height) {
    const QImage from(source.Pixels(), source.Width(), source.Height(), QImage::Format_RGB32);
    const QImage to = from.scaled(width, height, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                          .convertToFormat(QImage::Format_ARGB32);
    Bitmap result = Bitmap::Uninitialised(width, height);
    for (int y = 0; y < height; ++y)
        std::copy_n(to.constScanLine(y), result.Stride(), result.MutablePixels() + y * result.Stride());
    return result;
}

}  // namespace

std::vector<std::pair<std::string, Bitmap>> ResampledElsewhere(const Bitmap& source, int width, int height) {
    return {{"OpenCV area", ByOpenCv(source, width, height, cv::INTER_AREA)},
            {"OpenCV cubic", ByOpenCv(source, width, height, cv::INTER_CUBIC)},
            {"OpenCV Lanczos", ByOpenCv(source, width, height, cv::INTER_LANCZOS4)},
            {"Qt smooth", ByQt(source, width, height)}};
}
