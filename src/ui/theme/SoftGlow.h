#pragma once

#include <QColor>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QRectF>

namespace tovrin::SoftGlow {

// A shadow without offset: the shape's silhouette in one colour, blurred so that it fades out over
// about `radius` logical pixels, drawn at `opacity`. Blurred off screen at the painter's pixel ratio.
void paint(QPainter& painter, const QPainterPath& shape, const QColor& color, double opacity, double radius);
// The same behind an image: the silhouette is the image's alpha, placed at `target`.
void paint(QPainter& painter, const QImage& image, const QRectF& target, const QColor& color, double opacity,
           double radius);

// Blurs a premultiplied ARGB image in place, three box passes that approach a Gaussian of the given
// standard deviation in pixels.
void blur(QImage& image, double sigma);

} // namespace tovrin::SoftGlow
