<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="zh_TW">
<context>
    <name>Lucentra</name>
    <message>
        <source>%@ API URL 無效</source>
        <translation>The %@ API URL is invalid</translation>
    </message>
    <message>
        <source>%@ API 錯誤 %d：%@</source>
        <translation>%@ API error %d: %@</translation>
    </message>
    <message>
        <source>%@ 回應格式無法解析</source>
        <translation>The response of %@ could not be understood</translation>
    </message>
    <message>
        <source>%@・拖曳移動</source>
        <translation>%@ · Drag to move</translation>
    </message>
    <message>
        <source>%@：%@，共 %@</source>
        <translation>%@: %@ of %@</translation>
    </message>
    <message>
        <source>%d 個詞句</source>
        <translation>%d phrases</translation>
    </message>
    <message>
        <source>%d 個語言組合</source>
        <translation>%d language pairs</translation>
    </message>
    <message>
        <source>%d 分鐘前建立</source>
        <translation>built %d minutes ago</translation>
    </message>
    <message>
        <source>%d 天前建立</source>
        <translation>built %d days ago</translation>
    </message>
    <message>
        <source>%d 小時前建立</source>
        <translation>built %d hours ago</translation>
    </message>
    <message>
        <source>AI 翻譯</source>
        <translation>AI translation</translation>
    </message>
    <message>
        <source>API Base URL</source>
        <translation>API Base URL</translation>
    </message>
    <message>
        <source>API Key</source>
        <translation>API Key</translation>
    </message>
    <message>
        <source>API Key 或設定含有無法傳送的字元</source>
        <translation>The API key or a setting contains characters that cannot be sent</translation>
    </message>
    <message>
        <source>API Key 會安全存放於 macOS Keychain。</source>
        <translation>The API key is stored safely in the keyring of this computer.</translation>
    </message>
    <message>
        <source>API Key 為選填，若留空則使用免費版（有流量與請求頻率限制）。</source>
        <translation>The API key is optional. Without it, the free version is used (limited in volume and request rate).</translation>
    </message>
    <message>
        <source>Apple 內建翻譯</source>
        <translation>Built-in Translation</translation>
    </message>
    <message>
        <source>Apple 內建翻譯需升級至 macOS 15</source>
        <translation>Apple’s built-in translation requires macOS 15</translation>
    </message>
    <message>
        <source>Apple 翻譯</source>
        <translation>On This Computer</translation>
    </message>
    <message>
        <source>Apple 翻譯失敗</source>
        <translation>Apple translation failed</translation>
    </message>
    <message>
        <source>Azure 翻譯必須填寫 API Key 與對應的地區。</source>
        <translation>Azure translation needs an API key and its region.</translation>
    </message>
    <message>
        <source>Claude 設定</source>
        <translation>Claude</translation>
    </message>
    <message>
        <source>DeepL Free 與 Pro 金鑰皆可使用，App 會自動選擇對應端點。</source>
        <translation>API keys of DeepL Free and Pro both work; the matching endpoint is chosen automatically.</translation>
    </message>
    <message>
        <source>DeepL 設定</source>
        <translation>DeepL</translation>
    </message>
    <message>
        <source>English</source>
        <translation>English</translation>
    </message>
    <message>
        <source>Gemini AI 設定</source>
        <translation>Gemini AI</translation>
    </message>
    <message>
        <source>Gemini 翻譯必須填寫 API Key。</source>
        <translation>Gemini translation needs an API key.</translation>
    </message>
    <message>
        <source>Google 免費翻譯</source>
        <translation>Google Translate (free)</translation>
    </message>
    <message>
        <source>Google 翻譯</source>
        <translation>Google Translate</translation>
    </message>
    <message>
        <source>Google 翻譯設定</source>
        <translation>Google Translate</translation>
    </message>
    <message>
        <source>JSON Array parse error</source>
        <translation>Gemini’s translations are not valid JSON</translation>
    </message>
    <message>
        <source>JSON encode error</source>
        <translation>Could not write the text as JSON</translation>
    </message>
    <message>
        <source>Lucentra 在 Wayland 工作階段中需要 XWayland，但找不到它（沒有設定 DISPLAY）。</source>
        <translation>In a Wayland session Lucentra needs XWayland, which was not found (DISPLAY is not set).</translation>
    </message>
    <message>
        <source>Lucentra 沒有在執行。</source>
        <translation>Lucentra is not running.</translation>
    </message>
    <message>
        <source>Lucentra 沒有執行這個指令。</source>
        <translation>Lucentra did not run this command.</translation>
    </message>
    <message>
        <source>Lucentra 無法啟動。</source>
        <translation>Lucentra could not be started.</translation>
    </message>
    <message>
        <source>Lucentra 的一部分無法載入，請重新安裝 Lucentra。（%@）</source>
        <translation>A part of Lucentra can't be loaded. Please install Lucentra again. (%@)</translation>
    </message>
    <message>
        <source>Lucentra 需要圖形桌面（沒有設定 DISPLAY）。</source>
        <translation>Lucentra needs a graphical desktop (DISPLAY is not set).</translation>
    </message>
    <message>
        <source>Lucentra：翻譯螢幕上的文字</source>
        <translation>Lucentra: translates the text on the screen</translation>
    </message>
    <message>
        <source>Lucentra｜澄鏡通</source>
        <translation>Lucentra｜澄鏡通</translation>
    </message>
    <message>
        <source>Lucentra｜澄鏡通 設定</source>
        <translation>Lucentra Settings</translation>
    </message>
    <message>
        <source>Microsoft Azure 翻譯</source>
        <translation>Microsoft Azure Translator</translation>
    </message>
    <message>
        <source>Microsoft Azure 設定</source>
        <translation>Microsoft Azure</translation>
    </message>
    <message>
        <source>OpenAI 相容 API</source>
        <translation>Compatible API</translation>
    </message>
    <message>
        <source>OpenAI 相容 API 設定</source>
        <translation>Compatible API</translation>
    </message>
    <message>
        <source>OpenAI 設定</source>
        <translation>OpenAI</translation>
    </message>
    <message>
        <source>Request prepare error</source>
        <translation>Could not prepare the network request</translation>
    </message>
    <message>
        <source>Response parse error</source>
        <translation>The response of Gemini could not be understood</translation>
    </message>
    <message>
        <source>Wayland 的圖層；合成器支援</source>
        <translation>layer surface of Wayland; the compositor offers it</translation>
    </message>
    <message>
        <source>X11 視窗</source>
        <translation>X11 window</translation>
    </message>
    <message>
        <source>X11 視窗（XWayland）；合成器不支援圖層</source>
        <translation>X11 window (XWayland); the compositor offers no layer surfaces</translation>
    </message>
    <message>
        <source>lucentra --help 列出所有指令</source>
        <translation>lucentra --help lists all commands</translation>
    </message>
    <message>
        <source>⚠️ API Key 為空，將無法進行翻譯！</source>
        <translation>⚠️ Nothing can be translated without an API key!</translation>
    </message>
    <message>
        <source>⚠️ 請先在翻譯設定中允許將文字傳送至 %@。</source>
        <translation>⚠️ First allow text to be sent to %@ in the translation settings.</translation>
    </message>
    <message>
        <source>⚠️ 請至設定填入相容 API Key</source>
        <translation>⚠️ Enter the API key of your compatible API in Settings</translation>
    </message>
    <message>
        <source>✓ 將使用 Google 免費版（有流量與請求頻率限制）</source>
        <translation>✓ Google’s free version will be used (limited in volume and request rate)</translation>
    </message>
    <message>
        <source>❌ API 回應格式錯誤或金鑰無效</source>
        <translation>❌ The API response is malformed or the API key is invalid</translation>
    </message>
    <message>
        <source>❌ Gemini API 錯誤 %d：%@</source>
        <translation>❌ Gemini API error %d: %@</translation>
    </message>
    <message>
        <source>❌ 網路請求準備失敗</source>
        <translation>❌ Could not prepare the network request</translation>
    </message>
    <message>
        <source>❌ 網路錯誤：%@</source>
        <translation>❌ Network error: %@</translation>
    </message>
    <message>
        <source>❌ 翻譯失敗：%@</source>
        <translation>❌ Translation failed: %@</translation>
    </message>
    <message>
        <source>「!」標出 %d 個可以改善之處。</source>
        <translation>“!” marks what could be better: %d.</translation>
    </message>
    <message>
        <source>一般</source>
        <translation>General</translation>
    </message>
    <message>
        <source>下載 %@</source>
        <translation>Download %@</translation>
    </message>
    <message>
        <source>下載中斷。已下載的部分會保留，可以稍後繼續。</source>
        <translation>The download was interrupted. What has arrived is kept, so that you can continue later.</translation>
    </message>
    <message>
        <source>下載的檔案內容不符，已捨棄。</source>
        <translation>A downloaded file has the wrong content and was discarded.</translation>
    </message>
    <message>
        <source>下載的檔案大小不符，已捨棄。</source>
        <translation>A downloaded file has the wrong size and was discarded.</translation>
    </message>
    <message>
        <source>下載翻譯 PAIR（例如 en-ja）所需的模型；必要時經由英文</source>
        <translation>download the models that translate PAIR (such as en-ja), by way of English if needed</translation>
    </message>
    <message>
        <source>不支援的圖片格式</source>
        <translation>the picture format is not supported</translation>
    </message>
    <message>
        <source>不支援這種模型：%@</source>
        <translation>Models of this kind aren’t supported: %@</translation>
    </message>
    <message>
        <source>不是可辨識的圖片格式：%@</source>
        <translation>Not a picture in a known format: %@</translation>
    </message>
    <message>
        <source>不是語言組合：%@</source>
        <translation>Not a pair of languages: %@</translation>
    </message>
    <message>
        <source>介面語言</source>
        <translation>Interface Language</translation>
    </message>
    <message>
        <source>伺服器沒有這個語言的翻譯模型。</source>
        <translation>The server has no translation model for this language.</translation>
    </message>
    <message>
        <source>伺服器的回應不是有效的 HTTP 回應</source>
        <translation>The server’s response is not valid HTTP</translation>
    </message>
    <message>
        <source>伺服器的回應過大</source>
        <translation>The server’s response is too large</translation>
    </message>
    <message>
        <source>伺服器的安全憑證無效</source>
        <translation>The server’s security certificate is invalid</translation>
    </message>
    <message>
        <source>伺服器的模型清單無法使用。</source>
        <translation>The server's list of models can't be used.</translation>
    </message>
    <message>
        <source>使用第 N 個翻譯引擎（0 至 7），不改變設定</source>
        <translation>use engine N (0 to 7) this once</translation>
    </message>
    <message>
        <source>來源語言</source>
        <translation>Source language</translation>
    </message>
    <message>
        <source>停止即時翻譯</source>
        <translation>Stop live translation</translation>
    </message>
    <message>
        <source>停止輸入後自動翻譯</source>
        <translation>Translates when you stop typing</translation>
    </message>
    <message>
        <source>允許將文字傳送至 %@</source>
        <translation>Allow text to be sent to %@</translation>
    </message>
    <message>
        <source>全域快捷鍵</source>
        <translation>Global Shortcuts</translation>
    </message>
    <message>
        <source>全選</source>
        <translation>Select All</translation>
    </message>
    <message>
        <source>全部顯示</source>
        <translation>Show All</translation>
    </message>
    <message>
        <source>分享畫面…</source>
        <translation>Share the Screen…</translation>
    </message>
    <message>
        <source>分享的不是翻譯板所在的螢幕。請再試一次，並選擇翻譯板所在的螢幕。</source>
        <translation>The shared screen isn't the one with the pane. Please try again and choose the screen with the pane.</translation>
    </message>
    <message>
        <source>切換到手動輸入</source>
        <translation>Switch to Manual Input</translation>
    </message>
    <message>
        <source>切換回框選翻譯</source>
        <translation>Back to Area Translation</translation>
    </message>
    <message>
        <source>切換為框選翻譯</source>
        <translation>Switch to Area Translation</translation>
    </message>
    <message>
        <source>切換為框選翻譯 (當前:自動辨識)</source>
        <translation>Switch to Area Translation (now: Automatic Recognition)</translation>
    </message>
    <message>
        <source>切換為自動辨識</source>
        <translation>Switch to Automatic Recognition</translation>
    </message>
    <message>
        <source>切換為自動辨識 (當前:框選翻譯)</source>
        <translation>Switch to Automatic Recognition (now: Area Translation)</translation>
    </message>
    <message>
        <source>切換目標語言</source>
        <translation>Change Target Language</translation>
    </message>
    <message>
        <source>列出在這部電腦上翻譯的服務與語言</source>
        <translation>list what translates on this computer, and its languages</translation>
    </message>
    <message>
        <source>列出歷史紀錄</source>
        <translation>list the history</translation>
    </message>
    <message>
        <source>列出這部電腦上的環境、有什麼不對、如何改善；不含密鑰與擷取的文字</source>
        <translation>say what the program finds on this computer, what is wrong and how to mend it; no keys, no captured text</translation>
    </message>
    <message>
        <source>列出這部電腦上與伺服器提供的翻譯模型</source>
        <translation>list the translation models on this computer and on the server</translation>
    </message>
    <message>
        <source>刪除</source>
        <translation>Delete</translation>
    </message>
    <message>
        <source>刪除此筆翻譯</source>
        <translation>Delete this translation</translation>
    </message>
    <message>
        <source>剪下</source>
        <translation>Cut</translation>
    </message>
    <message>
        <source>加入桌面設定檔的一行：</source>
        <translation>Line for the desktop's configuration:</translation>
    </message>
    <message>
        <source>匯出的格式；未指定時依 FILE 的副檔名，否則為 csv</source>
        <translation>format of the export; by default the one that the suffix of FILE names, or else csv</translation>
    </message>
    <message>
        <source>匯出顯示的紀錄</source>
        <translation>Export the entries shown</translation>
    </message>
    <message>
        <source>即時翻譯</source>
        <translation>Live Translation</translation>
    </message>
    <message>
        <source>即時翻譯中</source>
        <translation>Translating live</translation>
    </message>
    <message>
        <source>即時翻譯（這個桌面擷取畫面時翻譯板會閃爍，無法使用）</source>
        <translation>Live Translation (not available: on this desktop the pane would blink)</translation>
    </message>
    <message>
        <source>即時翻譯：開</source>
        <translation>Live translation: on</translation>
    </message>
    <message>
        <source>即時翻譯：關</source>
        <translation>Live translation: off</translation>
    </message>
    <message>
        <source>原文</source>
        <translation>Source</translation>
    </message>
    <message>
        <source>取得翻譯模型…</source>
        <translation>Get a Translation Model…</translation>
    </message>
    <message>
        <source>取消下載</source>
        <translation>Cancel Download</translation>
    </message>
    <message>
        <source>取消收藏</source>
        <translation>Remove star</translation>
    </message>
    <message>
        <source>古典透白 (Classic White - 預設)</source>
        <translation>Classic White (Default)</translation>
    </message>
    <message>
        <source>另一個下載正在進行。</source>
        <translation>Another download is running.</translation>
    </message>
    <message>
        <source>只包含原文或譯文中有 TEXT 的紀錄</source>
        <translation>only entries with TEXT in their source or translation</translation>
    </message>
    <message>
        <source>只用 FOLDER 中的模型逐句翻譯標準輸入，每行一句</source>
        <translation>translate standard input by the model in FOLDER alone, one sentence per line</translation>
    </message>
    <message>
        <source>可以下載的翻譯模型：</source>
        <translation>Translation models that can be downloaded:</translation>
    </message>
    <message>
        <source>可以使用</source>
        <translation>works</translation>
    </message>
    <message>
        <source>可用性檢查</source>
        <translation>Availability</translation>
    </message>
    <message>
        <source>可連接 OpenRouter、Ollama 或其他支援 Chat Completions 的服務；非本機網址必須使用 HTTPS。</source>
        <translation>Connects to OpenRouter, Ollama or any other service with chat completions. Addresses on other computers must use HTTPS.</translation>
    </message>
    <message>
        <source>合成器</source>
        <translation>Compositor</translation>
    </message>
    <message>
        <source>合成器不允許擷取畫面。請安裝套件，而不是直接從原始碼執行。</source>
        <translation>The compositor doesn't allow pictures of the screen. Install the package instead of running the program from its sources.</translation>
    </message>
    <message>
        <source>同時輸出各階段所需的毫秒數</source>
        <translation>also print how many milliseconds each stage took</translation>
    </message>
    <message>
        <source>同時輸出每一行的譯文與位置</source>
        <translation>also print the translation and the place of every line</translation>
    </message>
    <message>
        <source>否</source>
        <translation>no</translation>
    </message>
    <message>
        <source>單字卡（以定位字元分隔）…</source>
        <translation>Flash cards (tab-separated)…</translation>
    </message>
    <message>
        <source>單擊玻璃板即可翻譯</source>
        <translation>Click the pane to translate</translation>
    </message>
    <message>
        <source>單擊翻譯</source>
        <translation>Click to translate</translation>
    </message>
    <message>
        <source>回應內容不是有效的 JSON</source>
        <translation>The response is not valid JSON</translation>
    </message>
    <message>
        <source>圖片已損壞或無法解碼：%@</source>
        <translation>The picture is damaged or cannot be decoded: %@</translation>
    </message>
    <message>
        <source>圖片檔案是空的：%@</source>
        <translation>The picture file is empty: %@</translation>
    </message>
    <message>
        <source>圖片過大（%d × %d 像素）：%@</source>
        <translation>The picture is too large (%d × %d pixels): %@</translation>
    </message>
    <message>
        <source>在下方 Dock 欄顯示圖示</source>
        <translation>Show in the taskbar</translation>
    </message>
    <message>
        <source>在桌面的設定中變更…</source>
        <translation>Change in the Desktop's Settings…</translation>
    </message>
    <message>
        <source>在歷史紀錄中開啟</source>
        <translation>Open in History</translation>
    </message>
    <message>
        <source>在這部電腦上翻譯</source>
        <translation>Translation on this computer</translation>
    </message>
    <message>
        <source>地區</source>
        <translation>Region</translation>
    </message>
    <message>
        <source>執行中的 Lucentra</source>
        <translation>Lucentra is running</translation>
    </message>
    <message>
        <source>外觀</source>
        <translation>Appearance</translation>
    </message>
    <message>
        <source>多餘的參數：%@</source>
        <translation>Unexpected argument: %@</translation>
    </message>
    <message>
        <source>失去焦點時自動隱藏玻璃板</source>
        <translation>Hide the pane when it loses focus</translation>
    </message>
    <message>
        <source>安裝這些套件也有幫助：%@</source>
        <translation>Installing these packages also helps: %@</translation>
    </message>
    <message>
        <source>將圖片寫入 OUT.png</source>
        <translation>write the picture to OUT.png</translation>
    </message>
    <message>
        <source>將屬於同一段落的各行合併</source>
        <translation>join the lines of a paragraph</translation>
    </message>
    <message>
        <source>將歷史紀錄匯出到 FILE；只讀取，不改變紀錄</source>
        <translation>export the history to FILE; the history itself is not changed</translation>
    </message>
    <message>
        <source>尚未下載完成</source>
        <translation>not complete yet</translation>
    </message>
    <message>
        <source>尚未建立</source>
        <translation>not there yet</translation>
    </message>
    <message>
        <source>尚未有任何翻譯紀錄</source>
        <translation>No translations yet</translation>
    </message>
    <message>
        <source>工作階段</source>
        <translation>Session</translation>
    </message>
    <message>
        <source>已刪除 %d 筆紀錄</source>
        <translation>%d entries deleted</translation>
    </message>
    <message>
        <source>已刪除 1 筆紀錄</source>
        <translation>1 entry deleted</translation>
    </message>
    <message>
        <source>已取消下載。</source>
        <translation>The download was cancelled.</translation>
    </message>
    <message>
        <source>已同意</source>
        <translation>consent given</translation>
    </message>
    <message>
        <source>已安裝此語言所需的翻譯模型。</source>
        <translation>The models for this language are installed.</translation>
    </message>
    <message>
        <source>已安裝的翻譯模型：%@</source>
        <translation>Installed translation models: %@</translation>
    </message>
    <message>
        <source>已安裝：%@</source>
        <translation>Installed: %@</translation>
    </message>
    <message>
        <source>已收藏</source>
        <translation>Starred</translation>
    </message>
    <message>
        <source>已清除未收藏的紀錄</source>
        <translation>Unstarred entries cleared</translation>
    </message>
    <message>
        <source>已移除：%@</source>
        <translation>Removed: %@</translation>
    </message>
    <message>
        <source>已經安裝最新的翻譯模型。</source>
        <translation>The newest models are installed already.</translation>
    </message>
    <message>
        <source>已複製</source>
        <translation>Copied</translation>
    </message>
    <message>
        <source>已複製原文</source>
        <translation>Source Copied</translation>
    </message>
    <message>
        <source>已複製翻譯</source>
        <translation>Translation Copied</translation>
    </message>
    <message>
        <source>已選用</source>
        <translation>chosen</translation>
    </message>
    <message>
        <source>引擎與語系</source>
        <translation>Engine and Languages</translation>
    </message>
    <message>
        <source>復原</source>
        <translation>Undo</translation>
    </message>
    <message>
        <source>快捷鍵</source>
        <translation>Shortcuts</translation>
    </message>
    <message>
        <source>快速鍵</source>
        <translation>Hotkeys</translation>
    </message>
    <message>
        <source>您目前選用 Apple 內建引擎，支援無限量免費離線翻譯。</source>
        <translation>You are using the built-in engine: free and unlimited translation that works offline.</translation>
    </message>
    <message>
        <source>您設定的相容 API 端點</source>
        <translation>the compatible API that you have set up</translation>
    </message>
    <message>
        <source>所選服務</source>
        <translation>the selected service</translation>
    </message>
    <message>
        <source>所需的翻譯模型：%@</source>
        <translation>Models needed: %@</translation>
    </message>
    <message>
        <source>手動翻譯（點擊或快捷鍵）</source>
        <translation>Manual (click or shortcut)</translation>
    </message>
    <message>
        <source>手動輸入</source>
        <translation>Manual Input</translation>
    </message>
    <message>
        <source>找不到伺服器，請檢查網路連線與網址</source>
        <translation>The server was not found. Check the network connection and the address</translation>
    </message>
    <message>
        <source>找不到可擷取的翻譯視窗，請確認螢幕錄影權限</source>
        <translation>The pane could not be captured. Check the screen recording permission</translation>
    </message>
    <message>
        <source>找不到工作階段匯流排（D-Bus），無法聯絡 Lucentra。</source>
        <translation>Could not reach Lucentra: there is no session bus (D-Bus).</translation>
    </message>
    <message>
        <source>找不到符合的紀錄</source>
        <translation>No matching entries</translation>
    </message>
    <message>
        <source>找不到翻譯視窗所在的顯示器</source>
        <translation>The display that shows the pane was not found</translation>
    </message>
    <message>
        <source>把這塊翻譯板拖到您看不懂的文字上。</source>
        <translation>Drag this pane over text that you can’t read.</translation>
    </message>
    <message>
        <source>按 %@ 可隨時顯示或隱藏翻譯板。</source>
        <translation>%@ shows and hides this pane from anywhere.</translation>
    </message>
    <message>
        <source>按住 Option，再按主鍵盤上的 Return（↩）鍵</source>
        <translation>Hold Alt, then press Return (↩) on the main keyboard</translation>
    </message>
    <message>
        <source>授權：%@</source>
        <translation>Licence: %@</translation>
    </message>
    <message>
        <source>搜尋紀錄...</source>
        <translation>Search history…</translation>
    </message>
    <message>
        <source>操作</source>
        <translation>Operation</translation>
    </message>
    <message>
        <source>操作模式</source>
        <translation>Mode</translation>
    </message>
    <message>
        <source>擷取畫面</source>
        <translation>Capture</translation>
    </message>
    <message>
        <source>收合</source>
        <translation>Show Less</translation>
    </message>
    <message>
        <source>收藏</source>
        <translation>Star</translation>
    </message>
    <message>
        <source>文字太多，有些行來不及辨識。請縮小翻譯板後再試一次。</source>
        <translation>There is too much text to read in time, so some lines were left out. Make the pane smaller, then try again.</translation>
    </message>
    <message>
        <source>文字已是目標語言。</source>
        <translation>The text is already in the target language.</translation>
    </message>
    <message>
        <source>文字辨識模型</source>
        <translation>Recognition models</translation>
    </message>
    <message>
        <source>日</source>
        <translation>日</translation>
    </message>
    <message>
        <source>日文</source>
        <translation>Japanese</translation>
    </message>
    <message>
        <source>是</source>
        <translation>yes</translation>
    </message>
    <message>
        <source>暫停記錄</source>
        <translation>Pause recording</translation>
    </message>
    <message>
        <source>最大化</source>
        <translation>Maximize</translation>
    </message>
    <message>
        <source>有 API Key</source>
        <translation>key stored</translation>
    </message>
    <message>
        <source>服務</source>
        <translation>Services</translation>
    </message>
    <message>
        <source>服務沒有回傳有效譯文，請檢查金鑰、模型與網路設定</source>
        <translation>The service returned no usable translation. Check the API key, the model and the network settings</translation>
    </message>
    <message>
        <source>未知的指令：%@</source>
        <translation>Unknown command: %@</translation>
    </message>
    <message>
        <source>未知的選項：%@</source>
        <translation>Unknown option: %@</translation>
    </message>
    <message>
        <source>未知錯誤</source>
        <translation>Unknown error</translation>
    </message>
    <message>
        <source>未設定</source>
        <translation>Not Set</translation>
    </message>
    <message>
        <source>柔和櫻粉 (Soft Pink)</source>
        <translation>Soft Pink</translation>
    </message>
    <message>
        <source>框選翻譯</source>
        <translation>Area Translation</translation>
    </message>
    <message>
        <source>桌面</source>
        <translation>Desktop</translation>
    </message>
    <message>
        <source>桌面沒有回答分享畫面的請求。請再試一次；如果仍然沒有反應，請重新登入。</source>
        <translation>The desktop didn't answer the request to share the screen. Please try again; if it still doesn't answer, log in again.</translation>
    </message>
    <message>
        <source>極簡無邊框 (No Border)</source>
        <translation>No Border</translation>
    </message>
    <message>
        <source>標準輸入不是 UTF-8 文字</source>
        <translation>The standard input is not UTF-8 text</translation>
    </message>
    <message>
        <source>標準輸入的文字過長</source>
        <translation>The text on the standard input is too long</translation>
    </message>
    <message>
        <source>模型伺服器回應錯誤：HTTP %d。</source>
        <translation>The model server reported an error: HTTP %d.</translation>
    </message>
    <message>
        <source>模型伺服器的網址必須使用 HTTPS。</source>
        <translation>The address of the model server must use HTTPS.</translation>
    </message>
    <message>
        <source>模型名稱</source>
        <translation>Model</translation>
    </message>
    <message>
        <source>模型名稱可依你的 Anthropic 帳號權限調整。</source>
        <translation>You can enter any model that your Anthropic account may use.</translation>
    </message>
    <message>
        <source>模型名稱可依你的 OpenAI 帳號權限調整。</source>
        <translation>You can enter any model that your OpenAI account may use.</translation>
    </message>
    <message>
        <source>模型的檔案已損壞：%@</source>
        <translation>The model’s files are damaged: %@</translation>
    </message>
    <message>
        <source>檔案</source>
        <translation>Files</translation>
    </message>
    <message>
        <source>正在取得模型清單…</source>
        <translation>Fetching the list of models…</translation>
    </message>
    <message>
        <source>正在收集這部電腦上的譯文…</source>
        <translation>Collecting the translations on this computer…</translation>
    </message>
    <message>
        <source>正在收集這部電腦上的譯文，請稍後再試。</source>
        <translation>The translations on this computer are still being collected. Try again in a moment.</translation>
    </message>
    <message>
        <source>正在測試連線…</source>
        <translation>Testing the connection…</translation>
    </message>
    <message>
        <source>正在辨識與翻譯</source>
        <translation>Recognizing and translating</translation>
    </message>
    <message>
        <source>歷史紀錄</source>
        <translation>History</translation>
    </message>
    <message>
        <source>段落</source>
        <translation>paragraphs</translation>
    </message>
    <message>
        <source>沒有</source>
        <translation>none</translation>
    </message>
    <message>
        <source>沒有偵測到文字</source>
        <translation>No text found</translation>
    </message>
    <message>
        <source>沒有分享螢幕，Lucentra 就看不到翻譯板下方的文字。按「分享畫面…」後，桌面會再問一次。</source>
        <translation>Without a shared screen, Lucentra can't see the text beneath the pane. With “Share the Screen…” the desktop asks again.</translation>
    </message>
    <message>
        <source>沒有可用的語言</source>
        <translation>No languages available</translation>
    </message>
    <message>
        <source>沒有可翻譯的文字</source>
        <translation>There is no text to translate</translation>
    </message>
    <message>
        <source>沒有合成器，翻譯板無法透明。請啟動一個，例如 picom。</source>
        <translation>There is no compositor, so that the pane can't be translucent. Start one, for example picom.</translation>
    </message>
    <message>
        <source>沒有安裝這個翻譯模型。</source>
        <translation>This translation model isn't installed.</translation>
    </message>
    <message>
        <source>沒有工作階段匯流排：快速鍵指令、鑰匙圈與狀態圖示都無法使用。請從桌面的工作階段啟動。</source>
        <translation>There is no session bus: commands, keyring and status item don't work. Start from a session of the desktop.</translation>
    </message>
    <message>
        <source>沒有發現問題。</source>
        <translation>No problem found.</translation>
    </message>
    <message>
        <source>沒有這些模型，就讀不到那些語言的文字。請安裝：%@</source>
        <translation>Without its model, a language can't be read on the screen. Install: %@</translation>
    </message>
    <message>
        <source>淡雅水藍 (Subtle Blue)</source>
        <translation>Subtle Blue</translation>
    </message>
    <message>
        <source>深色底、白字</source>
        <translation>Dark, white letters</translation>
    </message>
    <message>
        <source>淺色底、黑字</source>
        <translation>Light, dark letters</translation>
    </message>
    <message>
        <source>清除</source>
        <translation>Clear</translation>
    </message>
    <message>
        <source>清除搜尋</source>
        <translation>Clear search</translation>
    </message>
    <message>
        <source>清除未收藏</source>
        <translation>Clear Unstarred</translation>
    </message>
    <message>
        <source>測試會送出一小段範例文字；雲端服務可能計入極少量 API 用量。</source>
        <translation>The test sends one short sentence. Online services may count it as a very small use of the API.</translation>
    </message>
    <message>
        <source>測試翻譯引擎的連線</source>
        <translation>test the connection of the engine</translation>
    </message>
    <message>
        <source>測試連線</source>
        <translation>Test Connection</translation>
    </message>
    <message>
        <source>為了讀取翻譯板下方的文字，桌面接下來會請您分享畫面；請選擇翻譯板所在的螢幕。</source>
        <translation>To read the text beneath the pane, the desktop will now ask you to share the screen; please choose the one with the pane.</translation>
    </message>
    <message>
        <source>無法使用</source>
        <translation>doesn't work</translation>
    </message>
    <message>
        <source>無法判斷文字的語言。</source>
        <translation>The language of the text could not be identified.</translation>
    </message>
    <message>
        <source>無法匯出：%@</source>
        <translation>Could not export: %@</translation>
    </message>
    <message>
        <source>無法寫入圖片 %@：%@</source>
        <translation>Could not write the picture %@: %@</translation>
    </message>
    <message>
        <source>無法寫入標準輸出</source>
        <translation>Could not write to the standard output</translation>
    </message>
    <message>
        <source>無法寫入模型資料夾：%@</source>
        <translation>The folder of models can't be written: %@</translation>
    </message>
    <message>
        <source>無法建立翻譯輸入</source>
        <translation>Could not prepare the text for translation</translation>
    </message>
    <message>
        <source>無法擷取畫面</source>
        <translation>Could not capture the screen</translation>
    </message>
    <message>
        <source>無法與伺服器建立安全連線</source>
        <translation>Could not make a secure connection to the server</translation>
    </message>
    <message>
        <source>無法讀取先前的翻譯紀錄，原檔案會保留在同一個資料夾中。</source>
        <translation>The earlier history could not be read. Its file is kept in the same folder.</translation>
    </message>
    <message>
        <source>無法讀取圖片 %@：%@</source>
        <translation>Could not read the picture %@: %@</translation>
    </message>
    <message>
        <source>無法讀取或寫入這個檔案。請檢查它的擁有者與權限。</source>
        <translation>This file can't be read or written. Check its owner and permissions.</translation>
    </message>
    <message>
        <source>無法讀取標準輸入</source>
        <translation>Could not read the standard input</translation>
    </message>
    <message>
        <source>無法讀取翻譯紀錄：%@</source>
        <translation>Could not read the history: %@</translation>
    </message>
    <message>
        <source>無法透過代理伺服器連線</source>
        <translation>Could not connect through the proxy server</translation>
    </message>
    <message>
        <source>無法連線到 X 伺服器（DISPLAY）。</source>
        <translation>There is no connection to the X server (DISPLAY).</translation>
    </message>
    <message>
        <source>無法連線到伺服器</source>
        <translation>Could not connect to the server</translation>
    </message>
    <message>
        <source>版本</source>
        <translation>Versions</translation>
    </message>
    <message>
        <source>狀態圖示</source>
        <translation>Status item</translation>
    </message>
    <message>
        <source>玻璃板樣式</source>
        <translation>Pane</translation>
    </message>
    <message>
        <source>玻璃色調</source>
        <translation>Tone of the glass</translation>
    </message>
    <message>
        <source>玻璃透明度：%d%%</source>
        <translation>Opacity of the glass: %d%%</translation>
    </message>
    <message>
        <source>由桌面的快捷鍵呼叫 Lucentra</source>
        <translation>Let the desktop's shortcuts call Lucentra</translation>
    </message>
    <message>
        <source>由系統安裝</source>
        <translation>from the system</translation>
    </message>
    <message>
        <source>畫面分享中斷了。請再試一次。</source>
        <translation>The screen sharing was interrupted. Please try again.</translation>
    </message>
    <message>
        <source>目標語言</source>
        <translation>Target Language</translation>
    </message>
    <message>
        <source>目標語言：%@</source>
        <translation>Target language: %@</translation>
    </message>
    <message>
        <source>相容 API</source>
        <translation>Compatible API</translation>
    </message>
    <message>
        <source>相容 API URL 必須使用 HTTPS；本機 localhost 可使用 HTTP</source>
        <translation>The compatible API URL must use HTTPS; localhost may use HTTP</translation>
    </message>
    <message>
        <source>相容 API URL 無效</source>
        <translation>The compatible API URL is invalid</translation>
    </message>
    <message>
        <source>知道了</source>
        <translation>Got It</translation>
    </message>
    <message>
        <source>磁碟空間不足：還需要 %@。</source>
        <translation>There isn't enough space on the disk: %@ are needed.</translation>
    </message>
    <message>
        <source>移動或縮放後自動翻譯・%@</source>
        <translation>Translates after moving or resizing · %@</translation>
    </message>
    <message>
        <source>移除</source>
        <translation>Remove</translation>
    </message>
    <message>
        <source>移除 %@</source>
        <translation>Remove %@</translation>
    </message>
    <message>
        <source>移除 PAIR 的模型</source>
        <translation>remove the model of PAIR</translation>
    </message>
    <message>
        <source>稍後</source>
        <translation>Later</translation>
    </message>
    <message>
        <source>简</source>
        <translation>简</translation>
    </message>
    <message>
        <source>簡體中文</source>
        <translation>Simplified Chinese</translation>
    </message>
    <message>
        <source>系統</source>
        <translation>System</translation>
    </message>
    <message>
        <source>系統不接受這個組合鍵，可能已有其他程式使用。請改用別的組合鍵。</source>
        <translation>The system refused this shortcut. Another program may be using it. Choose a different one.</translation>
    </message>
    <message>
        <source>系統沒有回傳擷取畫面</source>
        <translation>The system returned no picture of the screen</translation>
    </message>
    <message>
        <source>系統行為</source>
        <translation>Behavior</translation>
    </message>
    <message>
        <source>約 %@</source>
        <translation>about %@</translation>
    </message>
    <message>
        <source>結束 Lucentra｜澄鏡通</source>
        <translation>Quit Lucentra</translation>
    </message>
    <message>
        <source>結束執行中的 Lucentra</source>
        <translation>quit the running Lucentra</translation>
    </message>
    <message>
        <source>網路連線發生錯誤</source>
        <translation>A network error occurred</translation>
    </message>
    <message>
        <source>編輯</source>
        <translation>Edit</translation>
    </message>
    <message>
        <source>縮小</source>
        <translation>Minimize</translation>
    </message>
    <message>
        <source>繁</source>
        <translation>繁</translation>
    </message>
    <message>
        <source>繁體中文</source>
        <translation>Traditional Chinese</translation>
    </message>
    <message>
        <source>繁體中文由 %@ 與簡體中文互相轉換。</source>
        <translation>Traditional Chinese is converted from and into Simplified Chinese by %@.</translation>
    </message>
    <message>
        <source>繼續下載 %@</source>
        <translation>Continue %@</translation>
    </message>
    <message>
        <source>缺少參數：%@</source>
        <translation>Missing argument: %@</translation>
    </message>
    <message>
        <source>缺少指令</source>
        <translation>Missing command</translation>
    </message>
    <message>
        <source>翻譯</source>
        <translation>Translation</translation>
    </message>
    <message>
        <source>翻譯一段文字；含漢字的文字一律譯成英文。TEXT 為 - 時讀取標準輸入</source>
        <translation>translate a text (- reads the standard input); one with Chinese characters is translated into English</translation>
    </message>
    <message>
        <source>翻譯中</source>
        <translation>Translating</translation>
    </message>
    <message>
        <source>翻譯原文</source>
        <translation>Text to translate</translation>
    </message>
    <message>
        <source>翻譯單位</source>
        <translation>Translate</translation>
    </message>
    <message>
        <source>翻譯圖片中的文字，將譯文畫在原文之上</source>
        <translation>translate the text in a picture and draw each translation over its line</translation>
    </message>
    <message>
        <source>翻譯失敗</source>
        <translation>Translation failed</translation>
    </message>
    <message>
        <source>翻譯完成後自動複製到剪貼簿</source>
        <translation>Copy each finished translation to the clipboard</translation>
    </message>
    <message>
        <source>翻譯引擎</source>
        <translation>Engine</translation>
    </message>
    <message>
        <source>翻譯成 CODE 語言（例如 zh-Hant、en、ja），不改變設定</source>
        <translation>translate into the language CODE (for example zh-Hant, en or ja) this once</translation>
    </message>
    <message>
        <source>翻譯板</source>
        <translation>Pane</translation>
    </message>
    <message>
        <source>翻譯模型</source>
        <translation>Translation Models</translation>
    </message>
    <message>
        <source>翻譯模型能在這部電腦上翻譯任何文字。只有在您按下按鈕時才會下載；您的文字不會傳出。</source>
        <translation>Translation models translate any text on this computer. They are downloaded only when you press the button; your texts are never sent.</translation>
    </message>
    <message>
        <source>翻譯歷史紀錄</source>
        <translation>Translation History</translation>
    </message>
    <message>
        <source>翻譯目前區域</source>
        <translation>Translate Current Area</translation>
    </message>
    <message>
        <source>翻譯目前區域：</source>
        <translation>Translate the current area:</translation>
    </message>
    <message>
        <source>翻譯目前區域；翻譯板隱藏時先顯示</source>
        <translation>translate the current area; a hidden pane is shown first</translation>
    </message>
    <message>
        <source>翻譯紀錄檔案過大，只讀取了開頭的部分。</source>
        <translation>The history file is too large; only its first part was read.</translation>
    </message>
    <message>
        <source>翻譯結果會顯示在這裡</source>
        <translation>The translation appears here</translation>
    </message>
    <message>
        <source>自動模式會在移動或縮放後翻譯；手動模式移動只做對照，使用點擊、按鈕或快捷鍵才更新。</source>
        <translation>The automatic mode translates after the pane has been moved or resized. In the manual mode, only a click, the button or the shortcut translates.</translation>
    </message>
    <message>
        <source>自動調整文字大小</source>
        <translation>Fit the text size automatically</translation>
    </message>
    <message>
        <source>自動辨識</source>
        <translation>Automatic Recognition</translation>
    </message>
    <message>
        <source>自動辨識（移動或縮放後）</source>
        <translation>Automatic (after moving or resizing)</translation>
    </message>
    <message>
        <source>自動（依目標語言）</source>
        <translation>Automatic (by target language)</translation>
    </message>
    <message>
        <source>自訂文字大小：%d pt</source>
        <translation>Text size: %d pt</translation>
    </message>
    <message>
        <source>與伺服器的連線已中斷</source>
        <translation>The connection to the server was lost</translation>
    </message>
    <message>
        <source>英文</source>
        <translation>English</translation>
    </message>
    <message>
        <source>複製</source>
        <translation>Copy</translation>
    </message>
    <message>
        <source>複製全部翻譯</source>
        <translation>Copy All Translations</translation>
    </message>
    <message>
        <source>複製原文</source>
        <translation>Copy Source</translation>
    </message>
    <message>
        <source>複製翻譯</source>
        <translation>Copy Translation</translation>
    </message>
    <message>
        <source>複製翻譯結果</source>
        <translation>Copy Translation</translation>
    </message>
    <message>
        <source>複製這一段的翻譯</source>
        <translation>Copy Paragraph Translation</translation>
    </message>
    <message>
        <source>複製這一行的翻譯</source>
        <translation>Copy Line Translation</translation>
    </message>
    <message>
        <source>要求已取消</source>
        <translation>The request was cancelled</translation>
    </message>
    <message>
        <source>視窗</source>
        <translation>Window</translation>
    </message>
    <message>
        <source>視窗管理員</source>
        <translation>Window manager</translation>
    </message>
    <message>
        <source>記錄已暫停：新的翻譯不會加入歷史紀錄。</source>
        <translation>Recording is paused: new translations are not added to the history.</translation>
    </message>
    <message>
        <source>設定</source>
        <translation>Settings</translation>
    </message>
    <message>
        <source>設定…</source>
        <translation>Settings…</translation>
    </message>
    <message>
        <source>設定後，可在任何情境下呼叫/隱藏翻譯板。默認為 ⌥T。欲清除請按 ESC。</source>
        <translation>Shows or hides the pane from anywhere. The default is Alt+T. Press Esc to cancel.</translation>
    </message>
    <message>
        <source>試算表（CSV）…</source>
        <translation>Spreadsheet (CSV)…</translation>
    </message>
    <message>
        <source>語言</source>
        <translation>Languages</translation>
    </message>
    <message>
        <source>請參閱伺服器的說明</source>
        <translation>as the server's owner states it</translation>
    </message>
    <message>
        <source>請在「螢幕與系統錄音」清單中啟用 Lucentra。若清單尚未出現，請按左下角的「＋」加入 Lucentra.app，接著重新啟動 App。</source>
        <translation>Enable Lucentra in the “Screen &amp; System Audio Recording” list. If it is not in the list yet, click “＋” at the bottom left to add Lucentra.app, then restart Lucentra.</translation>
    </message>
    <message>
        <source>請在桌面的設定中，為指令 lucentra toggle 與 lucentra translate 設定快速鍵。</source>
        <translation>In the desktop's settings, give keys to the commands lucentra toggle and lucentra translate.</translation>
    </message>
    <message>
        <source>請在系統設定中啟用 Lucentra。若清單尚未出現，請按左下角的「＋」加入 Lucentra.app，接著重新啟動 App。</source>
        <translation>Enable Lucentra in System Settings. If it is not in the list yet, click “＋” at the bottom left to add Lucentra.app, then restart Lucentra.</translation>
    </message>
    <message>
        <source>請在設定的「翻譯」分頁同意傳送文字。</source>
        <translation>Allow text to be sent, in the settings' tab “Translation”.</translation>
    </message>
    <message>
        <source>請在設定的「翻譯」分頁輸入 API Key。</source>
        <translation>Enter the API key in the settings' tab “Translation”.</translation>
    </message>
    <message>
        <source>請將翻譯視窗完整放在同一個螢幕內再試一次</source>
        <translation>Place the whole pane on one display, then try again</translation>
    </message>
    <message>
        <source>請按下組合鍵... (按 ESC 取消)</source>
        <translation>Press a shortcut… (Esc to cancel)</translation>
    </message>
    <message>
        <source>請檢查 API Key、模型名稱與服務設定</source>
        <translation>Check the API key, the model name and the service settings</translation>
    </message>
    <message>
        <source>請至設定填入 %@ API Key</source>
        <translation>Enter your %@ API key in Settings</translation>
    </message>
    <message>
        <source>請至設定填入 Microsoft Azure API Key</source>
        <translation>Enter your Microsoft Azure API key in Settings</translation>
    </message>
    <message>
        <source>請調整玻璃板位置或大小，讓文字完整落在框內後再試一次。</source>
        <translation>Move or resize the pane so that the text is completely inside it, then try again.</translation>
    </message>
    <message>
        <source>譯文字型</source>
        <translation>Font of translations</translation>
    </message>
    <message>
        <source>譯文最多為原文的 X 倍長，以模型的單位計；預設為 2.0</source>
        <translation>a translation is at most X times as long as its source, in the model's units; 2.0 by default</translation>
    </message>
    <message>
        <source>讓譯文即時跟隨翻譯板下的畫面</source>
        <translation>Have translations follow what changes beneath the pane</translation>
    </message>
    <message>
        <source>貼上</source>
        <translation>Paste</translation>
    </message>
    <message>
        <source>資料傳送與隱私</source>
        <translation>Data and Privacy</translation>
    </message>
    <message>
        <source>資料夾裡沒有模型的這個檔案，或無法讀取：%@</source>
        <translation>The folder lacks this file of the model, or it can’t be read: %@</translation>
    </message>
    <message>
        <source>資料（JSON）…</source>
        <translation>Data (JSON)…</translation>
    </message>
    <message>
        <source>跟隨介面語言</source>
        <translation>Follow the interface language</translation>
    </message>
    <message>
        <source>跟隨系統</source>
        <translation>Same as System</translation>
    </message>
    <message>
        <source>輸入或貼上要翻譯的文字</source>
        <translation>Type or paste text to translate</translation>
    </message>
    <message>
        <source>辨識</source>
        <translation>Recognition</translation>
    </message>
    <message>
        <source>辨識圖片中的文字，逐行輸出為 JSON</source>
        <translation>print the lines of text in a picture as JSON</translation>
    </message>
    <message>
        <source>辨識或輸入的文字會傳送至 %@ 以產生翻譯；內容的處理方式受該服務的隱私政策約束。Lucentra 沒有中繼伺服器，也不會將副本傳給開發者。</source>
        <translation>Recognized or typed text is sent to %@ to be translated; how it is handled there is governed by that service’s privacy policy. Lucentra has no server in between and sends no copy to its developers.</translation>
    </message>
    <message>
        <source>逐行</source>
        <translation>line by line</translation>
    </message>
    <message>
        <source>逐行翻譯會切斷句子。若譯文不通順，請在設定的「翻譯」中把「翻譯單位」改為「段落」。</source>
        <translation>Line by line, sentences are cut apart. If translations make no sense, choose paragraphs: Settings, “Translation”, “Translate”.</translation>
    </message>
    <message>
        <source>這些翻譯模型無法使用，檔案可能已損壞：%@。請移除後重新下載。</source>
        <translation>These translation models can't be used; their files may be damaged: %@. Remove them and download them again.</translation>
    </message>
    <message>
        <source>這個 X 伺服器缺少擷取畫面所需的功能：%@</source>
        <translation>This X server lacks what is needed to capture the screen: %@</translation>
    </message>
    <message>
        <source>這個桌面不提供畫面分享。請安裝後重新登入：%@</source>
        <translation>This desktop offers no screen sharing. Install it and log in again: %@</translation>
    </message>
    <message>
        <source>這個桌面沒有系統匣。要再次顯示翻譯板，請再次啟動 Lucentra。</source>
        <translation>This desktop has no system tray. To show the pane again, start Lucentra again.</translation>
    </message>
    <message>
        <source>這個桌面沒有系統匣。要再次顯示翻譯板，請按 %@ 或再次啟動 Lucentra。</source>
        <translation>This desktop has no system tray. To show the pane again, press %@ or start Lucentra again.</translation>
    </message>
    <message>
        <source>這個系統的 dpkg 設定不會安裝譯文（path-exclude），請先更改設定。</source>
        <translation>The dpkg settings of this system leave translations out (path-exclude). Change them first.</translation>
    </message>
    <message>
        <source>這個翻譯模型由系統安裝，無法在這裡移除。</source>
        <translation>This translation model belongs to the system and can't be removed here.</translation>
    </message>
    <message>
        <source>這部電腦上的程式沒有這些文字的譯文。請改用其他翻譯引擎。</source>
        <translation>No program on this computer has a translation of this text. Use another translation engine.</translation>
    </message>
    <message>
        <source>這部電腦上的翻譯模型：</source>
        <translation>Translation models on this computer:</translation>
    </message>
    <message>
        <source>這部電腦可以翻譯：</source>
        <translation>This computer can translate:</translation>
    </message>
    <message>
        <source>這部電腦已經能翻譯程式的選單與訊息。網頁、遊戲等其他文字需要翻譯模型，下載一次即可離線使用。</source>
        <translation>This computer already translates menus and messages of programs. Other text, such as pages and games, needs a translation model. Once downloaded, it works offline.</translation>
    </message>
    <message>
        <source>這部電腦沒有鑰匙圈服務，無法保存 API Key。請安裝後重新登入：%@</source>
        <translation>This computer has no keyring service, so the API key cannot be saved. Install one and log in again: %@</translation>
    </message>
    <message>
        <source>這部電腦無法翻譯這種語言。請改用其他翻譯引擎。</source>
        <translation>This computer cannot translate this language. Use another translation engine.</translation>
    </message>
    <message>
        <source>這部電腦還沒有能翻譯這些文字的模型。請在設定的「翻譯」分頁下載：%@</source>
        <translation>This computer has no model for this text yet. Download it in the settings, on the Translation tab: %@</translation>
    </message>
    <message>
        <source>連線失敗：%@</source>
        <translation>Connection failed: %@</translation>
    </message>
    <message>
        <source>連線成功：%@</source>
        <translation>Connection succeeded: %@</translation>
    </message>
    <message>
        <source>連線逾時，請稍後再試</source>
        <translation>The connection timed out. Try again later</translation>
    </message>
    <message>
        <source>選項 %@ 不接受值</source>
        <translation>The option %@ takes no value</translation>
    </message>
    <message>
        <source>選項 %@ 的值無效：%@</source>
        <translation>Invalid value for the option %@: %@</translation>
    </message>
    <message>
        <source>選項 %@ 需要一個值</source>
        <translation>The option %@ needs a value</translation>
    </message>
    <message>
        <source>還原</source>
        <translation>Undo</translation>
    </message>
    <message>
        <source>邊框發光顏色：</source>
        <translation>Border glow:</translation>
    </message>
    <message>
        <source>重做</source>
        <translation>Redo</translation>
    </message>
    <message>
        <source>重新翻譯</source>
        <translation>Translate Again</translation>
    </message>
    <message>
        <source>重試</source>
        <translation>Retry</translation>
    </message>
    <message>
        <source>重試翻譯</source>
        <translation>Retry Translation</translation>
    </message>
    <message>
        <source>鑰匙圈</source>
        <translation>Keyring</translation>
    </message>
    <message>
        <source>鑰匙圈已鎖定。請在系統詢問時解鎖；API Key 會在下次嘗試時讀取或存入。</source>
        <translation>The keyring is locked. Unlock it when the system asks; the API key is read or saved with the next attempt.</translation>
    </message>
    <message>
        <source>鑰匙圈沒有回應，API Key 尚未讀取或存入。請稍後再試。</source>
        <translation>The keyring does not respond, so the API key could not be read or saved. Try again later.</translation>
    </message>
    <message>
        <source>開啟 / 停止即時翻譯：</source>
        <translation>Start or stop live translation:</translation>
    </message>
    <message>
        <source>開啟或停止即時翻譯</source>
        <translation>Start or stop live translation</translation>
    </message>
    <message>
        <source>開啟系統設定</source>
        <translation>Open System Settings</translation>
    </message>
    <message>
        <source>開啟翻譯歷史紀錄視窗</source>
        <translation>open the history window</translation>
    </message>
    <message>
        <source>開啟設定視窗</source>
        <translation>open the settings window</translation>
    </message>
    <message>
        <source>開機自動啟動</source>
        <translation>Start at login</translation>
    </message>
    <message>
        <source>閱讀隱私權政策</source>
        <translation>Read the privacy policy</translation>
    </message>
    <message>
        <source>關於</source>
        <translation>About</translation>
    </message>
    <message>
        <source>關於 Lucentra｜澄鏡通</source>
        <translation>About Lucentra</translation>
    </message>
    <message>
        <source>關閉</source>
        <translation>Close</translation>
    </message>
    <message>
        <source>隱藏 API Key</source>
        <translation>Hide the API key</translation>
    </message>
    <message>
        <source>隱藏 Lucentra</source>
        <translation>Hide Lucentra</translation>
    </message>
    <message>
        <source>隱藏其他項目</source>
        <translation>Hide Others</translation>
    </message>
    <message>
        <source>隱藏翻譯板</source>
        <translation>hide the pane</translation>
    </message>
    <message>
        <source>雙擊玻璃板即可翻譯</source>
        <translation>Double-click the pane to translate</translation>
    </message>
    <message>
        <source>雙擊翻譯</source>
        <translation>Double-click to translate</translation>
    </message>
    <message>
        <source>雙擊翻譯（建議）</source>
        <translation>Double-click to translate (recommended)</translation>
    </message>
    <message>
        <source>需要「螢幕錄影」權限</source>
        <translation>“Screen Recording” permission required</translation>
    </message>
    <message>
        <source>需要螢幕錄製權限</source>
        <translation>Screen recording permission required</translation>
    </message>
    <message>
        <source>韓文</source>
        <translation>Korean</translation>
    </message>
    <message>
        <source>顯示 / 隱藏翻譯視窗：</source>
        <translation>Show or hide the pane:</translation>
    </message>
    <message>
        <source>顯示 API Key</source>
        <translation>Show the API key</translation>
    </message>
    <message>
        <source>顯示/隱藏 翻譯板</source>
        <translation>Show/Hide Pane</translation>
    </message>
    <message>
        <source>顯示全部</source>
        <translation>Show All</translation>
    </message>
    <message>
        <source>顯示或隱藏翻譯板</source>
        <translation>show or hide the pane</translation>
    </message>
    <message>
        <source>顯示翻譯板</source>
        <translation>show the pane</translation>
    </message>
    <message>
        <source>點擊玻璃板</source>
        <translation>Click on the Pane</translation>
    </message>
</context>
</TS>
