"""An HTTP server on this computer, for as long as a `with` statement lasts."""
import http.server
import sys
import threading


class Handler(http.server.BaseHTTPRequestHandler):
    """Subclasses answer; the LocalServer is at `self.server.owner`."""
    protocol_version = "HTTP/1.1"

    def log_message(self, *_):
        pass


class _Server(http.server.ThreadingHTTPServer):
    daemon_threads = True

    def handle_error(self, request, client_address):
        if not isinstance(sys.exc_info()[1], ConnectionError):  # those come from a program that ended meanwhile
            super().handle_error(request, client_address)


class LocalServer:
    """Each connection has a thread of its own, which may wait for `released`: that is set when the server ends."""

    def __init__(self, handler: type[Handler]):
        self.released = threading.Event()
        self.http = _Server(("127.0.0.1", 0), handler)
        self.http.owner = self
        self.thread = threading.Thread(target=self.http.serve_forever, daemon=True)

    @property
    def url(self) -> str:
        return f"http://127.0.0.1:{self.http.server_port}"

    def __enter__(self):
        self.thread.start()
        return self

    def __exit__(self, *_):
        self.released.set()
        self.http.shutdown()
        self.http.server_close()
        self.thread.join()
