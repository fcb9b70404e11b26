"""Drives a headless chromium: loads a page, returns its two pictures (with text and without) and its pieces of text."""
import base64
import io
import json
import os
import shutil
import signal
import subprocess
import tempfile
import time
import urllib.request

import numpy as np
import websocket
from PIL import Image

# Text is made invisible, its outline and shadow are kept: the difference of the two pictures is the fill of the letters.
HIDE = """*,*::before,*::after,*::placeholder{-webkit-text-fill-color:transparent!important;transition:none!important;
animation:none!important;caret-color:transparent!important}.gradient{background:none!important}"""

# Runs in the page. For each run of one script: block, left, top, right, bottom, script, fill colour, whether it is more
# than white space, how much of its height clipping leaves, text, font size, paragraph: the block between two line breaks,
# or 0 where the author breaks the lines.
# Boxes are cut to what clipping ancestors leave; covered ones are left out. Underlines get a colour of their own first.
PIECES = r"""(() => {
const runs = /[\u1100-\u11ff\u3130-\u318f\uac00-\ud7a3]+|[\u3041-\u3096\u30a1-\u30ff]+|[\u3005\u3400-\u9fff\uf900-\ufaff]+|[A-Za-z\u00c0-\u024f0-9]+|[^\u1100-\u11ff\u3130-\u318f\uac00-\ud7a3\u3041-\u3096\u30a1-\u30ff\u3005\u3400-\u9fff\uf900-\ufaffA-Za-z\u00c0-\u024f0-9]+/g;
const kind = c => /[\u1100-\u11ff\u3130-\u318f\uac00-\ud7a3]/.test(c) ? 3 : /[\u3041-\u3096\u30a1-\u30ff]/.test(c) ? 2 : /[\u3005\u3400-\u9fff\uf900-\ufaff]/.test(c) ? 1 : /[A-Za-z\u00c0-\u024f0-9]/.test(c) ? 0 : -1;
const blocks = new Map(), out = [], walker = document.createTreeWalker(document.body, NodeFilter.SHOW_TEXT | NodeFilter.SHOW_ELEMENT), range = document.createRange();
let breaks = 0;
const styles = new Map(), style = e => { let s = styles.get(e); if (!s) styles.set(e, s = getComputedStyle(e)); return s; };
for (let node; node = walker.nextNode();) {
  if (node.nodeType == 1) { breaks += node.tagName == 'BR'; continue; }
  if (!node.data.trim()) continue;
  const e = node.parentElement, s = style(e);
  if (s.visibility != 'visible' || s.display == 'none') continue;
  const clip = [0, 0, innerWidth, innerHeight]; let block = e, opacity = 1;
  for (let a = e; a && a != document.documentElement; a = a.parentElement) {
    opacity *= +style(a).opacity;
    if (style(a).overflowX != 'visible' && a != document.body) { const c = a.getBoundingClientRect();
      clip[0] = Math.max(clip[0], c.left); clip[1] = Math.max(clip[1], c.top); clip[2] = Math.min(clip[2], c.right); clip[3] = Math.min(clip[3], c.bottom); }
  }
  if (opacity < .3) continue;
  while (block.parentElement && !/block|flex|grid|cell|list-item/.test(style(block).display)) block = block.parentElement;
  if (!blocks.has(block)) blocks.set(block, blocks.size);
  const paragraph = s.whiteSpace.startsWith('pre') ? 0 : 1 + blocks.get(block) + 10000 * breaks;
  const fill = e.closest('.gradient') ? '' : s.webkitTextFillColor;
  range.selectNodeContents(node); const all = range.getBoundingClientRect();
  if (all.bottom < 0 || all.top > innerHeight || all.right < 0 || all.left > innerWidth) continue;
  for (const match of node.data.matchAll(runs)) {
    range.setStart(node, match.index); range.setEnd(node, match.index + match[0].length);
    const rects = [...range.getClientRects()], at = [];
    for (let i = match.index; rects.length > 1 && i < match.index + match[0].length; ++i) {
      range.setStart(node, i); range.setEnd(node, i + 1); const c = [...range.getClientRects()].pop(); at.push(c ? (c.top + c.bottom) / 2 : -1); }
    for (const r of rects) {
      const text = rects.length > 1 ? match[0].split('').filter((_, i) => at[i] > r.top && at[i] < r.bottom).join('') : match[0];
      const q = [Math.max(r.left, clip[0]), Math.max(r.top, clip[1]), Math.min(r.right, clip[2]), Math.min(r.bottom, clip[3])];
      if (q[2] - q[0] < .5 || q[3] - q[1] < 3) continue;
      const over = document.elementFromPoint((q[0] + q[2]) / 2, (q[1] + q[3]) / 2);
      if (over && !over.contains(e) && !e.contains(over)) continue;
      out.push([blocks.get(block), ...q, kind(match[0]), fill, match[0].trim() ? 1 : 0, (q[3] - q[1]) / (r.bottom - r.top), text, parseFloat(s.fontSize), paragraph]);
    }
  }
}
return out; })()"""
UNDERLINES = """for (const e of document.querySelectorAll('*')) { const s = getComputedStyle(e);
if (s.textDecorationLine != 'none') e.style.textDecorationColor = s.color; } document.documentElement.scrollHeight"""


class Browser:
    def __init__(self, environment, smooth_colours):
        self.folder = tempfile.mkdtemp(prefix="pages-")
        # As root, chromium would give itself a higher priority than it was started with.
        lower = ["setpriv", "--bounding-set=-sys_nice"] if os.geteuid() == 0 else []
        arguments = [*lower, "chromium-headless-shell", "--no-sandbox", "--disable-gpu", "--hide-scrollbars",
                     "--allow-file-access-from-files", "--disable-extensions", "--disable-background-networking",
                     "--remote-debugging-port=0", "--remote-allow-origins=*", f"--user-data-dir={self.folder}"]
        arguments += [] if smooth_colours else ["--disable-lcd-text"]
        self.process = subprocess.Popen([*arguments, "about:blank"], env=environment,
                                        stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, start_new_session=True)
        port_file = f"{self.folder}/DevToolsActivePort"
        deadline = time.time() + 120
        while not (os.path.exists(port_file) and "\n" in open(port_file).read()):
            if self.process.poll() is not None or time.time() > deadline:
                raise RuntimeError("chromium did not start")
            time.sleep(.2)
        port = open(port_file).readline().strip()
        with urllib.request.urlopen(f"http://127.0.0.1:{port}/json") as answer:
            target = next(t for t in json.load(answer) if t["type"] == "page")
        self.socket = websocket.create_connection(target["webSocketDebuggerUrl"], timeout=60)
        self.number = 0
        self.call("Page.enable")

    def close(self):
        # The whole group: the command is a script whose chromium would live on.
        os.killpg(self.process.pid, signal.SIGTERM)
        try:
            self.process.wait(20)
        finally:
            try:
                os.killpg(self.process.pid, signal.SIGKILL)
            except ProcessLookupError:
                pass
            self.process.wait()
        shutil.rmtree(self.folder, ignore_errors=True)

    def call(self, method, **parameters):
        self.number += 1
        self.socket.send(json.dumps({"id": self.number, "method": method, "params": parameters}))
        while True:
            answer = json.loads(self.socket.recv())
            if answer.get("id") == self.number:
                if "error" in answer:
                    raise RuntimeError(f"{method}: {answer['error']}")
                return answer["result"]

    def wait_for(self, event):
        while json.loads(self.socket.recv()).get("method") != event:
            pass

    def run(self, script):
        result = self.call("Runtime.evaluate", expression=script, returnByValue=True)
        if "exceptionDetails" in result:
            raise RuntimeError(str(result["exceptionDetails"])[:400])
        return result["result"].get("value")

    def picture(self):
        data = self.call("Page.captureScreenshot", format="png", optimizeForSpeed=True)["data"]
        return np.asarray(Image.open(io.BytesIO(base64.b64decode(data))).convert("RGB"))

    def open(self, address, width, height, scale):
        """Loads the page into a window of that many device pixels. Returns the page's height in device pixels."""
        self.scale = scale
        self.call("Emulation.setDeviceMetricsOverride", width=round(width / scale), height=round(height / scale),
                  deviceScaleFactor=scale, mobile=False)
        self.call("Page.navigate", url=address)
        self.wait_for("Page.loadEventFired")
        return self.run(UNDERLINES) * scale

    def style(self, text):
        return self.run(f"{{const s = document.createElement('style'); s.textContent = {json.dumps(text)};"
                        "document.documentElement.appendChild(s); s.id = 's' + document.querySelectorAll('style').length; s.id}")

    def shoot(self, scroll=0, twice=True):
        """Returns (picture with text, picture without if `twice`, pieces in device pixels)."""
        self.run(f"scrollTo(0, {scroll / self.scale})")
        pieces = [[p[0], *(v * self.scale for v in p[1:5]), *p[5:]] for p in self.run(PIECES)]
        shown = self.picture()
        if not twice:
            return shown, None, pieces
        name = self.style(HIDE)
        hidden = self.picture()
        self.run(f"document.getElementById('{name}').remove()")
        return shown, hidden, pieces
