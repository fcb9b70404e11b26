#pragma once

#include <QImage>

namespace lucentra {

/// Blurs a picture in place by a Gaussian of the given standard deviation, in pixels. Beyond its edges the picture
/// counts as going on in the edge's colour. `Format_Alpha8`, `Format_RGB32` and `Format_ARGB32_Premultiplied` are
/// blurred; others stay as they are.
void softBlur(QImage &image, double deviation);

} // namespace lucentra
