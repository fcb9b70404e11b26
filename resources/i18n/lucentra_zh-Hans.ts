<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="zh_TW">
<context>
    <name>Lucentra</name>
    <message>
        <source>%@ API URL 無效</source>
        <translation>%@ API URL 无效</translation>
    </message>
    <message>
        <source>%@ API 錯誤 %d：%@</source>
        <translation>%@ API 错误 %d：%@</translation>
    </message>
    <message>
        <source>%@ 回應格式無法解析</source>
        <translation>无法解析 %@ 的响应格式</translation>
    </message>
    <message>
        <source>%@・拖曳移動</source>
        <translation>%@・拖动可移动</translation>
    </message>
    <message>
        <source>%@：%@，共 %@</source>
        <translation>%@：%@，共 %@</translation>
    </message>
    <message>
        <source>%d 個詞句</source>
        <translation>%d 个词句</translation>
    </message>
    <message>
        <source>%d 個語言組合</source>
        <translation>%d 个语言组合</translation>
    </message>
    <message>
        <source>%d 分鐘前建立</source>
        <translation>%d 分钟前创建</translation>
    </message>
    <message>
        <source>%d 天前建立</source>
        <translation>%d 天前创建</translation>
    </message>
    <message>
        <source>%d 小時前建立</source>
        <translation>%d 小时前创建</translation>
    </message>
    <message>
        <source>AI 翻譯</source>
        <translation>AI 翻译</translation>
    </message>
    <message>
        <source>API Base URL</source>
        <translation>API 基础 URL</translation>
    </message>
    <message>
        <source>API Key</source>
        <translation>API 密钥</translation>
    </message>
    <message>
        <source>API Key 或設定含有無法傳送的字元</source>
        <translation>API 密钥或设置含有无法发送的字符</translation>
    </message>
    <message>
        <source>API Key 會安全存放於 macOS Keychain。</source>
        <translation>API 密钥会安全存放在这台电脑的密钥环中。</translation>
    </message>
    <message>
        <source>API Key 為選填，若留空則使用免費版（有流量與請求頻率限制）。</source>
        <translation>API 密钥为选填，留空则使用免费版（有流量和请求频率限制）。</translation>
    </message>
    <message>
        <source>Apple 內建翻譯</source>
        <translation>本机内置翻译</translation>
    </message>
    <message>
        <source>Apple 內建翻譯需升級至 macOS 15</source>
        <translation>Apple 内置翻译需要升级到 macOS 15</translation>
    </message>
    <message>
        <source>Apple 翻譯</source>
        <translation>本机翻译</translation>
    </message>
    <message>
        <source>Apple 翻譯失敗</source>
        <translation>Apple 翻译失败</translation>
    </message>
    <message>
        <source>Azure 翻譯必須填寫 API Key 與對應的地區。</source>
        <translation>Azure 翻译必须填写 API 密钥和对应的区域。</translation>
    </message>
    <message>
        <source>Claude 設定</source>
        <translation>Claude 设置</translation>
    </message>
    <message>
        <source>DeepL Free 與 Pro 金鑰皆可使用，App 會自動選擇對應端點。</source>
        <translation>DeepL Free 和 Pro 的 API 密钥均可使用，程序会自动选择对应的端点。</translation>
    </message>
    <message>
        <source>DeepL 設定</source>
        <translation>DeepL 设置</translation>
    </message>
    <message>
        <source>English</source>
        <translation>English</translation>
    </message>
    <message>
        <source>Gemini AI 設定</source>
        <translation>Gemini AI 设置</translation>
    </message>
    <message>
        <source>Gemini 翻譯必須填寫 API Key。</source>
        <translation>Gemini 翻译必须填写 API 密钥。</translation>
    </message>
    <message>
        <source>Google 免費翻譯</source>
        <translation>Google 免费翻译</translation>
    </message>
    <message>
        <source>Google 翻譯</source>
        <translation>Google 翻译</translation>
    </message>
    <message>
        <source>Google 翻譯設定</source>
        <translation>Google 翻译设置</translation>
    </message>
    <message>
        <source>JSON Array parse error</source>
        <translation>Gemini 返回的译文不是有效的 JSON</translation>
    </message>
    <message>
        <source>JSON encode error</source>
        <translation>无法将文字写成 JSON</translation>
    </message>
    <message>
        <source>Lucentra 在 Wayland 工作階段中需要 XWayland，但找不到它（沒有設定 DISPLAY）。</source>
        <translation>Lucentra 在 Wayland 会话中需要 XWayland，但找不到它（没有设置 DISPLAY）。</translation>
    </message>
    <message>
        <source>Lucentra 沒有在執行。</source>
        <translation>Lucentra 未在运行。</translation>
    </message>
    <message>
        <source>Lucentra 沒有執行這個指令。</source>
        <translation>Lucentra 没有执行这个命令。</translation>
    </message>
    <message>
        <source>Lucentra 無法啟動。</source>
        <translation>Lucentra 无法启动。</translation>
    </message>
    <message>
        <source>Lucentra 的一部分無法載入，請重新安裝 Lucentra。（%@）</source>
        <translation>Lucentra 的一部分无法载入，请重新安装 Lucentra。（%@）</translation>
    </message>
    <message>
        <source>Lucentra 需要圖形桌面（沒有設定 DISPLAY）。</source>
        <translation>Lucentra 需要图形桌面（没有设置 DISPLAY）。</translation>
    </message>
    <message>
        <source>Lucentra：翻譯螢幕上的文字</source>
        <translation>Lucentra：翻译屏幕上的文字</translation>
    </message>
    <message>
        <source>Lucentra｜澄鏡通</source>
        <translation>Lucentra｜澄镜通</translation>
    </message>
    <message>
        <source>Lucentra｜澄鏡通 設定</source>
        <translation>Lucentra｜澄镜通 设置</translation>
    </message>
    <message>
        <source>Microsoft Azure 翻譯</source>
        <translation>Microsoft Azure 翻译</translation>
    </message>
    <message>
        <source>Microsoft Azure 設定</source>
        <translation>Microsoft Azure 设置</translation>
    </message>
    <message>
        <source>OpenAI 相容 API</source>
        <translation>OpenAI 兼容 API</translation>
    </message>
    <message>
        <source>OpenAI 相容 API 設定</source>
        <translation>OpenAI 兼容 API 设置</translation>
    </message>
    <message>
        <source>OpenAI 設定</source>
        <translation>OpenAI 设置</translation>
    </message>
    <message>
        <source>Request prepare error</source>
        <translation>无法准备网络请求</translation>
    </message>
    <message>
        <source>Response parse error</source>
        <translation>无法解析 Gemini 的响应</translation>
    </message>
    <message>
        <source>Wayland 的圖層；合成器支援</source>
        <translation>Wayland 的图层；合成器支持</translation>
    </message>
    <message>
        <source>X11 視窗</source>
        <translation>X11 窗口</translation>
    </message>
    <message>
        <source>X11 視窗（XWayland）；合成器不支援圖層</source>
        <translation>X11 窗口（XWayland）；合成器不支持图层</translation>
    </message>
    <message>
        <source>lucentra --help 列出所有指令</source>
        <translation>lucentra --help 列出所有命令</translation>
    </message>
    <message>
        <source>⚠️ API Key 為空，將無法進行翻譯！</source>
        <translation>⚠️ API 密钥为空，将无法进行翻译！</translation>
    </message>
    <message>
        <source>⚠️ 請先在翻譯設定中允許將文字傳送至 %@。</source>
        <translation>⚠️ 请先在翻译设置中允许将文字发送至 %@。</translation>
    </message>
    <message>
        <source>⚠️ 請至設定填入相容 API Key</source>
        <translation>⚠️ 请到设置中填写兼容 API 的密钥</translation>
    </message>
    <message>
        <source>✓ 將使用 Google 免費版（有流量與請求頻率限制）</source>
        <translation>✓ 将使用 Google 免费版（有流量和请求频率限制）</translation>
    </message>
    <message>
        <source>❌ API 回應格式錯誤或金鑰無效</source>
        <translation>❌ API 响应格式错误或 API 密钥无效</translation>
    </message>
    <message>
        <source>❌ Gemini API 錯誤 %d：%@</source>
        <translation>❌ Gemini API 错误 %d：%@</translation>
    </message>
    <message>
        <source>❌ 網路請求準備失敗</source>
        <translation>❌ 无法准备网络请求</translation>
    </message>
    <message>
        <source>❌ 網路錯誤：%@</source>
        <translation>❌ 网络错误：%@</translation>
    </message>
    <message>
        <source>❌ 翻譯失敗：%@</source>
        <translation>❌ 翻译失败：%@</translation>
    </message>
    <message>
        <source>「!」標出 %d 個可以改善之處。</source>
        <translation>“!”标出 %d 个可以改善之处。</translation>
    </message>
    <message>
        <source>一般</source>
        <translation>常规</translation>
    </message>
    <message>
        <source>下載 %@</source>
        <translation>下载 %@</translation>
    </message>
    <message>
        <source>下載中斷。已下載的部分會保留，可以稍後繼續。</source>
        <translation>下载中断。已下载的部分会保留，可以稍后继续。</translation>
    </message>
    <message>
        <source>下載的檔案內容不符，已捨棄。</source>
        <translation>下载的文件内容不符，已丢弃。</translation>
    </message>
    <message>
        <source>下載的檔案大小不符，已捨棄。</source>
        <translation>下载的文件大小不符，已丢弃。</translation>
    </message>
    <message>
        <source>下載翻譯 PAIR（例如 en-ja）所需的模型；必要時經由英文</source>
        <translation>下载翻译 PAIR（例如 en-ja）所需的模型；必要时经由英文</translation>
    </message>
    <message>
        <source>不支援的圖片格式</source>
        <translation>不支持的图片格式</translation>
    </message>
    <message>
        <source>不支援這種模型：%@</source>
        <translation>不支持这种模型：%@</translation>
    </message>
    <message>
        <source>不是可辨識的圖片格式：%@</source>
        <translation>不是可识别的图片格式：%@</translation>
    </message>
    <message>
        <source>不是語言組合：%@</source>
        <translation>不是语言组合：%@</translation>
    </message>
    <message>
        <source>介面語言</source>
        <translation>界面语言</translation>
    </message>
    <message>
        <source>伺服器沒有這個語言的翻譯模型。</source>
        <translation>服务器没有这种语言的翻译模型。</translation>
    </message>
    <message>
        <source>伺服器的回應不是有效的 HTTP 回應</source>
        <translation>服务器的响应不是有效的 HTTP 响应</translation>
    </message>
    <message>
        <source>伺服器的回應過大</source>
        <translation>服务器的响应过大</translation>
    </message>
    <message>
        <source>伺服器的安全憑證無效</source>
        <translation>服务器的安全证书无效</translation>
    </message>
    <message>
        <source>伺服器的模型清單無法使用。</source>
        <translation>服务器的模型列表无法使用。</translation>
    </message>
    <message>
        <source>使用第 N 個翻譯引擎（0 至 7），不改變設定</source>
        <translation>使用第 N 个翻译引擎（0 至 7），不改变设置</translation>
    </message>
    <message>
        <source>來源語言</source>
        <translation>源语言</translation>
    </message>
    <message>
        <source>停止即時翻譯</source>
        <translation>停止实时翻译</translation>
    </message>
    <message>
        <source>停止輸入後自動翻譯</source>
        <translation>停止输入后自动翻译</translation>
    </message>
    <message>
        <source>允許將文字傳送至 %@</source>
        <translation>允许将文字发送至 %@</translation>
    </message>
    <message>
        <source>全域快捷鍵</source>
        <translation>全局快捷键</translation>
    </message>
    <message>
        <source>全選</source>
        <translation>全选</translation>
    </message>
    <message>
        <source>全部顯示</source>
        <translation>全部显示</translation>
    </message>
    <message>
        <source>分享畫面…</source>
        <translation>共享屏幕…</translation>
    </message>
    <message>
        <source>分享的不是翻譯板所在的螢幕。請再試一次，並選擇翻譯板所在的螢幕。</source>
        <translation>共享的不是翻译板所在的屏幕。请再试一次，并选择翻译板所在的屏幕。</translation>
    </message>
    <message>
        <source>切換到手動輸入</source>
        <translation>切换到手动输入</translation>
    </message>
    <message>
        <source>切換回框選翻譯</source>
        <translation>切换回框选翻译</translation>
    </message>
    <message>
        <source>切換為框選翻譯</source>
        <translation>切换为框选翻译</translation>
    </message>
    <message>
        <source>切換為框選翻譯 (當前:自動辨識)</source>
        <translation>切换为框选翻译（当前：自动识别）</translation>
    </message>
    <message>
        <source>切換為自動辨識</source>
        <translation>切换为自动识别</translation>
    </message>
    <message>
        <source>切換為自動辨識 (當前:框選翻譯)</source>
        <translation>切换为自动识别（当前：框选翻译）</translation>
    </message>
    <message>
        <source>切換目標語言</source>
        <translation>切换目标语言</translation>
    </message>
    <message>
        <source>列出在這部電腦上翻譯的服務與語言</source>
        <translation>列出在这台电脑上翻译的服务和语言</translation>
    </message>
    <message>
        <source>列出歷史紀錄</source>
        <translation>列出历史记录</translation>
    </message>
    <message>
        <source>列出這部電腦上的環境、有什麼不對、如何改善；不含密鑰與擷取的文字</source>
        <translation>列出这台电脑上的环境、有什么不对、如何改善；不含密钥与截取的文字</translation>
    </message>
    <message>
        <source>列出這部電腦上與伺服器提供的翻譯模型</source>
        <translation>列出这台电脑上与服务器提供的翻译模型</translation>
    </message>
    <message>
        <source>刪除</source>
        <translation>删除</translation>
    </message>
    <message>
        <source>刪除此筆翻譯</source>
        <translation>删除此条翻译</translation>
    </message>
    <message>
        <source>剪下</source>
        <translation>剪切</translation>
    </message>
    <message>
        <source>加入桌面設定檔的一行：</source>
        <translation>加入桌面配置文件的一行：</translation>
    </message>
    <message>
        <source>匯出的格式；未指定時依 FILE 的副檔名，否則為 csv</source>
        <translation>导出的格式；未指定时按 FILE 的扩展名，否则为 csv</translation>
    </message>
    <message>
        <source>匯出顯示的紀錄</source>
        <translation>导出显示的记录</translation>
    </message>
    <message>
        <source>即時翻譯</source>
        <translation>实时翻译</translation>
    </message>
    <message>
        <source>即時翻譯中</source>
        <translation>实时翻译中</translation>
    </message>
    <message>
        <source>即時翻譯（這個桌面擷取畫面時翻譯板會閃爍，無法使用）</source>
        <translation>实时翻译（此桌面截取画面时翻译板会闪烁，无法使用）</translation>
    </message>
    <message>
        <source>即時翻譯：開</source>
        <translation>实时翻译：开</translation>
    </message>
    <message>
        <source>即時翻譯：關</source>
        <translation>实时翻译：关</translation>
    </message>
    <message>
        <source>原文</source>
        <translation>原文</translation>
    </message>
    <message>
        <source>取得翻譯模型…</source>
        <translation>获取翻译模型…</translation>
    </message>
    <message>
        <source>取消下載</source>
        <translation>取消下载</translation>
    </message>
    <message>
        <source>取消收藏</source>
        <translation>取消收藏</translation>
    </message>
    <message>
        <source>古典透白 (Classic White - 預設)</source>
        <translation>经典透白（默认）</translation>
    </message>
    <message>
        <source>另一個下載正在進行。</source>
        <translation>另一个下载正在进行。</translation>
    </message>
    <message>
        <source>只包含原文或譯文中有 TEXT 的紀錄</source>
        <translation>只包含原文或译文中有 TEXT 的记录</translation>
    </message>
    <message>
        <source>只用 FOLDER 中的模型逐句翻譯標準輸入，每行一句</source>
        <translation>只用 FOLDER 中的模型逐句翻译标准输入，每行一句</translation>
    </message>
    <message>
        <source>可以下載的翻譯模型：</source>
        <translation>可以下载的翻译模型：</translation>
    </message>
    <message>
        <source>可以使用</source>
        <translation>可以使用</translation>
    </message>
    <message>
        <source>可用性檢查</source>
        <translation>可用性检查</translation>
    </message>
    <message>
        <source>可連接 OpenRouter、Ollama 或其他支援 Chat Completions 的服務；非本機網址必須使用 HTTPS。</source>
        <translation>可连接 OpenRouter、Ollama 或其他支持 Chat Completions 的服务；非本机网址必须使用 HTTPS。</translation>
    </message>
    <message>
        <source>合成器</source>
        <translation>合成器</translation>
    </message>
    <message>
        <source>合成器不允許擷取畫面。請安裝套件，而不是直接從原始碼執行。</source>
        <translation>合成器不允许截取画面。请安装软件包，而不是直接从源代码运行。</translation>
    </message>
    <message>
        <source>同時輸出各階段所需的毫秒數</source>
        <translation>同时输出各阶段所需的毫秒数</translation>
    </message>
    <message>
        <source>同時輸出每一行的譯文與位置</source>
        <translation>同时输出每一行的译文与位置</translation>
    </message>
    <message>
        <source>否</source>
        <translation>否</translation>
    </message>
    <message>
        <source>單字卡（以定位字元分隔）…</source>
        <translation>单词卡（以制表符分隔）…</translation>
    </message>
    <message>
        <source>單擊玻璃板即可翻譯</source>
        <translation>单击翻译板即可翻译</translation>
    </message>
    <message>
        <source>單擊翻譯</source>
        <translation>单击翻译</translation>
    </message>
    <message>
        <source>回應內容不是有效的 JSON</source>
        <translation>响应内容不是有效的 JSON</translation>
    </message>
    <message>
        <source>圖片已損壞或無法解碼：%@</source>
        <translation>图片已损坏或无法解码：%@</translation>
    </message>
    <message>
        <source>圖片檔案是空的：%@</source>
        <translation>图片文件是空的：%@</translation>
    </message>
    <message>
        <source>圖片過大（%d × %d 像素）：%@</source>
        <translation>图片过大（%d × %d 像素）：%@</translation>
    </message>
    <message>
        <source>在下方 Dock 欄顯示圖示</source>
        <translation>在任务栏显示图标</translation>
    </message>
    <message>
        <source>在桌面的設定中變更…</source>
        <translation>在桌面的设置中更改…</translation>
    </message>
    <message>
        <source>在歷史紀錄中開啟</source>
        <translation>在历史记录中打开</translation>
    </message>
    <message>
        <source>在這部電腦上翻譯</source>
        <translation>在这台电脑上翻译</translation>
    </message>
    <message>
        <source>地區</source>
        <translation>区域</translation>
    </message>
    <message>
        <source>執行中的 Lucentra</source>
        <translation>运行中的 Lucentra</translation>
    </message>
    <message>
        <source>外觀</source>
        <translation>外观</translation>
    </message>
    <message>
        <source>多餘的參數：%@</source>
        <translation>多余的参数：%@</translation>
    </message>
    <message>
        <source>失去焦點時自動隱藏玻璃板</source>
        <translation>失去焦点时自动隐藏翻译板</translation>
    </message>
    <message>
        <source>安裝這些套件也有幫助：%@</source>
        <translation>安装这些软件包也有帮助：%@</translation>
    </message>
    <message>
        <source>將圖片寫入 OUT.png</source>
        <translation>将图片写入 OUT.png</translation>
    </message>
    <message>
        <source>將屬於同一段落的各行合併</source>
        <translation>将属于同一段落的各行合并</translation>
    </message>
    <message>
        <source>將歷史紀錄匯出到 FILE；只讀取，不改變紀錄</source>
        <translation>将历史记录导出到 FILE；只读取，不改变记录</translation>
    </message>
    <message>
        <source>尚未下載完成</source>
        <translation>尚未下载完成</translation>
    </message>
    <message>
        <source>尚未建立</source>
        <translation>尚未创建</translation>
    </message>
    <message>
        <source>尚未有任何翻譯紀錄</source>
        <translation>还没有任何翻译记录</translation>
    </message>
    <message>
        <source>工作階段</source>
        <translation>会话</translation>
    </message>
    <message>
        <source>已刪除 %d 筆紀錄</source>
        <translation>已删除 %d 条记录</translation>
    </message>
    <message>
        <source>已刪除 1 筆紀錄</source>
        <translation>已删除 1 条记录</translation>
    </message>
    <message>
        <source>已取消下載。</source>
        <translation>已取消下载。</translation>
    </message>
    <message>
        <source>已同意</source>
        <translation>已同意</translation>
    </message>
    <message>
        <source>已安裝此語言所需的翻譯模型。</source>
        <translation>已安装此语言所需的翻译模型。</translation>
    </message>
    <message>
        <source>已安裝的翻譯模型：%@</source>
        <translation>已安装的翻译模型：%@</translation>
    </message>
    <message>
        <source>已安裝：%@</source>
        <translation>已安装：%@</translation>
    </message>
    <message>
        <source>已收藏</source>
        <translation>已收藏</translation>
    </message>
    <message>
        <source>已清除未收藏的紀錄</source>
        <translation>已清除未收藏的记录</translation>
    </message>
    <message>
        <source>已移除：%@</source>
        <translation>已移除：%@</translation>
    </message>
    <message>
        <source>已經安裝最新的翻譯模型。</source>
        <translation>已经安装最新的翻译模型。</translation>
    </message>
    <message>
        <source>已複製</source>
        <translation>已复制</translation>
    </message>
    <message>
        <source>已複製原文</source>
        <translation>已复制原文</translation>
    </message>
    <message>
        <source>已複製翻譯</source>
        <translation>已复制译文</translation>
    </message>
    <message>
        <source>已選用</source>
        <translation>已选用</translation>
    </message>
    <message>
        <source>引擎與語系</source>
        <translation>引擎与语言</translation>
    </message>
    <message>
        <source>復原</source>
        <translation>撤销</translation>
    </message>
    <message>
        <source>快捷鍵</source>
        <translation>快捷键</translation>
    </message>
    <message>
        <source>快速鍵</source>
        <translation>快捷键</translation>
    </message>
    <message>
        <source>您目前選用 Apple 內建引擎，支援無限量免費離線翻譯。</source>
        <translation>您目前选用本机内置引擎，支持不限量的免费离线翻译。</translation>
    </message>
    <message>
        <source>您設定的相容 API 端點</source>
        <translation>您设置的兼容 API 端点</translation>
    </message>
    <message>
        <source>所選服務</source>
        <translation>所选服务</translation>
    </message>
    <message>
        <source>所需的翻譯模型：%@</source>
        <translation>所需的翻译模型：%@</translation>
    </message>
    <message>
        <source>手動翻譯（點擊或快捷鍵）</source>
        <translation>手动翻译（点击或快捷键）</translation>
    </message>
    <message>
        <source>手動輸入</source>
        <translation>手动输入</translation>
    </message>
    <message>
        <source>找不到伺服器，請檢查網路連線與網址</source>
        <translation>找不到服务器，请检查网络连接和网址</translation>
    </message>
    <message>
        <source>找不到可擷取的翻譯視窗，請確認螢幕錄影權限</source>
        <translation>找不到可截取的翻译板，请检查屏幕录制权限</translation>
    </message>
    <message>
        <source>找不到工作階段匯流排（D-Bus），無法聯絡 Lucentra。</source>
        <translation>找不到会话总线（D-Bus），无法连接到 Lucentra。</translation>
    </message>
    <message>
        <source>找不到符合的紀錄</source>
        <translation>找不到匹配的记录</translation>
    </message>
    <message>
        <source>找不到翻譯視窗所在的顯示器</source>
        <translation>找不到翻译板所在的显示器</translation>
    </message>
    <message>
        <source>把這塊翻譯板拖到您看不懂的文字上。</source>
        <translation>把这块翻译板拖到您看不懂的文字上。</translation>
    </message>
    <message>
        <source>按 %@ 可隨時顯示或隱藏翻譯板。</source>
        <translation>按 %@ 可随时显示或隐藏翻译板。</translation>
    </message>
    <message>
        <source>按住 Option，再按主鍵盤上的 Return（↩）鍵</source>
        <translation>按住 Alt，再按主键盘上的 Return（↩）键</translation>
    </message>
    <message>
        <source>授權：%@</source>
        <translation>许可：%@</translation>
    </message>
    <message>
        <source>搜尋紀錄...</source>
        <translation>搜索记录…</translation>
    </message>
    <message>
        <source>操作</source>
        <translation>操作</translation>
    </message>
    <message>
        <source>操作模式</source>
        <translation>操作模式</translation>
    </message>
    <message>
        <source>擷取畫面</source>
        <translation>截取画面</translation>
    </message>
    <message>
        <source>收合</source>
        <translation>收起</translation>
    </message>
    <message>
        <source>收藏</source>
        <translation>收藏</translation>
    </message>
    <message>
        <source>文字太多，有些行來不及辨識。請縮小翻譯板後再試一次。</source>
        <translation>文字太多，有些行来不及识别。请缩小翻译板，然后再试一次。</translation>
    </message>
    <message>
        <source>文字已是目標語言。</source>
        <translation>文字已是目标语言。</translation>
    </message>
    <message>
        <source>文字辨識模型</source>
        <translation>文字识别模型</translation>
    </message>
    <message>
        <source>日</source>
        <translation>日</translation>
    </message>
    <message>
        <source>日文</source>
        <translation>日文</translation>
    </message>
    <message>
        <source>是</source>
        <translation>是</translation>
    </message>
    <message>
        <source>暫停記錄</source>
        <translation>暂停记录</translation>
    </message>
    <message>
        <source>最大化</source>
        <translation>最大化</translation>
    </message>
    <message>
        <source>有 API Key</source>
        <translation>有 API Key</translation>
    </message>
    <message>
        <source>服務</source>
        <translation>服务</translation>
    </message>
    <message>
        <source>服務沒有回傳有效譯文，請檢查金鑰、模型與網路設定</source>
        <translation>服务没有返回有效译文，请检查 API 密钥、模型和网络设置</translation>
    </message>
    <message>
        <source>未知的指令：%@</source>
        <translation>未知的命令：%@</translation>
    </message>
    <message>
        <source>未知的選項：%@</source>
        <translation>未知的选项：%@</translation>
    </message>
    <message>
        <source>未知錯誤</source>
        <translation>未知错误</translation>
    </message>
    <message>
        <source>未設定</source>
        <translation>未设置</translation>
    </message>
    <message>
        <source>柔和櫻粉 (Soft Pink)</source>
        <translation>柔和樱粉</translation>
    </message>
    <message>
        <source>框選翻譯</source>
        <translation>框选翻译</translation>
    </message>
    <message>
        <source>桌面</source>
        <translation>桌面</translation>
    </message>
    <message>
        <source>桌面沒有回答分享畫面的請求。請再試一次；如果仍然沒有反應，請重新登入。</source>
        <translation>桌面没有回答共享屏幕的请求。请再试一次；如果仍然没有反应，请重新登录。</translation>
    </message>
    <message>
        <source>極簡無邊框 (No Border)</source>
        <translation>极简无边框</translation>
    </message>
    <message>
        <source>標準輸入不是 UTF-8 文字</source>
        <translation>标准输入不是 UTF-8 文字</translation>
    </message>
    <message>
        <source>標準輸入的文字過長</source>
        <translation>标准输入的文字过长</translation>
    </message>
    <message>
        <source>模型伺服器回應錯誤：HTTP %d。</source>
        <translation>模型服务器返回错误：HTTP %d。</translation>
    </message>
    <message>
        <source>模型伺服器的網址必須使用 HTTPS。</source>
        <translation>模型服务器的网址必须使用 HTTPS。</translation>
    </message>
    <message>
        <source>模型名稱</source>
        <translation>模型名称</translation>
    </message>
    <message>
        <source>模型名稱可依你的 Anthropic 帳號權限調整。</source>
        <translation>模型名称可按您的 Anthropic 账号权限调整。</translation>
    </message>
    <message>
        <source>模型名稱可依你的 OpenAI 帳號權限調整。</source>
        <translation>模型名称可按您的 OpenAI 账号权限调整。</translation>
    </message>
    <message>
        <source>模型的檔案已損壞：%@</source>
        <translation>模型的文件已损坏：%@</translation>
    </message>
    <message>
        <source>檔案</source>
        <translation>文件</translation>
    </message>
    <message>
        <source>正在取得模型清單…</source>
        <translation>正在获取模型列表…</translation>
    </message>
    <message>
        <source>正在收集這部電腦上的譯文…</source>
        <translation>正在收集这台电脑上的译文…</translation>
    </message>
    <message>
        <source>正在收集這部電腦上的譯文，請稍後再試。</source>
        <translation>正在收集这台电脑上的译文，请稍后再试。</translation>
    </message>
    <message>
        <source>正在測試連線…</source>
        <translation>正在测试连接…</translation>
    </message>
    <message>
        <source>正在辨識與翻譯</source>
        <translation>正在识别与翻译</translation>
    </message>
    <message>
        <source>歷史紀錄</source>
        <translation>历史记录</translation>
    </message>
    <message>
        <source>段落</source>
        <translation>段落</translation>
    </message>
    <message>
        <source>沒有</source>
        <translation>没有</translation>
    </message>
    <message>
        <source>沒有偵測到文字</source>
        <translation>没有检测到文字</translation>
    </message>
    <message>
        <source>沒有分享螢幕，Lucentra 就看不到翻譯板下方的文字。按「分享畫面…」後，桌面會再問一次。</source>
        <translation>没有共享屏幕，Lucentra 就看不到翻译板下方的文字。点击“共享屏幕…”后，桌面会再问一次。</translation>
    </message>
    <message>
        <source>沒有可用的語言</source>
        <translation>没有可用的语言</translation>
    </message>
    <message>
        <source>沒有可翻譯的文字</source>
        <translation>没有可翻译的文字</translation>
    </message>
    <message>
        <source>沒有合成器，翻譯板無法透明。請啟動一個，例如 picom。</source>
        <translation>没有合成器，翻译板无法透明。请启动一个，例如 picom。</translation>
    </message>
    <message>
        <source>沒有安裝這個翻譯模型。</source>
        <translation>没有安装这个翻译模型。</translation>
    </message>
    <message>
        <source>沒有工作階段匯流排：快速鍵指令、鑰匙圈與狀態圖示都無法使用。請從桌面的工作階段啟動。</source>
        <translation>没有会话总线：快捷键命令、密钥环与状态图标都无法使用。请从桌面的会话启动。</translation>
    </message>
    <message>
        <source>沒有發現問題。</source>
        <translation>没有发现问题。</translation>
    </message>
    <message>
        <source>沒有這些模型，就讀不到那些語言的文字。請安裝：%@</source>
        <translation>没有这些模型，就读不到那些语言的文字。请安装：%@</translation>
    </message>
    <message>
        <source>淡雅水藍 (Subtle Blue)</source>
        <translation>淡雅水蓝</translation>
    </message>
    <message>
        <source>深色底、白字</source>
        <translation>深色底、白字</translation>
    </message>
    <message>
        <source>淺色底、黑字</source>
        <translation>浅色底、黑字</translation>
    </message>
    <message>
        <source>清除</source>
        <translation>清除</translation>
    </message>
    <message>
        <source>清除搜尋</source>
        <translation>清除搜索</translation>
    </message>
    <message>
        <source>清除未收藏</source>
        <translation>清除未收藏</translation>
    </message>
    <message>
        <source>測試會送出一小段範例文字；雲端服務可能計入極少量 API 用量。</source>
        <translation>测试会发送一小段示例文字；云端服务可能计入极少量的 API 用量。</translation>
    </message>
    <message>
        <source>測試翻譯引擎的連線</source>
        <translation>测试翻译引擎的连接</translation>
    </message>
    <message>
        <source>測試連線</source>
        <translation>测试连接</translation>
    </message>
    <message>
        <source>為了讀取翻譯板下方的文字，桌面接下來會請您分享畫面；請選擇翻譯板所在的螢幕。</source>
        <translation>为了读取翻译板下方的文字，桌面接下来会请您共享屏幕；请选择翻译板所在的屏幕。</translation>
    </message>
    <message>
        <source>無法使用</source>
        <translation>无法使用</translation>
    </message>
    <message>
        <source>無法判斷文字的語言。</source>
        <translation>无法判断文字的语言。</translation>
    </message>
    <message>
        <source>無法匯出：%@</source>
        <translation>无法导出：%@</translation>
    </message>
    <message>
        <source>無法寫入圖片 %@：%@</source>
        <translation>无法写入图片 %@：%@</translation>
    </message>
    <message>
        <source>無法寫入標準輸出</source>
        <translation>无法写入标准输出</translation>
    </message>
    <message>
        <source>無法寫入模型資料夾：%@</source>
        <translation>无法写入模型文件夹：%@</translation>
    </message>
    <message>
        <source>無法建立翻譯輸入</source>
        <translation>无法创建翻译输入</translation>
    </message>
    <message>
        <source>無法擷取畫面</source>
        <translation>无法截取屏幕画面</translation>
    </message>
    <message>
        <source>無法與伺服器建立安全連線</source>
        <translation>无法与服务器建立安全连接</translation>
    </message>
    <message>
        <source>無法讀取先前的翻譯紀錄，原檔案會保留在同一個資料夾中。</source>
        <translation>无法读取以前的翻译记录，原文件会保留在同一个文件夹中。</translation>
    </message>
    <message>
        <source>無法讀取圖片 %@：%@</source>
        <translation>无法读取图片 %@：%@</translation>
    </message>
    <message>
        <source>無法讀取或寫入這個檔案。請檢查它的擁有者與權限。</source>
        <translation>无法读取或写入这个文件。请检查它的所有者与权限。</translation>
    </message>
    <message>
        <source>無法讀取標準輸入</source>
        <translation>无法读取标准输入</translation>
    </message>
    <message>
        <source>無法讀取翻譯紀錄：%@</source>
        <translation>无法读取翻译记录：%@</translation>
    </message>
    <message>
        <source>無法透過代理伺服器連線</source>
        <translation>无法通过代理服务器连接</translation>
    </message>
    <message>
        <source>無法連線到 X 伺服器（DISPLAY）。</source>
        <translation>无法连接到 X 服务器（DISPLAY）。</translation>
    </message>
    <message>
        <source>無法連線到伺服器</source>
        <translation>无法连接到服务器</translation>
    </message>
    <message>
        <source>版本</source>
        <translation>版本</translation>
    </message>
    <message>
        <source>狀態圖示</source>
        <translation>状态图标</translation>
    </message>
    <message>
        <source>玻璃板樣式</source>
        <translation>翻译板样式</translation>
    </message>
    <message>
        <source>玻璃色調</source>
        <translation>玻璃色调</translation>
    </message>
    <message>
        <source>玻璃透明度：%d%%</source>
        <translation>玻璃不透明度：%d%%</translation>
    </message>
    <message>
        <source>由桌面的快捷鍵呼叫 Lucentra</source>
        <translation>由桌面的快捷键调用 Lucentra</translation>
    </message>
    <message>
        <source>由系統安裝</source>
        <translation>由系统安装</translation>
    </message>
    <message>
        <source>畫面分享中斷了。請再試一次。</source>
        <translation>屏幕共享中断了。请再试一次。</translation>
    </message>
    <message>
        <source>目標語言</source>
        <translation>目标语言</translation>
    </message>
    <message>
        <source>目標語言：%@</source>
        <translation>目标语言：%@</translation>
    </message>
    <message>
        <source>相容 API</source>
        <translation>兼容 API</translation>
    </message>
    <message>
        <source>相容 API URL 必須使用 HTTPS；本機 localhost 可使用 HTTP</source>
        <translation>兼容 API 的 URL 必须使用 HTTPS；本机 localhost 可使用 HTTP</translation>
    </message>
    <message>
        <source>相容 API URL 無效</source>
        <translation>兼容 API 的 URL 无效</translation>
    </message>
    <message>
        <source>知道了</source>
        <translation>知道了</translation>
    </message>
    <message>
        <source>磁碟空間不足：還需要 %@。</source>
        <translation>磁盘空间不足：还需要 %@。</translation>
    </message>
    <message>
        <source>移動或縮放後自動翻譯・%@</source>
        <translation>移动或缩放后自动翻译・%@</translation>
    </message>
    <message>
        <source>移除</source>
        <translation>移除</translation>
    </message>
    <message>
        <source>移除 %@</source>
        <translation>移除 %@</translation>
    </message>
    <message>
        <source>移除 PAIR 的模型</source>
        <translation>移除 PAIR 的模型</translation>
    </message>
    <message>
        <source>稍後</source>
        <translation>稍后</translation>
    </message>
    <message>
        <source>简</source>
        <translation>简</translation>
    </message>
    <message>
        <source>簡體中文</source>
        <translation>简体中文</translation>
    </message>
    <message>
        <source>系統</source>
        <translation>系统</translation>
    </message>
    <message>
        <source>系統不接受這個組合鍵，可能已有其他程式使用。請改用別的組合鍵。</source>
        <translation>系统不接受这个组合键，可能已被其他程序使用。请改用别的组合键。</translation>
    </message>
    <message>
        <source>系統沒有回傳擷取畫面</source>
        <translation>系统没有返回屏幕画面</translation>
    </message>
    <message>
        <source>系統行為</source>
        <translation>系统行为</translation>
    </message>
    <message>
        <source>約 %@</source>
        <translation>约 %@</translation>
    </message>
    <message>
        <source>結束 Lucentra｜澄鏡通</source>
        <translation>退出 Lucentra｜澄镜通</translation>
    </message>
    <message>
        <source>結束執行中的 Lucentra</source>
        <translation>退出正在运行的 Lucentra</translation>
    </message>
    <message>
        <source>網路連線發生錯誤</source>
        <translation>网络连接发生错误</translation>
    </message>
    <message>
        <source>編輯</source>
        <translation>编辑</translation>
    </message>
    <message>
        <source>縮小</source>
        <translation>最小化</translation>
    </message>
    <message>
        <source>繁</source>
        <translation>繁</translation>
    </message>
    <message>
        <source>繁體中文</source>
        <translation>繁体中文</translation>
    </message>
    <message>
        <source>繁體中文由 %@ 與簡體中文互相轉換。</source>
        <translation>繁体中文由 %@ 与简体中文互相转换。</translation>
    </message>
    <message>
        <source>繼續下載 %@</source>
        <translation>继续下载 %@</translation>
    </message>
    <message>
        <source>缺少參數：%@</source>
        <translation>缺少参数：%@</translation>
    </message>
    <message>
        <source>缺少指令</source>
        <translation>缺少命令</translation>
    </message>
    <message>
        <source>翻譯</source>
        <translation>翻译</translation>
    </message>
    <message>
        <source>翻譯一段文字；含漢字的文字一律譯成英文。TEXT 為 - 時讀取標準輸入</source>
        <translation>翻译一段文字；含汉字的文字一律译成英文。TEXT 为 - 时读取标准输入</translation>
    </message>
    <message>
        <source>翻譯中</source>
        <translation>翻译中</translation>
    </message>
    <message>
        <source>翻譯原文</source>
        <translation>翻译原文</translation>
    </message>
    <message>
        <source>翻譯單位</source>
        <translation>翻译单位</translation>
    </message>
    <message>
        <source>翻譯圖片中的文字，將譯文畫在原文之上</source>
        <translation>翻译图片中的文字，将译文画在原文之上</translation>
    </message>
    <message>
        <source>翻譯失敗</source>
        <translation>翻译失败</translation>
    </message>
    <message>
        <source>翻譯完成後自動複製到剪貼簿</source>
        <translation>翻译完成后自动复制到剪贴板</translation>
    </message>
    <message>
        <source>翻譯引擎</source>
        <translation>翻译引擎</translation>
    </message>
    <message>
        <source>翻譯成 CODE 語言（例如 zh-Hant、en、ja），不改變設定</source>
        <translation>翻译成 CODE 语言（例如 zh-Hans、en、ja），不改变设置</translation>
    </message>
    <message>
        <source>翻譯板</source>
        <translation>翻译板</translation>
    </message>
    <message>
        <source>翻譯模型</source>
        <translation>翻译模型</translation>
    </message>
    <message>
        <source>翻譯模型能在這部電腦上翻譯任何文字。只有在您按下按鈕時才會下載；您的文字不會傳出。</source>
        <translation>翻译模型能在这台电脑上翻译任何文字。只有在您按下按钮时才会下载；您的文字不会传出。</translation>
    </message>
    <message>
        <source>翻譯歷史紀錄</source>
        <translation>翻译历史记录</translation>
    </message>
    <message>
        <source>翻譯目前區域</source>
        <translation>翻译当前区域</translation>
    </message>
    <message>
        <source>翻譯目前區域：</source>
        <translation>翻译当前区域：</translation>
    </message>
    <message>
        <source>翻譯目前區域；翻譯板隱藏時先顯示</source>
        <translation>翻译当前区域；翻译板隐藏时先显示</translation>
    </message>
    <message>
        <source>翻譯紀錄檔案過大，只讀取了開頭的部分。</source>
        <translation>翻译记录文件过大，只读取了开头的部分。</translation>
    </message>
    <message>
        <source>翻譯結果會顯示在這裡</source>
        <translation>译文会显示在这里</translation>
    </message>
    <message>
        <source>自動模式會在移動或縮放後翻譯；手動模式移動只做對照，使用點擊、按鈕或快捷鍵才更新。</source>
        <translation>自动模式会在移动或缩放翻译板后翻译；手动模式下移动翻译板只用于对照，点击、按钮或快捷键才会更新译文。</translation>
    </message>
    <message>
        <source>自動調整文字大小</source>
        <translation>自动调整文字大小</translation>
    </message>
    <message>
        <source>自動辨識</source>
        <translation>自动识别</translation>
    </message>
    <message>
        <source>自動辨識（移動或縮放後）</source>
        <translation>自动识别（移动或缩放后）</translation>
    </message>
    <message>
        <source>自動（依目標語言）</source>
        <translation>自动（按目标语言）</translation>
    </message>
    <message>
        <source>自訂文字大小：%d pt</source>
        <translation>自定义文字大小：%d pt</translation>
    </message>
    <message>
        <source>與伺服器的連線已中斷</source>
        <translation>与服务器的连接已中断</translation>
    </message>
    <message>
        <source>英文</source>
        <translation>英文</translation>
    </message>
    <message>
        <source>複製</source>
        <translation>复制</translation>
    </message>
    <message>
        <source>複製全部翻譯</source>
        <translation>复制全部翻译</translation>
    </message>
    <message>
        <source>複製原文</source>
        <translation>复制原文</translation>
    </message>
    <message>
        <source>複製翻譯</source>
        <translation>复制译文</translation>
    </message>
    <message>
        <source>複製翻譯結果</source>
        <translation>复制译文</translation>
    </message>
    <message>
        <source>複製這一段的翻譯</source>
        <translation>复制这一段的翻译</translation>
    </message>
    <message>
        <source>複製這一行的翻譯</source>
        <translation>复制这一行的翻译</translation>
    </message>
    <message>
        <source>要求已取消</source>
        <translation>请求已取消</translation>
    </message>
    <message>
        <source>視窗</source>
        <translation>窗口</translation>
    </message>
    <message>
        <source>視窗管理員</source>
        <translation>窗口管理器</translation>
    </message>
    <message>
        <source>記錄已暫停：新的翻譯不會加入歷史紀錄。</source>
        <translation>记录已暂停：新的翻译不会加入历史记录。</translation>
    </message>
    <message>
        <source>設定</source>
        <translation>设置</translation>
    </message>
    <message>
        <source>設定…</source>
        <translation>设置…</translation>
    </message>
    <message>
        <source>設定後，可在任何情境下呼叫/隱藏翻譯板。默認為 ⌥T。欲清除請按 ESC。</source>
        <translation>设置后，可在任何情况下显示或隐藏翻译板。默认为 Alt+T。按 Esc 可取消。</translation>
    </message>
    <message>
        <source>試算表（CSV）…</source>
        <translation>电子表格（CSV）…</translation>
    </message>
    <message>
        <source>語言</source>
        <translation>语言</translation>
    </message>
    <message>
        <source>請參閱伺服器的說明</source>
        <translation>请参阅服务器的说明</translation>
    </message>
    <message>
        <source>請在「螢幕與系統錄音」清單中啟用 Lucentra。若清單尚未出現，請按左下角的「＋」加入 Lucentra.app，接著重新啟動 App。</source>
        <translation>请在“录屏与系统录音”列表中启用 Lucentra。如果列表中尚未出现，请点击左下角的“＋”添加 Lucentra.app，然后重新启动 Lucentra。</translation>
    </message>
    <message>
        <source>請在桌面的設定中，為指令 lucentra toggle 與 lucentra translate 設定快速鍵。</source>
        <translation>请在桌面的设置中，为命令 lucentra toggle 与 lucentra translate 设置快捷键。</translation>
    </message>
    <message>
        <source>請在系統設定中啟用 Lucentra。若清單尚未出現，請按左下角的「＋」加入 Lucentra.app，接著重新啟動 App。</source>
        <translation>请在系统设置中启用 Lucentra。如果列表中尚未出现，请点击左下角的“＋”添加 Lucentra.app，然后重新启动 Lucentra。</translation>
    </message>
    <message>
        <source>請在設定的「翻譯」分頁同意傳送文字。</source>
        <translation>请在设置的“翻译”分页同意发送文字。</translation>
    </message>
    <message>
        <source>請在設定的「翻譯」分頁輸入 API Key。</source>
        <translation>请在设置的“翻译”分页输入 API Key。</translation>
    </message>
    <message>
        <source>請將翻譯視窗完整放在同一個螢幕內再試一次</source>
        <translation>请将翻译板完整放在同一个显示器内，然后再试一次</translation>
    </message>
    <message>
        <source>請按下組合鍵... (按 ESC 取消)</source>
        <translation>请按下组合键…（按 Esc 取消）</translation>
    </message>
    <message>
        <source>請檢查 API Key、模型名稱與服務設定</source>
        <translation>请检查 API 密钥、模型名称和服务设置</translation>
    </message>
    <message>
        <source>請至設定填入 %@ API Key</source>
        <translation>请到设置中填写 %@ API 密钥</translation>
    </message>
    <message>
        <source>請至設定填入 Microsoft Azure API Key</source>
        <translation>请到设置中填写 Microsoft Azure API 密钥</translation>
    </message>
    <message>
        <source>請調整玻璃板位置或大小，讓文字完整落在框內後再試一次。</source>
        <translation>请调整翻译板的位置或大小，让文字完整落在框内，然后再试一次。</translation>
    </message>
    <message>
        <source>譯文字型</source>
        <translation>译文字体</translation>
    </message>
    <message>
        <source>譯文最多為原文的 X 倍長，以模型的單位計；預設為 2.0</source>
        <translation>译文最多为原文的 X 倍长，以模型的单位计；默认为 2.0</translation>
    </message>
    <message>
        <source>讓譯文即時跟隨翻譯板下的畫面</source>
        <translation>让译文实时跟随翻译板下的画面</translation>
    </message>
    <message>
        <source>貼上</source>
        <translation>粘贴</translation>
    </message>
    <message>
        <source>資料傳送與隱私</source>
        <translation>数据传输与隐私</translation>
    </message>
    <message>
        <source>資料夾裡沒有模型的這個檔案，或無法讀取：%@</source>
        <translation>文件夹里没有模型的这个文件，或无法读取：%@</translation>
    </message>
    <message>
        <source>資料（JSON）…</source>
        <translation>数据（JSON）…</translation>
    </message>
    <message>
        <source>跟隨介面語言</source>
        <translation>跟随界面语言</translation>
    </message>
    <message>
        <source>跟隨系統</source>
        <translation>跟随系统</translation>
    </message>
    <message>
        <source>輸入或貼上要翻譯的文字</source>
        <translation>输入或粘贴要翻译的文字</translation>
    </message>
    <message>
        <source>辨識</source>
        <translation>识别</translation>
    </message>
    <message>
        <source>辨識圖片中的文字，逐行輸出為 JSON</source>
        <translation>识别图片中的文字，逐行输出为 JSON</translation>
    </message>
    <message>
        <source>辨識或輸入的文字會傳送至 %@ 以產生翻譯；內容的處理方式受該服務的隱私政策約束。Lucentra 沒有中繼伺服器，也不會將副本傳給開發者。</source>
        <translation>识别或输入的文字会发送至 %@ 进行翻译；内容的处理方式受该服务的隐私政策约束。Lucentra 没有中转服务器，也不会将副本发送给开发者。</translation>
    </message>
    <message>
        <source>逐行</source>
        <translation>逐行</translation>
    </message>
    <message>
        <source>逐行翻譯會切斷句子。若譯文不通順，請在設定的「翻譯」中把「翻譯單位」改為「段落」。</source>
        <translation>逐行翻译会切断句子。若译文不通顺，请在设置的“翻译”中把“翻译单位”改为“段落”。</translation>
    </message>
    <message>
        <source>這些翻譯模型無法使用，檔案可能已損壞：%@。請移除後重新下載。</source>
        <translation>这些翻译模型无法使用，文件可能已损坏：%@。请移除后重新下载。</translation>
    </message>
    <message>
        <source>這個 X 伺服器缺少擷取畫面所需的功能：%@</source>
        <translation>这个 X 服务器缺少截取屏幕画面所需的功能：%@</translation>
    </message>
    <message>
        <source>這個桌面不提供畫面分享。請安裝後重新登入：%@</source>
        <translation>这个桌面不提供屏幕共享。请安装后重新登录：%@</translation>
    </message>
    <message>
        <source>這個桌面沒有系統匣。要再次顯示翻譯板，請再次啟動 Lucentra。</source>
        <translation>这个桌面没有系统托盘。要再次显示翻译板，请再次启动 Lucentra。</translation>
    </message>
    <message>
        <source>這個桌面沒有系統匣。要再次顯示翻譯板，請按 %@ 或再次啟動 Lucentra。</source>
        <translation>这个桌面没有系统托盘。要再次显示翻译板，请按 %@ 或再次启动 Lucentra。</translation>
    </message>
    <message>
        <source>這個系統的 dpkg 設定不會安裝譯文（path-exclude），請先更改設定。</source>
        <translation>这个系统的 dpkg 设置不会安装译文（path-exclude），请先更改设置。</translation>
    </message>
    <message>
        <source>這個翻譯模型由系統安裝，無法在這裡移除。</source>
        <translation>这个翻译模型由系统安装，无法在这里移除。</translation>
    </message>
    <message>
        <source>這部電腦上的程式沒有這些文字的譯文。請改用其他翻譯引擎。</source>
        <translation>这台电脑上的程序没有这些文字的译文。请改用其他翻译引擎。</translation>
    </message>
    <message>
        <source>這部電腦上的翻譯模型：</source>
        <translation>这台电脑上的翻译模型：</translation>
    </message>
    <message>
        <source>這部電腦可以翻譯：</source>
        <translation>这台电脑可以翻译：</translation>
    </message>
    <message>
        <source>這部電腦已經能翻譯程式的選單與訊息。網頁、遊戲等其他文字需要翻譯模型，下載一次即可離線使用。</source>
        <translation>这部电脑已经能翻译程序的菜单与消息。网页、游戏等其他文字需要翻译模型，下载一次即可离线使用。</translation>
    </message>
    <message>
        <source>這部電腦沒有鑰匙圈服務，無法保存 API Key。請安裝後重新登入：%@</source>
        <translation>这台电脑没有密钥环服务，无法保存 API 密钥。请安装后重新登录：%@</translation>
    </message>
    <message>
        <source>這部電腦無法翻譯這種語言。請改用其他翻譯引擎。</source>
        <translation>这台电脑无法翻译这种语言。请改用其他翻译引擎。</translation>
    </message>
    <message>
        <source>這部電腦還沒有能翻譯這些文字的模型。請在設定的「翻譯」分頁下載：%@</source>
        <translation>这台电脑还没有能翻译这些文字的模型。请在设置的“翻译”标签页下载：%@</translation>
    </message>
    <message>
        <source>連線失敗：%@</source>
        <translation>连接失败：%@</translation>
    </message>
    <message>
        <source>連線成功：%@</source>
        <translation>连接成功：%@</translation>
    </message>
    <message>
        <source>連線逾時，請稍後再試</source>
        <translation>连接超时，请稍后再试</translation>
    </message>
    <message>
        <source>選項 %@ 不接受值</source>
        <translation>选项 %@ 不接受值</translation>
    </message>
    <message>
        <source>選項 %@ 的值無效：%@</source>
        <translation>选项 %@ 的值无效：%@</translation>
    </message>
    <message>
        <source>選項 %@ 需要一個值</source>
        <translation>选项 %@ 需要一个值</translation>
    </message>
    <message>
        <source>還原</source>
        <translation>撤销</translation>
    </message>
    <message>
        <source>邊框發光顏色：</source>
        <translation>边框发光颜色：</translation>
    </message>
    <message>
        <source>重做</source>
        <translation>重做</translation>
    </message>
    <message>
        <source>重新翻譯</source>
        <translation>重新翻译</translation>
    </message>
    <message>
        <source>重試</source>
        <translation>重试</translation>
    </message>
    <message>
        <source>重試翻譯</source>
        <translation>重试翻译</translation>
    </message>
    <message>
        <source>鑰匙圈</source>
        <translation>密钥环</translation>
    </message>
    <message>
        <source>鑰匙圈已鎖定。請在系統詢問時解鎖；API Key 會在下次嘗試時讀取或存入。</source>
        <translation>密钥环已锁定。请在系统询问时解锁；API 密钥会在下次尝试时读取或保存。</translation>
    </message>
    <message>
        <source>鑰匙圈沒有回應，API Key 尚未讀取或存入。請稍後再試。</source>
        <translation>密钥环没有响应，API 密钥尚未读取或保存。请稍后再试。</translation>
    </message>
    <message>
        <source>開啟 / 停止即時翻譯：</source>
        <translation>开启/停止实时翻译：</translation>
    </message>
    <message>
        <source>開啟或停止即時翻譯</source>
        <translation>开启或停止实时翻译</translation>
    </message>
    <message>
        <source>開啟系統設定</source>
        <translation>打开系统设置</translation>
    </message>
    <message>
        <source>開啟翻譯歷史紀錄視窗</source>
        <translation>打开翻译历史记录窗口</translation>
    </message>
    <message>
        <source>開啟設定視窗</source>
        <translation>打开设置窗口</translation>
    </message>
    <message>
        <source>開機自動啟動</source>
        <translation>登录时自动启动</translation>
    </message>
    <message>
        <source>閱讀隱私權政策</source>
        <translation>阅读隐私政策</translation>
    </message>
    <message>
        <source>關於</source>
        <translation>关于</translation>
    </message>
    <message>
        <source>關於 Lucentra｜澄鏡通</source>
        <translation>关于 Lucentra｜澄镜通</translation>
    </message>
    <message>
        <source>關閉</source>
        <translation>关闭</translation>
    </message>
    <message>
        <source>隱藏 API Key</source>
        <translation>隐藏 API 密钥</translation>
    </message>
    <message>
        <source>隱藏 Lucentra</source>
        <translation>隐藏 Lucentra</translation>
    </message>
    <message>
        <source>隱藏其他項目</source>
        <translation>隐藏其他</translation>
    </message>
    <message>
        <source>隱藏翻譯板</source>
        <translation>隐藏翻译板</translation>
    </message>
    <message>
        <source>雙擊玻璃板即可翻譯</source>
        <translation>双击翻译板即可翻译</translation>
    </message>
    <message>
        <source>雙擊翻譯</source>
        <translation>双击翻译</translation>
    </message>
    <message>
        <source>雙擊翻譯（建議）</source>
        <translation>双击翻译（推荐）</translation>
    </message>
    <message>
        <source>需要「螢幕錄影」權限</source>
        <translation>需要“屏幕录制”权限</translation>
    </message>
    <message>
        <source>需要螢幕錄製權限</source>
        <translation>需要屏幕录制权限</translation>
    </message>
    <message>
        <source>韓文</source>
        <translation>韩文</translation>
    </message>
    <message>
        <source>顯示 / 隱藏翻譯視窗：</source>
        <translation>显示/隐藏翻译板：</translation>
    </message>
    <message>
        <source>顯示 API Key</source>
        <translation>显示 API 密钥</translation>
    </message>
    <message>
        <source>顯示/隱藏 翻譯板</source>
        <translation>显示/隐藏翻译板</translation>
    </message>
    <message>
        <source>顯示全部</source>
        <translation>显示全部</translation>
    </message>
    <message>
        <source>顯示或隱藏翻譯板</source>
        <translation>显示或隐藏翻译板</translation>
    </message>
    <message>
        <source>顯示翻譯板</source>
        <translation>显示翻译板</translation>
    </message>
    <message>
        <source>點擊玻璃板</source>
        <translation>点击翻译板</translation>
    </message>
</context>
</TS>
