// SPDX-FileCopyrightText: 2026 The Dugwise authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/ShadowImageProvider.h"

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <vector>

using namespace Qt::StringLiterals;

namespace dugwise {

namespace {

constexpr int kMaximumLength = 64;

/// Weights of the pixels from `blur` before to `blur` after, a bell curve with the sum 1.
std::vector<double> bellCurve(int blur)
{
    const double deviation = std::max(blur, 1) / 2.0;
    std::vector<double> weights;
    double sum = 0;
    for (int distance = -blur; distance <= blur; ++distance) {
        weights.push_back(std::exp(-distance * distance / (2 * deviation * deviation)));
        sum += weights.back();
    }
    for (double &weight : weights)
        weight /= sum;
    return weights;
}

/// Every line of the square `image` blurred, and lines made columns: twice, it is blurred both
/// ways.
QImage blurredAcross(const QImage &image, const std::vector<double> &weights)
{
    const int side = image.width();
    const int blur = static_cast<int>(weights.size() / 2);
    QImage blurred(image.size(), QImage::Format_Alpha8);
    for (int y = 0; y < side; ++y) {
        const uchar *const line = image.constScanLine(y);
        for (int x = 0; x < side; ++x) {
            double sum = 0;
            for (int i = std::max(0, x - blur); i <= std::min(side - 1, x + blur); ++i) {
                const int away = i - x + blur;
                sum += weights[static_cast<std::size_t>(away)] * line[i];
            }
            blurred.scanLine(x)[y] = static_cast<uchar>(std::lround(sum));
        }
    }
    return blurred;
}

} // namespace

ShadowImageProvider::ShadowImageProvider()
    : QQuickImageProvider(QQuickImageProvider::Image)
{}

QImage
ShadowImageProvider::requestImage(const QString &id, QSize *size, const QSize & /*requestedSize*/)
{
    const int radius = std::clamp(id.section(u'/', 0, 0).toInt(), 0, kMaximumLength);
    const int blur = std::clamp(id.section(u'/', 1, 1).toInt(), 0, kMaximumLength);
    const int side = 2 * (radius + 2 * blur) + 1;
    QImage shape(side, side, QImage::Format_Alpha8);
    shape.fill(Qt::transparent);
    QPainter painter(&shape);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::black);
    painter.drawRoundedRect(shape.rect().adjusted(blur, blur, -blur, -blur), radius, radius);
    painter.end();
    const std::vector<double> weights = bellCurve(blur);
    const QImage blurred = blurredAcross(blurredAcross(shape, weights), weights);
    if (size)
        *size = blurred.size();
    return blurred.convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

} // namespace dugwise
