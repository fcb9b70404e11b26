"""A network of the test's own, in which nothing but this machine can be reached."""
import ctypes
import fcntl
import os
import socket
import struct

NEW_USER, NEW_NETWORK = 0x10000000, 0x40000000
SET_FLAGS, UP = 0x8914, 1


def leave_the_network() -> None:
    """For this process and all that it starts from now on."""
    libc = ctypes.CDLL("libc.so.6", use_errno=True)
    if libc.unshare(NEW_NETWORK if os.geteuid() == 0 else NEW_USER | NEW_NETWORK) != 0:
        raise OSError(ctypes.get_errno(), "no network of its own")
    with socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as device:
        fcntl.ioctl(device, SET_FLAGS, struct.pack("16sh22x", b"lo", UP))
