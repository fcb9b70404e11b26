"""A net that reads letters: one of Tesseract's, as a module that can be trained on, and its file.

A strip goes in with its columns from the left to the right; a third as many places come out, each telling how likely each
character is there, or none.
"""
import struct

import numpy as np
import torch
from torch import nn
from torch.nn import functional

HEIGHTS = {"eng": 36, "jpn": 36, "chi_tra": 48, "chi_sim": 48, "kor": 48}  # of a strip, by the model
LSTM, CHARACTERS, CODES = 17, 21, 22  # parts of a traineddata file: the net, its characters, what it calls them


class File:
    """Reads a part of a traineddata file from the start."""

    def __init__(self, data):
        self.data, self.at = data, 0

    def take(self, form):
        values = struct.unpack_from("<" + form, self.data, self.at)
        self.at += struct.calcsize("<" + form)
        return values if len(values) > 1 else values[0]

    def bytes(self, count):
        self.at += count
        return self.data[self.at - count:self.at]

    def text(self):
        return self.bytes(self.take("I")).decode()


def parts(data):
    """The parts of a traineddata file by number."""
    count = struct.unpack_from("<I", data)[0]
    starts = struct.unpack_from(f"<{count}q", data, 4)
    ends = sorted([start for start in starts if start >= 0] + [len(data)])
    return {i: data[start:ends[ends.index(start) + 1]] for i, start in enumerate(starts) if start >= 0}


def matrices(data):
    """Where a net's weights are, in order: (first byte, rows, columns, first byte of the rows' scales). The last column is
    the bias."""
    file, found = File(data), []

    def matrix():
        if file.take("B") & 1 == 0:
            raise ValueError("these weights aren't integers")
        rows, columns, _ = file.take("IIb")
        start = file.at
        file.bytes(rows * columns)
        scales = file.take("I")
        found.append((start, rows, columns, file.at))
        file.bytes(8 * scales)

    def layer():
        file.take("b")
        kind = file.text()
        file.take("bb")
        flags = file.take("iiii")[0]
        file.text()
        if kind in ("Series", "RTLReversed", "XYTranspose"):
            for _ in range(file.take("I")):
                layer()
            if flags & 64:  # rates of its layers
                file.bytes(4 * file.take("I"))
        elif kind in ("Input", "Convolve", "Maxpool"):
            file.bytes(20 if kind == "Input" else 8)
        elif kind in ("LSTM", "SummLSTM"):
            file.take("i")
            for _ in range(4):
                matrix()
        else:
            matrix()
    layer()
    return found


def characters(data):
    """The codes of each character of a traineddata file, and the code of "none". Ideographs and syllables have several."""
    found = parts(data)
    names = [line.split(" ")[0] for line in found[CHARACTERS].decode().split("\n")[1:-1]]
    file, codes = File(found[CODES]), {}
    for name in names[:file.take("I")]:
        file.take("b")
        code = [file.take("i") for _ in range(file.take("i"))]
        codes.setdefault(" " if name == "NULL" else name, code)
    none = struct.unpack_from("<i", found[LSTM], len(found[LSTM]) - 16)[0]
    return {name: code for name, code in codes.items() if none not in code}, none


class ReaderNet(nn.Module):
    """[1,height,0,1 Ct3,3,16 Mp3,3 Lfys Lfx Lrx Lfx O1c] in Tesseract's notation, with the sizes of the net in `data`, a part of
    a traineddata file; ink is -1, paper 1."""

    def __init__(self, data):
        super().__init__()
        rows = [rows for _, rows, _, _ in matrices(data)]
        down, right, left, last, out = rows[1], rows[5], rows[9], rows[13], rows[17]
        self.convolution = nn.Conv2d(1, 16, 3)
        self.down = nn.LSTM(16, down)
        self.right = nn.LSTM(down, right)
        self.left = nn.LSTM(right, left)
        self.last = nn.LSTM(left, last)
        self.out = nn.Linear(last, out)
        self.read(data)

    def forward(self, x):
        """Strips of one size (batch, height, width) to logits (width // 3, batch, code)."""
        batch, height, width = x.shape
        padded = torch.rand(batch, height + 2, width + 2) * 2 - 1  # as Tesseract has it around a strip
        padded[:, 1:-1, 1:-1] = x
        x = functional.max_pool2d(torch.tanh(self.convolution(padded[:, None])), 3)
        rows = x.permute(2, 0, 3, 1).reshape(height // 3, -1, 16)  # from the top down, for each place by itself
        x = self.down(rows)[1][0].reshape(batch, -1, self.down.hidden_size).transpose(0, 1)
        x = self.right(x)[0]
        x = self.left(x.flip(0))[0].flip(0)
        return self.out(self.last(x)[0])

    def layers(self):
        """Pairs of functions that take the weights of each matrix of the file, and give them."""
        def convolution():
            return torch.cat([self.convolution.weight[:, 0].transpose(1, 2).reshape(16, 9), self.convolution.bias[:, None]], 1)

        def set_convolution(values):
            self.convolution.weight[:, 0] = values[:, :9].reshape(16, 3, 3).transpose(1, 2)
            self.convolution.bias[:] = values[:, 9]

        def gate(lstm, k):
            size, inputs = lstm.hidden_size, lstm.input_size
            part = slice(k * size, (k + 1) * size)

            def given():
                return torch.cat([lstm.weight_ih_l0[part], lstm.weight_hh_l0[part], (lstm.bias_ih_l0 + lstm.bias_hh_l0)[part, None]], 1)

            def take(values):
                lstm.weight_ih_l0[part], lstm.weight_hh_l0[part] = values[:, :inputs], values[:, inputs:-1]
                lstm.bias_ih_l0[part], lstm.bias_hh_l0[part] = values[:, -1], 0
            return take, given

        def take_out(values):
            self.out.weight[:], self.out.bias[:] = values[:, :-1], values[:, -1]
        gates = [gate(lstm, k) for lstm in (self.down, self.right, self.left, self.last) for k in (2, 0, 1, 3)]
        return [(set_convolution, convolution), *gates, (take_out, lambda: torch.cat([self.out.weight, self.out.bias[:, None]], 1))]

    @torch.no_grad()
    def read(self, data):
        """Takes the weights of a net's part of a traineddata file."""
        for (take, _), (start, rows, columns, scales) in zip(self.layers(), matrices(data)):
            values = np.frombuffer(data, np.int8, rows * columns, start).reshape(rows, columns)
            take(torch.from_numpy((values * np.frombuffer(data, np.float64, rows, scales)[:, None]).astype(np.float32)))
        return self

    @torch.no_grad()
    def written(self, data):
        """The part with the present weights, rounded to integers."""
        data = bytearray(data)
        for (_, given), (start, rows, columns, scales) in zip(self.layers(), matrices(data)):
            values = given().numpy().astype(np.float64)
            scale = np.maximum(np.abs(values).max(1), 1e-9) / 127
            data[start:start + rows * columns] = np.rint(values / scale[:, None]).astype(np.int8).tobytes()
            data[scales:scales + 8 * rows] = scale.tobytes()
        return bytes(data)


def values_of(strip):
    """Grey bytes as the net gets them from Tesseract: by the darkest and lightest places of the middle row."""
    row = strip[strip.shape[0] // 2].astype(int)
    before, here, after = row[:-2], row[1:-1], row[2:]
    dark = here[((here < before) & (here <= after)) | ((here <= before) & (here < after))]
    light = here[((here > before) & (here >= after)) | ((here >= before) & (here > after))]
    black = np.percentile(dark, 25, interpolation="lower") if dark.size else 0
    white = np.percentile(light, 75, interpolation="lower") if light.size else 255
    return np.clip((strip.astype(np.float32) - black) / max((white - black) / 2, 1 if white <= black else .5) - 1, -1, 1)
