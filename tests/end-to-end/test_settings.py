#!/usr/bin/env python3
"""The settings window, driven through the accessibility tree and the keyboard as by a user: keys go into a real keyring,
tests go to a local server, and every change is in force at once."""
import pathlib
import subprocess
import threading
import urllib.parse
import xml.etree.ElementTree

import chat_server
from chat_server import ChatServer
from case import OnADisplay
from screen import eventually

HERE = pathlib.Path(__file__).parent
TITLE = "(Settings|設定|设置|설정)$"
ENGINES = ["On This Computer", "Google Translate", "Microsoft Azure Translator", "Gemini", "DeepL", "OpenAI", "Claude",
           "Compatible API"]
COMPATIBLE = 7
KEY = "sk-secret-5Z"


def echo_the_key(server: ChatServer, _body: dict):
    """Refuses the key and repeats it, as some services do."""
    return 401, {"error": {"message": f"Wrong key: {server.requests[-1][1]['Authorization']}"}}


def translations(code: str) -> dict[str, str]:
    """A language's texts by their keys."""
    table = HERE.parents[1] / "resources" / "i18n" / f"lucentra_{code}.ts"
    messages = xml.etree.ElementTree.parse(table).iter("message")
    return {message.findtext("source"): message.findtext("translation") for message in messages}


class SettingsWindow(OnADisplay):
    options = {"composited": False}

    @staticmethod
    def translate(text: str) -> str:
        return f"«{text}»"

    def setUp(self):
        super().setUp()
        self.screen.preferences = {"compatibleBaseURL": self.server.base_url, "targetLanguageFollowsInterface": False,
                                   "triggerMode": 1}
        self.start()

    def start(self) -> None:
        self.process = self.screen.start_program()
        self.screen.wait_for_name("com.tarnby.lucentra")

    # What a user does

    def open(self, tab: str = "") -> None:
        self.assertEqual(self.screen.lucentra("settings").returncode, 0)
        self.screen.must(self.windows, "the settings window")
        if tab:
            self.screen.must(lambda: self.screen.accessibility("tab", tab)[0] == 0, f"the tab {tab}")

    def windows(self) -> list[str]:
        return self.screen.windows("--name", TITLE)

    def focus(self, name: str) -> None:
        self.screen.must(lambda: self.screen.accessibility("focus", name)[0] == 0, f"the control {name}")
        self.screen.must(lambda: "focused" in self.states(name), f"the focus on {name}")

    def states(self, name: str) -> list[str]:
        return self.screen.accessibility("states", name)[1].split()

    def choose(self, picker: str, index: int) -> None:
        windows = lambda: len(self.screen.windows("--class", "lucentra"))  # noqa: E731
        before = windows()
        self.screen.must(lambda: self.screen.accessibility("open", picker)[0] == 0, f"the picker {picker}")
        self.screen.must(lambda: windows() > before, f"the list of {picker}")
        self.screen.do("sleep 0.1 key Home" + " key Down" * index + " key Return")

    def choose_engine(self, number: int) -> None:
        self.choose("Engine", number)
        self.assertTrue(eventually(lambda: self.screen.preferences.get("translationEngine", 0) == number))

    def type_key(self, key: str) -> None:
        self.focus("API Key")
        self.screen.do("key ctrl+a key BackSpace")
        if key:
            self.screen.do(f"type --delay 20 {key}")

    def expect_no_text(self, part: str) -> None:
        self.assertTrue(eventually(lambda: not any(part in text for text in self.screen.texts())), part)

    def expect_test_possible(self, possible: bool) -> None:
        self.assertTrue(eventually(lambda: ("enabled" in self.states("Test Connection")) == possible),
                        f"the test isn't {possible=}")

    def expect_stored(self, key: str, value) -> None:
        self.assertTrue(eventually(lambda: self.screen.preferences.get(key) == value), (key, self.screen.preferences))


class EnginesAndKeys(SettingsWindow):
    def test_each_engine_has_its_section(self):
        self.open("Translation")
        sections = ["Built-in Translation", "Google Translate", "Microsoft Azure", "Gemini AI", "DeepL", "OpenAI",
                    "Claude", "Compatible API"]
        accounts = [None, "googleApiKey", "microsoftApiKey", "geminiApiKey", "deeplApiKey", "openAIApiKey",
                    "anthropicApiKey", "compatibleApiKey"]
        for number, (section, account) in enumerate(zip(sections, accounts)):
            self.choose_engine(number)
            texts = eventually(lambda: section in (shown := self.screen.texts()) and shown)
            # The on-device engine alone needs neither a key nor consent.
            for part in ("API Key", "Allow text"):
                self.assertEqual(any(part in text for text in texts), number > 0, section)
            if account:
                self.type_key(f"key-of-{account}")
                self.assertTrue(eventually(lambda: self.screen.secret(account) == f"key-of-{account}"), section)
        self.assertNotIn("key-of", self.screen.preferences_path.read_text() + self.screen.log())
        self.choose_engine(0)
        self.expect_test_possible(True)

    def test_a_key_goes_into_the_keyring_and_nowhere_else(self):
        self.open("Translation")
        self.choose_engine(COMPATIBLE)
        self.shows("without an API key")
        listener = self.screen.start(["/usr/bin/python3", str(HERE / "told.py")], stdout=subprocess.PIPE, text=True)
        self.assertEqual(listener.stdout.readline(), "listening\n")
        self.type_key(KEY)
        self.assertTrue(eventually(lambda: self.screen.secret("compatibleApiKey") == KEY))
        self.expect_no_text("without an API key")
        self.screen.press("Show the API key")
        self.screen.do("sleep 0.5 key End key x sleep 0.3 key BackSpace sleep 0.5")
        self.assertTrue(eventually(lambda: self.screen.secret("compatibleApiKey") == KEY))
        for text in (self.screen.preferences_path.read_text(), self.screen.log(), *self.screen.texts(),
                     self.screen.accessibility("value", "API Key")[1]):
            self.assertNotIn(KEY, text)
        # The window forgets it when it is closed, and finds it again.
        self.screen.do("key ctrl+w")
        self.assertTrue(eventually(lambda: not self.windows()))
        self.open()
        self.expect_no_text("without an API key")
        listener.terminate()
        told = [line.rstrip("\n").split("\t")[1] for line in listener.stdout if line.startswith("password text")]
        self.assertGreater(len(told), len(KEY))
        self.assertEqual(set("".join(told)), {"•"}, told)
        self.type_key("")
        self.assertTrue(eventually(lambda: self.screen.secret("compatibleApiKey") is None))
        self.shows("without an API key")

    def test_the_connection(self):
        self.open("Translation")
        self.choose_engine(COMPATIBLE)
        self.type_key("k")
        self.expect_test_possible(False)
        self.screen.press("Allow text to be sent to the compatible API that you have set up")
        self.expect_stored("privacy.remoteTranslation.v1.engine.7", True)
        self.expect_test_possible(True)
        self.screen.press("Test Connection")
        self.shows("Connection succeeded: «This is a connection test.»")
        self.assertEqual(self.server.requests[0][1]["Authorization"], "Bearer k")
        self.server.translate = str.upper
        self.screen.press("Test Connection")
        self.shows("no usable translation")
        # What a server says of the key, it says to nobody else.
        self.type_key("echo-Secret-12345")
        self.assertTrue(eventually(lambda: self.screen.secret("compatibleApiKey") == "echo-Secret-12345"))
        self.server.queued = [echo_the_key] * 8
        self.screen.press("Test Connection")
        self.shows("Wrong key")
        for text in (*self.screen.texts(), self.screen.log()):
            self.assertNotIn("echo-Secret", text)
        self.server.queued.clear()
        # The answer of an engine that is no longer chosen counts for nothing.
        self.server.translate = lambda text: "belated"
        may_answer = threading.Event()
        self.server.queued = [lambda *asked: may_answer.wait(90) and chat_server.by_id(*asked)]
        asked = len(self.server.requests)
        self.screen.press("Test Connection")
        self.assertTrue(eventually(lambda: len(self.server.requests) > asked))
        self.expect_test_possible(False)
        self.choose_engine(4)
        self.choose_engine(COMPATIBLE)
        may_answer.set()
        self.screen.do("sleep 1")
        self.assertFalse(any("belated" in text for text in self.screen.texts()))
        # Closing the window while a test hangs is safe.
        self.server.queued = [chat_server.hang]
        self.screen.press("Test Connection")
        self.assertTrue(eventually(lambda: len(self.server.requests) > asked + 1))
        self.shows("Testing the connection…")
        self.expect_test_possible(False)
        self.screen.do("key ctrl+w")
        self.assertTrue(eventually(lambda: not self.windows()))
        self.open()
        self.assertIsNone(self.process.poll())


class WithALockedKeyring(SettingsWindow):
    def keyring_tool(self, *arguments: str) -> None:
        subprocess.run(["/usr/bin/python3", str(HERE / "keyring.py"), *arguments], env=self.screen.environment, check=True)

    def test_it_is_said_and_made_good(self):
        self.open("Translation")
        self.choose_engine(4)
        self.type_key("first")
        self.assertTrue(eventually(lambda: self.screen.secret("deeplApiKey") == "first"))
        self.keyring_tool("lock")
        self.type_key("second")
        self.shows("The keyring is locked")
        self.keyring_tool("unlock", "test")
        self.come_back()
        self.assertTrue(eventually(lambda: self.screen.secret("deeplApiKey") == "second"))
        self.expect_no_text("The keyring is locked")

    def come_back(self) -> None:
        """From another window, as from the question for the password."""
        other = self.screen.start(["xev", "-name", "other"], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        window = self.screen.must(lambda: self.screen.windows("--name", "^other$"), "the other window")[0]
        self.screen.do(f"windowactivate --sync {window} sleep 0.5")
        self.screen.stop(other)
        self.screen.do(f"windowactivate --sync {self.screen.must(self.windows, 'the settings window')[0]}")


class TheRest(SettingsWindow):
    def test_every_label_follows_the_language(self):
        self.open("General")
        self.screen.press("Start at login")
        autostart = self.screen.home / "config" / "autostart" / "com.tarnby.lucentra.desktop"
        self.assertTrue(eventually(autostart.exists))
        self.screen.press("Start at login")
        self.assertTrue(eventually(lambda: not autostart.exists()))
        self.screen.accessibility("tab", "Translation")
        self.screen.press("Follow the interface language")
        self.expect_stored("targetLanguageCode", "en")
        self.screen.accessibility("tab", "General")
        english = translations("en")
        for index, code in enumerate(["zh-Hant", "zh-Hans", "en", "ja", "ko"], 1):
            table = {key: key for key in english} | translations(code)
            if index > 1:
                self.screen.must(lambda: self.screen.accessibility("tab", before["一般"])[0] == 0, "the first tab")
            self.choose("Interface Language" if index == 1 else before["介面語言"], index)
            self.expect_stored("appLanguage", code)
            self.expect_stored("targetLanguageCode", code)
            self.assertTrue(eventually(lambda: table["Lucentra｜澄鏡通 設定"] in self.screen.output(
                "xdotool", "getwindowname", self.windows()[0])), code)
            for tab in ("一般", "翻譯", "外觀", "快捷鍵", "關於"):
                self.screen.must(lambda: self.screen.accessibility("tab", table[tab])[0] == 0, f"the tab {table[tab]}")
                self.expect_texts_of(table, code)
            before = table

    def expect_texts_of(self, table: dict[str, str], code: str) -> None:
        """Nothing that is shown is the text of another language."""
        others = [translations(other) for other in ("zh-Hans", "en", "ja", "ko") if other != code]
        foreign = {text for other in others for text in other.values()} - set(table.values())
        # Languages are called as their speakers call them, and the program has one name.
        foreign -= {"English", "繁體中文", "简体中文", "日本語", "한국어", "Lucentra｜澄鏡通"}
        shown: set[str] = set()

        def is_pure() -> bool:
            shown.clear()
            shown.update(self.screen.accessibility("names")[1].splitlines())
            return not shown & foreign
        self.assertTrue(eventually(is_pure), f"{code}: {shown & foreign}")
        self.assertTrue(shown & set(table.values()))

    def test_a_recorded_hotkey_works(self):
        self.open("Shortcuts")
        self.screen.press("Show or hide the pane:")
        self.screen.do("sleep 0.5 key ctrl+alt+k")
        self.expect_stored("hotkeyString", "⌃⌥K")
        panes = lambda: self.screen.windows("--name", "澄鏡通$")  # noqa: E731
        self.assertTrue(eventually(panes))
        self.screen.do("sleep 0.3 key ctrl+alt+k")
        self.assertTrue(eventually(lambda: not panes()), self.screen.log())
        self.shows("Ctrl+Alt+K")  # as the keyboards here name it

    def test_its_links(self):
        """The page of the interface language, by the keyboard."""
        opened = self.screen.home / "opened"
        self.screen.stop(self.process)
        programs = self.screen.home / "bin"
        programs.mkdir()
        (programs / "xdg-open").write_text(f'#!/bin/sh\necho "$1" >> "{opened}"\n')
        (programs / "xdg-open").chmod(0o700)
        self.screen.environment["PATH"] = f"{programs}:{self.screen.environment['PATH']}"
        self.screen.preferences = self.screen.preferences | {"appLanguage": "ja", "translationEngine": 4}
        self.start()
        self.open("翻訳")
        self.focus("DeepL へのテキストの送信を許可")
        self.screen.do("key Tab key Return")
        address = lambda: opened.exists() and opened.read_text()  # noqa: E731
        self.assertTrue(eventually(address), "no page was opened")
        page = pathlib.Path(urllib.parse.unquote(address().strip().removeprefix("file://")))
        self.assertEqual(page.name, "privacy_ja.html")
        self.assertIn('lang="ja"', page.read_text(encoding="utf-8"))

    def test_it_opens_from_the_pane_and_stays_one(self):
        self.screen.press("Settings")
        self.screen.must(self.windows, "the settings window")
        self.open("General")
        self.assertEqual(len(self.windows()), 1)
        # A screen reader reads from the top to the bottom.
        names = self.screen.accessibility("names")[1].splitlines()
        names = names[names.index("Lucentra Settings"):]
        places = [names.index(name) for name in ("Edit", "Appearance", "Interface Language", "Start at login")]
        self.assertEqual(places, sorted(places), names)
        pane = self.screen.windows("--name", "澄鏡通$")[0]
        skips = lambda: "SKIP_TASKBAR" in self.screen.output("xprop", "-id", pane, "_NET_WM_STATE")  # noqa: E731
        self.assertFalse(skips())
        self.screen.press("Show in the taskbar")
        self.assertTrue(eventually(skips))
        self.assertTrue(eventually(lambda: "Settings" in self.screen.output("xdotool", "getactivewindow", "getwindowname")))
        self.screen.press("Show in the taskbar")
        self.assertTrue(eventually(lambda: not skips()))


class BesidesTheForm(SettingsWindow):
    """With a tray."""

    def start(self) -> None:
        self.tray = self.screen.start_tray()
        super().start()

    def test_menus_and_open_windows_follow_the_language(self):
        item = self.screen.item_in(self.tray)
        self.assertEqual(self.screen.lucentra("history").returncode, 0)
        self.open("General")
        table = translations("en")
        for index, code in ((4, "ja"), (5, "ko")):
            self.choose(table["介面語言"], index)
            self.expect_stored("appLanguage", code)
            table = translations(code)
            for title in ("翻譯歷史紀錄", "Lucentra｜澄鏡通 設定"):
                self.assertTrue(eventually(lambda: self.screen.windows("--name", f"^{table[title]}$")), table[title])
            menu = self.screen.output("/usr/bin/python3", str(HERE / "status_menu.py"), item, "titles").splitlines()
            self.assertEqual([line.split("\t")[0] for line in menu],
                             [table[key] for key in ("顯示/隱藏 翻譯板", "翻譯目前區域", "即時翻譯", "翻譯歷史紀錄", "設定…", "結束 Lucentra｜澄鏡通")])
            shown = set(self.screen.texts())  # of the pane, the history and its menu bar too
            for key in ("切換到手動輸入", "搜尋紀錄...", "編輯"):
                self.assertTrue(any(table[key] in text for text in shown), (table[key], shown))
