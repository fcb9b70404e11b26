#pragma once

#include "find/Convolution.h"
#include "find/TextMaps.h"

#include <QImage>

#include <map>
#include <mutex>
#include <string>

namespace lucentra {

/// The network that sees text on screens; `training/` makes its weights. It is shaped like a U: the picture shrinks to
/// a 32nd in five steps, so that each place knows what is around it, and grows again to half its size.
class TextNet
{
public:
    /// Reads the weights from a file or resource. Throws `std::runtime_error` if they aren't those of this net.
    explicit TextNet(const QString &path);

    /// What is seen on an image with 32 bits a pixel, by so many threads. Large images are seen in tiles. Any thread;
    /// calls at the same time wait for one another.
    TextMaps seen(const QImage &image, int threads);

    /// Frees the memory that only `seen` needs.
    void release();

private:
    struct Step;

    std::vector<Step> stepsFor(const QSize &size);
    void seeTile(const QImage &image, const QRect &tile, const QRect &kept, int threads, TextMaps &maps);
    void keep(const QRect &tile, const QRect &kept, int first, int end, TextMaps &maps) const;
    const Convolution &layer(const char *name) const;

    std::map<std::string, Convolution, std::less<>> m_layers;
    std::mutex m_mutex;
    std::map<std::string, NumberPlane, std::less<>> m_planes;
};

} // namespace lucentra
