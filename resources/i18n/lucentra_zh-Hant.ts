<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_TW" sourcelanguage="zh_TW">
<context>
    <name>Lucentra</name>
    <message>
        <source>API Key 會安全存放於 macOS Keychain。</source>
        <translation>API Key 會安全存放於這部電腦的鑰匙圈。</translation>
    </message>
    <message>
        <source>Apple 內建翻譯</source>
        <translation>本機內建翻譯</translation>
    </message>
    <message>
        <source>Apple 翻譯</source>
        <translation>本機翻譯</translation>
    </message>
    <message>
        <source>JSON Array parse error</source>
        <translation>Gemini 回傳的譯文不是有效的 JSON</translation>
    </message>
    <message>
        <source>JSON encode error</source>
        <translation>無法將文字寫成 JSON</translation>
    </message>
    <message>
        <source>Request prepare error</source>
        <translation>無法準備網路請求</translation>
    </message>
    <message>
        <source>Response parse error</source>
        <translation>無法解析 Gemini 的回應</translation>
    </message>
    <message>
        <source>在下方 Dock 欄顯示圖示</source>
        <translation>在工作列顯示圖示</translation>
    </message>
    <message>
        <source>您目前選用 Apple 內建引擎，支援無限量免費離線翻譯。</source>
        <translation>您目前選用本機內建引擎，支援無限量免費離線翻譯。</translation>
    </message>
    <message>
        <source>按住 Option，再按主鍵盤上的 Return（↩）鍵</source>
        <translation>按住 Alt，再按主鍵盤上的 Return（↩）鍵</translation>
    </message>
    <message>
        <source>縮小</source>
        <translation>最小化</translation>
    </message>
    <message>
        <source>設定後，可在任何情境下呼叫/隱藏翻譯板。默認為 ⌥T。欲清除請按 ESC。</source>
        <translation>設定後，可在任何情境下呼叫/隱藏翻譯板。預設為 Alt+T。欲取消請按 Esc。</translation>
    </message>
    <message>
        <source>還原</source>
        <translation>復原</translation>
    </message>
</context>
</TS>
