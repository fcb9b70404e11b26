"""A local chat-completions server: answers every block by its id, or plays the answers that a test has queued."""
import json
import time

from local_server import Handler, LocalServer


class ChatHandler(Handler):
    def do_POST(self):
        server = self.server.owner
        body = json.loads(self.rfile.read(int(self.headers["Content-Length"])))
        server.requests.append((self.path, dict(self.headers), body))
        answer = server.queued.pop(0) if server.queued else server.answer
        status, reply = answer(server, body)
        if callable(reply):
            self.close_connection = True
            return reply(self)
        data = reply if isinstance(reply, bytes) else json.dumps(reply).encode()
        self.send_response(status)
        self.send_header("Content-Type", "application/json")
        self.send_header("Content-Length", str(len(data)))
        self.end_headers()
        self.wfile.write(data)


class ChatServer(LocalServer):
    """`requests` keeps what came in as (path, headers, body); `queued` holds functions that answer in its stead, each
    once, and `answer` one that always does. They return a status and a reply: bytes, what becomes JSON, or a function
    that writes to the handler's connection itself."""

    def __init__(self, translate=lambda text: f"«{text}»", answer=None):
        super().__init__(ChatHandler)
        self.translate = translate
        self.answer = answer or by_id
        self.requests: list[tuple[str, dict, dict]] = []
        self.queued: list = []

    @property
    def base_url(self) -> str:
        return f"{self.url}/v1"


def completion(content: str) -> dict:
    return {"choices": [{"message": {"role": "assistant", "content": content}}]}


def blocks_of(body: dict) -> list[dict]:
    return json.loads(body["messages"][1]["content"])


def by_id(server: ChatServer, body: dict):
    """Every block's translation under its id, or the translation of a typed text."""
    if "response_format" not in body:
        return 200, completion(server.translate(body["messages"][1]["content"]))
    translations = [{"id": block["id"], "text": server.translate(block["text"])} for block in blocks_of(body)]
    return 200, completion(json.dumps({"translations": translations}))


def too_many_requests(_server: ChatServer, _body: dict):
    return 429, {"error": {"message": "Slow down, please"}}


def hang(server: ChatServer, _body: dict):
    """Holds the connection until the server ends."""
    server.released.wait(90)
    return 200, {}


def pause(seconds: float):
    """Answers after a while."""
    def answer(server: ChatServer, body: dict):
        time.sleep(seconds)
        return by_id(server, body)
    return answer
