#!/usr/bin/python3
"""usage: export.py TRAINED.pt OUT.net [PICTURE TEST] - writes the weights in the program's format.

With a PICTURE also writes TEST.rgb (width, height, bytes) and TEST.out (both outputs as floats), for checking other code that
runs the net. Its sides must be multiples of 32.
"""
import struct
import sys

import numpy as np
import torch
from PIL import Image

from net import Net, load, save


def main():
    net = Net().eval()
    net.load_state_dict(torch.load(sys.argv[1]))
    save(net, sys.argv[2])
    if len(sys.argv) > 4:
        picture = np.asarray(Image.open(sys.argv[3]).convert("RGB"))
        height, width = picture.shape[:2]
        values = torch.from_numpy(picture.transpose(2, 0, 1)[None].copy()).float() / 255 - .5
        with torch.no_grad():
            outputs = load(sys.argv[2])(values)
        with open(sys.argv[4] + ".rgb", "wb") as file:
            file.write(struct.pack("<II", width, height) + picture.tobytes())
        with open(sys.argv[4] + ".out", "wb") as file:
            for output in outputs:
                file.write(torch.sigmoid(output)[0].numpy().tobytes())


if __name__ == "__main__":
    main()
