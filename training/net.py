"""The net that finds text lines, its size and its file.

A small U: a picture is halved five times, and each size hands its features across to the way back up. It runs once over
a whole screen, so nearly all of its work is kept at a quarter of the size and below.
"""
import struct

import torch
from torch import nn
from torch.nn import functional

# name, kernel, stride, dilation, channels in, channels out, ReLU; the order is the file's order
LAYERS = (
    ("stem", 3, 2, 1, 3, 16, True),
    ("d4", 3, 2, 1, 16, 24, True), ("b4", 3, 1, 1, 24, 24, True),
    ("d8", 3, 2, 1, 24, 40, True), ("b8", 3, 1, 1, 40, 40, True),
    ("d16", 3, 2, 1, 40, 64, True), ("b16", 3, 1, 1, 64, 64, True),
    ("d32", 3, 2, 1, 64, 80, True), ("b32", 3, 1, 1, 80, 80, True), ("c32", 3, 1, 2, 80, 80, True),
    ("l16", 1, 1, 1, 80, 64, False), ("u16", 3, 1, 1, 64, 64, True),
    ("l8", 1, 1, 1, 64, 40, False), ("u8", 3, 1, 1, 40, 40, True),
    ("s8", 3, 1, 1, 40, 32, True), ("script", 1, 1, 1, 32, 4, False),
    ("l4", 1, 1, 1, 40, 24, False), ("u4", 3, 1, 1, 24, 16, True),
    ("l2", 1, 1, 1, 16, 16, False), ("u2", 3, 1, 1, 16, 8, True),
    ("out", 3, 1, 1, 8, 6, False),
)
MULTIPLE = 32  # sides of the input


def add_layers(net, layers):
    """Makes the layers parts of a module, under their names."""
    for name, kernel, stride, dilation, inputs, outputs, relu in layers:
        conv = nn.Conv2d(inputs, outputs, kernel, stride, dilation * (kernel // 2), dilation, bias=not relu)
        parts = [conv, nn.BatchNorm2d(outputs), nn.ReLU(inplace=True)] if relu else [conv]
        setattr(net, name, nn.Sequential(*parts))


class Net(nn.Module):
    """RGB at full size, value / 255 - 0.5, to logits: (ink in four sub-pixels, core, gap) at half size, script at 1/8."""

    def __init__(self):
        super().__init__()
        add_layers(self, LAYERS)
        for head in (self.out, self.script):
            nn.init.constant_(head[0].bias, -2.)  # most of a screen is no text

    def forward(self, x):
        def up(t):
            return functional.interpolate(t, scale_factor=2, mode="nearest")
        e2 = self.stem(x)
        e4 = self.b4(self.d4(e2))
        e8 = self.b8(self.d8(e4))
        e16 = self.b16(self.d16(e8))
        e32 = self.c32(self.b32(self.d32(e16)))
        t = self.u16(e16 + up(self.l16(e32)))
        t8 = self.u8(e8 + up(self.l8(t)))
        t = self.u4(e4 + up(self.l4(t8)))
        t = self.u2(e2 + up(self.l2(t)))
        return self.out(t), self.script(self.s8(t8))


def multiply_adds(width=960, height=576):
    """Multiply-adds of one run over a picture of that size."""
    sizes, net = {}, Net().eval()
    for name, *_ in LAYERS:
        conv = getattr(net, name)[0]
        conv.register_forward_hook(lambda module, _, output, name=name: sizes.__setitem__(
            name, output.shape[2] * output.shape[3] * module.weight.numel()))
    with torch.no_grad():
        net(torch.zeros(1, 3, height, width))
    return sum(sizes.values())


def folded(net, layers):
    """Weight and bias of each layer in file order, with the batch norm worked into them."""
    for name, *_, relu in layers:
        parts = getattr(net, name)
        weight, bias = parts[0].weight.detach(), parts[0].bias
        if relu:
            norm = parts[1]
            scale = norm.weight.detach() / torch.sqrt(norm.running_var + norm.eps)
            weight, bias = weight * scale[:, None, None, None], norm.bias.detach() - norm.running_mean * scale
        yield name, weight.half(), bias.detach().float()


def save(net, path, layers=LAYERS):
    """Writes the weights in the program's format: header, then float32 bias and float16 weights of each layer."""
    with open(path, "wb") as file:
        file.write(b"LINENET1" + struct.pack("<I", len(layers)))
        for name, *sizes in layers:
            file.write(struct.pack("<8s6H", name.encode(), *map(int, sizes)))
        for _, weight, bias in folded(net, layers):
            file.write(bias.numpy().tobytes() + weight.numpy().tobytes())


def load(path):
    """The net of a weights file, for evaluation; its batch norms pass values through."""
    net = Net().eval()
    with open(path, "rb") as file:
        magic, count = struct.unpack("<8sI", file.read(12))
        stored = [struct.unpack("<8s6H", file.read(20)) for _ in range(count)]
        expected = [(name.encode().ljust(8, b"\0"), *map(int, sizes)) for name, *sizes in LAYERS]
        if magic != b"LINENET1" or stored != expected:
            raise ValueError(f"{path} holds another net")
        for name, kernel, _, _, inputs, outputs, relu in LAYERS:
            bias = torch.frombuffer(bytearray(file.read(4 * outputs)), dtype=torch.float32)
            size = inputs * outputs * kernel * kernel
            weight = torch.frombuffer(bytearray(file.read(2 * size)), dtype=torch.float16).float()
            parts = getattr(net, name)
            parts[0].weight.data = weight.reshape(outputs, inputs, kernel, kernel)
            if relu:
                parts[1].bias.data, parts[1].eps = bias, 0.
            else:
                parts[0].bias.data = bias
    return net
