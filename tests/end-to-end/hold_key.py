"""Another program that holds a global hotkey: hold_key.py X-KEY-CODE MODIFIERS. Prints a line once it does."""
import ctypes
import sys
import time

GRAB_MODE_ASYNC = 1

xlib = ctypes.CDLL("libX11.so.6")
xlib.XOpenDisplay.restype = ctypes.c_void_p
display = ctypes.c_void_p(xlib.XOpenDisplay(None))
root = ctypes.c_ulong(xlib.XDefaultRootWindow(display))
xlib.XGrabKey(display, int(sys.argv[1]), ctypes.c_uint(int(sys.argv[2])), root, False, GRAB_MODE_ASYNC, GRAB_MODE_ASYNC)
xlib.XSync(display, False)
print("held", flush=True)
time.sleep(600)
