"""Another program that holds a global hotkey: hold_key.py X-KEY-CODE MODIFIERS. Prints a line once it does."""
import sys
import time

from Xlib import X, display

screen = display.Display()
screen.screen().root.grab_key(int(sys.argv[1]), int(sys.argv[2]), False, X.GrabModeAsync, X.GrabModeAsync)
screen.sync()
print("held", flush=True)
time.sleep(600)
