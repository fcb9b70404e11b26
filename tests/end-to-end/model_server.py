"""A local server of translation models: a list of records and packed files, with the faults that a test asks for."""
import hashlib
import json
import struct
import threading

from local_server import Handler, LocalServer

FILES = {"model": "model.{0}.intgemm.alphas.bin", "lex": "lex.50.50.{0}.s2t.bin", "vocab": "vocab.{0}.spm"}


def packed(content: bytes) -> bytes:
    """A frame of zstd whose blocks aren't compressed."""
    pieces = [content[i:i + 100_000] for i in range(0, len(content), 100_000)]
    blocks = [struct.pack("<I", len(piece) << 3 | (i == len(pieces) - 1))[:3] + piece for i, piece in enumerate(pieces)]
    return struct.pack("<IBI", 0xFD2FB528, 0xA0, len(content)) + b"".join(blocks)


def sha256(content: bytes) -> str:
    return hashlib.sha256(content).hexdigest()


class ModelHandler(Handler):
    def do_GET(self):
        server = self.server.owner
        server.requests.append((self.path, dict(self.headers)))
        fault = next((fault for part, fault in server.faults.items() if part in self.path), None)
        content = json.dumps({"data": server.records}).encode() if self.path == "/records" \
            else server.files.get(self.path.removeprefix("/files/"))
        if isinstance(fault, int) or content is None:
            return self.answer(fault or 404, b"no such file")
        if callable(fault):
            return self.answer(200, fault(content))
        first = int(self.headers.get("Range", "bytes=0-")[6:-1])
        self.answer(206 if first else 200, content[first:], fault)

    def answer(self, status: int, body: bytes, fault=None):
        self.send_response(status)
        self.send_header("Content-Length", str(len(body)))
        self.end_headers()
        self.wfile.write(body[:len(body) // 2] if fault else body)
        if fault == "stall":
            self.server.owner.stalled.set()
            self.server.owner.released.wait(60)
            self.wfile.write(body[len(body) // 2:])
        self.close_connection = fault == "cut"


class ModelServer(LocalServer):
    """`requests` keeps what came in as (path, headers). `faults` holds, by a part of the path, what is done instead: a
    status; a function from the packed bytes to others; or "cut" or "stall", after half of what was asked for. A
    stalled answer goes on when `released` is set."""

    def __init__(self):
        super().__init__(ModelHandler)
        self.records: list[dict] = []
        self.files: dict[str, bytes] = {}
        self.content: dict[str, bytes] = {}  # unpacked, by name
        self.requests: list[tuple[str, dict]] = []
        self.faults: dict = {}
        self.stalled = threading.Event()

    def offer(self, pair: str, architecture: str = "base", version: str = "2.0", size: int = 300_000, **changes) -> None:
        """One record per file; the content is made of the pair, the architecture and the version."""
        source, target = pair.split("-", 1)
        for kind, pattern in FILES.items():
            name = pattern.format(source + target)
            seed = f"{pair} {architecture} {version} {kind} ".encode()
            content = (seed * (size // len(seed) + 1))[:size]
            location = f"main/{version}/{architecture}/{name}.zst"
            self.content[f"{pair}/{name}"], self.files[location] = content, packed(content)
            self.records.append({
                "name": name, "sourceLanguage": source, "targetLanguage": target, "architecture": architecture,
                "version": version, "fileType": kind, "filter_expression": "", "last_modified": 1,
                "decompressedSize": size, "decompressedHash": sha256(content),
                "attachment": {"hash": sha256(packed(content)), "size": len(packed(content)), "filename": name + ".zst",
                               "location": location, "mimetype": "application/zstd"}} | changes)

    @property
    def preferences(self) -> dict:
        return {"modelRegistryURL": f"{self.url}/records", "modelFilesURL": f"{self.url}/files/"}
