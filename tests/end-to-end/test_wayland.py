"""The native pane of Wayland sessions."""
