#include "find/NetLayers.h"

#include <QDataStream>
#include <QFile>
#include <QFloat16>
#include <QtEndian>

#include <algorithm>
#include <array>
#include <stdexcept>

namespace lucentra {

std::map<std::string, Convolution, std::less<>> netLayers(const QString &path)
{
    constexpr int mostChannels = 512;
    const std::runtime_error broken("the weights of a network can't be read");
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || file.read(8) != "LINENET1")
        throw broken;
    QDataStream stream(&file);
    stream.setByteOrder(QDataStream::LittleEndian);
    stream.setFloatingPointPrecision(QDataStream::SinglePrecision);
    quint32 count = 0;
    stream >> count;
    std::map<std::string, Convolution, std::less<>> layers;
    std::vector<Convolution *> order;
    for (quint32 i = 0; i < count && stream.status() == QDataStream::Ok; ++i) {
        std::array<char, 9> name{};
        stream.readRawData(name.data(), 8);
        std::array<quint16, 6> sizes{};
        for (quint16 &size : sizes)
            stream >> size;
        Convolution &layer = layers[name.data()];
        layer.kernel = sizes[0];
        layer.stride = sizes[1];
        layer.dilation = sizes[2];
        layer.inputs = sizes[3];
        layer.outputs = sizes[4];
        layer.clips = sizes[5] != 0;
        if ((layer.kernel != 1 && layer.kernel != 3) || layer.stride < 1 || layer.stride > 2 || layer.dilation < 1 ||
            layer.dilation > NumberPlane::border || std::max(layer.inputs, layer.outputs) > mostChannels)
            throw broken;
        order.push_back(&layer);
    }
    for (Convolution *layer : order) {
        layer->biases.resize(std::size_t(layer->outputs));
        for (float &bias : layer->biases)
            stream >> bias;
        std::vector<float> weights(std::size_t(layer->outputs * layer->inputs * layer->kernel * layer->kernel));
        std::vector<qfloat16> halves(weights.size());
        const int bytes = int(2 * halves.size());
        if (stream.readRawData(reinterpret_cast<char *>(halves.data()), bytes) != bytes)
            throw broken;
        qFromLittleEndian<quint16>(halves.data(), qsizetype(halves.size()), halves.data());
        qFloatFromFloat16(weights.data(), halves.data(), qsizetype(halves.size()));
        layer->arrange(weights);
    }
    if (stream.status() != QDataStream::Ok)
        throw broken;
    return layers;
}

} // namespace lucentra
