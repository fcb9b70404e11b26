#pragma once

#include <QImage>

namespace lucentra {

/// Blurs a picture in place by a Gaussian of the given standard deviation, in pixels. Beyond its edges, the picture
/// continues in the colour of the edge. Pictures of other formats than `Format_Alpha8`, `Format_RGB32` and
/// `Format_ARGB32_Premultiplied` are not changed.
void softBlur(QImage &image, double deviation);

} // namespace lucentra
